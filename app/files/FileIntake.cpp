// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/FileIntake.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

#include "catalogue/RowMoves.h"

namespace app {
namespace {

/// Cells that are filled in all the time are no reason to look again and again.
constexpr int kMostLooks = 3;

/// What was read is not read a second time: a file that ends the program must not end each run.
std::vector<IntakeOrder> TakeOrders(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) return {};
  const std::string text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  in.close();
  std::error_code error;
  if (!std::filesystem::remove(file, error)) return {};
  return ReadOrders(text);
}

}  // namespace

struct FileIntake::Job {
  std::shared_ptr<IntakeBatch> batch;
  support::Executor& workers;
  std::shared_ptr<WorkGate> gate;
  std::function<void()> finish;
};

catalogue::track_table& FileIntake::Tables::Of(ListId list) const {
  if (list == ListId::Catalogue) return catalogue;
  if (list == ListId::Karaoke) return karaoke;
  return playlists[static_cast<std::size_t>(list) - static_cast<std::size_t>(ListId::Playlist1)];
}

FileIntake::FileIntake(Outside outside, const Tables& tables, std::shared_ptr<WorkGate> gate,
                       std::shared_ptr<Mailbox> box)
    : outside_(std::move(outside)), tables_(tables), gate_(std::move(gate)), box_(std::move(box)) {}

void FileIntake::StartUp() {
  outside_.workers.Post([this, gate = gate_, box = box_] {
    gate->Pass([&] {
      auto orders = TakeOrders(outside_.orders);
      if (orders.empty()) return;
      box->Post([this, orders = std::move(orders)] {
        for (const IntakeOrder& order : orders) Add(order, outside_.went_on);
      });
    });
  });
}

void FileIntake::Add(IntakeOrder order, Done done) {
  const ListId list = order.list;
  if (order.before > 1 && IsPlaylist(list)) {
    order.below = tables_.Of(list).Cell(order.before - 1, catalogue::track::kFilename);
  }
  Of(list).orders.push_back({std::make_shared<const IntakeOrder>(std::move(order)), std::move(done)});
  if (Of(list).orders.size() == 1) StartNext(list);
}

AddingProgress FileIntake::Progress(ListId list) const {
  const Line& line = lines_[static_cast<std::size_t>(list)];
  AddingProgress progress;
  if (line.batch == nullptr) return progress;
  progress = line.batch->Progress();
  for (auto order = line.orders.begin() + 1; order < line.orders.end(); ++order) {
    progress.total += static_cast<int>(order->order->paths.size());
  }
  return progress;
}

void FileIntake::Stop(ListId list) {
  Line& line = Of(list);
  if (line.batch == nullptr) return;
  line.orders.erase(line.orders.begin() + 1, line.orders.end());
  line.batch->Stop();
}

void FileIntake::StartNext(ListId list) {
  Line& line = Of(list);
  line.looks = 0;
  line.batch = std::make_shared<IntakeBatch>(line.orders.front().order,
                                             outside_.names ? outside_.names() : catalogue::NameRule(),
                                             outside_.ports, tables_.catalogue, tables_.karaoke);
  auto finish = [this, list, box = box_] { box->Post([this, list] { Finish(list); }); };
  auto job = std::make_shared<Job>(Job{line.batch, outside_.workers, gate_, std::move(finish)});
  outside_.workers.Post([job] { Work(job); });
}

void FileIntake::Work(const std::shared_ptr<Job>& job) {
  job->gate->Pass([&job] {
    if (!job->batch->Step()) return job->finish();
    job->workers.Post([job] { Work(job); });
  });
}

void FileIntake::Finish(ListId list) {
  Line& line = Of(list);
  const std::shared_ptr<IntakeBatch> batch = line.batch;
  if (!batch->IsUpToDate(tables_.catalogue, tables_.karaoke) && line.looks++ < kMostLooks) {
    return outside_.workers.Post(
        [this, list, batch, gate = gate_, box = box_, tracks = tables_.catalogue, songs = tables_.karaoke] {
          gate->Pass([&] {
            batch->LeaveOutKnown(tracks, songs);
            box->Post([this, list] { Finish(list); });
          });
        });
  }
  const IntakeOutcome outcome = batch->Outcome();
  const Done done = std::move(line.orders.front().done);
  PutIn(*batch);
  line.orders.pop_front();
  line.batch.reset();
  // What it knew of a hundred thousand files is let go of by a worker.
  outside_.workers.Post([batch] { static_cast<void>(batch); });
  if (!line.orders.empty()) StartNext(list);
  if (done) done(outcome);
}

void FileIntake::PutIn(IntakeBatch& batch) {
  const bool tracks = batch.NewTracks().Rows() > 0, songs = batch.NewSongs().Rows() > 0;
  tables_.catalogue.AppendAll(std::move(batch.NewTracks()));
  tables_.karaoke.AppendAll(std::move(batch.NewSongs()));
  const IntakeOrder& order = batch.Order();
  if (IsPlaylist(order.list)) {
    catalogue::track_table& playlist = tables_.Of(order.list);
    const int place = PlaceIn(playlist, order);
    const bool listed = batch.PlaylistRows().Rows() > 0;
    catalogue::InsertRows(playlist, place, std::move(batch.PlaylistRows()));
    if (listed && outside_.listed) outside_.listed(playlist, place);
  }
  if (tracks) outside_.changed(ListId::Catalogue);
  if (songs) outside_.changed(ListId::Karaoke);
}

int FileIntake::PlaceIn(const catalogue::track_table& playlist, const IntakeOrder& order) const {
  namespace track = catalogue::track;
  const int end = playlist.Rows() + 1;
  if (order.before == 0) return end;
  const bool as_it_was =
      order.below.empty() || playlist.Cell(order.before - 1, track::kFilename) == order.below;
  if (as_it_was) return std::min(order.before, end);
  const int above = catalogue::RowNearest(playlist, track::kFilename, order.below, order.before - 1);
  return above > 0 ? above + 1 : std::min(order.before, end);
}

void FileIntake::Flush() {
  std::vector<std::shared_ptr<const IntakeOrder>> left;
  for (const Line& line : lines_) {
    for (const Waiting& waiting : line.orders) left.push_back(waiting.order);
  }
  // Those who complain about a disk that takes nothing have done so already.
  if (!left.empty()) static_cast<void>(outside_.files.Save(outside_.orders, OrdersText(left)));
}

}  // namespace app
