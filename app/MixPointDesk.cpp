// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/MixPointDesk.h"

#include <atomic>
#include <utility>

namespace app {
namespace {

std::size_t Row(int deck) {
  return static_cast<std::size_t>(deck - 1);
}

}  // namespace

struct MixPointDesk::Job final : decks::ScanProgress {
  Job(decks::AudioEngine& engine, decks::SoundControl& sound, decks::MixPointRequest wanted,
      std::shared_ptr<WorkGate> work_gate, std::shared_ptr<Mailbox> answers)
      : request(std::move(wanted)),
        gate(std::move(work_gate)),
        box(std::move(answers)),
        scan(engine, sound) {}

  void Busy(double fraction) override { busy = fraction; }
  bool Cancelled() override { return dropped || gate->Closed(); }

  const decks::MixPointRequest request;
  const std::shared_ptr<WorkGate> gate;
  const std::shared_ptr<Mailbox> box;
  std::atomic<bool> dropped{false};
  std::atomic<double> busy{0};
  decks::MixPointScan scan;                ///< the worker's
  std::optional<decks::MixPoints> points;  ///< the conductor's
};

MixPointDesk::MixPointDesk(decks::AudioEngine& engine, decks::SoundControl& sound, support::Executor& workers,
                           std::shared_ptr<WorkGate> gate, std::shared_ptr<Mailbox> box)
    : engine_(engine), sound_(sound), workers_(workers), gate_(std::move(gate)), box_(std::move(box)) {}

void MixPointDesk::Hold(int deck, const decks::MixPointRequest& request) {
  std::shared_ptr<Job>& job = jobs_[Row(deck)];
  if (job != nullptr && job->request == request) return;
  Drop(deck);
  job = std::make_shared<Job>(engine_, sound_, request, gate_, box_);
  workers_.Post([job] { Work(job); });
}

void MixPointDesk::Drop(int deck) {
  if (const auto job = std::exchange(jobs_[Row(deck)], nullptr)) job->dropped = true;
}

std::optional<decks::MixPoints> MixPointDesk::Of(int deck) const {
  const std::shared_ptr<Job>& job = jobs_[Row(deck)];
  return job == nullptr ? std::nullopt : job->points;
}

double MixPointDesk::Busy(int deck) const {
  const std::shared_ptr<Job>& job = jobs_[Row(deck)];
  return job == nullptr ? 0 : job->busy.load();
}

void MixPointDesk::Work(const std::shared_ptr<Job>& job) {
  job->gate->Pass([&job] {
    if (job->dropped) return;
    const auto points = job->scan.Run(job->request, *job);
    job->busy = 0;
    job->box->Post([job, points] { job->points = points; });
  });
}

}  // namespace app
