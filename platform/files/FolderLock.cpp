// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/FolderLock.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <ctime>

namespace platform::files {
namespace {

constexpr std::size_t kMostBytes = 512;

class HeldLock final : public FolderLock {
 public:
  explicit HeldLock(int file) : file_(file) {}
  ~HeldLock() override {
    if (file_ >= 0) close(file_);
  }
  HeldLock(const HeldLock&) = delete;
  HeldLock& operator=(const HeldLock&) = delete;

 private:
  int file_;  ///< -1 where the folder takes no lock
};

/// Of the user who runs this program.
std::string UserName() {
  passwd entry{};
  passwd* found = nullptr;
  std::array<char, 4096> texts{};
  const bool known =
      getpwuid_r(geteuid(), &entry, texts.data(), texts.size(), &found) == 0 && found != nullptr;
  return known ? found->pw_name : "";
}

std::string LocalTime() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  std::array<char, 32> text{};
  if (localtime_r(&now, &local) == nullptr) return {};
  return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M", &local)};
}

/// The holder's number, name and time of start, a line each; the lock stands without them.
void SayWho(int file) {
  const std::string text = std::to_string(geteuid()) + "\n" + UserName() + "\n" + LocalTime() + "\n";
  if (ftruncate(file, 0) != 0) return;
  [[maybe_unused]] const ssize_t written = pwrite(file, text.data(), text.size(), 0);
}

std::string NextLine(std::string& text) {
  const std::size_t end = text.find('\n');
  std::string line = text.substr(0, end);
  text.erase(0, end == std::string::npos ? end : end + 1);
  return line;
}

FolderHolder WhoHolds(int file) {
  std::array<char, kMostBytes> bytes{};
  const ssize_t size = pread(file, bytes.data(), bytes.size(), 0);
  std::string text(bytes.data(), size > 0 ? static_cast<std::size_t>(size) : 0);
  FolderHolder holder;
  holder.same_user = NextLine(text) == std::to_string(geteuid());
  holder.user = NextLine(text);
  holder.since = NextLine(text);
  return holder;
}

}  // namespace

FolderLock::Claim FolderLock::Take(const std::filesystem::path& file) {
  // Whoever may only read the file of another user can still ask for its lock.
  int opened = open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
  const bool ours = opened >= 0;
  if (!ours) opened = open(file.c_str(), O_RDONLY | O_CLOEXEC);
  if (opened >= 0 && flock(opened, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
    FolderHolder holder = WhoHolds(opened);
    close(opened);
    return holder;
  }
  if (ours) SayWho(opened);
  return std::make_unique<HeldLock>(opened);
}

}  // namespace platform::files
