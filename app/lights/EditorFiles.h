// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "dmx/FixtureFile.h"
#include "dmx/Patch.h"
#include "dmx/ShowFile.h"

namespace app {

struct StationContext;

/// A file of the fixture library.
struct LibraryFixture {
  std::string file;  ///< name without folder
  std::string name;
  dmx::ChannelSlider channels;
  bool cut_short = false;  ///< the file ends early

  bool operator==(const LibraryFixture&) const = default;
};

/// A show with its fixtures patched.
struct OpenedShow {
  dmx::ShowReading reading;
  dmx::PatchReport patch;
};

/// The files of the fixture editor and the show editor.
///
/// Threads: the window's. Files are read and written by workers; every outcome is given on the window's
/// thread, later, and never after shutdown.
class EditorFiles {
 public:
  template <typename T>
  using Done = std::function<void(T)>;

  explicit EditorFiles(const StationContext& context) : context_(context) {}

  [[nodiscard]] std::filesystem::path LibraryFolder() const;
  [[nodiscard]] std::filesystem::path ShowFolder() const;

  /// By the name of the file, those that can be read.
  void ListFixtures(Done<std::vector<LibraryFixture>> done);
  void OpenFixture(const std::filesystem::path& path, Done<support::Result<dmx::FixtureReading>> done);
  void SaveFixture(const std::filesystem::path& path, dmx::Fixture fixture, Done<support::Result<void>> done);
  /// A fixture file from anywhere, as one of the library: it is copied there, beside any other of its name.
  void BringFixture(const std::filesystem::path& path, Done<support::Result<LibraryFixture>> done);
  void OpenShow(const std::filesystem::path& path, Done<support::Result<OpenedShow>> done);
  /// The same of a show that is no file.
  void ReadShow(std::string text, Done<support::Result<OpenedShow>> done);
  void SaveShow(const std::filesystem::path& path, dmx::Show show, Done<support::Result<void>> done);
  /// In the language chosen.
  [[nodiscard]] std::string Say(const support::Error& error) const;
  /// As a show's fixture names it.
  [[nodiscard]] std::string FilenameOf(const std::string& file) const;

 private:
  const StationContext& context_;
};

}  // namespace app
