// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "karaoke/DiscImage.h"

/// Any bytes are drawn without leaving the picture, and a seek shows what playing through shows.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using karaoke::DiscPicture;
  const auto image = karaoke::DiscImage::Read(std::vector<std::uint8_t>(data, data + size), "fuzzed");
  if (!image) return 0;
  const karaoke::DiscImage& disc = *image.Value();
  if (disc.Unknown() > disc.Packets() || disc.GraphicsEnd() > disc.Length()) abort();
  karaoke::DiscShow straight(image.Value()), seeking(image.Value());
  static_cast<void>(seeking.At(disc.Length()));
  for (std::int64_t part = 0; part <= 2; ++part) {
    const auto time = disc.Length() / 2 * part;
    const DiscPicture& picture = straight.At(time);
    if (std::any_of(picture.memory.begin(), picture.memory.end(),
                    [](std::uint8_t number) { return number >= DiscPicture::kColours; })) {
      abort();
    }
    if (karaoke::HashOf(picture) != karaoke::HashOf(karaoke::DiscShow(image.Value()).At(time))) abort();
    static_cast<void>(seeking.At(disc.Length() - time));
  }
  if (seeking.At(disc.Length()) != straight.At(disc.Length())) abort();
  // Behind the end of the graphics it looks as it does at the end.
  if (karaoke::HashOf(straight.At(disc.GraphicsEnd())) != karaoke::HashOf(seeking.At(disc.Length()))) abort();
  return 0;
}
