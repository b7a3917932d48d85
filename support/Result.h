// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cassert>
#include <string>
#include <utility>
#include <variant>

#include "support/Saying.h"

namespace support {

enum class ErrorCode {
  NotFound,     ///< no such file, device or entry
  Unreadable,   ///< it is there, but the system does not let us read or write it
  Empty,        ///< it is there and holds nothing
  Malformed,    ///< it is not what its name or header promises
  Unsupported,  ///< well formed, but not something this program handles
  Unavailable,  ///< the outside thing is not there now (device, server, box); it may come back
  Cancelled,    ///< somebody asked to stop
};

/// An expected failure. The text is a whole sentence in English that may be shown to the user as it stands;
/// Sentences says the same in the language chosen, where the saying is there.
struct Error {
  ErrorCode code;
  std::string text;
  Saying saying{};
};

/// A value or an expected failure. Bugs are asserts, never results.
template <typename T>
class [[nodiscard]] Result {
 public:
  Result(T value) : state_(std::in_place_index<0>, std::move(value)) {}
  Result(Error error) : state_(std::in_place_index<1>, std::move(error)) {}

  [[nodiscard]] bool Ok() const { return state_.index() == 0; }
  explicit operator bool() const { return Ok(); }

  /// Requires: Ok().
  [[nodiscard]] T& Value() & { return assert(Ok()), std::get<0>(state_); }
  [[nodiscard]] const T& Value() const& { return assert(Ok()), std::get<0>(state_); }
  [[nodiscard]] T&& Value() && { return assert(Ok()), std::get<0>(std::move(state_)); }
  /// Requires: !Ok().
  [[nodiscard]] const Error& Failure() const { return assert(!Ok()), std::get<1>(state_); }

 private:
  std::variant<T, Error> state_;
};

template <>
class [[nodiscard]] Result<void> {
 public:
  Result() = default;
  Result(Error error) : failed_(true), error_(std::move(error)) {}

  [[nodiscard]] bool Ok() const { return !failed_; }
  explicit operator bool() const { return Ok(); }
  /// Requires: !Ok().
  [[nodiscard]] const Error& Failure() const { return assert(failed_), error_; }

 private:
  bool failed_ = false;
  Error error_{};
};

}  // namespace support
