// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>

#include "catalogue/ports/TagEditor.h"
#include "catalogue/testing/FakeTagReader.h"

namespace catalogue::testing {

/// Edits the files of its own table, which a fake reader sees too. Threads: one.
class FakeTagEditor final : public TagEditor {
 public:
  explicit FakeTagEditor(FakeTagReader& reader) : reader_(reader) {}

  void AddFile(const std::string& path, const TagSheet& sheet) {
    files_[path] = sheet;
    Show(path);
  }
  void SetProtected(const std::string& path) { protected_.insert(path); }
  void LiftProtection() { protected_.clear(); }
  void OnChanged(std::function<void(const std::string&)> changed) { changed_ = std::move(changed); }
  [[nodiscard]] const TagSheet& SheetOf(const std::string& path) const { return files_.at(path); }
  [[nodiscard]] bool Has(const std::string& path) const { return files_.contains(path); }
  [[nodiscard]] int Writes() const { return writes_; }

  support::Result<TagSheet> Read(const std::string& path) override {
    if (!Has(path)) return Missing(path);
    return files_[path];
  }
  support::Result<TagUndo> Write(const std::string& path, const TagEdit& edit) override {
    if (!Has(path)) return Missing(path);
    if (protected_.contains(path))
      return support::Error{support::ErrorCode::Unreadable, "\"" + path + "\" is protected."};
    TagUndo undo;
    TagSheet& sheet = files_[path];
    for (std::size_t i = 0; i < kTagFields; ++i) {
      if (!edit.fields[i]) continue;
      undo.fields.fields[i] = sheet.fields[i];
      sheet.fields[i] = *edit.fields[i];
    }
    if (edit.cover) {
      undo.fields.cover = sheet.cover;
      sheet.cover = *edit.cover;
    }
    ++writes_;
    Show(path);
    return undo;
  }
  support::Result<void> Undo(const std::string& path, const TagUndo& undo) override {
    const auto written = Write(path, undo.fields);
    if (!written) return written.Failure();
    return {};
  }
  support::Result<void> Rename(const std::string& from, const std::string& to) override {
    if (!Has(from)) return Missing(from);
    if (Has(to)) return support::Error{support::ErrorCode::Unavailable, "\"" + to + "\" is there."};
    AddFile(to, files_[from]);
    files_.erase(from);
    return {};
  }

 private:
  static support::Error Missing(const std::string& path) {
    return {support::ErrorCode::NotFound, "There is no file \"" + path + "\"."};
  }
  void Show(const std::string& path) {
    const TagSheet& sheet = files_[path];
    FileTags tags;
    tags.artist = sheet[TagField::Artist];
    tags.title = sheet[TagField::Title];
    tags.album = sheet[TagField::Album];
    tags.genre = sheet[TagField::Genre];
    tags.year = sheet[TagField::Year];
    tags.bpm = sheet[TagField::Bpm];
    tags.text_block = sheet[TagField::Comment];
    reader_.AddFile(path, tags);
    if (changed_) changed_(path);
  }

  FakeTagReader& reader_;
  std::map<std::string, TagSheet> files_;
  std::set<std::string> protected_;
  std::function<void(const std::string&)> changed_;
  int writes_ = 0;
};

}  // namespace catalogue::testing
