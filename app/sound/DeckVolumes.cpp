// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// The calls of DeckStation that say how loud the hall and the head-phones hear it.
#include <algorithm>
#include <cmath>
#include <utility>

#include "app/sound/DeckStation.h"

namespace app {
namespace {

using State = DeckView::State;

std::int16_t Level(int volume) {
  return static_cast<std::int16_t>(std::clamp(volume, 0, 100));
}

}  // namespace

void DeckStation::SetVolume(int volume) {
  player_.volume(Level(volume));
}

void DeckStation::Glide(double level, std::chrono::milliseconds time) {
  const double reached = std::clamp(level, 0.0, 100.0);
  const auto volume = static_cast<std::int16_t>(std::lround(reached));
  using Kind = decks::ScheduledCommand::Kind;
  const decks::StreamHandle stream = player_.STRM();
  const bool glides =
      stream != 0 && sound_.Schedule({Kind::Ramp, stream, {}, static_cast<float>(reached), time});
  if (!glides) return player_.volume(volume);
  player_.NoteVolume(volume);
}

void DeckStation::SetPreVolume(int volume) {
  const std::int16_t level = Level(volume);
  const bool stands = state_ != State::Playing && player_.STRM() != 0 && player_.PreSTRM() != 0;
  if (level > 0 && stands && !listening_) ListenAlone();
  if (level == 0 && std::exchange(listening_, false)) player_.PausePrelisten();
  player_.PreVolume(level);
}

void DeckStation::ListenAlone() {
  player_.PlayPrelisten();
  tempo_.Apply();  // to a stream that may be a new one
  listening_ = player_.PreSTRM() != 0;
}

void DeckStation::NoticeTheEndOfListening() {
  if (listening_ && sound_.Heard(player_.PreSTRM()).ended) SetPreVolume(0);
}

}  // namespace app
