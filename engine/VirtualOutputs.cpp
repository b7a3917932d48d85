// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/VirtualOutputs.h"

#include <algorithm>
#include <utility>

#include "support/Sentences.h"

namespace engine {
namespace {

constexpr auto kWorkEvery = std::chrono::milliseconds(5);

}  // namespace

class VirtualOutputs::Device final : public OutputDevice {
 public:
  Device(VirtualOutputs& outputs, OutputDeviceInfo info, const OutputRequest& request, RenderSource& source)
      : outputs_(outputs),
        info_(std::move(info)),
        sample_rate_(request.sample_rate),
        true_rate_(sample_rate_ * (1 + outputs.clocks_[info_.id] * 1e-6)),
        latency_(outputs.LatencyOf(info_.id, std::chrono::milliseconds(request.buffer_ms))),
        blocks_(outputs.blocks_),
        source_(source),
        due_(outputs.time_.Now()) {
    if (blocks_.empty()) blocks_ = {sample_rate_ * request.period_ms / 1000};
    outputs_.open_.push_back(this);
  }
  ~Device() override { std::erase(outputs_.open_, this); }

  [[nodiscard]] const OutputDeviceInfo& Info() const noexcept override { return info_; }
  [[nodiscard]] PlayedMark Played() const noexcept override { return mark_; }
  [[nodiscard]] bool Lost() const noexcept override { return lost_; }
  [[nodiscard]] std::uint64_t Gaps() const noexcept override { return gaps_; }
  [[nodiscard]] std::string MovedTo() const override { return moved_to_; }

  void SetBuffer(int buffer_ms, int period_ms) noexcept override {
    buffer_ms_ = buffer_ms;
    const support::Duration wanted = outputs_.LatencyOf(info_.id, std::chrono::milliseconds(buffer_ms));
    // What it holds too much is played before it asks again.
    start_ += latency_ - wanted;
    latency_ = wanted;
    due_ = start_ + FramesTime(rendered_);
    if (outputs_.blocks_.empty()) blocks_[0] = sample_rate_ * period_ms / 1000;
  }
  [[nodiscard]] int BufferMs() const { return buffer_ms_; }

  void Lose() { lost_ = true; }
  void RunDry() { ++gaps_; }
  void MoveTo(const std::string& id) { moved_to_ = id; }
  [[nodiscard]] support::TimePoint Due() const { return due_; }

  void RenderBlock() {
    const auto behind =
        static_cast<std::int64_t>(std::chrono::duration<double>(latency_).count() * true_rate_);
    mark_ = {std::max<std::int64_t>(rendered_ - behind, 0), due_};
    if (rendered_ < behind) mark_.at = due_ + latency_ - FramesTime(rendered_);
    const int frames = blocks_[next_block_];
    next_block_ = (next_block_ + 1) % blocks_.size();
    block_.assign(static_cast<std::size_t>(frames) * info_.speakers.size(), 0.0F);
    source_.Render(block_);
    rendered_ += frames;
    due_ = start_ + FramesTime(rendered_);
    const auto listener = outputs_.listeners_.find(moved_to_.empty() ? info_.id : moved_to_);
    if (listener != outputs_.listeners_.end()) listener->second(block_);
  }

 private:
  [[nodiscard]] support::Duration FramesTime(std::int64_t frames) const {
    return std::chrono::duration_cast<support::Duration>(
        std::chrono::duration<double>(static_cast<double>(frames) / true_rate_));
  }

