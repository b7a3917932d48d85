// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/SongChase.h"

namespace karaoke {
namespace {

/// Bank select, data entry and parameter numbers act on what stands before them.
bool MeansSomethingByItsOrder(std::uint8_t controller) {
  return controller == 0 || controller == 32 || controller == 6 || controller == 38 ||
         (controller >= 96 && controller <= 101);
}

}  // namespace

void SongChase::Pass(const SongEvents& song, const SongEvent& event) {
  const ChannelMessage& message = event.message;
  const std::pair note(message.Channel(), message.data1);
  if (message.status == 0xF0) {
    if (IsSystemReset(song.exclusives[event.exclusive])) *this = SongChase();
    ordered_.push_back(event);
  } else if (message.IsNoteOn()) {
    notes_[note] = event;
  } else if (message.IsNoteOff()) {
    notes_.erase(note);
  } else if (message.Kind() == 0xB0) {
    PassControl(event);
  } else if (message.Kind() == 0xC0) {
    ordered_.push_back(event);
  } else {
    const bool per_key = message.Kind() == 0xA0;
    values_[{message.status, per_key ? message.data1 : std::uint8_t{0}}] = event;
  }
}

void SongChase::PassControl(const SongEvent& event) {
  const ChannelMessage& message = event.message;
  const std::size_t channel = message.Channel();
  if (message.data1 == controller::kResetControls) ResetControls(channel);
  if (message.data1 >= controller::kSoundOff) {
    if (message.data1 == controller::kResetControls) return;
    std::erase_if(notes_, [&](const auto& note) { return note.first.first == channel; });
    return;
  }
  if (MeansSomethingByItsOrder(message.data1)) {
    ordered_.push_back(event);
  } else {
    values_[{message.status, message.data1}] = event;
  }
}

void SongChase::ResetControls(std::size_t channel) {
  const auto reset = [&](const auto& value) {
    const auto [status, number] = value.first;
    if ((status & 0x0FU) != channel) return false;
    return (status & 0xF0) != 0xB0 || number == 1 || number == 11 ||
           (number >= controller::kSustain && number <= 67);
  };
  std::erase_if(values_, reset);
}

std::vector<SongEvent> SongChase::Result() const {
  std::vector<SongEvent> all = ordered_;
  for (const auto& [key, event] : values_) all.push_back(event);
  for (const auto& [key, event] : notes_) all.push_back(event);
  return all;
}

}  // namespace karaoke
