// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/frmKaraoke.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/widgets/LyricSurface.h"
#include "ui/widgets/NextUpCard.h"

namespace ui {

namespace {

/// Of a connector; a screen that has no name goes by its number.
QString ScreenNameOf(const QScreen& screen) {
  if (!screen.name().isEmpty()) return screen.name();
  return QStringLiteral("#%1").arg(QGuiApplication::screens().indexOf(&screen) + 1);
}

}  // namespace

const QString frmKaraoke::kNowhere;
const QString frmKaraoke::kInWindow = QStringLiteral("window");

frmKaraoke::frmKaraoke(support::Settings& settings, const QWidget& main) : settings_(settings), main_(main) {
  setObjectName(QStringLiteral("frmKaraoke"));
  setAttribute(Qt::WA_QuitOnClose, false);     // the program ends with the main window
  setAttribute(Qt::WA_ShowWithoutActivating);  // the keyboard stays with the decks
  surface_ = new LyricSurface(karaoke::LyricDisplay::SingersWindow);
  surface_->setObjectName(QStringLiteral("SingersWords"));
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->addWidget(surface_);
  next_up_ = new NextUpCard(*this);
  connect(qApp, &QGuiApplication::screenAdded, this, &frmKaraoke::ScreenCame);
  connect(qApp, &QGuiApplication::screenRemoved, this, &frmKaraoke::ScreenWent);
}

frmKaraoke::~frmKaraoke() = default;

std::vector<frmKaraoke::ScreenPlace> frmKaraoke::Screens() const {
  std::vector<ScreenPlace> places;
  bool found = place_ == kNowhere || place_ == kInWindow;
  for (const QScreen* screen : QGuiApplication::screens()) {
    places.push_back({ScreenNameOf(*screen), static_cast<int>(places.size()) + 1,
                      screen->size() * screen->devicePixelRatio(), true});
    found = found || ScreenNameOf(*screen) == place_;
  }
  if (!found) places.push_back({place_, 0, {}, false});
  return places;
}

void frmKaraoke::ShowOn(const QString& place) {
  place_ = place;
  settings_.SetText("Karaoke", "Screen", place.toStdString());
  Appear();
  Q_EMIT PlacesChanged();
}

void frmKaraoke::Restore() {
  place_ = QString::fromStdString(settings_.Text("Karaoke", "Screen"));
  if (main_.screen() == nullptr || place_ != ScreenNameOf(*main_.screen())) Appear();
  Q_EMIT PlacesChanged();
}

void frmKaraoke::Appear() {
  if (place_ == kInWindow) {
    if (screen_ != nullptr) screen_->disconnect(this);
    screen_ = nullptr;
    unsetCursor();
    showNormal();
    constexpr QSize kSize(960, 540);
    if (main_.screen() != nullptr) {
      resize(kSize.boundedTo(main_.screen()->availableSize() / 2));
      move(main_.screen()->availableGeometry().center() - rect().center());
    }
    return;
  }
  const auto screens = QGuiApplication::screens();
  const auto found = std::find_if(screens.begin(), screens.end(),
                                  [this](const QScreen* screen) { return ScreenNameOf(*screen) == place_; });
  if (place_ == kNowhere || found == screens.end()) return hide();
  AppearOn(**found);
}

void frmKaraoke::AppearOn(QScreen& screen) {
  if (screen_ != &screen) {
    if (screen_ != nullptr) screen_->disconnect(this);
    connect(&screen, &QScreen::geometryChanged, this, &frmKaraoke::FillScreen);
  }
  screen_ = &screen;
  setCursor(Qt::BlankCursor);
  setScreen(&screen);
  setGeometry(screen.geometry());
  showFullScreen();
}

void frmKaraoke::FillScreen() {
  if (screen_ != nullptr && isVisible()) setGeometry(screen_->geometry());
  Q_EMIT PlacesChanged();
}

void frmKaraoke::ScreenCame(QScreen* screen) {
  if (ScreenNameOf(*screen) == place_ && screen != main_.screen()) Appear();
  Q_EMIT PlacesChanged();
}

void frmKaraoke::ScreenWent(QScreen* screen) {
  if (screen == screen_) {
    screen_ = nullptr;
    hide();
  }
  // Later: the screen that goes is still in the list.
  QMetaObject::invokeMethod(this, &frmKaraoke::PlacesChanged, Qt::QueuedConnection);
}

void frmKaraoke::SetLook(const SceneLook& look) {
  surface_->SetLook(look);
}

void frmKaraoke::Show(const app::SongView& view, support::TimePoint now) {
  if (isVisible()) surface_->Show(view, now);
}

void frmKaraoke::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Escape) return QWidget::keyPressEvent(event);
  Leave();
}

void frmKaraoke::mouseDoubleClickEvent(QMouseEvent*) {
  Leave();
}

void frmKaraoke::closeEvent(QCloseEvent* event) {
  event->accept();
  Leave();
}

void frmKaraoke::Leave() {
  ShowOn(kNowhere);
}

}  // namespace ui
