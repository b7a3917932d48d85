// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/settings/SettingsFile.h"

#include <algorithm>
#include <utility>

#include "platform/settings/SettingsDisk.h"
#include "support/Sentences.h"

namespace platform::settings {
namespace {

namespace fs = std::filesystem;
using support::ErrorCode;
using support::Failed;
using support::MutexLock;
using support::Result;
using support::Sentence;

constexpr std::chrono::seconds kRetryAfter{5};
constexpr std::chrono::seconds kLockPatience{5};
constexpr int kMostKeptAside = 1000;

fs::path WithTail(const fs::path& path, const std::string& tail) {
  return fs::path(path).concat(tail);
}

support::TimePoint Now() {
  return support::SteadyClock().Now();
}

}  // namespace

SettingsFile::SettingsFile(fs::path path, support::FileSaver& saver, std::chrono::milliseconds window)
    : path_(std::move(path)), saver_(saver), window_(window) {
  const FileContent file = ReadWhole(path_);
  {
    MutexLock lock(mutex_);
    std::optional<SettingsText> text = SettingsText::Parse(file.content);
    if (text) text_ = *std::move(text);
    if (!text || file.state == FileContent::State::Unreadable) {
      Tell(Failed(ErrorCode::Malformed, Sentence::SettingsUnreadable, {path_.string()}));
    }
  }
  writer_ = std::thread([this] { Work(); });
}

SettingsFile::~SettingsFile() {
  Flush();
  {
    MutexLock lock(mutex_);
    stopping_ = true;
  }
  wake_.notify_all();
  writer_.join();
}

std::string SettingsFile::Get(std::string_view application, std::string_view section, std::string_view key,
                              std::string_view fallback) const {
  MutexLock lock(mutex_);
  return text_.Get(SettingName(application, section, key)).value_or(std::string(fallback));
}

void SettingsFile::Set(std::string_view application, std::string_view section, std::string_view key,
                       std::string_view value) {
  SettingName name(application, section, key);
  {
    MutexLock lock(mutex_);
    text_.Set(name, value);
    if (unwritten_.empty()) due_ = Now() + window_;
    unwritten_.insert_or_assign(std::move(name), std::string(value));
  }
  wake_.notify_one();
}

void SettingsFile::Flush() {
  MutexLock lock(mutex_);
  const std::uint64_t own = ++flushes_wanted_;
  wake_.notify_one();
  while (flushes_done_ < own) lock.Wait(written_);
}

std::vector<support::Error> SettingsFile::Notices(std::size_t known) const {
  MutexLock lock(mutex_);
  return {notices_.begin() + static_cast<std::ptrdiff_t>(std::min(known, notices_.size())), notices_.end()};
}

void SettingsFile::Work() {
  while (true) {
    Batch batch = AwaitBatch();
    if (batch.last) return;
    Write(std::move(batch));
  }
}

SettingsFile::Batch SettingsFile::AwaitBatch() {
  MutexLock lock(mutex_);
  while (!stopping_ && flushes_done_ == flushes_wanted_ && (unwritten_.empty() || Now() < due_)) {
    if (unwritten_.empty()) {
      lock.Wait(wake_);
    } else {
      lock.WaitUntil(wake_, due_);
    }
  }
  return {std::exchange(unwritten_, {}), text_, flushes_wanted_, stopping_};
}

void SettingsFile::Write(Batch batch) {
  Result<SettingsText> merged = batch.known;
  if (!batch.changes.empty()) merged = Merge(batch);
  Done(std::move(batch), std::move(merged));
}

Result<SettingsText> SettingsFile::Merge(const Batch& batch) {
  MakeFolderOf(path_);
  const ProgramLock other_programs_wait(WithTail(path_, ".lock"), kLockPatience);
  const FileContent file = ReadWhole(path_);
  std::optional<SettingsText> text;
  if (file.state == FileContent::State::Read) text = SettingsText::Parse(file.content);
  if (!text && file.state != FileContent::State::Missing) {
    if (const auto kept = KeepAside(file.content); !kept) return kept.Failure();
  }
  // A file that went away or was spoilt while we ran is made again from what we know.
  SettingsText merged = text && !file.content.empty() ? *std::move(text) : batch.known;
  for (const auto& [name, value] : batch.changes) merged.Set(name, value);
  const std::string content = merged.Text();
  if (content == file.content) return merged;
  if (const auto saved = saver_.Save(path_, content); !saved) return saved.Failure();
  return merged;
}

Result<void> SettingsFile::KeepAside(std::string_view content) {
  std::error_code error;
  for (int n = 1; n <= kMostKeptAside; ++n) {
    const fs::path aside = WithTail(path_, ".unreadable-" + std::to_string(n));
    if (fs::equivalent(path_, aside, error)) return {};  // kept before a save that failed
    if (fs::exists(fs::symlink_status(aside, error))) continue;
    // A second name needs no reading; where the disk has none, what was read is copied.
    const bool kept = GiveSecondName(path_, aside) || (!content.empty() && saver_.Save(aside, content).Ok());
    if (!kept) break;
    MutexLock lock(mutex_);
    Tell(Failed(ErrorCode::Malformed, Sentence::SettingsKeptAside, {aside.string()}));
    return {};
  }
  return Failed(ErrorCode::Unreadable, Sentence::SettingsNotKept, {path_.string()});
}

void SettingsFile::Done(Batch batch, Result<SettingsText> merged) {
  {
    MutexLock lock(mutex_);
    if (merged) {
      text_ = std::move(merged).Value();
    } else {
      Tell(merged.Failure());
      unwritten_.merge(batch.changes);
      due_ = Now() + kRetryAfter;
    }
    for (const auto& [name, value] : unwritten_) text_.Set(name, value);
    flushes_done_ = std::max(flushes_done_, batch.flushes);
  }
  written_.notify_all();
}

void SettingsFile::Tell(support::Error notice) {
  if (notices_.empty() || notices_.back().text != notice.text) notices_.push_back(std::move(notice));
}

}  // namespace platform::settings
