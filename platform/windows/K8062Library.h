// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "dmx/ports/DmxInterface.h"
#include "support/Result.h"

namespace platform::windows {

/// The K8062 by its maker's library, which the user puts beside the program.
///
/// The library is looked for at every first start, so that it can be brought later; without it, or with one
/// that was made for another kind of processor, the calls do nothing and the status says why.
/// Threads: see dmx::DmxInterface. Owns: the library, from its first start on.
class K8062Library final : public dmx::DmxInterface {
 public:
  explicit K8062Library(std::filesystem::path library = "k8062d.dll");
  ~K8062Library() override;
  K8062Library(const K8062Library&) = delete;
  K8062Library& operator=(const K8062Library&) = delete;

  void StartDevice() override;
  void SetChannelCount(int count) override;
  void SetData(int channel, dmx::DmxLevel level) override;
  void StopDevice() override;
  [[nodiscard]] dmx::DmxInterfaceStatus Status() const override;

 private:
  struct Calls;
  /// False: there is no library that can be used.
  bool Load();

  std::filesystem::path path_;
  std::unique_ptr<Calls> calls_;
  bool started_ = false;
  support::Error trouble_{};  ///< no text: none
};

}  // namespace platform::windows
