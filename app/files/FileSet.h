// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace app {

/// Names of files, of which eight bytes each are kept: a million paths are in the table already.
///
/// Names are told apart by 64-bit numbers made of them; that two of a million have the same one is as likely
/// as one in thirty million. Threads: one at a time.
class FileSet {
 public:
  /// Adds a name that is not asked for before Settle.
  void Collect(std::string_view file);
  /// What was collected belongs to it, each once.
  void Settle();
  /// True when it was not there.
  bool Insert(std::string_view file);
  /// True when it was there.
  bool Erase(std::string_view file);

  [[nodiscard]] bool Has(std::string_view file) const;
  [[nodiscard]] bool HasAllOf(const FileSet& other) const;
  [[nodiscard]] std::size_t Size() const { return numbers_.size(); }

 private:
  std::vector<std::uint64_t> numbers_;  ///< ascending once they are settled
};

}  // namespace app
