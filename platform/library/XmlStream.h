// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace platform::library {

/// The attributes of one element. Valid while it begins.
class Attributes {
 public:
  explicit Attributes(const char** pairs) : pairs_(pairs) {}
  /// Empty where there is none of this name.
  [[nodiscard]] std::string_view operator[](std::string_view name) const;

 private:
  const char** pairs_;
};

class XmlListener {
 public:
  virtual ~XmlListener() = default;
  virtual void Begin(std::string_view name, const Attributes& attributes) = 0;
  /// Perhaps in pieces.
  virtual void Text(std::string_view) {}
  virtual void End(std::string_view name) = 0;
};

enum class XmlEnding {
  Whole,
  Cut,      ///< it ends before its root element does
  Damaged,  ///< not well formed from some line on
  Refused,  ///< declarations of its own, nested too deeply, or one piece of it is too long
  Stopped,  ///< whoever gives the bytes gave up
};

struct XmlOutcome {
  XmlEnding ending = XmlEnding::Whole;
  long line = 0;  ///< where it stopped
};

inline constexpr int kDeepest = 64;
inline constexpr std::size_t kLongest = 1 << 20;  ///< bytes

/// Reads XML piece by piece, in memory that does not grow with it. Nothing is expanded but the five entities
/// that every XML has, and nothing is fetched; a document with declarations of its own is refused, and so is
/// one that is nested deeper than kDeepest, or in which a single mark is longer than kLongest.
/// more: fills the buffer and gives how much; 0 at the end, below 0 to stop.
[[nodiscard]] XmlOutcome ReadXml(const std::function<long(char* buffer, std::size_t size)>& more,
                                 XmlListener& listener);

}  // namespace platform::library
