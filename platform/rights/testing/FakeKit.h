// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sys/types.h>

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "support/Mutex.h"

struct DBusConnection;
struct DBusMessage;

namespace platform::rights::testing {

/// A bus of the test's own, which ends with this object.
class PrivateBus {
 public:
  PrivateBus();
  ~PrivateBus();
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;

  /// Empty when the daemon did not start.
  [[nodiscard]] const std::string& Address() const { return address_; }
  /// It answers nothing any more, but does not go away either, until it ends.
  void Freeze() const;

 private:
  std::filesystem::path folder_;
  std::string address_;
  pid_t process_ = -1;
};

/// A RealtimeKit on a bus that writes down what it is asked for, and what the asker had done before. Where
/// the test may, it gives what it grants.
class FakeKit {
 public:
  struct Asked {
    bool real_time = false;  ///< else high priority
    int thread = 0;
    int level = 0;
    std::int64_t soft_us = 0;  ///< RLIMIT_RTTIME of this process at that moment; -1 is none
    std::int64_t hard_us = 0;
  };
  struct Rules {
    bool grants = true;
    int priority = 20;
    std::int64_t time_us = 200'000;
    int nice = -15;
  };

  FakeKit(const std::string& bus, Rules rules);
  ~FakeKit();
  FakeKit(const FakeKit&) = delete;
  FakeKit& operator=(const FakeKit&) = delete;

  /// Comes true within ten seconds.
  bool Await(const std::function<bool(const std::vector<Asked>&)>& condition);

 private:
  void Serve();
  void Answer(DBusMessage* call);
  void AnswerProperty(DBusMessage* call);
  void AnswerWish(DBusMessage* call, bool real_time);

  const Rules rules_;
  DBusConnection* connection_ = nullptr;
  support::Mutex mutex_;
  std::condition_variable came_;
  std::vector<Asked> asked_ DJ_GUARDED_BY(mutex_);
  std::atomic<bool> ending_{false};
  std::thread thread_;
};

}  // namespace platform::rights::testing
