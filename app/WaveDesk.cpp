// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/WaveDesk.h"

#include <algorithm>
#include <atomic>
#include <utility>

namespace app {
namespace {

std::size_t PlaceOf(int deck) {
  return static_cast<std::size_t>(deck - 1);
}

}  // namespace

struct WaveDesk::Job {
  Job(decks::AudioEngine& engine, std::string file, decks::SampleFormat format, support::Executor& executor,
      std::shared_ptr<WorkGate> work_gate, std::shared_ptr<Mailbox> answers)
      : filename(std::move(file)),
        workers(executor),
        gate(std::move(work_gate)),
        box(std::move(answers)),
        scan(engine, filename, format) {}

  const std::string filename;
  support::Executor& workers;
  const std::shared_ptr<WorkGate> gate;
  const std::shared_ptr<Mailbox> box;
  std::atomic<bool> dropped{false};
  decks::WaveScan scan;                     ///< the worker's
  std::shared_ptr<const music::Wave> wave;  ///< the conductor's
};

WaveDesk::WaveDesk(decks::AudioEngine& engine, support::Executor& workers, std::shared_ptr<WorkGate> gate,
                   std::shared_ptr<Mailbox> box)
    : engine_(engine), workers_(workers), gate_(std::move(gate)), box_(std::move(box)) {}

void WaveDesk::Hold(int deck, const std::string& filename, decks::SampleFormat format) {
  std::shared_ptr<Job>& job = jobs_[PlaceOf(deck)];
  if (job != nullptr && job->filename == filename) return;
  Drop(deck);
  const auto same = std::find_if(jobs_.begin(), jobs_.end(), [&](const std::shared_ptr<Job>& other) {
    return other != nullptr && other->filename == filename;
  });
  if (same != jobs_.end()) {
    job = *same;
    return;
  }
  if (format.sample_rate <= 0 || format.channels <= 0) return;
  job = std::make_shared<Job>(engine_, filename, format, workers_, gate_, box_);
  workers_.Post([job] { Work(job); });
}

void WaveDesk::Drop(int deck) {
  const std::shared_ptr<Job> job = std::exchange(jobs_[PlaceOf(deck)], nullptr);
  if (job != nullptr && std::find(jobs_.begin(), jobs_.end(), job) == jobs_.end()) job->dropped = true;
}

std::shared_ptr<const music::Wave> WaveDesk::Of(int deck) const {
  const std::shared_ptr<Job>& job = jobs_[PlaceOf(deck)];
  return job == nullptr ? nullptr : job->wave;
}

void WaveDesk::Work(const std::shared_ptr<Job>& job) {
  job->gate->Pass([&job] {
    if (job->dropped) return job->scan.Close();
    if (job->scan.Step()) return job->workers.Post([job] { Work(job); });
    auto wave = std::make_shared<const music::Wave>(job->scan.Finish());
    job->box->Post([job, wave = std::move(wave)] { job->wave = wave; });
  });
}

}  // namespace app
