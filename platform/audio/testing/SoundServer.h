// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace platform::audio::testing {

/// A sound output that leads nowhere but to its monitor.
struct SinkSpec {
  std::string name;
  std::string description;
  std::string channel_map = "front-left,front-right";  ///< in the server's words, one a channel
};

/// Eight channels in an order of their own, as a surround card may have them.
inline constexpr const char* kEightChannels =
    "front-left,front-right,rear-left,rear-right,front-center,lfe,side-left,side-right";

/// A real sound server of the test's own, in a runtime folder of its own.
///
/// It ends with this object, and with the test program whatever happens to that. The sinks carry 16-bit
/// samples at 44100 Hz; the first one is the default. Threads: one, the same that ends the program.
class SoundServer {
 public:
  /// Starts it; Running() tells whether it did.
  explicit SoundServer(std::vector<SinkSpec> sinks);
  ~SoundServer();
  SoundServer(const SoundServer&) = delete;
  SoundServer& operator=(const SoundServer&) = delete;

  /// What PULSE_SERVER holds for a client that shall use it.
  [[nodiscard]] std::string Address() const { return "unix:" + Socket().string(); }
  [[nodiscard]] bool Running() const { return process_ > 0; }
  /// Starts it again after Kill or Stop, with the sinks of the constructor; returns when it answers.
  bool Start();
  /// As a crash would end it.
  void Kill() { End(true); }
  /// As the user's session would end it.
  void Stop() { End(false); }
  /// It answers nothing any more, but does not go away either, until Continue.
  void Freeze();
  void Continue();

  bool AddSink(const SinkSpec& sink);
  bool RemoveSink(const std::string& name);
  /// A microphone that hears what plays on a sink.
  bool AddMicrophone(const std::string& name, const std::string& sink);
  /// As if its cable was pulled.
  bool RemoveMicrophone(const std::string& name);
  bool MuteMicrophone(const std::string& name, bool muted);
  bool MakeDefault(const std::string& name);
  bool SuspendSink(const std::string& name) { return Suspend(name, true); }
  bool ResumeSink(const std::string& name) { return Suspend(name, false); }
  /// The first stream that plays on a sink, as a user would with the desktop's mixer; false when it may not.
  bool MoveStream(const std::string& from, const std::string& to);
  /// As another program would: left and right in percent of the full volume.
  bool SetVolume(const std::string& name, int left, int right);
  /// Of each channel, in percent; empty when the sink is not there.
  [[nodiscard]] std::vector<int> Volumes(const std::string& name);

 private:
  [[nodiscard]] std::filesystem::path Socket() const { return folder_ / "native"; }
  [[nodiscard]] std::vector<std::string> Arguments() const;
  bool AwaitAnswer();
  bool Suspend(const std::string& name, bool suspend);
  void End(bool by_force);

  std::vector<SinkSpec> sinks_;
  std::filesystem::path folder_;
  pid_t process_ = -1;
};

}  // namespace platform::audio::testing
