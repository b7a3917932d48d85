// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/DiscImage.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "support/Sentences.h"

namespace karaoke {
namespace {

constexpr std::size_t kStageEvery = std::size_t{30} * DiscImage::kPacketsASecond;

}  // namespace

support::Result<std::shared_ptr<const DiscImage>> DiscImage::Read(std::vector<std::uint8_t> bytes,
                                                                  const std::string& name) {
  bytes.resize(bytes.size() / kDiscPacketBytes * kDiscPacketBytes);
  const std::shared_ptr<DiscImage> image(new DiscImage(std::move(bytes)));
  if (!image->GoThrough()) {
    return support::Failed(support::ErrorCode::Malformed, support::Sentence::DiscImageWithoutGraphics,
                           {name});
  }
  return std::shared_ptr<const DiscImage>(image);
}

/// False when nothing is graphics.
bool DiscImage::GoThrough() {
  bool any = false;
  Stage stage;
  for (; stage.packets < Packets(); ++stage.packets) {
    if (stage.packets % kStageEvery == 0) stages_.push_back(stage);
    const auto packet = Packet(stage.packets);
    const DiscEffect effect = Apply(packet, stage.picture);
    if (effect == DiscEffect::Seen) graphics_end_ = DueTime(stage.packets);
    if (effect == DiscEffect::Unknown) ++unknown_;
    any = any || (effect != DiscEffect::Unknown && IsDiscGraphics(packet));
  }
  return any;
}

Microseconds DiscImage::DueTime(std::size_t packet) {
  return Microseconds(static_cast<std::int64_t>(packet) * 1'000'000 / kPacketsASecond);
}

std::span<const std::uint8_t> DiscImage::Packet(std::size_t number) const {
  return std::span(bytes_).subspan(number * kDiscPacketBytes, kDiscPacketBytes);
}

std::size_t DiscImage::DueAt(Microseconds time) const {
  if (time.count() < 0) return 0;
  if (time >= Length()) return Packets();
  // Packet n is due at n / 300 s, rounded down to whole microseconds.
  const auto begun = static_cast<std::size_t>(time.count()) * kPacketsASecond / 1'000'000;
  const bool next = begun + 1 < Packets() && DueTime(begun + 1) <= time;
  return std::min(begun + (next ? 2 : 1), Packets());
}

bool DiscImage::Draw(std::size_t from, std::size_t until, DiscPicture& picture) const {
  assert(from <= until && until <= Packets());
  bool changed = false;
  for (std::size_t number = from; number < until; ++number) {
    changed = Apply(Packet(number), picture) == DiscEffect::Seen || changed;
  }
  return changed;
}

const DiscImage::Stage& DiscImage::StageBefore(std::size_t packets) const {
  return stages_[std::min(packets / kStageEvery, stages_.size() - 1)];
}

DiscShow::DiscShow(std::shared_ptr<const DiscImage> image) : image_(std::move(image)) {}

const DiscPicture& DiscShow::At(Microseconds time) {
  const std::size_t due = image_->DueAt(time);
  const DiscImage::Stage& stage = image_->StageBefore(due);
  changed_ = false;
  if (due < drawn_ || stage.packets > drawn_) {
    picture_ = stage.picture;
    drawn_ = stage.packets;
    changed_ = true;
  }
  changed_ = image_->Draw(drawn_, due, picture_) || changed_;
  drawn_ = due;
  return picture_;
}

}  // namespace karaoke
