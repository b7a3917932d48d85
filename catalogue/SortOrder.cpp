// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/SortOrder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "catalogue/FoldText.h"
#include "support/Text.h"

namespace catalogue {
namespace {

/// What a row is ordered by: eight bytes of its text at a time, or its number.
struct Ordered {
  std::uint64_t key;
  std::uint32_t row;
};

bool Before(const Ordered& a, const Ordered& b) {
  return a.key != b.key ? a.key < b.key : a.row < b.row;
}

/// By their keys, a digit of eleven bits after the other from the lowest; equal ones stay in their order.
void RadixSort(std::span<Ordered> rows, std::vector<Ordered>& space) {
  constexpr std::size_t kBits = 11, kValues = std::size_t{1} << kBits, kDigits = (64 + kBits - 1) / kBits;
  const auto digit = [](const Ordered& row, std::size_t number) {
    return static_cast<std::size_t>(row.key >> kBits * number) & (kValues - 1);
  };
  std::array<std::array<std::uint32_t, kValues>, kDigits> counts{};
  for (const Ordered& row : rows) {
    for (std::size_t number = 0; number < kDigits; ++number) ++counts[number][digit(row, number)];
  }
  space.resize(rows.size());
  Ordered* from = rows.data();
  Ordered* to = space.data();
  for (std::size_t number = 0; number < kDigits; ++number) {
    std::array<std::uint32_t, kValues>& count = counts[number];
    if (count[digit(*from, number)] == rows.size()) continue;
    std::uint32_t before = 0;
    for (std::uint32_t& place : count) before += std::exchange(place, before);
    for (std::size_t i = 0; i < rows.size(); ++i) to[count[digit(from[i], number)]++] = from[i];
    std::swap(from, to);
  }
  if (from != rows.data()) std::copy_n(from, rows.size(), rows.data());
}

void SortByKey(std::span<Ordered> rows, std::vector<Ordered>& space) {
  constexpr std::size_t kFew = 8192;
  if (rows.size() < kFew) return std::sort(rows.begin(), rows.end(), Before);
  RadixSort(rows, space);
}

/// Orders texts by eight bytes and then those that have these in common by the next eight.
class TextSort {
 public:
  TextSort(const track_table& table, const SortWish& wish, const std::atomic<bool>& stop)
      : down_(wish.direction == SortDirection::Down) {
    ends_.reserve(static_cast<std::size_t>(table.Rows()) + 1);
    ends_.push_back(0);
    std::string_view last_cell;
    std::size_t last_start = 0;
    table.VisitColumn(wish.column, [&](int row, std::string_view cell) {
      const std::size_t start = texts_.size();
      if (cell == last_cell) {  // an album's rows lie together
        texts_.append(texts_, last_start, start - last_start);
      } else {
        AppendFolded(texts_, cell);
        last_cell = cell;
      }
      last_start = start;
      ends_.push_back(texts_.size());
      if (texts_.size() == start) {
        empty_.push_back(row);
      } else {
        rows_.push_back({0, static_cast<std::uint32_t>(row)});
      }
      return row % 4096 != 0 || !stop.load(std::memory_order_relaxed);
    });
    if (stop.load(std::memory_order_relaxed)) return;
    texts_.append(kBytesOfKey, '\0');  // so that a key can be taken anywhere
    Sort(rows_, 0);
  }

  [[nodiscard]] std::vector<int> Rows() const {
    std::vector<int> rows;
    rows.reserve(rows_.size() + empty_.size());
    for (const Ordered& row : rows_) rows.push_back(static_cast<int>(row.row));
    rows.insert(rows.end(), empty_.begin(), empty_.end());
    return rows;
  }

 private:
  static constexpr std::size_t kBytesOfKey = sizeof(Ordered::key);

  [[nodiscard]] std::uint64_t KeyAt(std::uint32_t row, std::size_t depth) const {
    const std::size_t start = ends_[row - 1] + depth, end = ends_[row];
    std::uint64_t key = 0;
    if (start < end) {
      for (std::size_t i = 0; i < kBytesOfKey; ++i) {  // one load and one swap of bytes, to a compiler
        key = key << 8 | static_cast<unsigned char>(texts_[start + i]);
      }
      const std::size_t others = kBytesOfKey - std::min(end - start, kBytesOfKey);
      key = others == 0 ? key : key >> 8 * others << 8 * others;
    }
    return down_ ? ~key : key;
  }

