// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/RenderCore.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <utility>

#include "engine/NoDenormals.h"
#include "support/RealtimeScope.h"

namespace engine {

RenderCore::RenderCore(int sample_rate, const SpeakerMap& speakers, const support::Clock& clock)
    : sample_rate_(sample_rate),
      clock_(clock),
      curve_(sample_rate),
      look_ahead_(Limiter(sample_rate).LookAhead()),
      microphone_(sample_rate),
      phones_(sample_rate),
      elsewhere_(sample_rate),
      meter_(sample_rate) {
  SetSpeakers(speakers);
}

void RenderCore::SetSpeakers(const SpeakerMap& speakers) {
  speakers_ = speakers;
  // Those that stay keep what their limiters look ahead at: nothing is missing where an output is replaced.
  const std::size_t wanted = speakers.Buses().size();
  if (buses_.size() > wanted) buses_.resize(wanted);
  while (buses_.size() < wanted) buses_.push_back(std::make_unique<Bus>(sample_rate_));
  TellGains();
}

bool RenderCore::Attach(Stream& stream) noexcept {
  for (std::atomic<Stream*>& slot : slots_) {
    Stream* empty = nullptr;
    if (slot.compare_exchange_strong(empty, &stream, std::memory_order_acq_rel)) return true;
  }
  return false;
}

void RenderCore::DetachAll() noexcept {
  for (std::atomic<Stream*>& slot : slots_) {
    if (Stream* stream = slot.exchange(nullptr)) stream->detached.store(true, std::memory_order_release);
  }
  for (Voice& voice : voices_) voice.End();
}

void RenderCore::Render(std::span<float> interleaved) noexcept {
  const support::RealtimeScope realtime;
  const NoDenormals flushed;
  const support::TimePoint begin = clock_.Now();
  const int channels = speakers_.Channels();
  if (channels == 0) return std::fill(interleaved.begin(), interleaved.end(), 0.0F);
  const int frames = static_cast<int>(interleaved.size()) / channels;
  std::int64_t frame = frames_.load(std::memory_order_relaxed);
  FollowSlots();
  SortCommands();
  DropCommands();
  mixed_.Write({frame, begin});
  const PhonesMix::Wish& wish = phones_.Take();
  elsewhere_.Begin(begin, frames);
  const Ears ears = FindEars(wish);
  const bool microphone = microphone_.Begin(begin, frame, frames);
  for (int done = 0; done < frames;) {
    RunCommands(frame);
    const int piece = PieceLength(frames - done, frame);
    const std::span<float> part = interleaved.subspan(static_cast<std::size_t>(done * channels),
                                                      static_cast<std::size_t>(piece * channels));
    MixPiece(piece, frame);
    FeedPassing(static_cast<std::size_t>(piece), frame);
    MixPhones(static_cast<std::size_t>(piece), ears, wish.mix);
    if (microphone) AddMicrophone(piece);
    GivePiece(part, channels);
    MeterPiece(static_cast<std::size_t>(piece), frame - look_ahead_);
    FeedTaps(static_cast<std::size_t>(piece), frame - look_ahead_);
    done += piece;
    frame += piece;
  }
  frames_.store(frame, std::memory_order_release);
  TellPassing(frame, frames, begin);
  TellGains();
  int late = 0;
  for (Voice& voice : voices_) {
    if (voice.Of() == nullptr) continue;
    voice.Publish();
    late += voice.TakeLate();
    bad_.fetch_add(voice.TakeBad(), std::memory_order_relaxed);
  }
  callbacks_.fetch_add(1, std::memory_order_relaxed);
  late_.fetch_add(static_cast<std::uint64_t>(late), std::memory_order_relaxed);
  MeasureLoad(begin, frames);
}

void RenderCore::FollowSlots() noexcept {
  for (std::size_t i = 0; i < slots_.size(); ++i) {
    Stream* stream = slots_[i].load(std::memory_order_acquire);
    if (stream == nullptr) continue;
    if (voices_[i].Of() != stream) voices_[i].Begin(*stream, curve_);
    if (voices_[i].TakeRequests()) continue;
    voices_[i].End();
    slots_[i].store(nullptr, std::memory_order_release);
    stream->detached.store(true, std::memory_order_release);
  }
}

void RenderCore::SortCommands() noexcept {
  while (waiting_count_ < kWaiting) {
    Command* next = commands_.Front();
    if (next == nullptr) return;
    std::size_t at = waiting_count_++;
    for (; at > 0 && waiting_[at - 1].at > next->at; --at) waiting_[at] = waiting_[at - 1];
    waiting_[at] = *next;
    commands_.DropFront();
  }
}

Voice* RenderCore::VoiceOf(std::uint32_t stream) noexcept {
  const auto found = std::find_if(voices_.begin(), voices_.end(), [stream](const Voice& voice) {
    return voice.Of() != nullptr && voice.Of()->Id() == stream;
  });
  return found == voices_.end() ? nullptr : &*found;
}

bool RenderCore::Schedule(Stream& stream, Command command) noexcept {
  if (stream.scheduled.load(std::memory_order_acquire) >= Stream::kScheduled) return false;
  command.stream = stream.Id();
  command.cancels = stream.cancelled.load(std::memory_order_acquire);
  command.asked = stream.VolumeAsked();
  stream.scheduled.fetch_add(1, std::memory_order_acq_rel);
  if (commands_.Push(command)) return true;
  stream.scheduled.fetch_sub(1, std::memory_order_acq_rel);
  return false;
}

void RenderCore::DropCommands() noexcept {
  std::size_t kept = 0;
  for (std::size_t i = 0; i < waiting_count_; ++i) {
    const Voice* voice = VoiceOf(waiting_[i].stream);
    if (voice == nullptr) continue;
    Stream& stream = *voice->Of();
    if (waiting_[i].cancels == stream.cancelled.load(std::memory_order_acquire)) {
      waiting_[kept++] = waiting_[i];
    } else {
      stream.scheduled.fetch_sub(1, std::memory_order_acq_rel);
    }
  }
  waiting_count_ = kept;
}

void RenderCore::RunCommands(std::int64_t frame) noexcept {
  std::size_t due = 0;
  while (due < waiting_count_ && waiting_[due].at <= frame) Run(waiting_[due++]);
  if (due == 0) return;
  std::move(waiting_.begin() + static_cast<std::ptrdiff_t>(due),
            waiting_.begin() + static_cast<std::ptrdiff_t>(waiting_count_), waiting_.begin());
  waiting_count_ -= due;
}

void RenderCore::Run(const Command& command) noexcept {
  Voice* voice = VoiceOf(command.stream);
  if (voice == nullptr) return;
  voice->Of()->scheduled.fetch_sub(1, std::memory_order_acq_rel);
  switch (command.kind) {
    case Command::Kind::Start:
      voice->Start();
      break;
    case Command::Kind::Pause:
      voice->Pause();
      break;
    case Command::Kind::Ramp:
      if (voice->Of()->VolumeAsked() == command.asked) voice->Ramp(command.volume, command.frames);
      break;
  }
}

int RenderCore::PieceLength(int frames, std::int64_t frame) const noexcept {
  frames = std::min(frames, kPieceFrames);
  if (waiting_count_ == 0) return frames;
  return static_cast<int>(std::clamp<std::int64_t>(waiting_[0].at - frame, 1, frames));
}

void RenderCore::MixPiece(int count, std::int64_t frame) noexcept {
  const std::size_t frames = static_cast<std::size_t>(count);
  for (const auto& bus : buses_) std::fill_n(bus->stereo.begin(), 2 * frames, 0.0F);
  std::array<float, 2 * kPieceFrames> memory;
  const std::span<float> stereo(memory.data(), 2 * frames);
  for (Voice& voice : voices_) {
    if (voice.Of() == nullptr || !voice.Render(stereo, frame)) continue;
    voice.ApplyGain(stereo);
    for (const SpeakerShare& share : speakers_.Of(voice.Of()->Pair())) {
      float* out = buses_[static_cast<std::size_t>(share.bus)]->stereo.data() + share.side;
      for (std::size_t i = 0; i < 2 * frames; i += 2) {
        out[i] += stereo[i] * share.left + stereo[i + 1] * share.right;
      }
    }
  }
}

void RenderCore::AddMicrophone(int count) noexcept {
  const std::size_t frames = static_cast<std::size_t>(count);
  std::array<float, kPieceFrames> voice, music;
  const auto piece = microphone_.Render({voice.data(), frames}, {music.data(), frames});
  // A speaker that several codes reach gets the voice once.
  std::array<std::array<float, 2>, kMaxDeviceChannels> shares{};
  for (int code = 0; code < SpeakerMap::kCodes; ++code) {
    if ((microphone_.Pairs() >> code & 1U) == 0) continue;
    for (const SpeakerShare& share : speakers_.Of(code)) {
      float& most = shares[static_cast<std::size_t>(share.bus)][static_cast<std::size_t>(share.side)];
      most = std::max(most, share.left + share.right);
    }
  }
  for (std::size_t number = 0; number < buses_.size(); ++number) {
    float* const out = buses_[number]->stereo.data();
    const auto [left, right] = shares[number];
    if (left == 0 && right == 0) continue;
    for (std::size_t i = 0; piece.ducks && i < 2 * frames; ++i) out[i] *= music[i / 2];
    for (std::size_t i = 0; piece.sounds && i < frames; ++i) {
      out[2 * i] += left * voice[i];
      out[2 * i + 1] += right * voice[i];
    }
  }
}

void RenderCore::GivePiece(std::span<float> interleaved, int channels) noexcept {
  const std::size_t frames = interleaved.size() / static_cast<std::size_t>(channels);
  std::fill(interleaved.begin(), interleaved.end(), 0.0F);
  for (std::size_t number = 0; number < buses_.size(); ++number) {
    Bus& bus = *buses_[number];
    bus.limiter.Process({bus.stereo.data(), 2 * frames});
    const SpeakerBus& to = speakers_.Buses()[number];
    for (const auto& [channel, side] : {std::pair{to.left, 0}, std::pair{to.right, 1}}) {
      if (channel < 0) continue;
      float* out = interleaved.data() + channel;
      const float* in = bus.stereo.data() + side;
      for (std::size_t i = 0; i < frames; ++i, out += channels) *out = in[2 * i];
    }
  }
}

RenderCore::Bus* RenderCore::BusOf(int pair) noexcept {
  const auto shares = pair == kNone ? std::span<const SpeakerShare>() : speakers_.Of(pair);
  if (shares.empty()) return nullptr;
  const int bus = shares.front().bus;
  const bool one = std::all_of(shares.begin(), shares.end(),
                               [bus](const SpeakerShare& share) { return share.bus == bus; });
  return one ? buses_[static_cast<std::size_t>(bus)].get() : nullptr;
}

RenderCore::Ears RenderCore::FindEars(const PhonesMix::Wish& wish) noexcept {
  Ears ears;
  ears.phones = BusOf(wish.phones);
  ears.reach = ears.mixed = ears.phones != nullptr;
  for (std::size_t i = 0; i < ears.hall.size(); ++i) {
    ears.hall[i] = BusOf(wish.hall[i]);
    if (ears.hall[i] == ears.phones) ears.mixed = false;  // what all hear is left alone
    const bool here = ears.hall[i] != nullptr && ears.hall[i] != ears.phones;
    const bool there = wish.hall[i] == kNone && elsewhere_.Has(i);
    ears.reach = ears.reach && (here || there);
  }
  reach_.store(ears.reach, std::memory_order_relaxed);
  ears.listens = ears.mixed && ears.reach && phones_.WantsHall(wish.mix);
  if (!ears.listens) elsewhere_.Rest();
  return ears;
}

void RenderCore::MixPhones(std::size_t frames, const Ears& ears, const decks::HeadphoneMix& mix) noexcept {
  if (!ears.mixed) return;
  // Before the limiters: what is in both is heard in step.
  std::array<float, 2 * kPieceFrames> memory;
  const std::span<float> sum(memory.data(), 2 * frames);
  if (ears.listens) {
    std::fill(sum.begin(), sum.end(), 0.0F);
    for (std::size_t i = 0; i < ears.hall.size(); ++i) {
      elsewhere_.Add(i, sum);
      if (ears.hall[i] == nullptr || (i > 0 && ears.hall[i] == ears.hall[0])) continue;
      std::transform(sum.begin(), sum.end(), ears.hall[i]->stereo.begin(), sum.begin(), std::plus<>());
    }
  }
  // It can be heard, but nothing of it is wanted: nothing was reckoned.
  const std::span<const float> heard = ears.listens ? sum : std::span<const float>();
  phones_.Process({ears.phones->stereo.data(), 2 * frames}, heard, mix);
}

void RenderCore::FeedPassing(std::size_t frames, std::int64_t frame) noexcept {
  std::array<float, 2 * kPieceFrames> both;
  for (std::size_t code = 0; code < passed_.size(); ++code) {
    PassingHall* hall = passed_[code].load(std::memory_order_acquire);
    const auto shares = speakers_.Of(static_cast<int>(code));
    if (hall == nullptr || shares.empty()) continue;
    const auto number = static_cast<std::size_t>(shares.front().bus);
    std::span<const float> stereo(buses_[number]->stereo.data(), 2 * frames);
    if (speakers_.Buses()[number].right < 0) {
      // In a copy: what is played here goes on to the limiter.
      for (std::size_t i = 0; i < stereo.size(); i += 2) both[i] = both[i + 1] = stereo[i];
      stereo = {both.data(), stereo.size()};
    }
    hall->Write(frame, stereo);
  }
}

void RenderCore::TellPassing(std::int64_t end, int frames, support::TimePoint now) noexcept {
  for (const auto& passed : passed_) {
    if (PassingHall* hall = passed.load(std::memory_order_acquire)) hall->Tell(end, frames, now);
  }
}

std::shared_ptr<const PassingSound> RenderCore::Passing(int pair) {
  const std::size_t code = pair >= 1 && pair < SpeakerMap::kCodes ? static_cast<std::size_t>(pair) : 0;
  support::MutexLock lock(taps_mutex_);
  if (passing_[code] == nullptr) {
    passing_[code] = std::make_shared<PassingHall>(sample_rate_);
    passed_[code].store(passing_[code].get(), std::memory_order_release);
  }
  return passing_[code];
}

void RenderCore::MeterPair(int pair) noexcept {
  metered_.store(pair, std::memory_order_relaxed);
  meter_.Switch(pair != kNone);
}

void RenderCore::MeterPiece(std::size_t frames, std::int64_t frame) noexcept {
  const int pair = metered_.load(std::memory_order_relaxed);
  const auto shares = pair == kNone ? std::span<const SpeakerShare>() : speakers_.Of(pair);
  if (shares.empty()) return;
  meter_.Add({buses_[static_cast<std::size_t>(shares.front().bus)]->stereo.data(), 2 * frames}, frame);
}

void RenderCore::FeedTaps(std::size_t frames, std::int64_t frame) noexcept {
  for (std::size_t code = 0; code < tapped_.size(); ++code) {
    ProgrammeTap* tap = tapped_[code].load(std::memory_order_acquire);
    const auto shares = speakers_.Of(static_cast<int>(code));
    if (tap == nullptr || !tap->IsRead() || shares.empty()) continue;
    const auto number = static_cast<std::size_t>(shares.front().bus);
    const std::span<float> stereo(buses_[number]->stereo.data(), 2 * frames);
    if (speakers_.Buses()[number].right < 0) {
      for (std::size_t i = 0; i < stereo.size(); i += 2) stereo[i + 1] = stereo[i];
    }
    tap->Write(frame, stereo);
  }
}

std::unique_ptr<ProgrammeReader> RenderCore::OpenProgramme(int pair) {
  const std::size_t code = pair >= 1 && pair < SpeakerMap::kCodes ? static_cast<std::size_t>(pair) : 0;
  support::MutexLock lock(taps_mutex_);
  if (taps_[code] == nullptr) {
    taps_[code] = std::make_shared<ProgrammeTap>();
    tapped_[code].store(taps_[code].get(), std::memory_order_release);
  }
  return std::make_unique<ProgrammeReader>(taps_[code], sample_rate_);
}

void RenderCore::TellGains() noexcept {
  std::array<float, kMaxDeviceChannels> lowest;
  for (std::size_t i = 0; i < buses_.size(); ++i) lowest[i] = buses_[i]->limiter.TakeLowest();
  for (std::size_t code = 0; code < gains_.size(); ++code) {
    float gain = 1;
    for (const SpeakerShare& share : speakers_.Of(static_cast<int>(code))) {
      gain = std::min(gain, lowest[static_cast<std::size_t>(share.bus)]);
    }
    gains_[code].store(gain, std::memory_order_relaxed);
  }
  if (metered_.load(std::memory_order_relaxed) != kNone) {
    meter_.Note(LimiterGain(metered_.load(std::memory_order_relaxed)));
  }
}

float RenderCore::LimiterGain(int pair) const noexcept {
  const std::size_t code = pair >= 1 && pair < SpeakerMap::kCodes ? static_cast<std::size_t>(pair) : 0;
  return gains_[code].load(std::memory_order_relaxed);
}

void RenderCore::MeasureLoad(support::TimePoint begin, std::int64_t frames) noexcept {
  if (frames == 0) return;
  const double seconds = std::chrono::duration<double>(clock_.Now() - begin).count();
  const float share = static_cast<float>(seconds * sample_rate_ / static_cast<double>(frames));
  load_frames_ += frames;
  if (load_frames_ > sample_rate_) {
    load_frames_ = 0;
    load_before_.store(load_.load(std::memory_order_relaxed), std::memory_order_relaxed);
    load_.store(share, std::memory_order_relaxed);
  } else if (share > load_.load(std::memory_order_relaxed)) {
    load_.store(share, std::memory_order_relaxed);
  }
}

float RenderCore::Load() const noexcept {
  return std::max(load_.load(std::memory_order_relaxed), load_before_.load(std::memory_order_relaxed));
}

}  // namespace engine
