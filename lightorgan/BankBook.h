// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <vector>

#include "lightorgan/PatternBank.h"

namespace lightorgan {

/// A bank file while it is edited.
///
/// Law: banks stand in ascending order of their numbers. Places count from 0; what names one that is not
/// there does nothing.
class BankBook {
 public:
  BankBook() = default;
  BankBook(Side side, IoBoardSize size, std::vector<Bank> banks);

  [[nodiscard]] Side WhichSide() const { return side_; }
  [[nodiscard]] IoBoardSize Size() const { return size_; }
  [[nodiscard]] int Outputs() const { return OutputsOf(size_); }
  [[nodiscard]] const std::vector<Bank>& Banks() const { return banks_; }
  /// Since it was made or Kept was called.
  [[nodiscard]] bool Changed() const { return changed_; }
  void Kept() { changed_ = false; }
  void MarkChanged() { changed_ = true; }

  /// With one dark step, under the least number that is greater than all; its place.
  std::size_t Add();
  /// Under such a number too; the place of the copy.
  std::size_t Copy(std::size_t bank);
  void Remove(std::size_t bank);

  /// 0 where the step names no value. Output counts from 1.
  [[nodiscard]] int Value(std::size_t bank, std::size_t step, int output) const;
  /// An IO value is 0 or 1, a DAC value 0 to 255; what is beyond is taken as the nearest.
  void SetValue(std::size_t bank, std::size_t step, int output, int value);
  /// What stands behind the values of a DAC step, without its first ";".
  [[nodiscard]] std::string Further(std::size_t bank, std::size_t step) const;
  /// Line ends are left out.
  void SetFurther(std::size_t bank, std::size_t step, std::string_view text);
  /// Behind a step, or as the first one of a bank without steps.
  void AddStep(std::size_t bank, std::size_t behind);
  void CopyStep(std::size_t bank, std::size_t step);
  void RemoveStep(std::size_t bank, std::size_t step);
  /// One place up (-1) or down (1); false at the end.
  bool MoveStep(std::size_t bank, std::size_t step, int way);

  /// As the bank would be played from the file.
  [[nodiscard]] StepTable Played(std::size_t bank) const;
  /// This step of the last bank of the IO side is never played.
  [[nodiscard]] bool NeverPlayed(std::size_t bank, std::size_t step) const;

 private:
  [[nodiscard]] const BankStep* StepAt(std::size_t bank, std::size_t step) const;
  [[nodiscard]] BankStep* StepAt(std::size_t bank, std::size_t step);
  [[nodiscard]] int NextNumber() const;
  [[nodiscard]] BankStep Dark() const;

  Side side_ = Side::Io;
  IoBoardSize size_ = IoBoardSize::One;
  std::vector<Bank> banks_;
  bool changed_ = false;
};

}  // namespace lightorgan
