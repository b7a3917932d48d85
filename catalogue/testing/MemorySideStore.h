// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <map>
#include <string>
#include <utility>

#include "catalogue/ports/SideStore.h"
#include "support/Mutex.h"

namespace catalogue::testing {

/// A side store that forgets with the test. Every file exists, with the stamp that was set or {1, 1}.
class MemorySideStore final : public SideStore {
 public:
  void SetStamp(const std::string& path, const FileStamp& stamp) {
    support::MutexLock lock(mutex_);
    stamps_[path] = stamp;
  }
  /// Files with the same text hold the same sound. Without one, each state of each file has a sound of its
  /// own.
  void SetContent(const std::string& path, const std::string& content) {
    support::MutexLock lock(mutex_);
    contents_[path] = content;
  }
  /// Writing fails from now on, or works again.
  void SetFull(bool full) { full_ = full; }
  [[nodiscard]] int Writes() const { return writes_; }

  std::optional<FileStamp> StampOf(const std::string& path) override {
    support::MutexLock lock(mutex_);
    const auto found = stamps_.find(path);
    return found == stamps_.end() ? FileStamp{1, 1} : found->second;
  }
  std::optional<std::string> Read(const std::string& path, const FileStamp& stamp, SidePart part) override {
    support::MutexLock lock(mutex_);
    const auto found = entries_.find(path);
    if (found == entries_.end() || found->second.stamp != stamp) return std::nullopt;
    const auto bytes = found->second.parts.find(part);
    if (bytes == found->second.parts.end()) return std::nullopt;
    return bytes->second;
  }
  std::optional<std::string> ContentOf(const std::string& path) override {
    const auto stamp = StampOf(path);
    support::MutexLock lock(mutex_);
    const auto found = contents_.find(path);
    if (found != contents_.end()) return found->second;
    return path + "|" + std::to_string(stamp->size) + "|" + std::to_string(stamp->modified);
  }
  bool KeepsSounds() override {
    support::MutexLock lock(mutex_);
    return !entries_.empty() && entries_.begin()->first.starts_with(PathOfContent(""));
  }
  std::optional<std::string> KeptContentOf(const std::string& path) override {
    auto content = ContentOf(path);
    support::MutexLock lock(mutex_);
    if (!entries_.contains(PathOfContent(*content))) content.reset();
    return content;
  }
  support::Result<void> Write(const std::string& path, const FileStamp& stamp, SidePart part,
                              std::string_view bytes) override {
    if (full_) return support::Error{support::ErrorCode::Unreadable, "There is no room to keep anything."};
    support::MutexLock lock(mutex_);
    Entry& entry = entries_[path];
    if (entry.stamp != stamp) entry = {stamp, {}};
    entry.parts[part] = std::string(bytes);
    ++writes_;
    return {};
  }

 private:
  struct Entry {
    FileStamp stamp;
    std::map<SidePart, std::string> parts;
  };
  support::Mutex mutex_;
  std::map<std::string, FileStamp> stamps_ DJ_GUARDED_BY(mutex_);
  std::map<std::string, std::string> contents_ DJ_GUARDED_BY(mutex_);
  std::map<std::string, Entry> entries_ DJ_GUARDED_BY(mutex_);
  std::atomic<bool> full_{false};
  std::atomic<int> writes_{0};
};

}  // namespace catalogue::testing
