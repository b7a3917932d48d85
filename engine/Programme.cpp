// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Programme.h"

namespace engine {

std::unique_ptr<ProgrammeReader> EngineProgramme::Open(int device, std::uint32_t speaker) {
  const auto slot = devices_->Find(device);
  return slot == nullptr ? nullptr : slot->Core().OpenProgramme(PairOf(speaker));
}

std::int64_t EngineProgramme::Heard(int device) {
  const auto slot = devices_->Find(device);
  return slot == nullptr ? kNothingHeard : slot->HeardFrame();
}

}  // namespace engine
