// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <memory>

namespace ui {
class frmMain;
}

namespace program {

/// The running program: the outside things, the engine, the workstation and the window, made in the order in
/// which they need each other and gone in the reverse one.
///
/// Threads: the window's. Requires: a QApplication.
class Program {
 public:
  /// folder: the program folder. Starts up; what fails is skipped and told in the window.
  explicit Program(const std::filesystem::path& folder);
  /// Shuts down. A worker that a dead disk holds is left behind after some seconds: what it touches is then
  /// never destroyed, so the process must end without running destructors (see LeftBehind).
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  [[nodiscard]] ui::frmMain& Window();
  /// How it came to the end: its user wishes it, or it has lost its display and the next start goes on with
  /// the evening.
  enum class End { Asked, DisplayLost };
  /// The described end without the window, which may be gone or stand still: decks and engine are released,
  /// lamps and boards go dark, settings and lists are kept. Nothing where no Program runs. Any thread, also
  /// one that the program's own end is held up by. The process must end after it (see LeftBehind).
  static void EndWithoutWindow(End end);
  [[nodiscard]] static bool Runs();
  /// True once the last Program left a worker behind.
  [[nodiscard]] static bool LeftBehind();

 private:
  struct Parts;
  class Ending;

  static Ending& TheEnding();

  std::unique_ptr<Parts> parts_;
};

}  // namespace program
