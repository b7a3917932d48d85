// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "support/Mutex.h"
#include "support/ports/SettingsStore.h"

namespace support::testing {

/// Settings in memory that remember what was asked of them, as "TLVG/Mixer/MixTime".
/// Threads: any.
class RecordingSettings final : public SettingsStore {
 public:
  [[nodiscard]] std::string Get(std::string_view application, std::string_view section, std::string_view key,
                                std::string_view fallback) const override {
    MutexLock lock(mutex_);
    const std::string name = Name(application, section, key);
    gets_.push_back(name);
    const auto value = values_.find(name);
    return value == values_.end() ? std::string(fallback) : value->second;
  }
  void Set(std::string_view application, std::string_view section, std::string_view key,
           std::string_view value) override {
    MutexLock lock(mutex_);
    const std::string name = Name(application, section, key);
    sets_.push_back(name + "=" + std::string(value));
    values_[name] = std::string(value);
  }
  void Flush() override {
    MutexLock lock(mutex_);
    ++flushes_;
  }

  /// Names in the order in which they were read.
  [[nodiscard]] std::vector<std::string> Gets() const {
    MutexLock lock(mutex_);
    return gets_;
  }
  /// "TLVG/Mixer/MixTime=8" in the order in which they were set.
  [[nodiscard]] std::vector<std::string> Sets() const {
    MutexLock lock(mutex_);
    return sets_;
  }
  [[nodiscard]] int Flushes() const {
    MutexLock lock(mutex_);
    return flushes_;
  }

 private:
  static std::string Name(std::string_view application, std::string_view section, std::string_view key) {
    return std::string(application) + "/" + std::string(section) + "/" + std::string(key);
  }

  mutable Mutex mutex_;
  std::map<std::string, std::string> values_ DJ_GUARDED_BY(mutex_);
  mutable std::vector<std::string> gets_ DJ_GUARDED_BY(mutex_);
  std::vector<std::string> sets_ DJ_GUARDED_BY(mutex_);
  int flushes_ DJ_GUARDED_BY(mutex_) = 0;
};

}  // namespace support::testing
