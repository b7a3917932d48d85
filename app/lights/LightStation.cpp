// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lights/LightStation.h"

#include <algorithm>
#include <utility>

#include "app/StationContext.h"
#include "app/WorkstationView.h"
#include "app/lights/StagedShow.h"
#include "app/settings/NetSettings.h"
#include "dmx/LightLayers.h"
#include "dmx/LiveLook.h"
#include "dmx/ports/NetOutput.h"
#include "support/Settings.h"

namespace app {
namespace {

using Player = dmx::ShowPlayer;

constexpr const char* kLastShow = "LastShow";

/// Where there is no interface, nothing is lit.
class NoInterface final : public dmx::DmxInterface {
 public:
  void StartDevice() override {}
  void SetChannelCount(int /*count*/) override {}
  void SetData(int /*channel*/, dmx::DmxLevel /*level*/) override {}
  void StopDevice() override {}
};

}  // namespace

LightStation::LightStation(const StationContext& context, dmx::DmxInterface* wire, dmx::NetOutput* net)
    : context_(context),
      library_(context.folder, context.say),
      net_(net),
      nothing_(wire == nullptr ? std::make_unique<NoInterface>() : nullptr),
      output_(wire == nullptr ? *nothing_ : *wire),
      universe_(output_),
      layers_(std::make_unique<dmx::LightLayers>(universe_)),
      switch_(output_, context.settings),
      player_(layers_->Beneath()) {}

LightStation::~LightStation() = default;

void LightStation::StartUp() {
  if (net_ != nullptr) net_->Choose(Net());
  Post([this] {
    switch_.Restore();
    universe_.Resend();
  });
  const std::string last = context_.settings.Text("Setup", kLastShow);
  if (last.empty()) return;
  OpenShow(last, [tell = context_.tell](const support::Result<ShowReport>& report) {
    if (!report) return;
    std::string told;
    for (const auto* sentences : {&report.Value().refused, &report.Value().notes}) {
      for (const std::string& sentence : *sentences) told += (told.empty() ? "" : " ") + sentence;
    }
    if (!told.empty()) tell(support::AsItStands(std::move(told)));
  });
}

void LightStation::ShutDown() {
  switch_.MainWindowClosed();
}

const LightView& LightStation::View() {
  const LightView& view = views_.Read();
  DropUnused();
  return view;
}

void LightStation::Keep(std::shared_ptr<const void> given) {
  if (given == nullptr || std::find(given_.begin(), given_.end(), given) != given_.end()) return;
  given_.push_back(std::move(given));
}

void LightStation::DropUnused() {
  std::erase_if(given_, [](const auto& given) { return given.use_count() == 1; });
}

void LightStation::TurnOutput(Output output) {
  Post([this, output] {
    if (output == Output::Off) return switch_.TurnOff();
    switch_.TurnOn();
    universe_.Resend();
  });
}

dmx::NetWish LightStation::Net() const {
  return ReadNetWish(context_.settings);
}

void LightStation::ChooseNet(const dmx::NetWish& wish) {
  StoreNetWish(context_.settings, wish);
  net_->Choose(Net());
}

void LightStation::Post(Job job) {
  context_.conductor->Post(std::move(job));
}

std::filesystem::path LightStation::ShowFolder() const {
  return context_.folder.Native("\\DMXShows");
}

void LightStation::SetGrandMaster(int master) {
  context_.conductor->Order(output_, &dmx::OutputStage::SetGrandMaster, master);
}

void LightStation::SetBlackout(dmx::OutputStage::Blackout blackout) {
  context_.conductor->Order(output_, &dmx::OutputStage::SetBlackout, blackout);
}

void LightStation::SetFlashGuard(dmx::OutputStage::FlashGuard guard) {
  context_.conductor->Order(output_, &dmx::OutputStage::SetFlashGuard, guard);
}

void LightStation::ShowEditorLoaded() {
  Post([this] {
    switch_.ShowEditorLoaded();
    universe_.Resend();
  });
}

void LightStation::FixtureEditorLoaded() {
  context_.conductor->Order(switch_, &dmx::OutputSwitch::FixtureEditorLoaded);
}

void LightStation::MoveFader(int channel, dmx::DmxLevel level) {
  Post([this, channel, level] { Move({channel, level}); });
}

void LightStation::MoveFaders(std::vector<dmx::FaderMove> moves) {
  Post([this, moves = std::move(moves)] {
    for (const dmx::FaderMove& move : moves) Move(move);
  });
}

void LightStation::Move(const dmx::FaderMove& move) {
  if (move.channel < 1 || move.channel > dmx::kUniverseChannels) return;
  if (layers_->InHand(move.channel)) return layers_->TakeInHand(move.channel, move.level);
  layers_->Beneath().MoveFader(move.channel, move.level);
}

void LightStation::TakeInHand(std::vector<dmx::FaderMove> moves) {
  Post([this, moves = std::move(moves)] {
    for (const dmx::FaderMove& move : moves) layers_->TakeInHand(move.channel, move.level);
  });
}

void LightStation::AllDown() {
  Post([this] {
    for (int channel = 1; channel <= dmx::kUniverseChannels; ++channel)
      layers_->Beneath().MoveFader(channel, 0);
    layers_->LetAllGo();
  });
}

void LightStation::ListShows(ShowsListed done) {
  context_.workers.Post(
      [gate = context_.gate, window = context_.window, folder = ShowFolder(), done = std::move(done)] {
        gate->Pass([&] { window->Post([done, shows = ShowFilesIn(folder)] { done(shows); }); });
      });
}

void LightStation::OpenShow(const std::filesystem::path& path, ShowOpened done) {
  const int number = ++newest_opening_;
  context_.workers.Post(
      [this, gate = context_.gate, window = context_.window, path, number, done = std::move(done)] {
        gate->Pass([&] {
          window->Post([this, number, path, done, opening = OpenStagedShow(path, library_)] {
            if (opening && number == newest_opening_) {
              context_.settings.SetText("Setup", kLastShow, path.string());
              TakeShow(opening.Value().show);
            }
            if (!done) return;
            if (opening) return done(opening.Value().report);
            done(support::Error{opening.Failure().code, context_.say(opening.Failure())});
          });
        });
      });
}

void LightStation::TakePlan(std::shared_ptr<const dmx::ShowPlan> plan, const dmx::DMXname& fixtures,
                            std::string name, std::vector<std::string> scenes) {
  auto show = std::make_shared<StagedShow>();
  show->name = std::move(name);
  show->scenes = std::move(scenes);
  show->patch = StagePatch::Make(fixtures);
  show->plan = std::move(plan);
  TakeShow(std::move(show));
}

void LightStation::TakeShow(std::shared_ptr<const StagedShow> show) {
  DropUnused();
  Keep(show);
  Keep(show->patch);
  Keep(show->plan);
  Post([this, show = std::move(show)] {
    next_ = show;
    TakeWhatWaits();
  });
}

void LightStation::TakePatch(const dmx::DMXname& fixtures) {
  auto patch = StagePatch::Make(fixtures);
  DropUnused();
  Keep(patch);
  Post([this, patch = std::move(patch)] {
    next_patch_ = patch;
    TakeWhatWaits();
  });
}

void LightStation::PlayShow() {
  ++show_commands_;
  Post([this] {
    if (next_ != nullptr) StageShow(std::move(next_));
    if (show_ == nullptr || show_->plan == nullptr) return;
    StagePatchNow(show_->patch);
    player_.Play(show_->plan, repeat_, context_.clock.Now());
  });
}

void LightStation::PauseShow() {
  ++show_commands_;
  Post([this] { player_.Pause(context_.clock.Now()); });
}

void LightStation::ResumeShow() {
  ++show_commands_;
  Post([this] { player_.Resume(context_.clock.Now()); });
}

void LightStation::StopShow() {
  ++show_commands_;
  Post([this] {
    player_.Stop();
    TakeWhatWaits();
  });
}

void LightStation::SeekShow(dmx::ShowTime position) {
  ++show_commands_;
  Post([this, position] { player_.Seek(position, context_.clock.Now()); });
}

void LightStation::RepeatShow(Player::Repeat repeat) {
  Post([this, repeat] {
    repeat_ = repeat;
    player_.SetRepeat(repeat);
  });
}

LightsInHand LightStation::InHand() const {
  LightsInHand lights;
  lights.grand_master = output_.GrandMaster();
  lights.blackout = output_.IsBlackout() == dmx::OutputStage::Blackout::On;
  lights.levels = layers_->Beneath().Levels();
  for (int channel = 1; channel <= dmx::kUniverseChannels; ++channel) {
    if (const auto level = layers_->InHand(channel)) lights.hands.push_back({channel, *level});
  }
  if (show_ != nullptr) lights.show = show_->file;
  lights.state = player_.Now();
  lights.position = player_.Position(context_.clock.Now());
  lights.repeat = repeat_;
  return lights;
}

void LightStation::GoOn(const LightsInHand& lights) {
  SetGrandMaster(lights.grand_master);
  SetBlackout(lights.blackout ? dmx::OutputStage::Blackout::On : dmx::OutputStage::Blackout::Off);
  std::vector<dmx::FaderMove> moves;
  for (int channel = 1; channel <= dmx::kUniverseChannels; ++channel) {
    const dmx::DmxLevel level = lights.levels[static_cast<std::size_t>(channel - 1)];
    if (level != 0) moves.push_back({channel, level});
  }
  MoveFaders(std::move(moves));
  TakeInHand(lights.hands);
  RepeatShow(lights.repeat);
  if (lights.show.empty()) return;
  const int opening = newest_opening_ + 1;
  OpenShow(lights.show, [this, lights, opening, commands = show_commands_](const auto& opened) {
    if (!opened) return context_.tell(SayingOf(opened.Failure()));
    if (opening != newest_opening_ || commands != show_commands_) return;
    if (lights.state == Player::State::Stopped) return;
    PlayShow();
    SeekShow(lights.position);
    if (lights.state == Player::State::Paused) PauseShow();
  });
}

void LightStation::StageShow(std::shared_ptr<const StagedShow> show) {
  player_.Stop();  // it lets go of the plan before the show is
  show_ = std::move(show);
  next_.reset();
  StagePatchNow(show_->patch);
}

void LightStation::StagePatchNow(std::shared_ptr<const StagePatch> patch) {
  if (patch == nullptr || patch == patch_) return;
  patch_ = std::move(patch);
  output_.SetRules(patch_->rules);
  layers_->SetDimmers(dmx::DimmersOf(patch_->fixtures));
}

void LightStation::TakeWhatWaits() {
  if (player_.Now() != Player::State::Stopped) return;
  if (next_ != nullptr) StageShow(std::move(next_));
  if (next_patch_ != nullptr) StagePatchNow(std::move(next_patch_));
}

void LightStation::FillShow(ShowView& view) const {
  const support::TimePoint now = context_.clock.Now();
  view.show = show_;
  view.next = next_;
  view.state = player_.Now();
  view.position = player_.Position(now);
  view.place = player_.PlaceAt(now);
  view.repeat = repeat_;
}

void LightStation::Tick(const WorkstationView& /*decks*/) {
  player_.Tick(context_.clock.Now());
  TakeWhatWaits();
  LightView& view = views_.Draft();
  view.levels = universe_.Levels();
  view.on_the_wire = output_.OnTheWire();
  view.patch = patch_;
  view.status = output_.Status();
  view.trouble = context_.say({support::ErrorCode::Unavailable, view.status.text, view.status.saying});
  view.has_interface = nothing_ == nullptr;
  view.output_on = switch_.IsOn();
  view.grand_master = output_.GrandMaster();
  view.blackout = output_.IsBlackout() == dmx::OutputStage::Blackout::On;
  view.flash_guard = output_.Guard() == dmx::OutputStage::FlashGuard::On;
  FillShow(view.show);
  views_.Publish();
}

}  // namespace app
