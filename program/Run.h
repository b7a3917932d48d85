// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <functional>

class QApplication;

namespace ui {
class frmMain;
}

namespace program {

/// Runs the program until its window is closed or the system asks for its end, and gives the process's
/// result.
///
/// Every way out but a kill is the described one: a signal, a session that closes, and a display that is
/// lost, after which the window's library ends the process by itself. shown: called once the window is there.
/// Threads: the window's. Requires: called once, with nothing of the program left below main's return.
[[nodiscard]] int Run(QApplication& application, const std::filesystem::path& folder,
                      const std::function<void(ui::frmMain&)>& shown = {});

}  // namespace program
