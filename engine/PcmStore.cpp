// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/PcmStore.h"

#include <algorithm>
#include <cassert>
#include <new>
#include <utility>

#include "support/Sentences.h"

namespace engine {
namespace {

constexpr std::int64_t kLongestFrames = std::int64_t{1} << 40;

std::string LastPathPart(const std::string& path) {
  const std::size_t cut = path.find_last_of("/\\");
  return cut == std::string::npos ? path : path.substr(cut + 1);
}

}  // namespace

PcmStore::PcmStore(std::unique_ptr<PcmDecoder> decoder, SampleMemory* memory)
    : decoder_(std::move(decoder)), memory_(memory), format_(decoder_->Format()) {
  estimate_ = std::clamp<std::int64_t>(decoder_->EstimatedFrames().value_or(0), 0, kLongestFrames);
}

support::Result<std::shared_ptr<PcmStore>> PcmStore::Open(const std::string& path, DecoderKind kind,
                                                          DecoderFactory& decoders, SampleMemory* memory) {
  auto decoder = decoders.Open(path, kind);
  if (!decoder) return decoder.Failure();
  const PcmFormat format = decoder.Value()->Format();
  if (format.sample_rate < 1000 || format.sample_rate > 768'000 || format.channels < 1 ||
      format.channels > 8) {
    return support::Failed(support::ErrorCode::Unsupported, support::Sentence::UnplayableFormat,
                           {LastPathPart(path)});
  }
  return std::shared_ptr<PcmStore>(new PcmStore(std::move(decoder).Value(), memory));
}

std::int64_t PcmStore::Length() const noexcept {
  const bool complete = Complete();
  const std::int64_t ready = Ready();
  return complete ? ready : std::max(ready, estimate_);
}

std::optional<support::Error> PcmStore::Failure() const {
  support::MutexLock lock(mutex_);
  return failure_;
}

const PcmStore::Chunk& PcmStore::ChunkOf(std::int64_t frame) const noexcept {
  const std::int64_t chunk = frame / kChunkFrames;
  const Leaf& leaf = *leaves_[static_cast<std::size_t>(chunk / kLeafChunks)];
  return leaf[static_cast<std::size_t>(chunk % kLeafChunks)];
}

std::int64_t PcmStore::Read(std::int64_t first, std::span<std::int16_t> interleaved) const noexcept {
  assert(first >= 0 && "frames count from 0");
  const std::int64_t room = static_cast<std::int64_t>(interleaved.size()) / format_.channels;
  const std::int64_t wanted = std::min(room, Ready() - first);
  std::int16_t* out = interleaved.data();
  for (std::int64_t done = 0; done < wanted;) {
    const std::int64_t offset = (first + done) % kChunkFrames;
    const std::int64_t count = std::min(wanted - done, kChunkFrames - offset);
    const std::int16_t* from = ChunkOf(first + done).samples + offset * format_.channels;
    out = std::copy_n(from, count * format_.channels, out);
    done += count;
  }
  return std::max<std::int64_t>(wanted, 0);
}

void PcmStore::DecodeUpTo(std::int64_t frames) {
  while (Ready() < frames && !Complete()) {
    {
      support::MutexLock lock(mutex_);
      while (decoding_) lock.Wait(stepped_);
      if (Ready() >= frames || Complete()) return;
      decoding_ = true;
    }
    DecodeStep();
    {
      support::MutexLock lock(mutex_);
      decoding_ = false;
    }
    stepped_.notify_all();
  }
}

void PcmStore::DecodeStep() {
  const std::int64_t ready = ready_.load(std::memory_order_relaxed);
  const std::int64_t offset = ready % kChunkFrames;
  if (offset == 0 && !AddChunk(ready)) {
    return Finish(support::Failed(support::ErrorCode::Unavailable, support::Sentence::NoMemoryForFile));
  }
  const std::int64_t room = std::min(kStepFrames, kChunkFrames - offset);
  std::int16_t* to = ChunkOf(ready).samples + offset * format_.channels;
  auto got = decoder_->Read({to, static_cast<std::size_t>(room * format_.channels)});
  if (!got) return Finish(got.Failure());
  const std::int64_t frames = std::clamp<std::int64_t>(got.Value(), 0, room);
  if (frames == 0) return Finish(std::nullopt);
  ready_.store(ready + frames, std::memory_order_release);
}

std::int64_t PcmStore::FramesInMemory(const PcmFormat& format) {
  // Half an hour; of stereo at 48 kHz, where more channels or a higher rate would take more than that does.
  constexpr std::int64_t kSeconds = 30 * 60, kBytes = kSeconds * 48000 * 4;
  return std::min(kSeconds * format.sample_rate, kBytes / (2 * std::int64_t{format.channels}));
}

bool PcmStore::AddChunk(std::int64_t frame) {
  const std::int64_t number = frame / kChunkFrames;
  if (number >= kLeafChunks * kLeaves) return false;
  const std::size_t samples = static_cast<std::size_t>(kChunkFrames * format_.channels);
  try {
    auto& leaf = leaves_[static_cast<std::size_t>(number / kLeafChunks)];
    if (leaf == nullptr) leaf = std::make_unique<Leaf>();
    Chunk& chunk = (*leaf)[static_cast<std::size_t>(number % kLeafChunks)];
    if (memory_ != nullptr && frame >= FramesInMemory(format_)) {
      auto block = memory_->Allocate(samples);
      if (block != nullptr && block->Samples().size() >= samples) {
        chunk = {block->Samples().data(), block.get()};
        paged_.push_back(std::move(block));
        return true;
      }
    }
    heap_.push_back(std::make_unique_for_overwrite<std::int16_t[]>(samples));
    chunk = {heap_.back().get(), nullptr};
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

void PcmStore::Finish(std::optional<support::Error> error) {
  support::MutexLock lock(mutex_);
  failure_ = std::move(error);
  cut_short_.store(failure_.has_value(), std::memory_order_release);
  complete_.store(true, std::memory_order_release);
}

bool PcmStore::IsPaged(std::int64_t frame) const noexcept {
  return frame >= 0 && frame < Ready() && ChunkOf(frame).paged != nullptr;
}

void PcmStore::Warm(std::int64_t frame) {
  if (IsPaged(frame)) memory_->Warm(*ChunkOf(frame).paged);
}

}  // namespace engine