  void Sort(std::span<Ordered> rows, std::size_t depth) {
    for (Ordered& row : rows) row.key = KeyAt(row.row, depth);
    SortByKey(rows, space_);
    for (std::size_t first = 0; first < rows.size();) {
      std::size_t end = first + 1;
      while (end < rows.size() && rows[end].key == rows[first].key) ++end;
      const std::uint64_t plain = down_ ? ~rows[first].key : rows[first].key;
      const bool goes_on = (plain & 0xFF) != 0;
      if (goes_on && end - first > 1) SortTail(rows.subspan(first, end - first), depth + kBytesOfKey);
      first = end;
    }
  }

  /// Most of them are the same text altogether.
  void SortTail(std::span<Ordered> rows, std::size_t depth) {
    const auto tail = [&](std::uint32_t row) {
      const std::size_t start = std::min(ends_[row - 1] + depth, ends_[row]);
      return std::string_view(texts_).substr(start, ends_[row] - start);
    };
    const std::string_view first = tail(rows.front().row);
    if (std::all_of(rows.begin(), rows.end(), [&](const Ordered& row) { return tail(row.row) == first; }))
      return;
    constexpr std::size_t kFew = 24, kDeep = 512;
    if (rows.size() > kFew && depth < kDeep) return Sort(rows, depth);
    std::stable_sort(rows.begin(), rows.end(), [&](const Ordered& a, const Ordered& b) {
      return down_ ? tail(b.row) < tail(a.row) : tail(a.row) < tail(b.row);
    });
  }

  const bool down_;
  std::string texts_;
  std::vector<std::size_t> ends_;  ///< of each row's text, and before the first
  std::vector<Ordered> rows_;
  std::vector<int> empty_;
  std::vector<Ordered> space_;
};

/// "03:45" in seconds.
std::optional<double> SecondsIn(std::string_view text) {
  double seconds = 0;
  for (const std::string_view part : support::Split(text, ':')) {
    const auto number = support::ParseReal(part);
    if (!number) return std::nullopt;
    seconds = seconds * 60 + *number;
  }
  return seconds;
}

/// A number's bits as one that orders as it does.
std::uint64_t KeyOf(double number) {
  const auto bits = std::bit_cast<std::uint64_t>(number == 0 ? 0.0 : number);
  constexpr std::uint64_t kSign = std::uint64_t{1} << 63;
  return (bits & kSign) != 0 ? ~bits : bits | kSign;
}

std::optional<double> NumberIn(std::string_view cell, SortAs as) {
  if (as == SortAs::Time) return SecondsIn(cell);
  auto number = support::ParseReal(support::Trim(cell));
  // "1994-05-01" is of the year 1994.
  if (!number && !cell.empty() && cell.front() >= '1' && cell.front() <= '9') {
    number = static_cast<double>(support::LeadingInteger(cell));
  }
  return number && std::isfinite(*number) ? number : std::nullopt;
}

std::vector<int> ByNumber(const track_table& table, const SortWish& wish, const std::atomic<bool>& stop) {
  std::vector<Ordered> ordered;
  std::vector<int> empty;
  table.VisitColumn(wish.column, [&](int row, std::string_view cell) {
    const auto number = NumberIn(cell, wish.as);
    if (number) {
      const std::uint64_t key = KeyOf(*number);
      ordered.push_back(
          {wish.direction == SortDirection::Down ? ~key : key, static_cast<std::uint32_t>(row)});
    } else {
      empty.push_back(row);
    }
    return row % 4096 != 0 || !stop.load(std::memory_order_relaxed);
  });
  if (stop.load(std::memory_order_relaxed)) return {};
  std::vector<Ordered> space;
  SortByKey(ordered, space);
  std::vector<int> rows;
  rows.reserve(ordered.size() + empty.size());
  for (const Ordered& row : ordered) rows.push_back(static_cast<int>(row.row));
  rows.insert(rows.end(), empty.begin(), empty.end());
  return rows;
}

}  // namespace

std::vector<int> OrderBy(const track_table& table, const SortWish& wish, const std::atomic<bool>& stop) {
  if (wish.as != SortAs::Text) return ByNumber(table, wish, stop);
  const TextSort sort(table, wish, stop);
  if (stop.load(std::memory_order_relaxed)) return {};
  return sort.Rows();
}

std::int64_t TotalSeconds(const track_table& table, int column) {
  constexpr double kLongest = 1e7;
  std::int64_t total = 0;
  table.VisitColumn(column, [&total](int, std::string_view cell) {
    const double seconds = SecondsIn(cell).value_or(0);
    if (seconds > 0 && seconds < kLongest) total += std::llround(seconds);
    return true;
  });
  return total;
}

}  // namespace catalogue
