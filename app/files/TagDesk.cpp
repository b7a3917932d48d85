// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/TagDesk.h"

#include <atomic>
#include <map>
#include <utility>

#include "catalogue/AnalysisParts.h"
#include "support/Mutex.h"

namespace app {

struct TagDesk::Shared {
  Shared(const TagPorts& outside, support::Executor& executor, std::shared_ptr<WorkGate> open,
         std::shared_ptr<Keeping> held, Complain teller)
      : ports(outside),
        workers(executor),
        gate(std::move(open)),
        keeping(std::move(held)),
        complain(std::move(teller)) {}

  void WriteNext(const std::string& path);
  support::Result<void> Put(const std::string& path, const catalogue::MixingTags& tags);

  const TagPorts ports;
  support::Executor& workers;
  const std::shared_ptr<WorkGate> gate;
  const std::shared_ptr<Keeping> keeping;
  const Complain complain;
  support::Mutex mutex;
  std::map<std::string, catalogue::MixingTags> waiting DJ_GUARDED_BY(mutex);
  std::atomic<bool> complained{false};
};

TagDesk::TagDesk(const TagPorts& ports, support::Executor& workers, std::shared_ptr<WorkGate> gate,
                 std::shared_ptr<Keeping> keeping, Complain complain)
    : shared_(std::make_shared<Shared>(ports, workers, std::move(gate), std::move(keeping),
                                       std::move(complain))) {}

void TagDesk::Write(const std::string& path, const catalogue::MixingTags& tags) {
  if (shared_->ports.writer == nullptr) return;
  {
    support::MutexLock lock(shared_->mutex);
    if (!shared_->waiting.insert_or_assign(path, tags).second) return;
  }
  shared_->workers.Post([shared = shared_, path] { shared->gate->Pass([&] { shared->WriteNext(path); }); });
}

void TagDesk::Shared::WriteNext(const std::string& path) {
  support::MutexLock held(keeping->Of(path));
  catalogue::MixingTags tags;
  {
    support::MutexLock lock(mutex);
    tags = std::move(waiting.extract(path).mapped());
  }
  const auto written = Put(path, tags);
  if (!written && !complained.exchange(true)) complain(written.Failure());
}

support::Result<void> TagDesk::Shared::Put(const std::string& path, const catalogue::MixingTags& tags) {
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
