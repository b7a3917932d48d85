// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "singers/Rotation.h"

namespace singers {

/// A song that somebody has sung, as it was sung last.
struct SungSong {
  Wish wish;         ///< without partner and ticket
  int times = 0;     ///< sung
  std::string last;  ///< date of the evening
  bool operator==(const SungSong&) const = default;
};

/// What the singers sang, from evening to evening; by name, letter case aside.
class SingerBook {
 public:
  static constexpr std::size_t kMostSingers = 20'000;
  static constexpr std::size_t kMostSongs = 500;  ///< of one singer: those that were not sung for longest go

  struct Page {
    std::string name;             ///< as it was written last
    std::string last;             ///< date of the evening
    std::vector<SungSong> songs;  ///< the newest first
    bool operator==(const Page&) const = default;
  };

  /// What was sung tonight goes to the front of the singer's page.
  void Note(std::string_view name, const Wish& wish, const std::string& date);
  /// Null: never seen.
  [[nodiscard]] const Page* Of(std::string_view name) const;
  /// As the singer sang the song last; null: never.
  [[nodiscard]] const SungSong* Sung(std::string_view name, std::string_view filename) const;
  /// Known names that begin so, letter case aside, those who were here last first.
  [[nodiscard]] std::vector<std::string> Names(std::string_view begin, std::size_t most) const;
  /// The page of a renamed singer gets the other name; one that has a page is left as it is.
  void Rename(std::string_view from, std::string_view to);

  /// Songs whose file has another name now; false where there is none.
  bool FollowFile(std::string_view from, std::string_view to);

  /// By name in upper case. A page never changes: copies of the book share it, so that one is made in no
  /// time.
  using Pages = std::map<std::string, std::shared_ptr<const Page>>;
  [[nodiscard]] const Pages& All() const { return pages_; }
  /// A whole page, as a file has it; one without a name or too many are left out.
  void Add(Page page);

 private:
  Pages pages_;
};

}  // namespace singers
