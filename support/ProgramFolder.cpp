// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/ProgramFolder.h"

#include <algorithm>
#include <system_error>

#include "support/Text.h"

namespace support {
namespace {

namespace fs = std::filesystem;

constexpr char kSeparator = static_cast<char>(fs::path::preferred_separator);

fs::path ExistingOrGiven(const fs::path& folder, std::string_view part) {
  const fs::path given = folder / fs::path(std::string(part));
  std::error_code error;
  if (fs::exists(given, error)) return given;
  std::string best;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
    const std::string name = entry.path().filename().string();
    if (EqualsIgnoringCase(name, part) && (best.empty() || name < best)) best = name;
  }
  return best.empty() ? given : folder / best;
}

}  // namespace

fs::path ProgramFolder::Native(std::string_view name) const {
  std::string slashes(name);
  std::replace(slashes.begin(), slashes.end(), '/', '\\');
  fs::path path = folder_;
  for (std::string_view part : Split(slashes, '\\')) {
    if (!part.empty()) path = ExistingOrGiven(path, part);
  }
  return path;
}

fs::path ProgramFolder::NativeOfText(std::string_view text) const {
  const std::string own = Text();
  if (own.empty() || !text.starts_with(own + '\\')) return fs::path(text);
  return Native(text.substr(own.size()));
}

std::string ProgramFolder::StoredPath(std::string_view full) const {
  const std::string own = Text();
  const bool below = !own.empty() && full.starts_with(own) && full.size() > own.size() + 1 &&
                     (full[own.size()] == '/' || full[own.size()] == kSeparator);
  if (!below) return std::string(full);
  std::string stored(kBelow);
  stored += full.substr(own.size() + 1);
  if constexpr (kSeparator != '/') std::replace(stored.begin(), stored.end(), kSeparator, '/');
  return stored;
}

std::string ProgramFolder::FullPath(std::string_view stored) const {
  if (!stored.starts_with(kBelow)) return std::string(stored);
  std::string rest(stored.substr(kBelow.size()));
  if constexpr (kSeparator != '/') std::replace(rest.begin(), rest.end(), '/', kSeparator);
  return Text() + kSeparator + rest;
}

std::string AddBackslash(std::string path) {
  if (path.empty() || path.back() != '\\') path += '\\';
  return path;
}

}  // namespace support
