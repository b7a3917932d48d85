// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/rights/RealtimeKit.h"

#include <dbus/dbus.h>

#include <chrono>
#include <cstdlib>
#include <optional>
#include <utility>

namespace platform::rights {
namespace {

constexpr const char* kName = "org.freedesktop.RealtimeKit1";
constexpr const char* kPath = "/org/freedesktop/RealtimeKit1";
constexpr const char* kSystemBus = "unix:path=/run/dbus/system_bus_socket";

struct Unref {
  void operator()(DBusMessage* message) const { dbus_message_unref(message); }
  void operator()(DBusConnection* connection) const {
    dbus_connection_close(connection);
    dbus_connection_unref(connection);
  }
};
using Message = std::unique_ptr<DBusMessage, Unref>;
using Connection = std::unique_ptr<DBusConnection, Unref>;

std::string SystemBus() {
  const char* named = std::getenv("DBUS_SYSTEM_BUS_ADDRESS");
  return named != nullptr && *named != '\0' ? named : kSystemBus;
}

/// Null for a refusal, a time-out and no bus alike. The library's own call of this kind waits for ever where
/// a bus takes connections and says nothing.
Message Ask(DBusConnection* connection, const Message& question) {
  using Clock = std::chrono::steady_clock;
  dbus_uint32_t serial = 0;
  if (question == nullptr || !dbus_connection_send(connection, question.get(), &serial)) return nullptr;
  const auto until = Clock::now() + RealtimeKit::kPatience;
  while (Clock::now() < until) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - Clock::now()).count();
    if (!dbus_connection_read_write(connection, static_cast<int>(left))) return nullptr;
    while (Message told{dbus_connection_pop_message(connection)}) {
      if (dbus_message_get_reply_serial(told.get()) != serial) continue;
      const bool answer = dbus_message_get_type(told.get()) == DBUS_MESSAGE_TYPE_METHOD_RETURN;
      return answer ? std::move(told) : nullptr;
    }
  }
  return nullptr;
}

Message Question(const char* to, const char* path, const char* face, const char* call) {
  return Message(dbus_message_new_method_call(to, path, face, call));
}

bool SayHello(DBusConnection* connection) {
  const Message told =
      Ask(connection, Question(DBUS_SERVICE_DBUS, DBUS_PATH_DBUS, DBUS_INTERFACE_DBUS, "Hello"));
  const char* name = nullptr;
  return told != nullptr &&
         dbus_message_get_args(told.get(), nullptr, DBUS_TYPE_STRING, &name, DBUS_TYPE_INVALID) &&
         dbus_bus_set_unique_name(connection, name);
}

/// A 32-bit or a 64-bit number.
std::optional<std::int64_t> Property(DBusConnection* connection, const char* name) {
  const Message question = Question(kName, kPath, DBUS_INTERFACE_PROPERTIES, "Get");
  if (question == nullptr || !dbus_message_append_args(question.get(), DBUS_TYPE_STRING, &kName,
                                                       DBUS_TYPE_STRING, &name, DBUS_TYPE_INVALID)) {
    return std::nullopt;
  }
  const Message told = Ask(connection, question);
  DBusMessageIter outer, inner;
  if (told == nullptr || !dbus_message_iter_init(told.get(), &outer) ||
      dbus_message_iter_get_arg_type(&outer) != DBUS_TYPE_VARIANT) {
    return std::nullopt;
  }
  dbus_message_iter_recurse(&outer, &inner);
  DBusBasicValue value{};
  switch (dbus_message_iter_get_arg_type(&inner)) {
    case DBUS_TYPE_INT32:
      dbus_message_iter_get_basic(&inner, &value);
      return value.i32;
    case DBUS_TYPE_INT64:
      dbus_message_iter_get_basic(&inner, &value);
      return value.i64;
    default:
      return std::nullopt;
  }
}

}  // namespace

/// Holds the connection by itself: a member of a type of this file alone is refused in a unity build.
struct RealtimeKit::Wire {
  explicit Wire(Connection made) : connection(made.release()) {}
  ~Wire() { Unref()(connection); }
  Wire(const Wire&) = delete;
  Wire& operator=(const Wire&) = delete;
  DBusConnection* const connection;
};

std::unique_ptr<RealtimeKit> RealtimeKit::Find(const std::string& bus) {
  dbus_threads_init_default();
  const std::string address = bus.empty() ? SystemBus() : bus;
  Connection connection(dbus_connection_open_private(address.c_str(), nullptr));
  if (connection == nullptr) return nullptr;
  // The library's own idea is to end the process with the bus.
  dbus_connection_set_exit_on_disconnect(connection.get(), FALSE);
  if (!SayHello(connection.get())) return nullptr;
  const auto priority = Property(connection.get(), "MaxRealtimePriority");
  if (!priority) return nullptr;
  std::unique_ptr<RealtimeKit> kit(new RealtimeKit(std::make_unique<Wire>(std::move(connection))));
  kit->limits_.priority = static_cast<int>(*priority);
  DBusConnection* const line = kit->wire_->connection;
  kit->limits_.time_us = Property(line, "RTTimeUSecMax").value_or(0);
  kit->limits_.nice = static_cast<int>(Property(line, "MinNiceLevel").value_or(0));
  return kit;
}

RealtimeKit::RealtimeKit(std::unique_ptr<Wire> wire) : wire_(std::move(wire)) {}

RealtimeKit::~RealtimeKit() = default;

bool RealtimeKit::MakeRealtime(int thread, int priority) {
  const auto id = static_cast<dbus_uint64_t>(thread);
  const auto level = static_cast<dbus_uint32_t>(priority);
  const Message question = Question(kName, kPath, kName, "MakeThreadRealtime");
  return question != nullptr &&
         dbus_message_append_args(question.get(), DBUS_TYPE_UINT64, &id, DBUS_TYPE_UINT32, &level,
                                  DBUS_TYPE_INVALID) &&
         Ask(wire_->connection, question) != nullptr;
}

bool RealtimeKit::MakeHighPriority(int thread, int nice) {
  const auto id = static_cast<dbus_uint64_t>(thread);
  const auto level = static_cast<dbus_int32_t>(nice);
  const Message question = Question(kName, kPath, kName, "MakeThreadHighPriority");
  return question != nullptr &&
         dbus_message_append_args(question.get(), DBUS_TYPE_UINT64, &id, DBUS_TYPE_INT32, &level,
                                  DBUS_TYPE_INVALID) &&
         Ask(wire_->connection, question) != nullptr;
}

}  // namespace platform::rights
