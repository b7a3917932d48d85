// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "catalogue/ports/TagEditor.h"
#include "platform/files/DiskCalls.h"

namespace platform::tags {

/// Edits mp3, ogg, opus, flac, wma, m4a, wav and aiff files, recognised by content: in memory first, where
/// the outcome is read again, then swapped in. A file of more than kLargest is refused.
class TagFileEditor final : public catalogue::TagEditor {
 public:
  static constexpr std::int64_t kLargest = 512LL << 20;          ///< bytes
  static constexpr std::size_t kLargestPicture = 16UL << 20;     ///< the same
  static constexpr std::size_t kLargestUndoBytes = 256UL << 10;  ///< more than these are undone by fields

  /// The calls outlive the editor.
  explicit TagFileEditor(files::DiskCalls& calls = files::SystemDisk()) : calls_(calls) {}

  support::Result<catalogue::TagSheet> Read(const std::string& path) override;
  support::Result<catalogue::TagUndo> Write(const std::string& path, const catalogue::TagEdit& edit) override;
  support::Result<void> Undo(const std::string& path, const catalogue::TagUndo& undo) override;
  support::Result<void> Rename(const std::string& from, const std::string& to) override;

 private:
  files::DiskCalls& calls_;
};

/// All that the tags of a file hold, whether it can be edited or not.
struct TagContents {
  struct Field {
    std::string tag, name, value;  ///< "ID3v2", "TIT2" ...
  };
  struct Picture {
    std::string type, mime;  ///< type: the number that all kinds of tags have for it
    std::size_t bytes = 0;
  };
  std::vector<Field> fields;
  std::vector<Picture> pictures;
};
[[nodiscard]] support::Result<TagContents> EverythingIn(const std::string& path);

/// "image/jpeg", "image/png", by what the bytes are; empty for anything else, and for a picture that ends
/// early.
[[nodiscard]] std::string PictureMime(const std::string& bytes);

}  // namespace platform::tags
