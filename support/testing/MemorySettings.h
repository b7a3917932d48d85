// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "support/Mutex.h"
#include "support/ports/SettingsStore.h"

namespace support::testing {

/// Settings that live as long as the object.
/// Threads: any.
class MemorySettings final : public SettingsStore {
 public:
  std::string Get(std::string_view application, std::string_view section, std::string_view key,
                  std::string_view fallback) const override {
    MutexLock lock(mutex_);
    const std::string name = std::string(section) + "/" + std::string(key);
    reads_.push_back(name);
    if (listener_) listener_(name);
    const auto found = values_.find(Name(application, section, key));
    return found == values_.end() ? std::string(fallback) : found->second;
  }
  void Set(std::string_view application, std::string_view section, std::string_view key,
           std::string_view value) override {
    MutexLock lock(mutex_);
    values_[Name(application, section, key)] = value;
    sets_.push_back(std::string(application) + "/" + std::string(section) + "/" + std::string(key) + "=" +
                    std::string(value));
  }
  void Flush() override {
    MutexLock lock(mutex_);
    ++flushes_;
  }

  std::vector<Error> Notices(std::size_t known) const override {
    MutexLock lock(mutex_);
    return {notices_.begin() + static_cast<std::ptrdiff_t>(std::min(known, notices_.size())), notices_.end()};
  }
  void Tell(Error notice) {
    MutexLock lock(mutex_);
    notices_.push_back(std::move(notice));
  }

  /// "Section/Key" of each read so far, in order.
  [[nodiscard]] std::vector<std::string> Reads() const {
    MutexLock lock(mutex_);
    return reads_;
  }
  /// Told of each read, as it stands in Reads.
  void OnRead(std::function<void(const std::string&)> listener) {
    MutexLock lock(mutex_);
    listener_ = std::move(listener);
  }
  /// "TLVG/Mixer/MixTime=8" of each set so far, in order.
  [[nodiscard]] std::vector<std::string> Sets() const {
    MutexLock lock(mutex_);
    return sets_;
  }
  [[nodiscard]] int Flushes() const {
    MutexLock lock(mutex_);
    return flushes_;
  }
  /// How many keys were ever set.
  [[nodiscard]] std::size_t Size() const {
    MutexLock lock(mutex_);
    return values_.size();
  }

 private:
  using Address = std::tuple<std::string, std::string, std::string>;
  static Address Name(std::string_view application, std::string_view section, std::string_view key) {
    return {std::string(application), std::string(section), std::string(key)};
  }

  mutable Mutex mutex_;
  std::map<Address, std::string> values_ DJ_GUARDED_BY(mutex_);
  std::vector<std::string> sets_ DJ_GUARDED_BY(mutex_);
  mutable std::vector<std::string> reads_ DJ_GUARDED_BY(mutex_);
  std::function<void(const std::string&)> listener_ DJ_GUARDED_BY(mutex_);
  std::vector<Error> notices_ DJ_GUARDED_BY(mutex_);
  int flushes_ DJ_GUARDED_BY(mutex_) = 0;
};

}  // namespace support::testing
