// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "app/ports/Prompts.h"

namespace app {

/// The window's prompts; what is told before there is a window waits for it. Threads: the window's.
class WaitingPrompts final : public Prompts {
 public:
  /// What waits is given back, to be told; null takes the window away.
  [[nodiscard]] std::vector<std::string> Attach(Prompts* window);
  void Tell(const std::string& sentence) override;
  /// Without a window the answer is no, at once.
  void Ask(const Question& question, std::function<void(bool)> answer) override;

 private:
  Prompts* window_ = nullptr;
  std::vector<std::string> unseen_;
};

}  // namespace app
