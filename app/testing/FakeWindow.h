// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "app/ports/Help.h"
#include "app/ports/Prompts.h"

namespace app::testing {

/// Keeps what the user was told and which help was opened.
class FakeWindow final : public Prompts, public Help {
 public:
  void Tell(const std::string& sentence) override { told_.push_back(sentence); }
  void Ask(const Question& question, std::function<void(bool)> answer) override {
    asked_ = question;
    answer_ = std::move(answer);
  }
  /// Of the question that is open; none is afterwards.
  void Answer(bool yes) {
    if (const auto answer = std::exchange(answer_, nullptr)) answer(yes);
  }
  /// The text of the last question.
  [[nodiscard]] const std::string& Asked() const { return asked_.text; }
  void Open(const std::filesystem::path& file, const std::string& topic) override {
    opened_ = file.string() + " at " + topic;
  }
  [[nodiscard]] const std::vector<std::string>& Sentences() const { return told_; }
  [[nodiscard]] const std::string& Opened() const { return opened_; }

 private:
  std::vector<std::string> told_;
  std::string opened_;
  Question asked_;
  std::function<void(bool)> answer_;
};

}  // namespace app::testing
