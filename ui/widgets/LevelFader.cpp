// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/LevelFader.h"

#include <QLabel>
#include <QSignalBlocker>
#include <utility>

#include "ui/widgets/Fader.h"
#include "ui/widgets/Look.h"

namespace ui {

LevelFader LevelFader::Make(QAnyStringView name, Qt::Orientation orientation, int lowest, int highest,
                            const Skin& skin) {
  LevelFader made{new Fader(orientation, skin, skin.text), new QLabel, {}};
  made.fader->setRange(lowest, highest);
  Name(*made.fader, name);
  Name(*made.value, name.toString() + QStringLiteral("Value"));
  return made;
}

void LevelFader::OnMoved(const support::TimePoint& now, std::function<void(int)> send) {
  QObject::connect(fader, &QSlider::valueChanged, fader, [this, &now, send = std::move(send)](int moved) {
    echo.Sent(static_cast<float>(moved), now);
    send(moved);
  });
}

void LevelFader::Follow(int reported, support::TimePoint now) {
  if (fader->isSliderDown() || !echo.Believe(static_cast<float>(reported), now)) return;
  if (fader->value() == reported) return;
  const QSignalBlocker quiet(fader);
  fader->setValue(reported);
}

}  // namespace ui
