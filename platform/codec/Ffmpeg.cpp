// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/Ffmpeg.h"

namespace platform::codec {

ConverterPtr MakeConverter(const SampleShape& from, const SampleShape& to) {
  AVChannelLayout to_layout = to.layout, from_layout = from.layout;  // the call takes no const
  SwrContext* made = nullptr;
  if (swr_alloc_set_opts2(&made, &to_layout, to.format, to.rate, &from_layout, from.format, from.rate, 0,
                          nullptr) < 0) {
    return nullptr;
  }
  ConverterPtr converter(made);
  if (swr_init(made) < 0) return nullptr;
  return converter;
}

void SilenceLibraries() {
  av_log_set_level(AV_LOG_QUIET);
}

}  // namespace platform::codec
