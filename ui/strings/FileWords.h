// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

#include "ui/strings/Strings.h"

namespace ui {

/// Numbers of what is said about files on their way into the lists, and rows on their way out: 2450 to 2469.
enum class FileWord : int {
  Add = 2450,
  AddFolder,
  AddFolderTitle,
  LookingThrough,
  StopAdding,
  StopAddingTip,
  AddingStopped,
  SongsAside,
  RemoveTip,
  RemoveFromList,
  DeleteFromDisk,
  BringBack,
  Removed,
  IsBack,
  IsBackAlready,
  NothingToBringBack,
};

[[nodiscard]] std::span<const Strings::Row> FileWords();

}  // namespace ui
