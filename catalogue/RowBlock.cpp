// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/RowBlock.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "catalogue/RowText.h"

namespace catalogue {
namespace {

/// A block whose rows were edited wastes at most a quarter of its text; one that rows were taken out of may
/// waste more, so that taking many at once copies no text.
constexpr std::size_t kEditedShare = 4, kLeftShare = 4;

}  // namespace

RowBlock::RowBlock(std::shared_ptr<const RowBlock> other)
    : before_(other->before_ == nullptr ? other : other->before_),
      text_(other->before_ == nullptr ? std::string() : other->text_),
      used_(other->used_),
      rows_(other->rows_),
      names_(other->names_) {
  std::copy_n(other->places_.begin(), rows_, places_.begin());
}

std::string_view RowBlock::Row(std::size_t row) const {
  const Place place = places_[row];
  const std::size_t before = BytesBefore();
  if (place.start < before) return std::string_view(before_->text_).substr(place.start, place.size);
  return std::string_view(text_).substr(place.start - before, place.size);
}

bool RowBlock::MayHold(std::uint32_t name) const {
  std::uint32_t held = 0;  // all are looked at, several in one step
  for (const std::uint32_t number : names_) held |= number == name ? 1U : 0U;
  return held != 0;
}

RowBlock::Lines RowBlock::LinesFrom(std::size_t row) const {
  const std::size_t first = row, before = BytesBefore();
  if (row >= rows_) return {};
  const bool ours = places_[first].start >= before;
  std::uint32_t end = places_[first].start;
  for (; row < rows_ && places_[row].start == end && (end >= before) == ours && IsLine(Row(row)); ++row) {
    end += places_[row].size;
  }
  const std::string_view text(ours ? text_ : before_->text_);
  return {text.substr(places_[first].start - (ours ? before : 0), end - places_[first].start), row - first};
}

RowBlock::Place RowBlock::Append(std::string_view text) {
  const Place place{static_cast<std::uint32_t>(BytesBefore() + text_.size()),
                    static_cast<std::uint32_t>(text.size())};
  text_ += text;
  used_ += text.size();
  return place;
}

void RowBlock::Add(std::string_view row, std::uint32_t name) {
  assert(rows_ < kMostRows && "a block holds 256 rows");
  names_[rows_] = name;
  places_[rows_++] = Append(row);
}

void RowBlock::Insert(std::size_t before, std::string_view row, std::uint32_t name) {
  Add(row, name);
  const auto first = static_cast<std::ptrdiff_t>(before), end = static_cast<std::ptrdiff_t>(rows_);
  std::rotate(places_.begin() + first, places_.begin() + end - 1, places_.begin() + end);
  std::rotate(names_.begin() + first, names_.begin() + end - 1, names_.begin() + end);
}

void RowBlock::AddAll(std::string_view text, std::span<const std::uint32_t> starts,
                      std::span<const std::uint32_t> names) {
  assert(rows_ + starts.size() <= kMostRows && "a block holds 256 rows");
  const std::uint32_t before = Append(text).start;
  for (std::size_t i = 0; i < starts.size(); ++i) {
    const std::size_t end = i + 1 < starts.size() ? starts[i + 1] : text.size();
    names_[rows_] = names[i];
    places_[rows_++] = {before + starts[i], static_cast<std::uint32_t>(end - starts[i])};
  }
}

void RowBlock::AddFrom(const RowBlock& other, std::size_t first, std::size_t count) {
  std::size_t bytes = text_.size();
  for (std::size_t row = first; row < first + count; ++row) bytes += other.places_[row].size;
  if (bytes > text_.capacity()) Reserve(std::max(bytes, text_.capacity() * 2));
  for (std::size_t row = first; row < first + count; ++row) Add(other.Row(row), other.names_[row]);
}

void RowBlock::Replace(std::size_t row, std::string_view text, std::uint32_t name) {
  used_ -= places_[row].size;
  places_[row] = Append(text);
  names_[row] = name;
  if (BytesUnused() > used_ / kEditedShare) Tidy();
}

void RowBlock::Remove(std::size_t first, std::size_t count) {
  for (std::size_t row = first; row < first + count; ++row) used_ -= places_[row].size;
  std::copy(places_.begin() + first + count, places_.begin() + rows_, places_.begin() + first);
  std::copy(names_.begin() + first + count, names_.begin() + rows_, names_.begin() + first);
  rows_ -= count;
  if (BytesUnused() > used_ * (kLeftShare - 1)) Tidy();
}

void RowBlock::Tidy() {
  std::string text;
  text.reserve(used_);
  std::array<Place, kMostRows> places;
  for (std::size_t row = 0; row < rows_; ++row) {
    places[row] = {static_cast<std::uint32_t>(text.size()), places_[row].size};
    text += Row(row);
  }
  std::copy_n(places.begin(), rows_, places_.begin());
  before_ = nullptr;
  text_ = std::move(text);
}

void RowBlock::Settle() {
  if (text_.capacity() - text_.size() > text_.size() / 16) text_.shrink_to_fit();
}

}  // namespace catalogue
