// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

#include "ui/strings/Strings.h"

namespace ui {

/// Numbers of what is said about editing pattern banks and about the memories: 2400 to 2449.
enum class BankWord : int {
  BankEditor = 2400,
  BankFile,
  BankFileTip,
  BankFileIo1,
  BankFileIo2,
  BankFileDac1,
  BankFileDac2,
  Banks,
  BanksTip,
  BankItem,
  BankNew,
  BankNewTip,
  BankCopy,
  BankCopyTip,
  BankRemove,
  BankRemoveTip,
  BankSteps,
  BankStepsTip,
  BankValuesTip,
  BankFurther,
  StepAdd,
  StepAddTip,
  StepCopyTip,
  StepRemoveTip,
  StepUp,
  StepUpTip,
  StepDown,
  StepDownTip,
  BankPlay,
  BankPlayTip,
  BankOtherSize,
  BankSave,
  BankSaveTip,
  BankSaved,
  BankUnsaved,
  BankAskLeave,
  BankLeave,
  BankLastStep,
  EditBanksTip,
  MemoryForgetTip,
  MemoryAskForget,
  BankClose,
  BankCloseTip,
};

[[nodiscard]] std::span<const Strings::Row> BankWords();

}  // namespace ui
