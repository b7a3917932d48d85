// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <functional>

#include "app/ports/Prompts.h"
#include "ui/strings/Strings.h"

class QWidget;

namespace ui {

/// Boxes that leave the rest of the window in reach: music goes on while one is open.
class MessageBoxes final : public app::Prompts {
 public:
  /// Borrows the window that they belong to.
  explicit MessageBoxes(QWidget& owner) : owner_(owner) {}

  /// The language of their buttons from now on; outlives them.
  void Speak(const Strings& say) { say_ = &say; }
  void Tell(const std::string& sentence) override;
  void Ask(const Question& question, std::function<void(bool)> answer) override;
  /// Asks before something is done that cannot be undone; Escape and Enter leave everything as it is.
  void Ask(const QString& object_name, const QString& question, const QString& yes,
           std::function<void()> then);

 private:
  QWidget& owner_;
  const Strings* say_ = nullptr;
};

}  // namespace ui
