// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "karaoke/DiscPicture.h"
#include "karaoke/TempoMap.h"
#include "support/Result.h"

namespace karaoke {

/// The graphics of a karaoke disc: packets, of which each is due at a time of its own, and pictures on the
/// way that a seek begins from.
///
/// Threads: any; it never changes.
class DiscImage {
 public:
  static constexpr int kPacketsASecond = 300;

  /// Goes through the whole image once. What is behind the last whole packet is dropped. Fails when nothing
  /// is graphics. name: of its song, for the sentence.
  static support::Result<std::shared_ptr<const DiscImage>> Read(std::vector<std::uint8_t> bytes,
                                                                const std::string& name);

  [[nodiscard]] std::size_t Packets() const { return bytes_.size() / kDiscPacketBytes; }
  [[nodiscard]] Microseconds Length() const { return DueTime(Packets()); }
  /// When the last packet is due that changes what is seen.
  [[nodiscard]] Microseconds GraphicsEnd() const { return graphics_end_; }
  /// Packets that are graphics of an unknown kind, or draw outside the picture.
  [[nodiscard]] std::size_t Unknown() const { return unknown_; }

  /// How many packets are due at a time of the song.
  [[nodiscard]] std::size_t DueAt(Microseconds time) const;
  /// Goes on from a picture that so many packets have drawn. Requires: from <= until <= Packets().
  /// True when what is seen changed.
  bool Draw(std::size_t from, std::size_t until, DiscPicture& picture) const;

  /// A picture that is kept, and how many packets have drawn it.
  struct Stage {
    std::size_t packets = 0;
    DiscPicture picture;
  };
  /// The last one that so many packets reach.
  [[nodiscard]] const Stage& StageBefore(std::size_t packets) const;

 private:
  explicit DiscImage(std::vector<std::uint8_t> bytes) : bytes_(std::move(bytes)) {}
  [[nodiscard]] static Microseconds DueTime(std::size_t packet);
  [[nodiscard]] std::span<const std::uint8_t> Packet(std::size_t number) const;
  [[nodiscard]] bool GoThrough();

  std::vector<std::uint8_t> bytes_;
  std::vector<Stage> stages_;
  Microseconds graphics_end_{0};
  std::size_t unknown_ = 0;
};

/// What a disc shows at a time: a pure function of that time, which is quick for the time that comes next.
/// Threads: one.
class DiscShow {
 public:
  explicit DiscShow(std::shared_ptr<const DiscImage> image);

  [[nodiscard]] const std::shared_ptr<const DiscImage>& Image() const { return image_; }
  /// Before the first packet is due, an empty black picture. Valid until the next call.
  const DiscPicture& At(Microseconds time);
  /// The newest picture looks perhaps unlike the one before.
  [[nodiscard]] bool Changed() const { return changed_; }

 private:
  std::shared_ptr<const DiscImage> image_;  // with the desk and the other surface
  std::size_t drawn_ = 0;                   ///< packets
  DiscPicture picture_;
  bool changed_ = true;
};

}  // namespace karaoke
