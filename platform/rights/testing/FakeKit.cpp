// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/rights/testing/FakeKit.h"

#include <dbus/dbus.h>
#include <sched.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <string_view>
#include <system_error>

namespace platform::rights::testing {
namespace {

namespace fs = std::filesystem;

constexpr const char* kName = "org.freedesktop.RealtimeKit1";

std::int64_t Microseconds(rlim_t limit) {
  return limit == RLIM_INFINITY ? -1 : static_cast<std::int64_t>(limit);
}

}  // namespace

PrivateBus::PrivateBus() {
  std::string folder = (fs::temp_directory_path() / "djbus-XXXXXX").string();
  if (mkdtemp(folder.data()) == nullptr) return;
  folder_ = folder;
  const std::string config = folder_ / "bus.conf";
  std::ofstream(config) << "<busconfig><listen>unix:path=" << (folder_ / "bus").string()
                        << "</listen><auth>EXTERNAL</auth><policy context=\"default\"><allow user=\"*\"/>"
                           "<allow own=\"*\"/><allow send_destination=\"*\"/><allow receive_sender=\"*\"/>"
                           "</policy></busconfig>";
  std::array<int, 2> told{};
  if (pipe(told.data()) != 0) return;
  const std::string file = "--config-file=" + config, print = "--print-address=" + std::to_string(told[1]);
  process_ = fork();
  if (process_ == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    execlp("dbus-daemon", "dbus-daemon", "--nofork", file.c_str(), print.c_str(), nullptr);
    _exit(127);
  }
  close(told[1]);
  std::array<char, 256> line{};
  const ssize_t length = read(told[0], line.data(), line.size());
  close(told[0]);
  if (length > 0) address_ = "unix:path=" + (folder_ / "bus").string();
}

PrivateBus::~PrivateBus() {
  if (process_ > 0) {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
  std::error_code ignored;
  if (!folder_.empty()) fs::remove_all(folder_, ignored);
}

void PrivateBus::Freeze() const {
  if (process_ > 0) kill(process_, SIGSTOP);
}

FakeKit::FakeKit(const std::string& bus, Rules rules) : rules_(rules) {
  dbus_threads_init_default();
  connection_ = dbus_connection_open_private(bus.c_str(), nullptr);
  if (connection_ == nullptr) return;
  dbus_connection_set_exit_on_disconnect(connection_, FALSE);
  dbus_bus_register(connection_, nullptr);
  dbus_bus_request_name(connection_, kName, 0, nullptr);
  thread_ = std::thread([this] { Serve(); });
}

FakeKit::~FakeKit() {
  ending_ = true;
  if (thread_.joinable()) thread_.join();
  if (connection_ == nullptr) return;
  dbus_connection_close(connection_);
  dbus_connection_unref(connection_);
}

bool FakeKit::Await(const std::function<bool(const std::vector<Asked>&)>& condition) {
  const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  support::MutexLock lock(mutex_);
  while (!condition(asked_) && std::chrono::steady_clock::now() < until) lock.WaitUntil(came_, until);
  return condition(asked_);
}

void FakeKit::Serve() {
  while (!ending_ && dbus_connection_read_write(connection_, 20)) {
    while (DBusMessage* call = dbus_connection_pop_message(connection_)) {
      Answer(call);
      dbus_message_unref(call);
    }
  }
}

void FakeKit::Answer(DBusMessage* call) {
  if (dbus_message_is_method_call(call, DBUS_INTERFACE_PROPERTIES, "Get")) return AnswerProperty(call);
  if (dbus_message_is_method_call(call, kName, "MakeThreadRealtime")) return AnswerWish(call, true);
  if (dbus_message_is_method_call(call, kName, "MakeThreadHighPriority")) AnswerWish(call, false);
}

void FakeKit::AnswerProperty(DBusMessage* call) {
  const char *face = nullptr, *name = nullptr;
  dbus_message_get_args(call, nullptr, DBUS_TYPE_STRING, &face, DBUS_TYPE_STRING, &name, DBUS_TYPE_INVALID);
  const std::string_view asked = name == nullptr ? "" : name;
  const bool time = asked == "RTTimeUSecMax";
  const dbus_int64_t wide = rules_.time_us;
  const dbus_int32_t narrow = asked == "MaxRealtimePriority" ? rules_.priority : rules_.nice;
  DBusMessage* reply = dbus_message_new_method_return(call);
  DBusMessageIter outer, inner;
  dbus_message_iter_init_append(reply, &outer);
  dbus_message_iter_open_container(&outer, DBUS_TYPE_VARIANT, time ? "x" : "i", &inner);
  if (time) {
    dbus_message_iter_append_basic(&inner, DBUS_TYPE_INT64, &wide);
  } else {
    dbus_message_iter_append_basic(&inner, DBUS_TYPE_INT32, &narrow);
  }
  dbus_message_iter_close_container(&outer, &inner);
  dbus_connection_send(connection_, reply, nullptr);
  dbus_message_unref(reply);
}

void FakeKit::AnswerWish(DBusMessage* call, bool real_time) {
  dbus_uint64_t thread = 0;
  dbus_uint32_t level = 0;
  dbus_int32_t nice = 0;
  if (real_time) {
    dbus_message_get_args(call, nullptr, DBUS_TYPE_UINT64, &thread, DBUS_TYPE_UINT32, &level,
                          DBUS_TYPE_INVALID);
  } else {
    dbus_message_get_args(call, nullptr, DBUS_TYPE_UINT64, &thread, DBUS_TYPE_INT32, &nice,
                          DBUS_TYPE_INVALID);
  }
  rlimit limit{};
  getrlimit(RLIMIT_RTTIME, &limit);
  const auto id = static_cast<pid_t>(thread);
  if (rules_.grants && real_time) {
    sched_param wanted{};
    wanted.sched_priority = static_cast<int>(level);
    sched_setscheduler(id, SCHED_RR | SCHED_RESET_ON_FORK, &wanted);
  } else if (rules_.grants) {
    setpriority(PRIO_PROCESS, static_cast<id_t>(id), nice);
  }
  DBusMessage* reply = rules_.grants ? dbus_message_new_method_return(call)
                                     : dbus_message_new_error(call, DBUS_ERROR_ACCESS_DENIED, "no");
  dbus_connection_send(connection_, reply, nullptr);
  dbus_connection_flush(connection_);
  dbus_message_unref(reply);
  {
    support::MutexLock lock(mutex_);
    asked_.push_back({real_time, id, real_time ? static_cast<int>(level) : nice, Microseconds(limit.rlim_cur),
                      Microseconds(limit.rlim_max)});
  }
  came_.notify_all();
}

}  // namespace platform::rights::testing
