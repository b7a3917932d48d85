// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>

#include "app/ports/Help.h"
#include "ui/strings/Strings.h"

class QTextBrowser;
class QWidget;

namespace ui {

/// Shows the manual in a window of its own. The help file names the place: the topics lie beside it as pages.
class HelpWindow final : public app::Help {
 public:
  /// Borrows the window that it belongs to.
  explicit HelpWindow(QWidget& owner) : owner_(owner) {}

  /// The language of what it says from now on; outlives it.
  void Speak(const Strings& say) { say_ = &say; }
  void Open(const std::filesystem::path& file, const std::string& topic) override;
  void Close();

 private:
  [[nodiscard]] QTextBrowser* MakeViewer();

  QWidget& owner_;
  const Strings* say_ = nullptr;
  QPointer<QTextBrowser> viewer_;
};

}  // namespace ui
