// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace dmx {

/// An ordered collection that owns its members; they are found by position from 1, or by a key that was given
/// with them.
///
/// Law: keys cost nothing until the first one is given. A pointer to a member holds until the next Add,
/// Insert or Remove. Threads: one at a time.
template <typename T>
class Collection {
 public:
  /// Requires: no member has the key yet, unless it is empty (which is no key).
  T& Add(T item = {}, std::string_view key = {}) { return Insert(count() + 1, std::move(item), key); }
  /// The new member takes the position; those behind it move up. Requires: 1 to count() + 1.
  T& Insert(int position, T item, std::string_view key = {}) {
    assert(position >= 1 && position <= count() + 1);
    assert(key.empty() || PositionOf(key) == 0);
    const auto place = static_cast<std::ptrdiff_t>(position - 1);
    if (!key.empty()) keys_.resize(items_.size());
    if (!keys_.empty() || !key.empty()) keys_.insert(keys_.begin() + place, std::string(key));
    return *items_.insert(items_.begin() + place, std::move(item));
  }

  void Reserve(std::size_t members) { items_.reserve(members); }

  /// nullptr when there is no such member.
  [[nodiscard]] T* Item(int position) { return const_cast<T*>(std::as_const(*this).Item(position)); }
  [[nodiscard]] const T* Item(int position) const {
    return position < 1 || position > count() ? nullptr : &items_[static_cast<std::size_t>(position - 1)];
  }
  [[nodiscard]] T* Item(std::string_view key) { return Item(PositionOf(key)); }
  [[nodiscard]] const T* Item(std::string_view key) const { return Item(PositionOf(key)); }

  [[nodiscard]] int count() const { return static_cast<int>(items_.size()); }

  /// A member that is not there is not removed.
  void Remove(int position) {
    if (Item(position) == nullptr) return;
    const auto place = static_cast<std::ptrdiff_t>(position - 1);
    items_.erase(items_.begin() + place);
    if (!keys_.empty()) keys_.erase(keys_.begin() + place);
  }
  void Remove(std::string_view key) { Remove(PositionOf(key)); }

  /// Takes the member out and puts it where it then has the other position. Requires: both are there.
  void Move(int from, int to) {
    assert(Item(from) != nullptr && Item(to) != nullptr);
    Turn(items_, from, to);
    if (!keys_.empty()) Turn(keys_, from, to);
  }

  [[nodiscard]] auto begin() { return items_.begin(); }
  [[nodiscard]] auto end() { return items_.end(); }
  [[nodiscard]] auto begin() const { return items_.begin(); }
  [[nodiscard]] auto end() const { return items_.end(); }

  bool operator==(const Collection&) const = default;

 private:
  /// 0 when no member has the key.
  [[nodiscard]] int PositionOf(std::string_view key) const {
    if (key.empty()) return 0;
    const auto found = std::find(keys_.begin(), keys_.end(), key);
    return found == keys_.end() ? 0 : static_cast<int>(found - keys_.begin()) + 1;
  }

  template <typename List>
  static void Turn(List& list, int from, int to) {
    const auto first = list.begin() + std::min(from, to) - 1;
    const auto last = list.begin() + std::max(from, to);
    std::rotate(first, from < to ? first + 1 : last - 1, last);
  }

  std::vector<T> items_;
  std::vector<std::string> keys_;  ///< one a member, or none at all
};

}  // namespace dmx
