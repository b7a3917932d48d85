// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace catalogue {

/// Rows of a table that lie together as text, each with a number made of its file's name.
///
/// One made of another keeps that one's text where it lies and has only what differs for itself, so that a
/// change costs no more than the row that it changes. Law: one that was made into another is not changed any
/// more.
class RowBlock {
 public:
  static constexpr std::size_t kMostRows = 256;

  RowBlock() = default;
  explicit RowBlock(std::shared_ptr<const RowBlock> other);

  [[nodiscard]] std::size_t Rows() const { return rows_; }
  /// Requires: the row (from 0) is there.
  [[nodiscard]] std::string_view Row(std::size_t row) const;
  /// Whether a row has this number, and others may have it too. Quicker than looking at each.
  [[nodiscard]] bool MayHold(std::uint32_t name) const;
  [[nodiscard]] std::span<const std::uint32_t> Names() const { return {names_.data(), rows_}; }
  /// The rows from this one on whose texts lie one behind the other as lines.
  struct Lines {
    std::string_view text;
    std::size_t rows = 0;
  };
  [[nodiscard]] Lines LinesFrom(std::size_t row) const;

  // Requires: there is room for the rows.
  void Add(std::string_view row, std::uint32_t name);
  /// Rows that lie one behind the other, with the place where each one begins.
  void AddAll(std::string_view text, std::span<const std::uint32_t> starts,
              std::span<const std::uint32_t> names);
  void Insert(std::size_t before, std::string_view row, std::uint32_t name);
  /// Some of another block's.
  void AddFrom(const RowBlock& other, std::size_t first, std::size_t count);
  void Replace(std::size_t row, std::string_view text, std::uint32_t name);
  void Remove(std::size_t first, std::size_t count);

  /// Makes room for that much text.
  void Reserve(std::size_t bytes) { text_.reserve(bytes); }
  /// Gives room back that no row took.
  void Settle();
  /// Text that this one holds for itself.
  [[nodiscard]] std::size_t OwnBytes() const { return text_.size(); }

 private:
  struct Place {
    std::uint32_t start;  ///< in the text of before, and behind it in our own
    std::uint32_t size;
  };

  [[nodiscard]] std::size_t BytesBefore() const { return before_ == nullptr ? 0 : before_->text_.size(); }
  [[nodiscard]] std::size_t BytesUnused() const { return BytesBefore() + text_.size() - used_; }
  [[nodiscard]] Place Append(std::string_view text);
  /// Lays all rows one behind the other in a text of our own.
  void Tidy();

  std::shared_ptr<const RowBlock> before_;  ///< whose own text holds some of the rows; null for none
  std::string text_;
  std::size_t used_ = 0;  ///< bytes of both that belong to a row
  std::size_t rows_ = 0;
  std::array<Place, kMostRows> places_;
  std::array<std::uint32_t, kMostRows> names_{};
};

}  // namespace catalogue
