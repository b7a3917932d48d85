// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/AddFile.h"
#include "catalogue/FolderScan.h"

namespace catalogue {

/// What is kept of a file that was scanned.
struct KnownFile {
  std::string_view name;
  FileStamp stamp;
  bool playable = true;  ///< else nothing was made of it, and its cells are empty
  CellViews cells;       ///< what a row is made of: without the path, artist and title as the tag gave them
};

/// Writes what is kept of the files of one folder, in byte order of their names.
class FolderRecordWriter {
 public:
  FolderRecordWriter();
  void Add(const KnownFile& file);
  [[nodiscard]] std::string Take() { return std::move(bytes_); }

 private:
  void AddNumber(std::uint64_t number);
  void AddText(std::string_view text);

  std::string bytes_;
};

/// Reads it again, one file after the other. Law: bytes that were not written by this version give no more
/// files, whatever they are.
class FolderRecordReader {
 public:
  /// The bytes outlive the reader and what it gives.
  explicit FolderRecordReader(std::string_view bytes);
  /// False at the end.
  bool Next(KnownFile& file);

 private:
  bool TakeNumber(std::uint64_t& number);
  bool TakeText(std::string_view& text);

  std::string_view rest_;
};

}  // namespace catalogue
