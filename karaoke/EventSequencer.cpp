// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/EventSequencer.h"

#include <algorithm>
#include <cmath>

#include "karaoke/SongChase.h"

namespace karaoke {
namespace {

constexpr std::uint8_t kUsualVolume = 100;
constexpr double kMicroseconds = 1e6;

}  // namespace

EventSequencer::EventSequencer(std::shared_ptr<const SongEvents> song,
                               std::unique_ptr<Synthesiser> synthesiser,
                               std::shared_ptr<const SingerWishes> wishes,
                               std::optional<std::size_t> melody_channel, int sample_rate)
    : song_(std::move(song)),
      synthesiser_(std::move(synthesiser)),
      wishes_(std::move(wishes)),
      melody_channel_(melody_channel),
      sample_rate_(sample_rate),
      left_(static_cast<std::size_t>(synthesiser_->Grid())),
      right_(left_.size()),
      used_(left_.size()) {
  for (Keys& keys : sounding_) keys.fill(kSilent);
}

double EventSequencer::FrameOf(const SongEvent& event) const {
  return static_cast<double>(event.at.count()) * sample_rate_ / kMicroseconds;
}

void EventSequencer::Begin(std::int64_t frame) {
  synthesiser_->Reset();
  drums_ = DrumChannels();
  for (Keys& keys : sounding_) keys.fill(kSilent);
  melody_volume_ = kUsualVolume;
  melody_level_ = 1;
  source_ = static_cast<double>(frame);
  used_ = left_.size();
  SongChase chase;
  next_ = 0;
  while (next_ < song_->events.size() && FrameOf(song_->events[next_]) < source_) {
    chase.Pass(*song_, song_->events[next_++]);
  }
  for (const SongEvent& event : chase.Result()) Play(event);
}

void EventSequencer::Make(std::span<float> left, std::span<float> right) {
  std::size_t made = 0;
  while (made < left.size()) {
    if (used_ == left_.size()) RenderBlock();
    const std::size_t count = std::min(left_.size() - used_, left.size() - made);
    std::copy_n(left_.begin() + static_cast<std::ptrdiff_t>(used_), count,
                left.begin() + static_cast<std::ptrdiff_t>(made));
    std::copy_n(right_.begin() + static_cast<std::ptrdiff_t>(used_), count,
                right.begin() + static_cast<std::ptrdiff_t>(made));
    used_ += count;
    made += count;
  }
}

void EventSequencer::RenderBlock() {
  FollowWishes();
  const double block = static_cast<double>(left_.size()) * speed_;
  while (next_ < song_->events.size() && FrameOf(song_->events[next_]) < source_ + block / 2) {
    Play(song_->events[next_++]);
  }
  synthesiser_->Render(left_, right_);
  source_ += block;
  used_ = 0;
}

void EventSequencer::FollowWishes() {
  const float level = std::clamp(wishes_->melody_level.load(std::memory_order_relaxed), 0.0F, 1.0F);
  if (level == melody_level_) return;
  melody_level_ = level;
  SendMelodyVolume();
}

void EventSequencer::Play(const SongEvent& event) {
  const ChannelMessage& message = event.message;
  if (message.status == 0xF0) {
    const std::string& exclusive = song_->exclusives[event.exclusive];
    drums_.FollowExclusive(exclusive);
    synthesiser_->SendExclusive(exclusive);
    if (!IsSystemReset(exclusive)) return;
    for (Keys& keys : sounding_) keys.fill(kSilent);
    melody_volume_ = kUsualVolume;
    if (melody_level_ != 1) SendMelodyVolume();
  } else if (message.IsNoteOn()) {
    PlayNoteOn(message);
  } else if (message.IsNoteOff()) {
    PlayNoteOff(message);
  } else if (message.Kind() == 0xB0) {
    PlayControl(message);
  } else if (message.Kind() == 0xA0) {
    const std::int8_t key = sounding_[message.Channel()][message.data1];
    if (key != kSilent) synthesiser_->Send({message.status, static_cast<std::uint8_t>(key), message.data2});
  } else {
    synthesiser_->Send(message);
  }
}

std::uint8_t EventSequencer::KeyFor(const ChannelMessage& message) const {
  constexpr int kOctave = 12;
  int key = message.data1;
  if (!drums_[message.Channel()]) {
    key += std::clamp(wishes_->semitones.load(std::memory_order_relaxed), -kOctave, kOctave);
  }
  if (key < 0) key += kOctave;
  if (key >= static_cast<int>(kKeys)) key -= kOctave;
  return static_cast<std::uint8_t>(key);
}

void EventSequencer::PlayNoteOn(const ChannelMessage& message) {
  std::int8_t& sounding = sounding_[message.Channel()][message.data1];
  const std::uint8_t key = KeyFor(message);
  if (sounding != kSilent && sounding != key) PlayNoteOff(message);
  sounding = static_cast<std::int8_t>(key);
  synthesiser_->Send({message.status, key, message.data2});
}

void EventSequencer::PlayNoteOff(const ChannelMessage& message) {
  std::int8_t& sounding = sounding_[message.Channel()][message.data1];
  if (sounding == kSilent) return;
  const std::uint8_t status = static_cast<std::uint8_t>(0x80U | message.Channel());
  synthesiser_->Send({status, static_cast<std::uint8_t>(sounding), 0});
  sounding = kSilent;
}

void EventSequencer::PlayControl(const ChannelMessage& message) {
  drums_.Follow(message);
  if (message.data1 == controller::kVolume && message.Channel() == melody_channel_) {
    melody_volume_ = message.data2;
    return SendMelodyVolume();
  }
  if (message.data1 >= controller::kSoundOff && message.data1 != controller::kResetControls)
    sounding_[message.Channel()].fill(kSilent);
  synthesiser_->Send(message);
}

void EventSequencer::SendMelodyVolume() {
  if (!melody_channel_) return;
  const float volume = static_cast<float>(melody_volume_) * melody_level_;
  synthesiser_->Send({static_cast<std::uint8_t>(0xB0U | *melody_channel_), controller::kVolume,
                      static_cast<std::uint8_t>(std::lround(volume))});
}

}  // namespace karaoke
