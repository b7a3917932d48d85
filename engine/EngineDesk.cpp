// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/EngineDesk.h"

#include <algorithm>
#include <cmath>

namespace engine {
namespace {

float FactorOf(support::Decibels band) {
  constexpr float kMost = 12;
  if (std::isnan(band.value)) return 1;
  if (band <= decks::kKilled) return 0;
  return std::pow(10.0F, std::min(band.value, kMost) / 20);
}

constexpr double kElsewhere = 0.02;  // seconds: another buffer, no jitter
constexpr double kEase = 1.0 / 64;

int PairCodeOf(std::uint32_t speaker) {
  constexpr int kShift = 24;
  return static_cast<int>((speaker & decks::kSpeakerMask) >> kShift);
}

}  // namespace

void EngineDesk::SetTone(decks::StreamHandle stream, const decks::Tone& tone) {
  Playing* playing = players_.Find(stream);
  const ThreeBands::Gains gains{FactorOf(tone.bass), FactorOf(tone.mid), FactorOf(tone.high)};
  if (playing == nullptr || (playing->sound == nullptr && gains == ThreeBands::Gains{})) return;
  SoundOf(*playing).three.Set(gains);
  players_.TellFollowers(stream);
}

void EngineDesk::Direct(const decks::DeskLines& lines) {
  lines_ = lines;
  for (const auto& slot : devices_.All()) {
    PhonesMix::Wish wish{.mix = lines.mix};
    const auto pair_here = [&slot](const decks::SpeakerPair& pair) {
      return pair.device != 0 && pair.device == slot->Number() ? PairCodeOf(pair.speaker) : PhonesMix::kNone;
    };
    wish.phones = pair_here(lines.headphones);
    std::transform(lines.hall.begin(), lines.hall.end(), wish.hall.begin(), pair_here);
    slot->Core().Phones().Set(wish);
    const bool phones = wish.phones != PhonesMix::kNone;
    slot->Core().Elsewhere().Use(phones ? HallElsewhere::Sounds{Passing(0), Passing(1)}
                                        : HallElsewhere::Sounds{});
    slot->Core().MeterPair(pair_here(lines.hall[0]));
  }
}

std::shared_ptr<const PassingSound> EngineDesk::Passing(std::size_t deck) {
  const decks::SpeakerPair& pair = lines_.hall[deck];
  if (pair.device == 0 || pair.device == lines_.headphones.device) return nullptr;
  const auto slot = devices_.Find(pair.device);
  return slot == nullptr ? nullptr : slot->Core().Passing(PairCodeOf(pair.speaker));
}

bool EngineDesk::HallReachesHeadphones() {
  const auto slot = devices_.Find(lines_.headphones.device);
  if (slot == nullptr) return false;
  PlaceHalls(*slot);
  return slot->Core().PhonesReachHall();
}

// What is mixed now in the hall is heard there after a time, and in the head-phones after another.
void EngineDesk::PlaceHalls(DeviceSlot& phones) {
  const auto own = phones.Behind();
  for (std::size_t deck = 0; own && deck < lines_.hall.size(); ++deck) {
    const auto slot = devices_.Find(lines_.hall[deck].device);
    if (slot == nullptr || slot->Number() == phones.Number()) continue;
    const auto hall = slot->Behind();
    if (!hall) continue;
    const double wanted = (*hall - *own).count();
    std::optional<double>& behind = behind_[deck];
    const bool other = !behind || std::abs(wanted - *behind) > kElsewhere;
    behind = other ? wanted : *behind + kEase * (wanted - *behind);
    phones.Core().Elsewhere().Place(deck, *behind);
  }
}

decks::MasterReading EngineDesk::Master() {
  const auto slot = devices_.Find(lines_.hall[0].device);
  return slot == nullptr ? decks::MasterReading{} : slot->Core().Meter().Read(slot->HeardFrame());
}

}  // namespace engine
