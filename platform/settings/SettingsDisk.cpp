// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/settings/SettingsDisk.h"

#include <fcntl.h>
#include <poll.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <string_view>
#include <system_error>

namespace platform::settings {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargest = std::size_t{16} << 20;

bool ReadAll(int file, std::string& content) {
  std::array<char, 65536> part;
  while (content.size() <= kLargest) {
    const ssize_t got = read(file, part.data(), part.size());
    if (got == 0) return true;
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return false;
    content.append(part.data(), static_cast<std::size_t>(got));
  }
  return false;
}

/// Belongs to the opened file, not to the process, so that two stores of one process wait for each other too.
bool OnFirstByte(int file, short type) {
  struct flock first {};
  first.l_type = type;
  first.l_whence = SEEK_SET;
  first.l_len = 1;
  return fcntl(file, F_OFD_SETLK, &first) == 0;
}

fs::path HomeFolder() {
  const char* home = std::getenv("HOME");
  if (home != nullptr && *home != '\0') return home;
  const passwd* user = getpwuid(getuid());
  return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : ".";
}

}  // namespace

FileContent ReadWhole(const fs::path& path) {
  // Without waiting, should somebody have put a pipe there.
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) {
    const bool missing = errno == ENOENT || errno == ENOTDIR;
    return {missing ? FileContent::State::Missing : FileContent::State::Unreadable, {}};
  }
  FileContent read{FileContent::State::Read, {}};
  struct stat status {};
  const bool regular = fstat(file, &status) == 0 && S_ISREG(status.st_mode);
  if (!regular || !ReadAll(file, read.content)) read = {FileContent::State::Unreadable, {}};
  close(file);
  return read;
}

bool GiveSecondName(const fs::path& file, const fs::path& name) {
  return linkat(AT_FDCWD, file.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

void MakeFolderOf(const fs::path& file) {
  std::error_code error;
  const fs::path folder = file.parent_path();
  if (!folder.empty() && fs::create_directories(folder, error)) {
    fs::permissions(folder, fs::perms::owner_all, error);
  }
}

ProgramLock::ProgramLock(const fs::path& path, std::chrono::milliseconds patience)
    : file_(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
  if (file_ < 0) return;
  const auto until = std::chrono::steady_clock::now() + patience;
  // The first byte is the place of the one who is next; it is left for the lock itself.
  const bool next = Try([this] { return OnFirstByte(file_, F_WRLCK); }, until);
  held_ = Try([this] { return flock(file_, LOCK_EX | LOCK_NB) == 0; }, until);
  if (next) OnFirstByte(file_, F_UNLCK);
}

bool ProgramLock::Try(const std::function<bool()>& lock, std::chrono::steady_clock::time_point until) {
  constexpr int kPause = 1;
  while (!lock()) {
    if (std::chrono::steady_clock::now() >= until) return false;
    poll(nullptr, 0, kPause);
  }
  return true;
}

ProgramLock::~ProgramLock() {
  if (file_ >= 0) close(file_);
}

fs::path UserSettingsPath() {
  const char* configured = std::getenv("XDG_CONFIG_HOME");
  const fs::path folder =
      configured != nullptr && *configured == '/' ? fs::path(configured) : HomeFolder() / ".config";
  return folder / "djtolven" / "settings.ini";
}

}  // namespace platform::settings
