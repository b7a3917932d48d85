// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/process/basCommandOutput.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <string_view>

#include "support/Sentences.h"
#include "support/Text.h"

extern char** environ;

namespace platform::process {
namespace {

using support::ErrorCode;
using support::Failed;
using support::Sentence;
using SteadyTime = std::chrono::steady_clock;

/// A file descriptor that is closed with its owner.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() { Close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  [[nodiscard]] int Number() const { return number_; }
  void Close() {
    if (number_ >= 0) close(number_);
    number_ = -1;
  }

 private:
  int number_;
};

/// A running program; one that still runs when its owner goes is killed, and it is always reaped.
class Child {
 public:
  explicit Child(pid_t id) : id_(id) {}
  ~Child() {
    if (id_ <= 0) return;
    kill(-id_, SIGKILL);
    kill(id_, SIGKILL);
    while (waitpid(id_, nullptr, 0) < 0 && errno == EINTR) {
    }
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  /// True when it has ended by the deadline.
  bool WaitUntil(SteadyTime::time_point deadline) {
    constexpr int kLookAgainMs = 5;
    for (;;) {
      const pid_t ended = waitpid(id_, nullptr, WNOHANG);
      if (ended == id_ || (ended < 0 && errno == ECHILD)) {
        id_ = 0;
        return true;
      }
      if (SteadyTime::now() >= deadline) return false;
      poll(nullptr, 0, kLookAgainMs);
    }
  }

 private:
  pid_t id_;
};

struct SpawnSettings {
  posix_spawn_file_actions_t files{};
  posix_spawnattr_t attributes{};

  explicit SpawnSettings(int output) {
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&files, output, STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawnattr_init(&attributes);
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setpgroup(&attributes, 0);
    posix_spawnattr_setflags(&attributes, static_cast<short>(POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK));
  }
  ~SpawnSettings() {
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
  }
  SpawnSettings(const SpawnSettings&) = delete;
  SpawnSettings& operator=(const SpawnSettings&) = delete;
};

support::Result<pid_t> Spawn(const decks::Command& command, int output) {
  std::string program = command.program;
  std::vector<std::string> arguments = command.arguments;
  std::vector<char*> words{program.data()};
  for (std::string& argument : arguments) words.push_back(argument.data());
  words.push_back(nullptr);
  const SpawnSettings settings(output);
  pid_t id = 0;
  const int failed =
      posix_spawnp(&id, program.c_str(), &settings.files, &settings.attributes, words.data(), environ);
  if (failed == 0) return id;
  const ErrorCode code = failed == ENOENT ? ErrorCode::NotFound : ErrorCode::Unavailable;
  return Failed(code, Sentence::ProgramNotStarted, {program});
}

/// Nothing when the time is up or there is too much of it.
std::optional<std::string> ReadAll(int from, SteadyTime::time_point deadline) {
  std::string text;
  std::array<char, 4096> piece;
  for (;;) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - SteadyTime::now()).count();
    if (left <= 0) return std::nullopt;
    pollfd waiting{from, POLLIN, 0};
    const int ready = poll(&waiting, 1, static_cast<int>(std::min<std::int64_t>(left, 60'000)));
    if (ready == 0 || (ready < 0 && errno == EINTR)) continue;
    const ssize_t got = ready < 0 ? -1 : read(from, piece.data(), piece.size());
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return text;
    text.append(piece.data(), static_cast<std::size_t>(got));
    if (text.size() > basCommandOutput::kMostBytes) return std::nullopt;
  }
}

std::string WithWindowsLineEnds(std::string_view text) {
  std::string lines;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\r' && text[i] != '\n') {
      lines += text[i];
      continue;
    }
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
    lines += "\r\n";
  }
  return lines;
}

bool HoldsNul(const decks::Command& command) {
  const auto holds = [](const std::string& word) { return word.find('\0') != std::string::npos; };
  return holds(command.program) || std::any_of(command.arguments.begin(), command.arguments.end(), holds);
}

}  // namespace

support::Result<std::string> basCommandOutput::Run(const decks::Command& command) {
  if (command.program.empty() || HoldsNul(command)) {
    return Failed(ErrorCode::Malformed, Sentence::ProgramNoName);
  }
  const auto deadline = SteadyTime::now() + command.time_limit;
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) {
    return Failed(ErrorCode::Unavailable, Sentence::NoRoomForProgram);
  }
  const Descriptor reading(ends[0]);
  Descriptor writing(ends[1]);
  const auto id = Spawn(command, writing.Number());
  if (!id) return id.Failure();
  Child child(id.Value());
  writing.Close();
  const auto text = ReadAll(reading.Number(), deadline);
  if (text && child.WaitUntil(deadline)) return WithWindowsLineEnds(*text);
  return Failed(ErrorCode::Unavailable, Sentence::ProgramEnded, {command.program});
}

}  // namespace platform::process
