// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/Ffmpeg.h"

#include "support/Text.h"

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

std::string LastPart(std::string_view path) {
  while (path.size() > 1 && (path.back() == '/' || path.back() == '\\')) path.remove_suffix(1);
  const std::size_t cut = path.find_last_of("/\\");
  return std::string(cut == std::string_view::npos || cut + 1 == path.size() ? path : path.substr(cut + 1));
}

std::string ExtensionOf(std::string_view path) {
  const std::string name = LastPart(path);
  const std::size_t dot = name.find_last_of('.');
  return dot == std::string::npos ? std::string() : support::ToUpper(std::string_view(name).substr(dot + 1));
}

void SilenceLibraries() {
  av_log_set_level(AV_LOG_QUIET);
}

}  // namespace platform::codec
