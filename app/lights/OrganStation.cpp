// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lights/OrganStation.h"

#include <algorithm>
#include <utility>

#include "app/StationContext.h"
#include "app/WorkstationView.h"
#include "support/Settings.h"
#include "support/Text.h"

namespace app {

using lightorgan::IoBoardSize;
using lightorgan::LightOrgan;

/// Where no adapter is: none can be opened.
class OrganStation::NoBoards final : public lightorgan::IoBoards {
 public:
  void OpenDevice(std::function<void(std::int32_t)> done) override { done(lightorgan::kNoBoard); }
  void CloseDevices() override {}
  void SetDigitalChannel(int, int) override {}
  void ClearDigitalChannel(int, int) override {}
  void OutputAllDigital(int, std::uint8_t) override {}
  void OutputAnalogChannel(int, int, std::int32_t) override {}
  void ClearAllDigital(int) override {}
  void ClearAllAnalog(int) override {}
};

OrganStation::OrganStation(const StationContext& context, OrganSound sound, lightorgan::IoBoards* boards)
    : context_(context),
      music_(std::move(sound)),
      files_(context),
      no_boards_(boards == nullptr ? std::make_unique<NoBoards>() : nullptr),
      organ_({boards != nullptr ? *boards : *no_boards_, music_, music_, files_, context.settings,
              context.clock}) {}

OrganStation::~OrganStation() = default;

void OrganStation::StartUp() {
  Ask([this](LightOrgan& organ) {
    organ.Start([this] {
      none_found_ = no_boards_ != nullptr;  // an adapter goes on looking and says so itself
      context_.prompt(context_.say(support::Sentence::NoIoBoard));
    });
    started_ = true;
  });
  files_.ReadMemories([this, alive = std::weak_ptr<int>(alive_)](const auto& read) {
    if (!alive.expired()) TakeMemories(read);
  });
}

void OrganStation::Tick(const WorkstationView& decks) {
  if (started_) {
    music_.Look(&decks);
    organ_.Tick();
    music_.Look(nullptr);
  }
  OrganView& view = views_.Draft();
  view.lamps = organ_.View();
  view.lamps.trouble = context_.say({support::ErrorCode::Unavailable, view.lamps.trouble, view.lamps.saying});
  if (none_found_ && view.lamps.boards_in_use && view.lamps.trouble.empty()) {
    view.lamps.trouble = context_.say(support::Sentence::NoIoBoard);
  }
  view.from = decks.sound.from;
  view.bpm = HeardTempo(decks);
  views_.Publish();
}

void OrganStation::ShutDown() {
  organ_.ShutDown();
  files_.Flush();
}

void OrganStation::Ask(Command command) {
  context_.conductor->Post([this, command = std::move(command)] { command(organ_); });
}

void OrganStation::SwitchBoards(bool on) {
  Ask([this, on](LightOrgan& organ) {
    none_found_ = false;
    organ.SwitchBoards(on);
  });
}

void OrganStation::ReadBanks(lightorgan::Side side, IoBoardSize size,
                             std::function<void(support::Result<OrganFiles::Banks>)> done) {
  files_.ReadBanks(side, size, std::move(done));
}

void OrganStation::SaveBanks(lightorgan::Side side, IoBoardSize size, OrganFiles::Banks banks,
                             OrganFiles::Done done) {
  files_.SaveBanks(side, size, std::move(banks),
                   [this, alive = std::weak_ptr<int>(alive_), done = std::move(done)](auto saved) {
                     if (alive.expired()) return;
                     Ask([](LightOrgan& organ) { organ.ReloadBanks(); });
                     done(saved);
                   });
}

std::string OrganStation::MemoryName(const std::string& name) {
  std::string kept;
  std::copy_if(name.begin(), name.end(), std::back_inserter(kept),
               [](char c) { return c != ']' && c != '[' && c != '\r' && c != '\n' && c != '\0'; });
  kept = support::Trim(kept);
  if (kept.starts_with(lightorgan::kMemoryPrefix)) return kept;
  return std::string(lightorgan::kMemoryPrefix) + (kept.empty() ? "" : " ") + kept;
}

void OrganStation::Remember(const std::string& name) {
  Ask([this, name = MemoryName(name)](LightOrgan& organ) {
    const std::string text = lightorgan::SnapshotText(organ.Remember(), organ.View().size);
    context_.window->Post([this, alive = std::weak_ptr<int>(alive_), name, text] {
      if (alive.expired()) return;
      Keep({name, text});
      SaveMemories();
    });
  });
}

/// Those that were remembered before the file was read are newer.
void OrganStation::TakeMemories(const support::Result<OrganFiles::Memories>& read) {
  if (!read) return context_.tell(SayingOf(read.Failure()));
  memories_read_ = true;
  const OrganFiles::Memories newer = std::exchange(memories_, read.Value());
  for (const lightorgan::Memory& memory : newer) Keep(memory);
  if (!newer.empty()) SaveMemories();
}

void OrganStation::Keep(const lightorgan::Memory& memory) {
  const auto there = std::find_if(memories_.begin(), memories_.end(),
                                  [&](const lightorgan::Memory& other) { return other.name == memory.name; });
  if (there != memories_.end()) {
    there->text = memory.text;
  } else {
    memories_.push_back(memory);
  }
}

void OrganStation::SaveMemories() {
  if (memories_read_) files_.SaveMemories(memories_);
}

void OrganStation::Recall(std::size_t memory) {
  if (memory >= memories_.size()) return;
  files_.PassSnapshot(memories_[memory].text, [this, alive = std::weak_ptr<int>(alive_)](std::string text) {
    if (alive.expired()) return;
    const auto snapshot = lightorgan::ParseSnapshot(text);
    if (snapshot) Ask([snapshot](LightOrgan& organ) { organ.Recall(*snapshot); });
  });
}

void OrganStation::Forget(std::size_t memory) {
  if (memory >= memories_.size()) return;
  memories_.erase(memories_.begin() + static_cast<std::ptrdiff_t>(memory));
  SaveMemories();
}

}  // namespace app
