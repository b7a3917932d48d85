// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "app/ports/Help.h"
#include "app/ports/Prompts.h"

namespace app::testing {

/// Keeps what the user was told and which help was opened.
class FakeWindow final : public Prompts, public Help {
 public:
  void Tell(const std::string& sentence) override { told_.push_back(sentence); }
  void Open(const std::filesystem::path& file, const std::string& topic) override {
    opened_ = file.string() + " at " + topic;
  }
  [[nodiscard]] const std::vector<std::string>& Sentences() const { return told_; }
  [[nodiscard]] const std::string& Opened() const { return opened_; }

 private:
  std::vector<std::string> told_;
  std::string opened_;
};

}  // namespace app::testing
