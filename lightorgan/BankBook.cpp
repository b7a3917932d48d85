// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "lightorgan/BankBook.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace lightorgan {
namespace {

auto Place(std::size_t index) {
  return static_cast<std::ptrdiff_t>(index);
}

}  // namespace

BankBook::BankBook(Side side, IoBoardSize size, std::vector<Bank> banks)
    : side_(side), size_(size), banks_(std::move(banks)) {
  std::stable_sort(banks_.begin(), banks_.end(),
                   [](const Bank& a, const Bank& b) { return a.number < b.number; });
}

int BankBook::NextNumber() const {
  if (banks_.empty()) return 1;
  return banks_.back().number == std::numeric_limits<int>::max() ? banks_.back().number
                                                                 : banks_.back().number + 1;
}

BankStep BankBook::Dark() const {
  return {std::vector<std::int32_t>(static_cast<std::size_t>(Outputs())), {}};
}

std::size_t BankBook::Add() {
  changed_ = true;
  banks_.push_back({NextNumber(), {Dark()}});
  return banks_.size() - 1;
}

std::size_t BankBook::Copy(std::size_t bank) {
  if (bank >= banks_.size()) return banks_.size();
  changed_ = true;
  banks_.push_back({NextNumber(), banks_[bank].steps});
  return banks_.size() - 1;
}

void BankBook::Remove(std::size_t bank) {
  if (bank >= banks_.size()) return;
  changed_ = true;
  banks_.erase(banks_.begin() + Place(bank));
}

const BankStep* BankBook::StepAt(std::size_t bank, std::size_t step) const {
  if (bank >= banks_.size() || step >= banks_[bank].steps.size()) return nullptr;
  return &banks_[bank].steps[step];
}

BankStep* BankBook::StepAt(std::size_t bank, std::size_t step) {
  return const_cast<BankStep*>(std::as_const(*this).StepAt(bank, step));
}

int BankBook::Value(std::size_t bank, std::size_t step, int output) const {
  const BankStep* found = StepAt(bank, step);
  const auto place = static_cast<std::size_t>(output - 1);
  return found != nullptr && output >= 1 && place < found->values.size() ? found->values[place] : 0;
}

void BankBook::SetValue(std::size_t bank, std::size_t step, int output, int value) {
  BankStep* found = StepAt(bank, step);
  if (found == nullptr || output < 1 || output > Outputs()) return;
  if (found->values.size() < static_cast<std::size_t>(output)) {
    found->values.resize(static_cast<std::size_t>(Outputs()));
  }
  std::int32_t& held = found->values[static_cast<std::size_t>(output - 1)];
  const int kept = std::clamp(value, 0, side_ == Side::Io ? 1 : 255);
  changed_ = changed_ || held != kept;
  held = kept;
}

std::string BankBook::Further(std::size_t bank, std::size_t step) const {
  const BankStep* found = StepAt(bank, step);
  return found == nullptr || found->further.empty() ? std::string() : found->further.substr(1);
}

void BankBook::SetFurther(std::size_t bank, std::size_t step, std::string_view text) {
  BankStep* found = StepAt(bank, step);
  if (found == nullptr || side_ == Side::Io) return;
  std::string further;
  std::copy_if(text.begin(), text.end(), std::back_inserter(further),
               [](char c) { return c != '\r' && c != '\n' && c != '\0'; });
  if (!further.empty()) further.insert(further.begin(), ';');
  changed_ = changed_ || further != found->further;
  found->further = std::move(further);
}

void BankBook::AddStep(std::size_t bank, std::size_t behind) {
  if (bank >= banks_.size() || banks_[bank].steps.size() >= kMostRows) return;
  changed_ = true;
  auto& steps = banks_[bank].steps;
  steps.insert(steps.begin() + Place(std::min(steps.size(), behind + 1)), Dark());
}

void BankBook::CopyStep(std::size_t bank, std::size_t step) {
  if (StepAt(bank, step) == nullptr || banks_[bank].steps.size() >= kMostRows) return;
  changed_ = true;
  auto& steps = banks_[bank].steps;
  const BankStep copied = steps[step];
  steps.insert(steps.begin() + Place(step + 1), copied);
}

void BankBook::RemoveStep(std::size_t bank, std::size_t step) {
  if (StepAt(bank, step) == nullptr) return;
  changed_ = true;
  banks_[bank].steps.erase(banks_[bank].steps.begin() + Place(step));
}

bool BankBook::MoveStep(std::size_t bank, std::size_t step, int way) {
  const std::size_t to = way < 0 ? step - 1 : step + 1;
  if (StepAt(bank, step) == nullptr || (way < 0 && step == 0) || StepAt(bank, to) == nullptr) return false;
  changed_ = true;
  std::swap(banks_[bank].steps[step], banks_[bank].steps[to]);
  return true;
}

StepTable BankBook::Played(std::size_t bank) const {
  if (bank >= banks_.size()) return StepTable(size_);
  const bool last = bank + 1 == banks_.size();
  std::vector<Bank> part{banks_[bank]};
  if (!last) part.push_back({banks_[bank + 1].number, {}});  // its header ends the bank
  return LoadBank(BankText(std::move(part)), side_, banks_[bank].number, size_);
}

bool BankBook::NeverPlayed(std::size_t bank, std::size_t step) const {
  if (side_ == Side::Dac || bank >= banks_.size() || bank + 1 != banks_.size()) return false;
  const std::size_t steps = banks_[bank].steps.size();
  return steps > 1 && step + 1 == steps;
}

}  // namespace lightorgan
