// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "benchmarks/MpdServer.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstring>
#include <fstream>
#include <string>
#include <string_view>
#include <thread>

namespace bench {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr std::chrono::minutes kPatience{5};

/// Until one of the ends is there; empty when the server is gone.
std::string Answer(int server) {
  std::string text;
  char piece[4096];
  while (!text.ends_with("OK\n") && !text.starts_with("OK MPD") && text.find("ACK ") == std::string::npos) {
    const ssize_t size = read(server, piece, sizeof piece);
    if (size <= 0) return {};
    text.append(piece, static_cast<std::size_t>(size));
  }
  return text;
}

std::string Ask(int server, std::string_view command) {
  if (write(server, command.data(), command.size()) != static_cast<ssize_t>(command.size())) return {};
  return Answer(server);
}

int Connect(const fs::path& socket_path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, socket_path.c_str(), sizeof address.sun_path - 1);
  const auto deadline = Clock::now() + std::chrono::seconds(10);
  while (Clock::now() < deadline) {
    const int server = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (connect(server, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0) return server;
    close(server);
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return -1;
}

pid_t Begin(const fs::path& settings) {
  const pid_t server = fork();
  if (server != 0) return server;
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  const int nowhere = open("/dev/null", O_WRONLY);
  dup2(nowhere, STDOUT_FILENO);
  dup2(nowhere, STDERR_FILENO);
  execlp("mpd", "mpd", "--no-daemon", settings.c_str(), nullptr);
  _exit(127);
}

/// Of one update of an empty database, from the command to the end that the server tells.
std::optional<double> TimeUpdate(int server) {
  if (Answer(server).empty()) return std::nullopt;
  const auto begin = Clock::now();
  if (Ask(server, "update\n").empty()) return std::nullopt;
  while (Clock::now() - begin < kPatience) {
    const std::string status = Ask(server, "status\n");
    if (status.empty()) return std::nullopt;
    if (status.find("updating_db:") == std::string::npos) {
      return std::chrono::duration<double>(Clock::now() - begin).count();
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return std::nullopt;
}

}  // namespace

std::optional<double> SecondsOfMpdUpdate(const fs::path& music, const fs::path& scratch) {
  const fs::path settings = scratch / "mpd.conf", socket_path = scratch / "mpd.socket";
  // A database that is there, and empty, keeps the server from beginning before it is told to.
  std::ofstream(scratch / "mpd.db") << "info_begin\nformat: 2\nmpd_version: 0.23\nfs_charset: UTF-8\n"
                                       "tag: Artist\ntag: Album\ntag: Title\ntag: Genre\ntag: Date\n"
                                       "info_end\n";
  std::ofstream(settings) << "music_directory \"" << music.string() << "\"\ndb_file \""
                          << (scratch / "mpd.db").string() << "\"\nbind_to_address \"" << socket_path.string()
                          << "\"\nmetadata_to_use \"artist,album,title,genre,date\"\n"
                             "audio_output {\n type \"null\"\n name \"none\"\n}\n";
  const pid_t process = Begin(settings);
  if (process < 0) return std::nullopt;
  const int server = Connect(socket_path);
  const auto seconds = server < 0 ? std::nullopt : TimeUpdate(server);
  if (server >= 0) close(server);
  kill(process, SIGTERM);
  waitpid(process, nullptr, 0);
  return seconds;
}

}  // namespace bench
