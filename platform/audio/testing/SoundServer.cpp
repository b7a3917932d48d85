// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/audio/testing/SoundServer.h"

#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <system_error>
#include <utility>

#include "platform/audio/PulseConnection.h"

namespace platform::audio::testing {
namespace {

namespace fs = std::filesystem;

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

std::string SinkArguments(const SinkSpec& sink) {
  std::size_t channels = 1;
  for (char c : sink.channel_map) channels += c == ',' ? 1 : 0;
  // Without norewinds the server mixes two seconds ahead, and a new stream waits for them.
  return "norewinds=1 format=s16le rate=44100 channels=" + std::to_string(channels) +
         " channel_map=" + sink.channel_map + " sink_name=" + sink.name +
         " sink_properties='device.description=\"" + sink.description + "\"'";
}

/// Between fork and exec: calls that are safe there and nothing else.
[[noreturn]] void BecomeServer(char* const* arguments, char* const* environment, const char* log) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  sched_param priority{};
  priority.sched_priority = 3;
  // Where it is allowed: a busy machine then does not starve the server's own thread.
  sched_setscheduler(0, SCHED_FIFO, &priority);
  const int file = open(log, O_WRONLY | O_CREAT | O_APPEND, 0600);
  dup2(file, STDOUT_FILENO);
  dup2(file, STDERR_FILENO);
  execvpe(arguments[0], arguments, environment);
  _exit(127);
}

bool Answers(const fs::path& socket_path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, socket_path.c_str(), sizeof address.sun_path - 1);
  const int client = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const bool answers = connect(client, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
  close(client);
  return answers;
}

/// Runs one command on a connection of its own and gives whether the server said yes.
bool Command(const std::string& server,
             const std::function<pa_operation*(pa_context*, PulseConnection&, bool*)>& send) {
  PulseConnection connection(server);
  PulseLock lock(connection.Loop());
  pa_context* context = connection.Ready();
  bool done = false;
  return context != nullptr && connection.Finish(send(context, connection, &done)) && done;
}

void TakeSuccess(pa_context*, int success, void* done) {
  *static_cast<bool*>(done) = success != 0;
}

}  // namespace

SoundServer::SoundServer(std::vector<SinkSpec> sinks) : sinks_(std::move(sinks)) {
  std::string folder = (fs::temp_directory_path() / "djsound-XXXXXX").string();
  if (mkdtemp(folder.data()) == nullptr) return;
  folder_ = folder;
  Start();
}

SoundServer::~SoundServer() {
  Kill();
  std::error_code ignored;
  if (!folder_.empty()) fs::remove_all(folder_, ignored);
}

bool SoundServer::Start() {
  if (Running() || folder_.empty()) return Running();
  std::error_code ignored;
  fs::remove(Socket(), ignored);
  std::vector<std::string> arguments = Arguments();
  std::vector<std::string> environment = {"PATH=/usr/bin:/bin", "LC_ALL=C.UTF-8", "HOME=" + folder_.string(),
                                          "XDG_RUNTIME_DIR=" + folder_.string(),
                                          "PULSE_RUNTIME_PATH=" + folder_.string()};
  const std::vector<char*> argument_list = Pointers(arguments);
  const std::vector<char*> environment_list = Pointers(environment);
  const std::string log = folder_ / "log";
  process_ = fork();
  if (process_ == 0) BecomeServer(argument_list.data(), environment_list.data(), log.c_str());
  if (process_ > 0 && !AwaitAnswer()) Kill();
  return Running();
}

std::vector<std::string> SoundServer::Arguments() const {
  std::vector<std::string> arguments = {"pulseaudio",          "-n",
                                        "--daemonize=no",      "--use-pid-file=no",
                                        "--exit-idle-time=-1", "--realtime=yes",
                                        "--high-priority=yes", "--log-level=notice"};
  for (const SinkSpec& sink : sinks_) arguments.push_back("-Lmodule-null-sink " + SinkArguments(sink));
  // Last, so that a server that answers has all its sinks.
  arguments.push_back("-Lmodule-native-protocol-unix auth-anonymous=1 socket=" + Socket().string());
  return arguments;
}

bool SoundServer::AwaitAnswer() {
  constexpr int kTries = 1000;
  for (int i = 0; i < kTries; ++i) {
    if (Answers(Socket())) return sinks_.empty() || MakeDefault(sinks_.front().name);
    if (waitpid(process_, nullptr, WNOHANG) == process_) {
      process_ = -1;
      return false;
    }
    poll(nullptr, 0, 10);
  }
  return false;
}

void SoundServer::End(bool by_force) {
  if (!Running()) return;
  Continue();
  kill(process_, by_force ? SIGKILL : SIGTERM);
  waitpid(process_, nullptr, 0);
  process_ = -1;
}

void SoundServer::Freeze() {
  if (Running()) kill(process_, SIGSTOP);
}

void SoundServer::Continue() {
  if (Running()) kill(process_, SIGCONT);
}

bool SoundServer::AddSink(const SinkSpec& sink) {
  return Command(Address(), [&](pa_context* context, PulseConnection&, bool* done) {
    const auto take = [](pa_context*, std::uint32_t index, void* to) {
      *static_cast<bool*>(to) = index != PA_INVALID_INDEX;
    };
    return pa_context_load_module(context, "module-null-sink", SinkArguments(sink).c_str(), take, done);
  });
}

