// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/midi/FluidSynthesisers.h"

#include <fluidsynth.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <set>
#include <system_error>

#include "support/Sentences.h"
#include "support/Text.h"

namespace platform::midi {
namespace {

/// Its block: notes start on multiples of this.
constexpr int kBlock = 64;

struct Deleter {
  void operator()(fluid_settings_t* settings) const { delete_fluid_settings(settings); }
  void operator()(fluid_synth_t* synth) const { delete_fluid_synth(synth); }
};
using Settings = std::unique_ptr<fluid_settings_t, Deleter>;
using Synth = std::unique_ptr<fluid_synth_t, Deleter>;

class FluidSynthesiser final : public karaoke::Synthesiser {
 public:
  FluidSynthesiser(Settings settings, Synth synth)
      : settings_(std::move(settings)), synth_(std::move(synth)) {}

  void Reset() override {
    // The reset lets notes ring out, unless a block was rendered since they were cut.
    constexpr int kChannels = 16;
    for (int channel = 0; channel < kChannels; ++channel) {
      fluid_synth_cc(synth_.get(), channel, karaoke::controller::kSoundOff, 0);
    }
    std::array<float, kBlock> left, right;
    Render(left, right);
    fluid_synth_system_reset(synth_.get());
  }

  void Send(const karaoke::ChannelMessage& message) override {
    fluid_synth_t* synth = synth_.get();
    const int channel = static_cast<int>(message.Channel());
    const int first = message.data1;
    const int second = message.data2;
    switch (message.Kind()) {
      case 0x80:
        fluid_synth_noteoff(synth, channel, first);
        break;
      case 0x90:
        fluid_synth_noteon(synth, channel, first, second);
        break;
      case 0xA0:
        fluid_synth_key_pressure(synth, channel, first, second);
        break;
      case 0xB0:
        fluid_synth_cc(synth, channel, first, second);
        break;
      case 0xC0:
        fluid_synth_program_change(synth, channel, first);
        break;
      case 0xD0:
        fluid_synth_channel_pressure(synth, channel, first);
        break;
      case 0xE0:
        fluid_synth_pitch_bend(synth, channel, second << 7 | first);
        break;
      default:
        break;
    }
  }

  void SendExclusive(std::string_view message) override {
    if (!message.empty() && message.back() == '\xF7') message.remove_suffix(1);
    if (message.empty()) return;
    fluid_synth_sysex(synth_.get(), message.data(), static_cast<int>(message.size()), nullptr, nullptr,
                      nullptr, 0);
  }

  [[nodiscard]] int Grid() const override { return kBlock; }

  void Render(std::span<float> left, std::span<float> right) override {
    fluid_synth_write_float(synth_.get(), static_cast<int>(left.size()), left.data(), 0, 1, right.data(), 0,
                            1);
  }

 private:
  const Settings settings_;  // outlives the synthesiser made with it
  const Synth synth_;
};

Settings MakeSettings(int sample_rate) {
  Settings settings(new_fluid_settings());
  if (settings == nullptr) return settings;
  fluid_settings_setnum(settings.get(), "synth.sample-rate", sample_rate);
  fluid_settings_setint(settings.get(), "synth.lock-memory", 0);
  fluid_settings_setint(settings.get(), "synth.threadsafe-api", 0);
  fluid_settings_setint(settings.get(), "synth.device-id", 16);  // what Roland's messages address
  return settings;
}

/// The library would write to the terminal for every file it does not like.
void BeSilent() {
  for (const int level : {FLUID_PANIC, FLUID_ERR, FLUID_WARN, FLUID_INFO, FLUID_DBG}) {
    fluid_set_log_function(
        level, [](int, const char*, void*) {}, nullptr);
  }
}

bool IsSoundfontName(const std::filesystem::path& path) {
  const std::string end = support::ToUpper(path.extension().string());
  return end == ".SF2" || end == ".SF3";
}

}  // namespace

FluidSynthesisers::FluidSynthesisers(std::vector<std::filesystem::path> folders)
    : folders_(std::move(folders)) {
  BeSilent();
}

std::vector<std::filesystem::path> FluidSynthesisers::InstalledFolders() {
  std::vector<std::filesystem::path> folders{"/usr/share/sounds/sf2", "/usr/share/sounds/sf3",
                                             "/usr/share/soundfonts", "/usr/local/share/soundfonts"};
  if (const char* home = std::getenv("HOME")) {
    folders.push_back(std::filesystem::path(home) / ".local/share/soundfonts");
  }
  return folders;
}

std::vector<karaoke::Soundfont> FluidSynthesisers::Soundfonts() {
  std::vector<karaoke::Soundfont> found;
  std::set<std::filesystem::path> seen;  // one file has several names where alternatives are installed
  for (const std::filesystem::path& folder : folders_) {
    std::error_code failed;
    std::vector<std::filesystem::path> paths;
    for (std::filesystem::directory_iterator entry(folder, failed), end; !failed && entry != end;
         entry.increment(failed)) {
      std::error_code unresolved;
      const std::filesystem::path path = std::filesystem::canonical(entry->path(), unresolved);
      if (!unresolved && IsSoundfontName(path) && seen.insert(path).second) paths.push_back(path);
    }
    std::sort(paths.begin(), paths.end());
    for (const auto& path : paths) found.push_back({path.stem().string(), path.string()});
  }
  return found;
}

support::Result<std::unique_ptr<karaoke::Synthesiser>> FluidSynthesisers::Make(const std::string& soundfont,
                                                                               int sample_rate) {
  std::string path = soundfont;
  if (path.empty()) {
    const auto installed = Soundfonts();
    if (installed.empty()) {
      return support::Failed(support::ErrorCode::NotFound, support::Sentence::NoSoundfont);
    }
    path = installed.front().path;
  }
  Settings settings = MakeSettings(sample_rate);
  Synth synth(settings == nullptr ? nullptr : new_fluid_synth(settings.get()));
  if (synth == nullptr) {
    return support::Failed(support::ErrorCode::Unavailable, support::Sentence::SynthesiserNotStarted);
  }
  if (fluid_is_soundfont(path.c_str()) == 0 ||
      fluid_synth_sfload(synth.get(), path.c_str(), 1) == FLUID_FAILED) {
    return support::Failed(support::ErrorCode::Unreadable, support::Sentence::SoundfontNotUsed, {path});
  }
  return std::unique_ptr<karaoke::Synthesiser>(
      std::make_unique<FluidSynthesiser>(std::move(settings), std::move(synth)));
}

}  // namespace platform::midi
