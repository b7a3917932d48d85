// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/TagKeeper.h"

#include <atomic>
#include <condition_variable>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <utility>

#include "app/work/WorkGate.h"
#include "catalogue/AnalysisParts.h"
#include "support/Mutex.h"
#include "support/Text.h"

namespace app {
namespace {

constexpr std::size_t kLinesAFile = 5;

bool FitsInALine(std::string_view text) {
  return text.find_first_of("\r\n") == std::string_view::npos;
}

std::optional<std::string> ValueIn(std::string_view line) {
  return line.empty() ? std::nullopt : std::optional<std::string>(line);
}

}  // namespace

std::string TagListText(const std::vector<TagToWrite>& files) {
  std::string text;
  for (const auto& [path, tags] : files) {
    std::string lines;
    bool fits = !path.empty() && FitsInALine(path);
    lines += path + "\r\n";
    for (const auto* value : {&tags.gain, &tags.start_mix_point, &tags.end_mix_point, &tags.bpm}) {
      fits = fits && FitsInALine(value->value_or(""));
      lines += value->value_or("") + "\r\n";
    }
    if (fits) text += lines;
  }
  return text;
}

std::vector<TagToWrite> ReadTagList(std::string_view text) {
  const auto lines = support::SplitLines(text);
  std::vector<TagToWrite> files;
  for (std::size_t i = 0; i + kLinesAFile <= lines.size(); i += kLinesAFile) {
    if (lines[i].empty()) break;
    files.push_back({std::string(lines[i]),
                     {.gain = ValueIn(lines[i + 1]),
                      .start_mix_point = ValueIn(lines[i + 2]),
                      .end_mix_point = ValueIn(lines[i + 3]),
                      .bpm = ValueIn(lines[i + 4])}});
  }
  return files;
}

struct TagKeeper::Shared {
  Shared(const TagPorts& outside, support::Executor& executor, std::shared_ptr<FileLocks> held,
         Complain teller)
      : ports(outside), workers(executor), locks(std::move(held)), complain(std::move(teller)) {}

  void WriteNext(const std::string& path);
  /// Paths that nothing waited for yet.
  std::vector<std::string> TakeUpList();
  static void PostOne(const std::shared_ptr<Shared>& shared, const std::string& path);
  void WaitUntilDone(std::chrono::steady_clock::time_point deadline);
  void SaveList();
  support::Result<void> Put(const std::string& path, const catalogue::MixingTags& tags);

