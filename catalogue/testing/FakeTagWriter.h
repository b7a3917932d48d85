// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/ports/TagWriter.h"
#include "catalogue/testing/FakeTagReader.h"

namespace catalogue::testing {

/// Writes into the files that a fake reader knows.
/// Threads: one.
class FakeTagWriter final : public TagWriter {
 public:
  explicit FakeTagWriter(FakeTagReader& files) : files_(files) {}

  /// Writing fails from now on, or works again.
  void SetProtected(bool is_protected) { protected_ = is_protected; }
  /// Called after each file that was written.
  void OnWritten(std::function<void(const std::string&)> written) { written_ = std::move(written); }
  [[nodiscard]] int Writes() const { return writes_; }

  support::Result<void> Write(const std::string& path, const std::string& text_block,
                              const std::vector<TagItem>& items) override {
    auto read = files_.Read(path);
    if (!read) return read.Failure();
    if (protected_) return support::Error{support::ErrorCode::Unreadable, "\"" + path + "\" is protected."};
    FileTags tags = read.Value();
    tags.text_block = text_block;
    for (TagItem& old : tags.user_items) {
      for (const TagItem& item : items) {
        if (item.name == old.name) old.value = item.value;
      }
    }
    files_.AddFile(path, tags);
    ++writes_;
    if (written_) written_(path);
    return {};
  }

 private:
  FakeTagReader& files_;
  bool protected_ = false;
  int writes_ = 0;
  std::function<void(const std::string&)> written_;
};

}  // namespace catalogue::testing
