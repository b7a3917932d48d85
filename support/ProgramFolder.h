// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace support {

/// The folder of the executable, where every data file lives.
///
/// Data file names keep the form they have in the rooms, with a leading backslash ("\tlv.ndx",
/// "\help\djTOLVENgold.chm"); here they become native paths. A file that exists under another letter case is
/// found, so a folder copied from a system that ignores case works.
/// Threads: any; a value without hidden state.
class ProgramFolder {
 public:
  explicit ProgramFolder(std::filesystem::path folder) : folder_(std::move(folder)) {}

  /// Without a trailing separator.
  [[nodiscard]] std::string Text() const { return folder_.string(); }
  /// Folder plus name, a "\" between them: the text that settings hold as a default.
  [[nodiscard]] std::string TextOf(std::string_view name) const { return Text() + std::string(name); }
  /// The native path of a name; "/" is taken as "\". Each part that exists under another letter case is taken
  /// as it exists (the first in byte order, should several).
  [[nodiscard]] std::filesystem::path Native(std::string_view name) const;
  /// Of a text that TextOf gave, as settings hold it; any other path as it stands.
  [[nodiscard]] std::filesystem::path NativeOfText(std::string_view text) const;

  /// How a file's full path is kept in the folder's own lists, so that the folder can be moved: what lies
  /// below it as "./" and the rest with "/" between folders, any other path as it stands.
  [[nodiscard]] std::string StoredPath(std::string_view full) const;
  /// Of such a text, the full path in this folder.
  [[nodiscard]] std::string FullPath(std::string_view stored) const;
  /// What a stored path below the folder begins with; no full path does.
  static constexpr std::string_view kBelow = "./";

 private:
  std::filesystem::path folder_;
};

/// The path unchanged when its last character is "\", else with "\" appended.
[[nodiscard]] std::string AddBackslash(std::string path);

}  // namespace support