  const TagPorts ports;
  support::Executor& workers;
  WorkGate gate;  // its own: it closes after all the others, so that the workers are free for the tags
  const std::shared_ptr<FileLocks> locks;
  const Complain complain;
  support::Mutex mutex;
  std::condition_variable done;
  std::map<std::string, catalogue::MixingTags> waiting DJ_GUARDED_BY(mutex);
  std::map<std::string, catalogue::MixingTags> in_hand DJ_GUARDED_BY(mutex);
  bool list_unread DJ_GUARDED_BY(mutex) = false;
  bool list_stands DJ_GUARDED_BY(mutex) = false;  ///< on the disk, with something in it
  std::atomic<bool> complained{false};
};

TagKeeper::TagKeeper(const TagPorts& ports, support::Executor& workers, std::shared_ptr<FileLocks> locks,
                     Complain complain)
    : shared_(std::make_shared<Shared>(ports, workers, std::move(locks), std::move(complain))) {}

void TagKeeper::StartUp() {
  if (shared_->ports.writer == nullptr) return;
  {
    support::MutexLock lock(shared_->mutex);
    shared_->list_unread = true;
  }
  shared_->workers.Post([shared = shared_] {
    shared->gate.Pass([&shared] {
      for (const std::string& path : shared->TakeUpList()) shared->PostOne(shared, path);
    });
  });
}

/// What was asked for in this run is newer.
std::vector<std::string> TagKeeper::Shared::TakeUpList() {
  std::ifstream file(ports.list, std::ios::binary);
  const std::string text(std::istreambuf_iterator<char>(file), {});
  support::MutexLock lock(mutex);
  std::vector<std::string> taken_up;
  if (!std::exchange(list_unread, false)) return taken_up;
  list_stands = !text.empty();
  for (TagToWrite& left : ReadTagList(text)) {
    if (waiting.emplace(left.path, std::move(left.tags)).second) taken_up.push_back(left.path);
  }
  return taken_up;
}

void TagKeeper::Shared::PostOne(const std::shared_ptr<Shared>& shared, const std::string& path) {
  shared->workers.Post([shared, path] { shared->gate.Pass([&] { shared->WriteNext(path); }); });
}

void TagKeeper::Write(const std::string& path, const catalogue::MixingTags& tags) {
  if (shared_->ports.writer == nullptr) return;
  {
    support::MutexLock lock(shared_->mutex);
    if (!shared_->waiting.insert_or_assign(path, tags).second) return;
  }
  Shared::PostOne(shared_, path);
}

void TagKeeper::Shared::WriteNext(const std::string& path) {
  support::MutexLock held(locks->Of(path));
  catalogue::MixingTags tags;
  {
    support::MutexLock lock(mutex);
    auto next = waiting.extract(path);
    if (next.empty()) return;
    tags = next.mapped();
    in_hand.insert(std::move(next));
  }
  const auto written = Put(path, tags);
  {
    support::MutexLock lock(mutex);
    in_hand.erase(path);
    done.notify_all();
  }
  if (!written && !complained.exchange(true)) complain(written.Failure());
}

bool TagKeeper::ShutDown(std::chrono::milliseconds patience) {
  if (shared_->ports.writer == nullptr) return true;
  const auto deadline = std::chrono::steady_clock::now() + patience;
  shared_->WaitUntilDone(deadline);
  const bool all_out = shared_->gate.Close(patience / 8);  // the file that one is just at
  static_cast<void>(shared_->TakeUpList());                // where no worker came to it
  shared_->SaveList();
  return all_out;
}

void TagKeeper::Shared::WaitUntilDone(std::chrono::steady_clock::time_point deadline) {
  support::MutexLock lock(mutex);
  while (!(waiting.empty() && in_hand.empty()) && std::chrono::steady_clock::now() < deadline) {
    lock.WaitUntil(done, deadline);
  }
}

void TagKeeper::Shared::SaveList() {
  std::string text;
  {
    support::MutexLock lock(mutex);
    std::map<std::string, catalogue::MixingTags> all = waiting;
    all.insert(in_hand.begin(), in_hand.end());
    std::vector<TagToWrite> left;
    for (auto& [path, tags] : all) left.push_back({path, tags});
    text = TagListText(left);
    if (text.empty() && !list_stands) return;
  }
  // A list that cannot be saved costs tags alone: rows and side store keep the values.
  static_cast<void>(ports.files.Save(ports.list, text));
}

support::Result<void> TagKeeper::Shared::Put(const std::string& path, const catalogue::MixingTags& tags) {
  const auto read = ports.reader.Read(path);
  if (!read) return read.Failure();
  const std::string block = catalogue::WithMixingTags(read.Value().text_block, tags);
  const auto items = catalogue::ItemsOf(tags);
  const catalogue::MixingTags old = catalogue::ScanUserItems(read.Value().user_items);
  const auto differs = [](const std::optional<std::string>& is, const std::optional<std::string>& wanted) {
    return is && wanted && *is != *wanted;
  };
  if (block == read.Value().text_block && !differs(old.gain, tags.gain) &&
      !differs(old.start_mix_point, tags.start_mix_point) && !differs(old.end_mix_point, tags.end_mix_point))
    return {};
  const auto before = ports.store == nullptr ? std::nullopt : ports.store->StampOf(path);
  auto written = ports.writer->Write(path, block, items);
  if (!written || !before) return written;
  const auto after = ports.store->StampOf(path);
  return after ? catalogue::CarryOver(*ports.store, path, *before, *after) : written;
}

}  // namespace app
