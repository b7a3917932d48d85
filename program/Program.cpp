// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/Program.h"

#include <algorithm>
#include <atomic>
#include <thread>

#include "app/Ports.h"
#include "app/SaveWatch.h"
#include "app/WatchedSideStore.h"
#include "app/Workstation.h"
#include "app/sound/BuiltInVisualisation.h"
#include "dmx/Wires.h"
#include "engine/HallMicrophone.h"
#include "engine/Programme.h"
#include "engine/Recorder.h"
#include "engine/SoundEngine.h"
#include "platform/analysis/EburLoudnessMeters.h"
#include "platform/analysis/QmBeatTrackers.h"
#include "platform/archive/PackedDiscImages.h"
#include "platform/audio/PulseDevices.h"
#include "platform/audio/PulseInputs.h"
#include "platform/audio/PulseMixer.h"
#include "platform/codec/FfmpegDecoderFactory.h"
#include "platform/codec/FfmpegEncoderFactory.h"
#include "platform/codepages/UchardetCodePages.h"
#include "platform/files/DiskFileSaver.h"
#include "platform/files/DiskFolders.h"
#include "platform/files/DiskSpace.h"
#include "platform/files/LooseDiscImages.h"
#include "platform/files/MappedSampleMemory.h"
#include "platform/files/System.h"
#include "platform/fixtures/FixtureReaders.h"
#include "platform/midi/FluidSynthesisers.h"
#include "platform/net/NetLamps.h"
#include "platform/process/basCommandOutput.h"
#include "platform/rights/SoundThreads.h"
#include "platform/settings/SettingsDisk.h"
#include "platform/settings/SettingsFile.h"
#include "platform/sidestore/SqliteSideStore.h"
#include "platform/stretch/LibraryStretcherFactory.h"
#include "platform/tags/MixingTagWriter.h"
#include "platform/tags/TagFileEditor.h"
#include "platform/tags/TagLibTagReader.h"
#include "platform/usb/K8061Boards.h"
#include "platform/usb/K8062Interface.h"
#include "support/Clock.h"
#include "support/Executor.h"
#include "ui/forms/frmMain.h"

namespace program {
namespace {

using platform::rights::SoundThreads;

constexpr int kJournalFiles = 2;  ///< written beside each other

int Cores() {
  return std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
}

std::atomic<void*> left_behind{nullptr};  // what a stuck worker may come back to

}  // namespace

/// Which thread ends the program, where several may want to: the window's, or whoever finds it gone.
class Program::Ending {
 public:
  void Begin(Parts& parts) {
    support::MutexLock lock(mutex_);
    parts_ = &parts;
    ender_ = {};
  }
  /// True for the first thread that asks, as often as it does.
  bool Take() {
    support::MutexLock lock(mutex_);
    if (parts_ == nullptr) return false;
    if (ender_ == std::thread::id()) ender_ = std::this_thread::get_id();
    return ender_ == std::this_thread::get_id();
  }
  /// The parts may go; nobody is at their lamps.
  void Over() {
    support::MutexLock lock(mutex_);
    parts_ = nullptr;
  }
  void Darken();
  [[nodiscard]] Parts* Of() {
    support::MutexLock lock(mutex_);
    return parts_;
  }

 private:
  support::Mutex mutex_;
  Parts* parts_ DJ_GUARDED_BY(mutex_) = nullptr;
  std::thread::id ender_ DJ_GUARDED_BY(mutex_);
};

Program::Ending& Program::TheEnding() {
  static Ending* const ending = new Ending;  // for as long as the process: the end of the process asks for it
  return *ending;
}

struct Program::Parts {
  explicit Parts(const std::filesystem::path& folder)
      : memory(platform::files::ScratchFolder()),
        settings(platform::settings::UserSettingsPath(), saves),
        decoding(std::max(2, Cores()), support::ThreadPool::StuckJobs::Replace),
        looking(1),
        listening(1),
        engine({.outputs = outputs,
                .decoders = decoders,
                .stretchers = stretchers,
                .workers = decoding,
                .clock = clock,
                .memory = &memory,
                .make_silent = nullptr,
                .thread_started = [this] { rights.Join(SoundThreads::Duty::Feeding); },
                .kept_waiting = [this] { return rights.Now() != app::SoundPriority::Level::RealTime; },
                .device_workers = &looking},
               engine::SoundEngine::Feeding::OwnThread),
        microphone(std::make_shared<engine::HallMicrophone>(inputs, engine.Devices(), listening, clock)),
        side_store(support::ProgramFolder(folder).Native(catalogue::kSideStore)),
        watched_side_store(side_store, saves, support::ProgramFolder(folder).Native(catalogue::kSideStore)),
        workers(Cores()),
        background(Cores(), support::ThreadPool::StuckJobs::Wait, clock,
                   [] { platform::files::LowerThreadPriority(); }),
        journal(kJournalFiles),
        workstation({.engine = engine,
                     .sound = engine,
                     .tags = tags,
                     .settings = settings,
                     .files = saves,
                     .workers = workers,
                     .clock = clock,
                     .mixer = &mixer,
                     .visualisation = &visualisation,
                     .analysis = {&meters, &trackers},
                     .commands = &commands,
                     .side_store = &watched_side_store,
                     .tag_writer = &tag_writer,
                     .dmx = &wires,
                     .net_dmx = &net_lamps,
                     .boards = &boards,
                     .synthesisers = &synthesisers,
                     .images = &images,
                     .code_pages = &code_pages,
                     .folders = &folders,
                     .background = {&background, Cores()},
                     .recorder = &recorder,
                     .journal = &journal,
                     .local_time = nullptr,
                     .saves = &saves,
                     .microphone = microphone.get(),
                     .priority = &rights,
                     .effects = &engine.Effects(),
                     .loops = &engine.Loops(),
                     .desk = &engine.Desk(),
                     .tag_editor = &tag_editor,
                     .fixtures = {&fixtures, {"/usr/share/qlcplus/fixtures"}},
                     .conductor_started = [this] { rights.Join(SoundThreads::Duty::Timing); }},
                    support::ProgramFolder(folder), app::Workstation::Conducting::OwnThread) {
    saves.Keep(folder);
    saves.Keep(folder / "History");
    saves.Keep(platform::settings::UserSettingsPath().parent_path());
    workstation.StartUp();
    window = std::make_unique<ui::frmMain>(workstation, clock);
  }

