// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/TagDraft.h"

#include <algorithm>
#include <utility>

#include "support/Text.h"

namespace catalogue {
namespace {

bool IsMixingKey(std::string_view line) {
  for (const std::string_view key : {"PEA", "SMP", "EMP", "BPM"}) {
    if (support::EqualsIgnoringCase(line, key)) return true;
  }
  return false;
}

std::size_t IdOf(const TagPicture& cover) {
  if (cover.bytes.empty()) return 0;
  return std::max<std::size_t>(1, std::hash<std::string>{}(cover.bytes));
}

}  // namespace

std::string VisibleComment(std::string_view block) {
  const auto lines = support::SplitLines(block);
  std::string comment;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (IsMixingKey(lines[i])) {
      ++i;  // its value
      continue;
    }
    if (!comment.empty()) comment += '\n';
    comment += lines[i];
  }
  return comment;
}

std::string WithVisibleComment(std::string_view block, std::string_view comment) {
  const auto lines = support::SplitLines(block);
  std::string mixing;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!IsMixingKey(lines[i])) continue;
    mixing += std::string(mixing.empty() ? "" : "\r\n") + std::string(lines[i]);
    if (++i < lines.size()) mixing += "\r\n" + std::string(lines[i]);
  }
  if (mixing.empty()) return std::string(comment);
  std::string made;
  for (const std::string_view line : support::SplitLines(comment)) made += std::string(line) + "\r\n";
  return made + mixing;
}

void TagDraft::Clear() {
  files_.clear();
  wanted_.reset();
  first_cover_ = {};
}

void TagDraft::Add(std::string path, TagSheet sheet) {
  TagPicture cover = std::exchange(sheet.cover, {});
  const std::size_t id = IdOf(cover);
  if (files_.empty()) first_cover_ = std::move(cover);
  files_.push_back({std::move(path), std::move(sheet), {}, id});
}

const std::string& TagDraft::Text(std::size_t file, TagField field) const {
  const auto& edited = files_[file].edit[field];
  return edited ? *edited : files_[file].sheet[field];
}

TagSheet TagDraft::Planned(std::size_t file) const {
  TagSheet sheet;
  for (std::size_t i = 0; i < kTagFields; ++i) sheet.fields[i] = Text(file, static_cast<TagField>(i));
  return sheet;
}

TagDraft::Merged TagDraft::All(TagField field) const {
  Merged merged;
  if (files_.empty()) return merged;
  merged.text = Text(0, field);
  for (std::size_t i = 0; i < files_.size(); ++i) {
    merged.differs = merged.differs || Text(i, field) != merged.text;
    merged.touched = merged.touched || files_[i].edit[field].has_value();
  }
  return merged;
}

bool TagDraft::CoversDiffer() const {
  return wanted_ == nullptr && std::any_of(files_.begin(), files_.end(), [this](const File& file) {
           return file.cover != files_.front().cover;
         });
}

bool TagDraft::IsTouched(std::size_t file) const {
  return !files_[file].edit.IsEmpty() || (wanted_ != nullptr && files_[file].cover != wanted_id_);
}

std::size_t TagDraft::Touched() const {
  std::size_t touched = 0;
  for (std::size_t i = 0; i < files_.size(); ++i) touched += IsTouched(i) ? 1 : 0;
  return touched;
}

void TagDraft::Set(std::size_t file, TagField field, std::string text) {
  File& changed = files_[file];
  if (text == changed.sheet[field]) {
    changed.edit[field].reset();
  } else {
    changed.edit[field] = std::move(text);
  }
}

void TagDraft::SetAll(TagField field, const std::string& text) {
  for (std::size_t i = 0; i < files_.size(); ++i) Set(i, field, text);
}

void TagDraft::SetCover(TagPicture cover) {
  wanted_id_ = IdOf(cover);
  wanted_ = std::make_shared<const TagPicture>(std::move(cover));
  const bool all_have_it = std::all_of(files_.begin(), files_.end(),
                                       [this](const File& file) { return file.cover == wanted_id_; });
  if (all_have_it) wanted_.reset();
}

void TagDraft::Revert(TagField field) {
  for (File& file : files_) file.edit[field].reset();
}

void TagDraft::RevertAll() {
  for (File& file : files_) file.edit = {};
  wanted_.reset();
}

void TagDraft::Change(TagField field, const std::function<std::string(std::string_view)>& change) {
  for (std::size_t i = 0; i < files_.size(); ++i) Set(i, field, change(Text(i, field)));
}

void TagDraft::Renamed(std::string_view from, const std::string& to) {
  for (File& file : files_) {
    if (file.path == from) file.path = to;
  }
}

}  // namespace catalogue
