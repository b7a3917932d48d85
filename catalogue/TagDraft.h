// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/ports/TagEditor.h"

namespace catalogue {

/// A comment without the lines of mixing tags, with line ends of one character.
[[nodiscard]] std::string VisibleComment(std::string_view block);
/// The block with another visible part: its mixing tags stay, behind it.
[[nodiscard]] std::string WithVisibleComment(std::string_view block, std::string_view comment);

/// What is to become of the tags of several files, of which only the first one's cover is held: those of
/// many thousands would fill the memory. Threads: one.
class TagDraft {
 public:
  struct File {
    std::string path;
    TagSheet sheet;     ///< as it is on the disk, without its cover
    TagEdit edit;       ///< what differs from it, without a cover
    std::size_t cover;  ///< tells covers apart; 0: none
  };
  /// What all files say.
  struct Merged {
    std::string text;  ///< of the first file where they differ
    bool differs = false;
    bool touched = false;  ///< not as it is on the disk, in any file
  };

  void Clear();
  void Add(std::string path, TagSheet sheet);
  [[nodiscard]] std::size_t Size() const { return files_.size(); }
  [[nodiscard]] const File& At(std::size_t file) const { return files_[file]; }

  /// As it would be written.
  [[nodiscard]] const std::string& Text(std::size_t file, TagField field) const;
  /// The same, without its cover.
  [[nodiscard]] TagSheet Planned(std::size_t file) const;
  [[nodiscard]] Merged All(TagField field) const;
  /// Of the first file, or the one that all are to have.
  [[nodiscard]] const TagPicture& Cover() const { return wanted_ ? *wanted_ : first_cover_; }
  [[nodiscard]] bool CoversDiffer() const;
  [[nodiscard]] bool CoverTouched() const { return wanted_ != nullptr; }
  [[nodiscard]] bool IsTouched(std::size_t file) const;
  /// That all are to have; null where they stay.
  [[nodiscard]] std::shared_ptr<const TagPicture> WantedCover() const { return wanted_; }
  /// Files with anything to write.
  [[nodiscard]] std::size_t Touched() const;

  /// What says what the disk says is not touched.
  void Set(std::size_t file, TagField field, std::string text);
  void SetAll(TagField field, const std::string& text);
  void SetCover(TagPicture cover);
  /// As the disk has it.
  void Revert(TagField field);
  void RevertCover() { wanted_.reset(); }
  void RevertAll();
  /// Each file's text becomes what change makes of it.
  void Change(TagField field, const std::function<std::string(std::string_view)>& change);
  void Renamed(std::string_view from, const std::string& to);

 private:
  std::vector<File> files_;
  TagPicture first_cover_;
  std::shared_ptr<const TagPicture> wanted_;
  std::size_t wanted_id_ = 0;
};

}  // namespace catalogue
