// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFileDialog>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "app/files/IntakeOutcome.h"
#include "catalogue/FolderScan.h"
#include "ui/widgets/Look.h"

class QDialog;

namespace ui {

/// A file dialog in the words and the size of its owner's window, without what a disc jockey has no use for.
/// Not modal: the decks stay in reach.
[[nodiscard]] QFileDialog* MakeFileDialog(QWidget& owner, const Look& look, QFileDialog::FileMode mode,
                                          const QString& title, const QString& accept);
[[nodiscard]] inline QFileDialog* MakeFileDialog(QWidget& owner, const Look& look, QFileDialog::FileMode mode,
                                                 Say title, Say accept) {
  return MakeFileDialog(owner, look, mode, look.say(title), look.say(accept));
}

/// For files that are to be added: those of a kind by their masks, or all. chosen gets bytes of their paths.
[[nodiscard]] QFileDialog* MakeAddDialog(QWidget& owner, const Look& look, const QString& kind,
                                         const QString& masks,
                                         std::function<void(std::vector<std::string>)> chosen);

/// "*.mp3 *.ogg": what is added by hand.
[[nodiscard]] QString MasksText(catalogue::ScanMode mode);
/// The head of a report about what was left out.
[[nodiscard]] QString LeftOutText(const app::IntakeOutcome& outcome, const Strings& say);

/// For a folder whose files are to be added.
[[nodiscard]] QFileDialog* MakeAddFolderDialog(QWidget& owner, const Look& look,
                                               std::function<void(std::vector<std::string>)> chosen);

/// Has it begin in the folder of a file, as bytes of its path, where that is there: more of the kind lie
/// beside it.
void BeginBeside(QFileDialog& dialog, std::string_view file);

/// Gives a dialog the window's type and buttons and shows it over the lists, where it hides no deck as long
/// as there is room.
void ShowDialog(QDialog& dialog, const QWidget& owner);

}  // namespace ui