bool SoundServer::RemoveSink(const std::string& name) {
  return Command(Address(), [&](pa_context* context, PulseConnection& connection, bool* done) {
    std::uint32_t module = PA_INVALID_INDEX;
    const auto take = [](pa_context*, const pa_sink_info* sink, int end, void* to) {
      if (end == 0) *static_cast<std::uint32_t*>(to) = sink->owner_module;
    };
    connection.Finish(pa_context_get_sink_info_by_name(context, name.c_str(), take, &module));
    return pa_context_unload_module(context, module, &TakeSuccess, done);
  });
}

bool SoundServer::AddMicrophone(const std::string& name, const std::string& sink) {
  const std::string arguments = "master=" + sink + ".monitor source_name=" + name +
                                " source_properties='device.description=\"" + name + "\"'";
  return Command(Address(), [&](pa_context* context, PulseConnection&, bool* done) {
    const auto take = [](pa_context*, std::uint32_t index, void* to) {
      *static_cast<bool*>(to) = index != PA_INVALID_INDEX;
    };
    return pa_context_load_module(context, "module-remap-source", arguments.c_str(), take, done);
  });
}

bool SoundServer::RemoveMicrophone(const std::string& name) {
  return Command(Address(), [&](pa_context* context, PulseConnection& connection, bool* done) {
    std::uint32_t module = PA_INVALID_INDEX;
    const auto take = [](pa_context*, const pa_source_info* source, int end, void* to) {
      if (end == 0) *static_cast<std::uint32_t*>(to) = source->owner_module;
    };
    connection.Finish(pa_context_get_source_info_by_name(context, name.c_str(), take, &module));
    return pa_context_unload_module(context, module, &TakeSuccess, done);
  });
}

bool SoundServer::MuteMicrophone(const std::string& name, bool muted) {
  return Command(Address(), [&](pa_context* context, PulseConnection&, bool* done) {
    return pa_context_set_source_mute_by_name(context, name.c_str(), muted ? 1 : 0, &TakeSuccess, done);
  });
}

bool SoundServer::MakeDefault(const std::string& name) {
  return Command(Address(), [&](pa_context* context, PulseConnection&, bool* done) {
    return pa_context_set_default_sink(context, name.c_str(), &TakeSuccess, done);
  });
}

bool SoundServer::MoveStream(const std::string& from, const std::string& to) {
  return Command(Address(), [&](pa_context* context, PulseConnection& connection, bool* done) {
    std::uint32_t sink = PA_INVALID_INDEX;
    const auto take_sink = [](pa_context*, const pa_sink_info* info, int end, void* index) {
      if (end == 0) *static_cast<std::uint32_t*>(index) = info->index;
    };
    connection.Finish(pa_context_get_sink_info_by_name(context, from.c_str(), take_sink, &sink));
    std::pair<std::uint32_t, std::uint32_t> stream{sink, PA_INVALID_INDEX};
    const auto take_stream = [](pa_context*, const pa_sink_input_info* info, int end, void* found) {
      auto& [on, index] = *static_cast<std::pair<std::uint32_t, std::uint32_t>*>(found);
      if (end == 0 && info->sink == on) index = info->index;
    };
    connection.Finish(pa_context_get_sink_input_info_list(context, take_stream, &stream));
    return pa_context_move_sink_input_by_name(context, stream.second, to.c_str(), &TakeSuccess, done);
  });
}

bool SoundServer::Suspend(const std::string& name, bool suspend) {
  return Command(Address(), [&](pa_context* context, PulseConnection&, bool* done) {
    return pa_context_suspend_sink_by_name(context, name.c_str(), suspend ? 1 : 0, &TakeSuccess, done);
  });
}

bool SoundServer::SetVolume(const std::string& name, int left, int right) {
  return Command(Address(), [&](pa_context* context, PulseConnection&, bool* done) {
    pa_cvolume volume;
    pa_cvolume_set(&volume, 2, static_cast<pa_volume_t>(left) * PA_VOLUME_NORM / 100);
    volume.values[1] = static_cast<pa_volume_t>(right) * PA_VOLUME_NORM / 100;
    return pa_context_set_sink_volume_by_name(context, name.c_str(), &volume, &TakeSuccess, done);
  });
}

std::vector<int> SoundServer::Volumes(const std::string& name) {
  std::vector<int> volumes;
  PulseConnection connection(Address());
  PulseLock lock(connection.Loop());
  pa_context* context = connection.Ready();
  if (context == nullptr) return volumes;
  const auto take = [](pa_context*, const pa_sink_info* sink, int end, void* to) {
    if (end != 0 || sink == nullptr) return;
    for (int i = 0; i < sink->volume.channels; ++i) {
      const double share = static_cast<double>(sink->volume.values[i]) / PA_VOLUME_NORM;
      static_cast<std::vector<int>*>(to)->push_back(static_cast<int>(share * 100 + 0.5));
    }
  };
  connection.Finish(pa_context_get_sink_info_by_name(context, name.c_str(), take, &volumes));
  return volumes;
}

}  // namespace platform::audio::testing
