// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/WaitingPrompts.h"

#include <utility>

namespace app {

std::vector<std::string> WaitingPrompts::Attach(Prompts* window) {
  window_ = window;
  return window == nullptr ? std::vector<std::string>() : std::exchange(unseen_, {});
}

void WaitingPrompts::Tell(const std::string& sentence) {
  if (window_ != nullptr) return window_->Tell(sentence);
  unseen_.push_back(sentence);
}

void WaitingPrompts::Ask(const Question& question, std::function<void(bool)> answer) {
  if (window_ == nullptr) return answer(false);
  window_->Ask(question, std::move(answer));
}

}  // namespace app
