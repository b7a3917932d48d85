// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/DeviceTable.h"

#include <algorithm>
#include <utility>

#include "support/Sentences.h"

namespace engine {
namespace {

constexpr auto kSearchEvery = std::chrono::seconds(1);
constexpr auto kStreamsGo = std::chrono::seconds(2);  ///< and are gone from a device that was moved by hand

OutputDeviceInfo NoSound() {
  return {"", "No sound", {Speaker::FrontLeft, Speaker::FrontRight}, false};
}

const OutputDeviceInfo* Look(const std::vector<OutputDeviceInfo>& listed, const std::string& id) {
  const auto found =
      std::find_if(listed.begin(), listed.end(), [&](const OutputDeviceInfo& info) { return info.id == id; });
  return found == listed.end() ? nullptr : &*found;
}

bool Holds(const std::vector<OutputDeviceInfo>& listed, const std::string& id) {
  return Look(listed, id) != nullptr;
}

decks::DeviceEvent Event(decks::DeviceEvent::Kind kind, int device, support::Sentence sentence,
                         const std::string& name) {
  support::Saying saying{sentence, {name}};
  return {kind, device, support::Sentences()(saying), std::move(saying)};
}

}  // namespace

DeviceTable::DeviceTable(OutputDevices& outputs, SilentOutputMaker make_silent, support::Executor& workers,
                         const support::Clock& clock)
    : outputs_(outputs),
      make_silent_(std::move(make_silent)),
      workers_(workers),
      clock_(clock),
      changed_(std::make_shared<std::atomic<bool>>(false)) {
  outputs_.OnChange([changed = changed_] { changed->store(true); });
}

void DeviceTable::Start() {
  support::MutexLock opening(opening_);
  const std::vector<OutputDeviceInfo> listed = outputs_.List();
  support::MutexLock lock(mutex_);
  TakeIn(listed);
  events_.clear();
}

void DeviceTable::TakeIn(const std::vector<OutputDeviceInfo>& listed) {
  std::vector<OutputDeviceInfo> ordered = listed;
  std::stable_partition(ordered.begin(), ordered.end(),
                        [](const OutputDeviceInfo& info) { return info.is_default; });
  for (OutputDeviceInfo& info : ordered) {
    const auto known = std::find_if(known_.begin(), known_.end(),
                                    [&](const OutputDeviceInfo& other) { return other.id == info.id; });
    if (known == known_.end()) {
      known_.push_back(std::move(info));
      events_.push_back({decks::DeviceEvent::Kind::Listed, static_cast<int>(known_.size()), ""});
    } else {
      *known = std::move(info);
    }
  }
}

bool DeviceTable::Open(int number, OutputRequest request) {
  support::MutexLock opening(opening_);
  OutputDeviceInfo info = NoSound();
  {
    support::MutexLock lock(mutex_);
    if (slots_.contains(number)) return true;
    if (number < 0 || number > static_cast<int>(known_.size())) return false;
    if (number > 0) info = known_[static_cast<std::size_t>(number - 1)];
  }
  request.id = info.id;
  auto slot = std::make_shared<DeviceSlot>(number, info, request, clock_);
  auto plug = number == 0 ? SilentPlug(*slot) : OpenPlug(number, info, request);
  if (plug == nullptr) return false;
  slot->Plug(std::move(plug));
  support::MutexLock lock(mutex_);
  slots_[number] = std::move(slot);
  return true;
}

std::unique_ptr<OutputPlug> DeviceTable::OpenPlug(int number, const OutputDeviceInfo& info,
                                                  OutputRequest request) {
  if (info.speakers.empty() || info.speakers.size() > kMaxDeviceChannels) return nullptr;
  auto plug = std::make_unique<OutputPlug>(info);
  request.id = info.id;
  {
    support::MutexLock lock(mutex_);
    request.stays = RoleOf(number) == decks::DeviceRole::Headphones;
  }
  auto device = outputs_.Open(request, *plug);
  if (!device) return nullptr;
  plug->Insert(std::move(device).Value());
  return plug;
}

std::unique_ptr<OutputPlug> DeviceTable::SilentPlug(const DeviceSlot& slot) const {
  auto plug = std::make_unique<OutputPlug>(slot.Wanted());
  plug->Insert(make_silent_(slot.Wanted(), slot.Request(), *plug));
  return plug;
}

std::optional<std::string> DeviceTable::Description(int number) {
  support::MutexLock lock(mutex_);
  if (number == 0) return NoSound().name;
  if (number < 0 || number > static_cast<int>(known_.size())) return std::nullopt;
  return known_[static_cast<std::size_t>(number - 1)].name;
}

std::shared_ptr<DeviceSlot> DeviceTable::Find(int number) {
  support::MutexLock lock(mutex_);
  const auto found = slots_.find(number);
  return found == slots_.end() ? nullptr : found->second;
}

std::vector<std::shared_ptr<DeviceSlot>> DeviceTable::All() {
  support::MutexLock lock(mutex_);
  std::vector<std::shared_ptr<DeviceSlot>> all;
  for (const auto& [number, slot] : slots_) all.push_back(slot);
  return all;
}

void DeviceTable::SetRole(int number, decks::DeviceRole role) {
  support::MutexLock lock(mutex_);
  roles_[number] = role;
}

decks::DeviceRole DeviceTable::RoleOf(int number) const {
  const auto role = roles_.find(number);
  return role == roles_.end() ? decks::DeviceRole::Main : role->second;
}

void DeviceTable::SetStretch(decks::Stretch choice) {
  support::MutexLock lock(mutex_);
  main_quality_ = choice == decks::Stretch::LowPower ? StretchQuality::LowPower : StretchQuality::Best;
}

StretchQuality DeviceTable::Quality(int number) {
  support::MutexLock lock(mutex_);
  return RoleOf(number) == decks::DeviceRole::Headphones ? StretchQuality::LowPower : main_quality_;
}

void DeviceTable::Watch() {
  support::MutexLock lock(mutex_);
  for (const auto& [number, slot] : slots_) {
    if (slot->Lost()) {
      Silence(slot);
    } else {
      FollowHand(slot);
    }
  }
  // An output that wakes again tells nobody.
  const bool sleeps = std::any_of(moved_.begin(), moved_.end(), [](const auto& one) {
    return one.second.own_stayed && !one.second.can_return;
  });
  const bool due = (!homeless_.empty() || sleeps) && clock_.Now() >= next_search_;
  if (searching_ || (!due && !changed_->load())) return;
  changed_->store(false);
  searching_ = true;
  workers_.Post([weak = weak_from_this()] {
    if (const auto self = weak.lock()) self->FindHomes();
  });
}

void DeviceTable::Silence(const std::shared_ptr<DeviceSlot>& slot) {
  // A lost output pulls no more, but taking leave of it may wait for the sound system.
  workers_.Post([lost = std::shared_ptr<OutputPlug>(slot->Unplug())] { static_cast<void>(lost); });
  slot->Plug(SilentPlug(*slot));
  homeless_.insert(slot->Number());
  next_search_ = clock_.Now();
  const std::string& name = slot->Wanted().name;
  if (RoleOf(slot->Number()) == decks::DeviceRole::Headphones) {
    events_.push_back(
        Event(decks::DeviceEvent::Kind::Muted, slot->Number(), support::Sentence::HeadphonesGone, name));
  } else {
    events_.push_back(
        Event(decks::DeviceEvent::Kind::Lost, slot->Number(), support::Sentence::OutputGone, name));
  }
}

void DeviceTable::FollowHand(const std::shared_ptr<DeviceSlot>& slot) {
  const int number = slot->Number();
  if (const auto strayed = strayed_.find(number); strayed != strayed_.end()) {
    if (clock_.Now() < strayed->second) return;
    strayed_.erase(strayed);
    workers_.Post([weak = weak_from_this(), number] {
      if (const auto self = weak.lock()) self->Settle(number);
    });
    return;
  }
  const std::string id = slot->MovedTo();
  const auto known =
      std::find_if(known_.begin(), known_.end(), [&](const OutputDeviceInfo& info) { return info.id == id; });
  if (id.empty() || known == known_.end()) return;
  strayed_[number] = clock_.Now() + kStreamsGo;
  moved_.erase(number);  // where a stand-in goes by hand is a choice, too
  auto event =
      Event(decks::DeviceEvent::Kind::Moved, number, support::Sentence::OutputMovedByHand, known->name);
  event.moved_to = static_cast<int>(known - known_.begin()) + 1;
  events_.push_back(std::move(event));
}

void DeviceTable::Settle(int number) {
  support::MutexLock opening(opening_);
  const auto slot = Find(number);
  if (slot == nullptr || slot->MovedTo().empty()) return;
  auto plug = OpenPlug(number, slot->Wanted(), slot->Request());
  if (plug == nullptr) {
    // What is moved there next shall not be heard elsewhere.
    plug = SilentPlug(*slot);
    support::MutexLock lock(mutex_);
    homeless_.insert(number);
  }
  slot->Close();
  support::MutexLock lock(mutex_);
  slot->Plug(std::move(plug));
}

void DeviceTable::FindHomes() {
  {
    support::MutexLock opening(opening_);
    const std::vector<OutputDeviceInfo> listed = outputs_.List();
    for (const Homeless& homeless : ListHomeless(listed)) FindHome(homeless);
    TellReturns(listed);
  }
  support::MutexLock lock(mutex_);
  searching_ = false;
  next_search_ = clock_.Now() + kSearchEvery;
}

std::vector<DeviceTable::Homeless> DeviceTable::ListHomeless(const std::vector<OutputDeviceInfo>& listed) {
  support::MutexLock lock(mutex_);
  TakeIn(listed);
  std::set<std::string> headphones;
  for (const auto& [number, slot] : slots_) {
    if (RoleOf(number) == decks::DeviceRole::Headphones) headphones.insert(slot->Wanted().id);
  }
  std::vector<Homeless> all;
  for (const int number : homeless_) {
    Homeless one{slots_.at(number), {}};
    const std::string& own = one.slot->Wanted().id;
    if (Holds(listed, own)) one.candidates.push_back(one.slot->Wanted());
    for (const OutputDeviceInfo& info : known_) {
      const bool taken = info.id == own || headphones.contains(info.id) || !Holds(listed, info.id);
      if (!taken && RoleOf(number) == decks::DeviceRole::Main) one.candidates.push_back(info);
    }
    all.push_back(std::move(one));
  }
  return all;
}

void DeviceTable::FindHome(const Homeless& homeless) {
  for (const OutputDeviceInfo& info : homeless.candidates) {
    auto plug = OpenPlug(homeless.slot->Number(), info, homeless.slot->Request());
    if (plug == nullptr) continue;
    homeless.slot->Close();
    // In one step: an output that is lost again at once is found homeless again by Watch, which waits here.
    support::MutexLock lock(mutex_);
    homeless.slot->Plug(std::move(plug));
    const int number = homeless.slot->Number();
    homeless_.erase(number);
    if (info.id == homeless.slot->Wanted().id) {
      moved_.erase(number);
    } else {
      moved_[number] = {.own_stayed = homeless.candidates.front().id == homeless.slot->Wanted().id};
    }
    if (RoleOf(number) == decks::DeviceRole::Headphones) {
      events_.push_back(
          Event(decks::DeviceEvent::Kind::Returned, number, support::Sentence::HeadphonesBack, info.name));
    } else {
      events_.push_back(
          Event(decks::DeviceEvent::Kind::Replaced, number, support::Sentence::PlayingGoesOn, info.name));
    }
    return;
  }
}

void DeviceTable::TellReturns(const std::vector<OutputDeviceInfo>& listed) {
  support::MutexLock lock(mutex_);
  for (auto& [number, stand_in] : moved_) {
    const OutputDeviceInfo& own = slots_.at(number)->Wanted();
    const OutputDeviceInfo* const now = Look(listed, own.id);
    // One that never went has to be seen awake once; later it may sleep because nothing plays on it.
    const bool awake = !stand_in.own_stayed || stand_in.can_return || (now != nullptr && !now->suspended);
    const bool there = now != nullptr && awake && !homeless_.contains(number);
    if (now == nullptr) stand_in.own_stayed = false;
    if (there == stand_in.can_return) continue;
    stand_in.can_return = there;
    if (there) {
      events_.push_back(
          Event(decks::DeviceEvent::Kind::CanReturn, number, support::Sentence::OutputCanReturn, own.name));
    } else {
      events_.push_back({decks::DeviceEvent::Kind::CannotReturn, number, ""});
    }
  }
}

void DeviceTable::Return(int number) {
  workers_.Post([weak = weak_from_this(), number] {
    if (const auto self = weak.lock()) self->MoveBack(number);
  });
}

void DeviceTable::MoveBack(int number) {
  support::MutexLock opening(opening_);
  std::shared_ptr<DeviceSlot> slot;
  {
    support::MutexLock lock(mutex_);
    if (!moved_.contains(number) || homeless_.contains(number)) return;
    slot = slots_.at(number);
  }
  auto plug = OpenPlug(number, slot->Wanted(), slot->Request());
  if (plug == nullptr) return;
  slot->Close();
  support::MutexLock lock(mutex_);
  slot->Plug(std::move(plug));
  moved_.erase(number);
  homeless_.erase(number);  // the stand-in may have gone at this very moment
  events_.push_back(Event(decks::DeviceEvent::Kind::Returned, number, support::Sentence::PlayingIsBack,
                          slot->Wanted().name));
}

std::vector<decks::DeviceEvent> DeviceTable::TakeEvents() {
  support::MutexLock lock(mutex_);
  return std::exchange(events_, {});
}

void DeviceTable::CloseAll() {
  support::MutexLock opening(opening_);
  std::map<int, std::shared_ptr<DeviceSlot>> closing;
  {
    support::MutexLock lock(mutex_);
    closing = std::exchange(slots_, {});
    homeless_.clear();
    moved_.clear();
    strayed_.clear();
  }
  for (const auto& [number, slot] : closing) {
    slot->Close();
    slot->Core().DetachAll();
  }
}

}  // namespace engine
