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
  Page& page = pages_[key];
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
}

const SingerBook::Page* SingerBook::Of(std::string_view name) const {
  const auto page = pages_.find(support::ToUpper(name));
  return page == pages_.end() ? nullptr : &page->second;
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
    found.push_back(&page->second);
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
  if (support::ToUpper(from) == key) {
    if (const auto page = pages_.find(key); page != pages_.end()) page->second.name = to;
    return;
  }
  if (pages_.contains(key)) return;
  auto page = pages_.extract(support::ToUpper(from));
  if (page.empty()) return;
  page.key() = key;
  page.mapped().name = to;
  pages_.insert(std::move(page));
}

void SingerBook::Add(Page page) {
  page.name = CleanName(page.name);
  if (page.name.empty() || pages_.size() >= kMostSingers) return;
  if (page.songs.size() > kMostSongs) page.songs.resize(kMostSongs);
  pages_.emplace(support::ToUpper(page.name), std::move(page));
}

}  // namespace singers
