// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <nlohmann/json.hpp>
#include <ostream>

#include "platform/archive/SongArchive.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

using platform::archive::SongArchive;

nlohmann::ordered_json Told(const std::string& name, std::size_t bytes) {
  return {{"name", ReadableText(name)}, {"bytes", bytes}};
}

/// Both are unpacked, so that the sizes are what really comes out.
support::Result<nlohmann::ordered_json> Look(const std::string& path) {
  auto file = platform::files::OpenPlainFile(path);
  if (!file) return file.Failure();
  auto archive = SongArchive::Open(std::move(file).Value(), path);
  if (!archive) return archive.Failure();
  const auto sound = archive.Value().UnpackSound();
  if (!sound) return sound.Failure();
  const auto picture = archive.Value().UnpackPicture();
  if (!picture) return picture.Failure();
  const platform::archive::SongPair& song = archive.Value().Song();
  return nlohmann::ordered_json{
      {"sound", Told(song.sound.name, static_cast<std::size_t>(sound.Value().size))},
      {"picture", Told(song.picture.name, picture.Value().size())}};
}

}  // namespace

/// The sound and the picture of the karaoke song that an archive holds.
ExitCode InspectZip(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  const auto told = Look(arguments.words[0]);
  if (!told) {
    err << told.Failure().text << '\n';
    return ExitCode::NothingRead;
  }
  out << told.Value().dump(1) << '\n';
  return ExitCode::Read;
}

}  // namespace tools::djinspect
