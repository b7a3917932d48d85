// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <filesystem>
#include <iomanip>
#include <nlohmann/json.hpp>
#include <ostream>
#include <sstream>

#include "karaoke/DiscImage.h"
#include "karaoke/SongReader.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

std::string InHex(std::uint64_t value, int digits) {
  std::ostringstream text;
  text << std::hex << std::setfill('0') << std::setw(digits) << value;
  return text.str();
}

double InSeconds(karaoke::Microseconds time) {
  return static_cast<double>(time.count() / 1000) / 1000;
}

}  // namespace

/// What the packets of a disc image draw: how many they are, when they are through, and the last picture.
ExitCode InspectDisc(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  const std::string& path = arguments.words[0];
  const auto bytes = karaoke::ReadSongBytes(path);
  if (!bytes) {
    err << bytes.Failure().text << '\n';
    return ExitCode::NothingRead;
  }
  const auto image = karaoke::DiscImage::Read({bytes.Value().begin(), bytes.Value().end()},
                                              std::filesystem::path(path).filename().string());
  if (!image) {
    err << image.Failure().text << '\n';
    return ExitCode::NothingRead;
  }
  const karaoke::DiscImage& disc = *image.Value();
  const karaoke::DiscPicture last = karaoke::DiscShow(image.Value()).At(disc.Length());
  const nlohmann::ordered_json told{{"packets", disc.Packets()},
                                    {"seconds", InSeconds(disc.Length())},
                                    {"unknown", disc.Unknown()},
                                    {"graphicsEnd", InSeconds(disc.GraphicsEnd())},
                                    {"background", "#" + InHex(last.Ground(), 6)},
                                    {"lastPicture", InHex(karaoke::HashOf(last), 16)}};
  out << told.dump(1) << '\n';
  return ExitCode::Read;
}

}  // namespace tools::djinspect