  support::SteadyClock clock;
  SoundThreads rights;
  platform::files::DiskFileSaver files;
  app::SaveWatch saves{files};
  platform::files::MappedSampleMemory memory;
  platform::settings::SettingsFile settings;
  platform::files::DiskFolders folders;
  platform::fixtures::FixtureReaders fixtures;
  platform::files::LooseDiscImages loose_images;
  platform::archive::PackedDiscImages images{loose_images};
  platform::tags::TagLibTagReader tags;
  platform::tags::MixingTagWriter tag_writer;
  platform::tags::TagFileEditor tag_editor;
  platform::audio::PulseDevices outputs{{}, [this] { rights.Join(SoundThreads::Duty::Callback); }};
  platform::audio::PulseInputs inputs{{}, [this] { rights.Join(SoundThreads::Duty::Callback); }};
  platform::audio::PulseMixer mixer;
  app::BuiltInVisualisation visualisation;
  platform::codec::FfmpegDecoderFactory decoders;
  platform::stretch::LibraryStretcherFactory stretchers;
  // Pools of their own: a long scan must not keep a deck waiting for its file, nor a dead stick an output or
  // a microphone that is looked for.
  support::ThreadPool decoding;
  support::ThreadPool looking;
  support::ThreadPool listening;
  engine::SoundEngine engine;
  platform::codec::FfmpegEncoderFactory encoders;
  platform::files::DiskSpace space;
  engine::EngineProgramme programme{engine.Devices()};
  engine::Recorder recorder{{programme, encoders, space, clock}, engine::Recorder::Running::OwnThread};
  std::shared_ptr<engine::HallMicrophone> microphone;  // with its own jobs
  platform::analysis::EburLoudnessMeters meters;
  platform::analysis::QmBeatTrackers trackers;
  platform::process::basCommandOutput commands;
  platform::sidestore::SqliteSideStore side_store;
  app::WatchedSideStore watched_side_store;
  platform::usb::K8062Interface lights;
  platform::net::NetLamps net_lamps;
  dmx::Wires wires{{&lights, &net_lamps}};
  platform::usb::K8061Boards boards;
  platform::midi::FluidSynthesisers synthesisers;
  platform::codepages::UchardetCodePages code_pages;
  support::ThreadPool workers;
  support::ThreadPool background;  // scans and batches, behind all others
  support::ThreadPool journal;     // what plays, a moment old, waits for nothing else
  app::Workstation workstation;
  std::unique_ptr<ui::frmMain> window;
};

/// Whatever holds the rest of the end up: these calls are the ones that every thread may make.
void Program::Ending::Darken() {
  constexpr auto kPatience = std::chrono::milliseconds(1500);
  support::MutexLock lock(mutex_);
  if (parts_ == nullptr) return;
  parts_->lights.Darken(kPatience);
  parts_->net_lamps.Darken(kPatience);
  parts_->boards.Darken();
}

Program::Program(const std::filesystem::path& folder) {
  platform::files::ReturnFreedMemory();
  parts_ = std::make_unique<Parts>(folder);
  TheEnding().Begin(*parts_);
}

Program::~Program() {
  constexpr std::chrono::milliseconds kPatience{500};
  // Another thread found the window standing still and ends the process: there is nothing to come back to.
  while (!TheEnding().Take()) std::this_thread::sleep_for(kPatience);
  parts_->window.reset();
  bool ended = parts_->workstation.ShutDown();
  for (support::ThreadPool* pool : {&parts_->background, &parts_->journal, &parts_->workers,
                                    &parts_->decoding, &parts_->looking, &parts_->listening}) {
    ended = pool->Finish(kPatience) && ended;
  }
  TheEnding().Over();
  if (ended) return;
  left_behind = parts_.release();
}

void Program::EndWithoutWindow(End end) {
  Ending& ending = TheEnding();
  Parts* const parts = ending.Of();
  if (parts == nullptr) return;
  using Leaves = app::Workstation::Leaves;
  if (ending.Take()) parts->workstation.ShutDown(end == End::Asked ? Leaves::Nothing : Leaves::Evening);
  ending.Darken();
}

bool Program::Runs() {
  return TheEnding().Of() != nullptr;
}

bool Program::LeftBehind() {
  return left_behind != nullptr;
}

ui::frmMain& Program::Window() {
  return *parts_->window;
}

}  // namespace program
