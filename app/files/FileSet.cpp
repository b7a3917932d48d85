// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/FileSet.h"

#include <algorithm>
#include <functional>

namespace app {
namespace {

std::uint64_t NumberOf(std::string_view file) {
  static_assert(sizeof(std::size_t) == sizeof(std::uint64_t), "fewer bits would mix names up");
  return std::hash<std::string_view>{}(file);
}

}  // namespace

void FileSet::Collect(std::string_view file) {
  numbers_.push_back(NumberOf(file));
}

void FileSet::Settle() {
  std::sort(numbers_.begin(), numbers_.end());
  numbers_.erase(std::unique(numbers_.begin(), numbers_.end()), numbers_.end());
}

bool FileSet::Insert(std::string_view file) {
  const std::uint64_t number = NumberOf(file);
  const auto place = std::lower_bound(numbers_.begin(), numbers_.end(), number);
  if (place != numbers_.end() && *place == number) return false;
  numbers_.insert(place, number);
  return true;
}

bool FileSet::Erase(std::string_view file) {
  const std::uint64_t number = NumberOf(file);
  const auto place = std::lower_bound(numbers_.begin(), numbers_.end(), number);
  if (place == numbers_.end() || *place != number) return false;
  numbers_.erase(place);
  return true;
}

bool FileSet::Has(std::string_view file) const {
  return !numbers_.empty() && std::binary_search(numbers_.begin(), numbers_.end(), NumberOf(file));
}

bool FileSet::HasAllOf(const FileSet& other) const {
  return std::includes(numbers_.begin(), numbers_.end(), other.numbers_.begin(), other.numbers_.end());
}

}  // namespace app
