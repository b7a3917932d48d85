// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "singers/SingerBook.h"

#include <algorithm>
#include <utility>

#include "support/Text.h"

namespace singers {
namespace {

auto FindSong(auto& songs, std::string_view filename) {
  return std::find_if(songs.begin(), songs.end(),
                      [&](const SungSong& song) { return song.wish.filename == filename; });
}

}  // namespace

void SingerBook::Note(std::string_view name, const Wish& wish, const std::string& date) {
  const std::string clean = CleanName(name);
  const std::string key = support::ToUpper(clean);
  if (clean.empty() || (pages_.size() >= kMostSingers && !pages_.contains(key))) return;
  auto& known_page = pages_[key];
  Page page = known_page == nullptr ? Page() : *known_page;
  page.name = clean;
  page.last = date;
  SungSong song;
  const auto known = FindSong(page.songs, wish.filename);
  if (known != page.songs.end()) {
    song = std::move(*known);
    page.songs.erase(known);
  }
  song.wish = wish;
  song.wish.partner.clear();
  song.wish.ticket = 0;
  ++song.times;
  song.last = date;
  page.songs.insert(page.songs.begin(), std::move(song));
  if (page.songs.size() > kMostSongs) page.songs.resize(kMostSongs);
  known_page = std::make_shared<const Page>(std::move(page));
}

const SingerBook::Page* SingerBook::Of(std::string_view name) const {
  const auto page = pages_.find(support::ToUpper(name));
  return page == pages_.end() ? nullptr : page->second.get();
}

const SungSong* SingerBook::Sung(std::string_view name, std::string_view filename) const {
  const Page* page = Of(name);
  if (page == nullptr) return nullptr;
  const auto song = FindSong(page->songs, filename);
  return song == page->songs.end() ? nullptr : &*song;
}

std::vector<std::string> SingerBook::Names(std::string_view begin, std::size_t most) const {
  const std::string key = support::ToUpper(begin);
  std::vector<const Page*> found;
  for (auto page = pages_.lower_bound(key); page != pages_.end() && page->first.starts_with(key); ++page)
    found.push_back(page->second.get());
  std::stable_sort(found.begin(), found.end(),
                   [](const Page* a, const Page* b) { return a->last > b->last; });
  if (found.size() > most) found.resize(most);
  std::vector<std::string> names;
  names.reserve(found.size());
  for (const Page* page : found) names.push_back(page->name);
  return names;
}

void SingerBook::Rename(std::string_view from, std::string_view to) {
  const std::string key = support::ToUpper(to);
  const auto page = pages_.find(support::ToUpper(from));
  if (page == pages_.end() || (page->first != key && pages_.contains(key))) return;
  Page renamed = *page->second;
  renamed.name = to;
  pages_.erase(page);
  pages_[key] = std::make_shared<const Page>(std::move(renamed));
}

bool SingerBook::FollowFile(std::string_view from, std::string_view to) {
  const auto sung = [from](const SungSong& song) { return song.wish.filename == from; };
  bool any = false;
  for (auto& [key, page] : pages_) {
    if (std::none_of(page->songs.begin(), page->songs.end(), sung)) continue;
    Page renamed = *page;
    for (SungSong& song : renamed.songs) {
      if (sung(song)) song.wish.filename = to;
    }
    page = std::make_shared<const Page>(std::move(renamed));
    any = true;
  }
  return any;
}

void SingerBook::Add(Page page) {
  page.name = CleanName(page.name);
  if (page.name.empty() || pages_.size() >= kMostSingers) return;
  if (page.songs.size() > kMostSongs) page.songs.resize(kMostSongs);
  std::string key = support::ToUpper(page.name);
  pages_.emplace(std::move(key), std::make_shared<const Page>(std::move(page)));
}

}  // namespace singers