  VirtualOutputs& outputs_;
  const OutputDeviceInfo info_;
  const int sample_rate_;
  const double true_rate_;
  support::Duration latency_;
  std::vector<int> blocks_;
  RenderSource& source_;
  support::TimePoint due_;
  support::TimePoint start_ = due_;
  std::size_t next_block_ = 0;
  std::int64_t rendered_ = 0;
  std::vector<float> block_;
  PlayedMark mark_{0, support::TimePoint::max()};
  bool lost_ = false;
  int buffer_ms_ = 0;
  std::uint64_t gaps_ = 0;
  std::string moved_to_;
};

VirtualOutputs::VirtualOutputs(VirtualTime& time, std::vector<OutputDeviceInfo> devices)
    : time_(time), devices_(std::move(devices)) {}

support::Result<std::unique_ptr<OutputDevice>> VirtualOutputs::Open(const OutputRequest& request,
                                                                    RenderSource& source) {
  const auto found = std::find_if(devices_.begin(), devices_.end(), [&](const OutputDeviceInfo& info) {
    return request.id.empty() ? info.is_default : info.id == request.id;
  });
  if (found == devices_.end() || broken_.contains(found->id)) {
    return support::Failed(support::ErrorCode::Unavailable, support::Sentence::OutputBusy);
  }
  return std::unique_ptr<OutputDevice>(std::make_unique<Device>(*this, *found, request, source));
}

support::Duration VirtualOutputs::LatencyOf(const std::string& id, support::Duration wanted) const {
  const auto own = latencies_.find(id);
  return own != latencies_.end() ? own->second : latency_.value_or(wanted);
}

std::unique_ptr<OutputDevice> VirtualOutputs::OpenSilent(OutputDeviceInfo info, const OutputRequest& request,
                                                         RenderSource& source) {
  info.id = "";
  return std::make_unique<Device>(*this, std::move(info), request, source);
}

VirtualOutputs::Device* VirtualOutputs::Next(support::TimePoint until) const {
  Device* next = nullptr;
  for (Device* device : open_) {
    if (device->Lost() || device->Due() >= until) continue;
    if (next == nullptr || device->Due() < next->Due()) next = device;
  }
  return next;
}

void VirtualOutputs::Advance(support::Duration by) {
  const support::TimePoint until = time_.Now() + by;
  while (true) {
    Device* next = Next(std::min(until, next_work_));
    if (next == nullptr && next_work_ >= until) break;
    time_.MoveTo(std::max(time_.Now(), next != nullptr ? next->Due() : next_work_));
    if (before_block_) before_block_();
    if (next == nullptr) {
      next_work_ = time_.Now() + kWorkEvery;
      continue;
    }
    // That work may have closed the output, or opened others.
    if (std::find(open_.begin(), open_.end(), next) != open_.end() && !next->Lost()) next->RenderBlock();
  }
  time_.MoveTo(until);
}

void VirtualOutputs::Remove(const std::string& id) {
  std::erase_if(devices_, [&](const OutputDeviceInfo& info) { return info.id == id; });
  for (Device* device : open_) {
    if (device->Info().id == id) device->Lose();
  }
  if (changed_) changed_();
}

void VirtualOutputs::Add(const OutputDeviceInfo& info) {
  devices_.push_back(info);
  if (changed_) changed_();
}

void VirtualOutputs::MarkSuspended(const std::string& id, bool suspended) {
  for (OutputDeviceInfo& info : devices_) {
    if (info.id == id) info.suspended = suspended;
  }
  SetBroken(id, suspended);
}

void VirtualOutputs::RunDry(const std::string& id) {
  for (Device* device : open_) {
    if (device->Info().id == id) device->RunDry();
  }
}

void VirtualOutputs::Suspend(const std::string& id) {
  MarkSuspended(id, true);
  for (Device* device : open_) {
    if (device->Info().id == id) device->Lose();
  }
}

void VirtualOutputs::Wake(const std::string& id) {
  MarkSuspended(id, false);
}

void VirtualOutputs::MoveByHand(const std::string& from, const std::string& to) {
  for (Device* device : open_) {
    if (device->Info().id == from) device->MoveTo(to);
  }
}

int VirtualOutputs::BufferOf(const std::string& id) const {
  for (const Device* device : open_) {
    if (device->Info().id == id) return device->BufferMs();
  }
  return 0;
}

void VirtualOutputs::SetBroken(const std::string& id, bool broken) {
  if (broken) {
    broken_.insert(id);
  } else {
    broken_.erase(id);
  }
}

}  // namespace engine
