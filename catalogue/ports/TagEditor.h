// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "support/Result.h"

namespace catalogue {

/// What can be edited of a tag.
enum class TagField { Artist, Title, Album, Genre, Year, Track, Comment, Key, Bpm };
inline constexpr std::size_t kTagFields = 9;

/// The front cover, else the first picture; no bytes where there is none.
struct TagPicture {
  std::string mime;
  std::string bytes;
  bool operator==(const TagPicture&) const = default;
};

/// What a file's tag says. Of the comment, see VisibleComment for what a hand edits.
struct TagSheet {
  std::array<std::string, kTagFields> fields;
  TagPicture cover;

  [[nodiscard]] std::string& operator[](TagField field) { return fields[static_cast<std::size_t>(field)]; }
  [[nodiscard]] const std::string& operator[](TagField field) const {
    return fields[static_cast<std::size_t>(field)];
  }
  bool operator==(const TagSheet&) const = default;
};

/// What is to be changed; what is not named stays as it is.
struct TagEdit {
  std::array<std::optional<std::string>, kTagFields> fields;
  std::optional<TagPicture> cover;

  [[nodiscard]] std::optional<std::string>& operator[](TagField field) {
    return fields[static_cast<std::size_t>(field)];
  }
  [[nodiscard]] const std::optional<std::string>& operator[](TagField field) const {
    return fields[static_cast<std::size_t>(field)];
  }
  [[nodiscard]] bool IsEmpty() const { return *this == TagEdit{}; }
  bool operator==(const TagEdit&) const = default;
};

/// How a write is taken back: the bytes that it replaced, where they are few, and else the old fields.
struct TagUndo {
  TagEdit fields;
  /// The file had these bytes from this place on, where it has so many now. Only for the very file that the
  /// write left behind.
  struct Bytes {
    std::size_t from = 0;
    std::size_t now = 0;
    std::string before;
    std::size_t size = 0;      ///< of the file that was left behind
    std::size_t checksum = 0;  ///< of all its bytes
  };
  std::optional<Bytes> bytes;

  /// What it takes in memory.
  [[nodiscard]] std::size_t Weight() const {
    std::size_t sum = sizeof *this + (bytes ? bytes->before.size() : 0);
    for (const auto& field : fields.fields) sum += field ? field->size() : 0;
    return sum + (fields.cover ? fields.cover->bytes.size() : 0);
  }
};

/// Reads and changes all that a person edits of a file's tag, and the file's name.
///
/// Law: all else in a file stays as it was, and a file is replaced whole or not at all. Threads: any, one a
/// file; blocks on the disk.
class TagEditor {
 public:
  virtual ~TagEditor() = default;
  virtual support::Result<TagSheet> Read(const std::string& path) = 0;
  /// Fails where the file is missing, write-protected, of no kind that carries a tag, or the picture is none.
  virtual support::Result<TagUndo> Write(const std::string& path, const TagEdit& edit) = 0;
  /// Takes a write back; where the file was changed since, its fields alone.
  virtual support::Result<void> Undo(const std::string& path, const TagUndo& undo) = 0;
  /// Never over another file; a change of letter case alone is no other file.
  virtual support::Result<void> Rename(const std::string& from, const std::string& to) = 0;
};

}  // namespace catalogue
