// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/testing/VirtualInputs.h"

#include <algorithm>
#include <utility>

#include "support/Sentences.h"

namespace engine::testing {

InputDeviceInfo Microphone(const std::string& id, bool is_default, int channels, int sample_rate) {
  return {id, "Microphone " + id, channels, sample_rate, is_default, false, ""};
}

class VirtualInputs::Device final : public InputDevice {
 public:
  Device(VirtualInputs& inputs, InputDeviceInfo info, int block_ms, CaptureSink& sink)
      : inputs_(inputs),
        info_(std::move(info)),
        sink_(sink),
        true_rate_(info_.sample_rate * (1 + inputs.millionths_ * 1e-6)),
        block_frames_(info_.sample_rate * block_ms / 1000),
        start_(inputs.time_.Now()) {
    inputs_.open_.push_back(this);
  }
  ~Device() override { std::erase(inputs_.open_, this); }

  [[nodiscard]] const InputDeviceInfo& Info() const noexcept override { return info_; }
  [[nodiscard]] bool Lost() const noexcept override { return lost_; }
  void Lose() { lost_ = true; }

  [[nodiscard]] support::TimePoint Due() const {
    return TimeOf(recorded_ + block_frames_) + (blocks_ % 2 == 1 ? inputs_.late_ : support::Duration{});
  }
  void Record() {
    const auto channels = static_cast<std::size_t>(info_.channels);
    block_.clear();
    for (std::int64_t i = 0; i < block_frames_; ++i) {
      const float heard =
          inputs_.air_(std::chrono::duration<double>(TimeOf(recorded_++).time_since_epoch()).count());
      for (std::size_t c = 0; c < channels; ++c)
        block_.push_back(channels > 1 && c + 1 == channels ? 0 : heard);
    }
    ++blocks_;
    if (!inputs_.hangs_) sink_.Capture(block_);
  }

 private:
  [[nodiscard]] support::TimePoint TimeOf(std::int64_t frame) const {
    const std::chrono::duration<double> since(static_cast<double>(frame) / true_rate_);
    return start_ + std::chrono::duration_cast<support::Duration>(since);
  }

  VirtualInputs& inputs_;
  const InputDeviceInfo info_;
  CaptureSink& sink_;
  const double true_rate_;
  const std::int64_t block_frames_;
  const support::TimePoint start_;
  std::int64_t recorded_ = 0;
  std::int64_t blocks_ = 0;
  std::vector<float> block_;
  bool lost_ = false;
};

VirtualInputs::VirtualInputs(VirtualTime& time, std::vector<InputDeviceInfo> inputs)
    : time_(time), inputs_(std::move(inputs)) {}

support::Result<std::unique_ptr<InputDevice>> VirtualInputs::Open(const InputRequest& request,
                                                                  CaptureSink& sink) {
  const auto found = std::find_if(inputs_.begin(), inputs_.end(),
                                  [&](const InputDeviceInfo& info) { return info.id == request.id; });
  if (found == inputs_.end()) {
    return support::Failed(support::ErrorCode::Unavailable, support::Sentence::InputBusy, {request.id});
  }
  return std::unique_ptr<InputDevice>(std::make_unique<Device>(*this, *found, request.block_ms, sink));
}

void VirtualInputs::CatchUp() {
  const support::TimePoint now = time_.Now();
  while (true) {
    const auto next = std::min_element(open_.begin(), open_.end(),
                                       [](const Device* a, const Device* b) { return a->Due() < b->Due(); });
    if (next == open_.end() || (*next)->Due() > now || (*next)->Lost()) break;
    time_.MoveTo((*next)->Due());
    (*next)->Record();
  }
  time_.MoveTo(now);
}

void VirtualInputs::Remove(const std::string& id) {
  std::erase_if(inputs_, [&](const InputDeviceInfo& info) { return info.id == id; });
  for (Device* device : open_) {
    if (device->Info().id == id) device->Lose();
  }
  if (changed_) changed_();
}

void VirtualInputs::Add(const InputDeviceInfo& info) {
  inputs_.push_back(info);
  if (changed_) changed_();
}

void VirtualInputs::Mute(const std::string& id, bool muted) {
  for (InputDeviceInfo& info : inputs_) {
    if (info.id == id) info.muted = muted;
  }
  if (changed_) changed_();
}

}  // namespace engine::testing
