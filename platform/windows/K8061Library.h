// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <memory>

#include "platform/boards/BoardSender.h"

namespace platform::windows {

/// The K8061 boards by their maker's library, which the user puts beside the program.
///
/// The library is looked for whenever somebody opens the boards, so that it can be brought later. It opens
/// one board a call and gives its address, until no board is left. It tells nobody whether a board is still
/// there: a board stays held until it is closed. Threads: the sender's. Owns: the library, while it is open.
class K8061LibraryLine final : public boards::BoardLine {
 public:
  explicit K8061LibraryLine(std::filesystem::path library);
  ~K8061LibraryLine() override;

  [[nodiscard]] boards::BoardSet Look(Occasion occasion) override;
  [[nodiscard]] boards::BoardSet Held() const override { return held_; }
  [[nodiscard]] bool Switch(std::size_t board, std::uint8_t channels) override;
  [[nodiscard]] bool Dim(std::size_t board, const boards::DimmedValues& values,
                         const boards::DimmedValues* before) override;
  void Release() override;
  [[nodiscard]] support::Error Trouble() const override { return trouble_; }

 private:
  struct Calls;
  /// False: there is no library that can be used.
  [[nodiscard]] bool Load();

  std::filesystem::path path_;
  std::unique_ptr<Calls> calls_;
  boards::BoardSet held_;
  support::Error trouble_{};
};

class K8061Library final : public boards::BoardSender {
 public:
  explicit K8061Library(std::filesystem::path library = "k8061.dll")
      : BoardSender(std::make_unique<K8061LibraryLine>(std::move(library))) {}
};

}  // namespace platform::windows
