// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "app/SaveWatch.h"
#include "catalogue/ports/SideStore.h"

namespace app {

/// A side store whose file counts as unsaved from a write that fails until one that does not.
/// Threads: as the port says. Store and watch outlive it.
class WatchedSideStore final : public catalogue::SideStore {
 public:
  WatchedSideStore(catalogue::SideStore& store, SaveWatch& watch, std::filesystem::path file)
      : store_(store), watch_(watch), file_(std::move(file)) {}

  std::optional<catalogue::FileStamp> StampOf(const std::string& path) override {
    return store_.StampOf(path);
  }
  std::optional<std::string> Read(const std::string& path, const catalogue::FileStamp& stamp,
                                  catalogue::SidePart part) override {
    return store_.Read(path, stamp, part);
  }
  std::optional<std::string> ContentOf(const std::string& path) override { return store_.ContentOf(path); }
  bool KeepsSounds() override { return store_.KeepsSounds(); }
  std::optional<std::string> KeptContentOf(const std::string& path) override {
    return store_.KeptContentOf(path);
  }
  support::Result<void> Write(const std::string& path, const catalogue::FileStamp& stamp,
                              catalogue::SidePart part, std::string_view bytes) override {
    return watch_.Note(file_, store_.Write(path, stamp, part, bytes));
  }
  support::Result<void> WriteAll(std::span<const catalogue::SideEntry> entries) override {
    return watch_.Note(file_, store_.WriteAll(entries));
  }

 private:
  catalogue::SideStore& store_;
  SaveWatch& watch_;
  const std::filesystem::path file_;
};

}  // namespace app
