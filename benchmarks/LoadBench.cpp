// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// Two key-locked decks on a real sound server while other programs take all that the processors have, by a
// user who has no rights of his own to real time; beside a client that only hands over silence.
#include <grp.h>
#include <pulse/pulseaudio.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <future>
#include <string>
#include <thread>
#include <vector>

#include "benchmarks/Bench.h"
#include "engine/SoundEngine.h"
#include "platform/audio/PulseDevices.h"
#include "platform/audio/testing/SoundServer.h"
#include "platform/codec/FfmpegDecoderFactory.h"
#include "platform/codec/testing/MediaMaker.h"
#include "platform/rights/SoundThreads.h"
#include "platform/stretch/LibraryStretcherFactory.h"
#include "support/Executor.h"

namespace bench {
namespace {

namespace fs = std::filesystem;
using platform::rights::SoundThreads;
using std::chrono::seconds;

constexpr std::uint32_t kRate = 44100, kFrameBytes = 4, kBufferMs = 60, kPeriodMs = 20;

/// Root's rights go, real time among them, and what is written lies in a folder of the user's own.
bool BecomeAnOrdinaryUser() {
  char folder[] = "/tmp/load-XXXXXX";
  if (mkdtemp(folder) == nullptr) return false;
  const rlimit none{0, 0};
  if (setrlimit(RLIMIT_RTPRIO, &none) != 0 || setrlimit(RLIMIT_NICE, &none) != 0) return false;
  if (geteuid() == 0) {
    const passwd* nobody = getpwnam("nobody");
    if (nobody == nullptr || chown(folder, nobody->pw_uid, nobody->pw_gid) != 0) return false;
    if (setgroups(0, nullptr) != 0 || setgid(nobody->pw_gid) != 0 || setuid(nobody->pw_uid) != 0)
      return false;
  }
  for (const char* name : {"HOME", "TMPDIR", "XDG_RUNTIME_DIR"}) setenv(name, folder, 1);
  for (const char* name : {"PULSE_SERVER", "DBUS_SESSION_BUS_ADDRESS"}) unsetenv(name);
  return true;
}

/// Other programs that never rest, until this one ends.
void StartBusyLoops(int count) {
  for (int i = 0; i < count; ++i) {
    if (fork() != 0) continue;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    for (std::atomic<std::uint64_t> turns = 0;; ++turns) {
    }
  }
}

/// A stream of silence, as plain as the sound server's own library allows.
class BareClient {
 public:
  BareClient(const std::string& server, const std::string& sink, std::function<void()> thread_started)
      : thread_started_(std::move(thread_started)), loop_(pa_threaded_mainloop_new()), sink_(sink) {
    context_ = pa_context_new(pa_threaded_mainloop_get_api(loop_), "bare");
    pa_context_set_state_callback(
        context_, [](pa_context*, void* self) { static_cast<BareClient*>(self)->ContextChanged(); }, this);
    pa_context_connect(context_, server.c_str(), PA_CONTEXT_NOAUTOSPAWN, nullptr);
    pa_threaded_mainloop_start(loop_);
  }
  ~BareClient() {
    pa_threaded_mainloop_stop(loop_);
    if (stream_ != nullptr) pa_stream_unref(stream_);
    pa_context_unref(context_);
    pa_threaded_mainloop_free(loop_);
  }
  BareClient(const BareClient&) = delete;
  BareClient& operator=(const BareClient&) = delete;

  [[nodiscard]] bool Plays() const { return plays_; }
  [[nodiscard]] std::uint64_t Underflows() const { return underflows_; }

 private:
  void ContextChanged() {
    if (pa_context_get_state(context_) != PA_CONTEXT_READY) return;
    thread_started_();
    const pa_sample_spec format{PA_SAMPLE_S16LE, kRate, 2};
    stream_ = pa_stream_new(context_, "silence", &format, nullptr);
    pa_stream_set_write_callback(
        stream_,
        [](pa_stream*, std::size_t bytes, void* self) { static_cast<BareClient*>(self)->Write(bytes); },
        this);
    pa_stream_set_underflow_callback(
        stream_, [](pa_stream*, void* self) { ++static_cast<BareClient*>(self)->underflows_; }, this);
    pa_buffer_attr buffer{};
    buffer.maxlength = buffer.prebuf = buffer.fragsize = static_cast<std::uint32_t>(-1);
    buffer.tlength = kRate * kFrameBytes * kBufferMs / 1000;
    buffer.minreq = kRate * kFrameBytes * kPeriodMs / 1000;
    pa_stream_connect_playback(stream_, sink_.c_str(), &buffer, PA_STREAM_ADJUST_LATENCY, nullptr, nullptr);
  }
  void Write(std::size_t bytes) {
    plays_ = true;
    void* data = nullptr;
    if (pa_stream_begin_write(stream_, &data, &bytes) < 0) return;
    std::fill_n(static_cast<char*>(data), bytes, '\0');
    pa_stream_write(stream_, data, bytes, nullptr, 0, PA_SEEK_RELATIVE);
  }

  std::function<void()> thread_started_;
  pa_threaded_mainloop* loop_;
  const std::string sink_;
  pa_context* context_ = nullptr;
  pa_stream* stream_ = nullptr;
  std::atomic<bool> plays_{false};
  std::atomic<std::uint64_t> underflows_{0};
};

/// Two of them, 4 % faster with their key kept.
class TwoDecks {
 public:
  TwoDecks(const std::string& server, const std::string& path, SoundThreads& rights)
      : outputs_(server, [&rights] { rights.Join(SoundThreads::Duty::Callback); }),
        engine_({.outputs = outputs_,
                 .decoders = decoders_,
                 .stretchers = stretchers_,
                 .workers = workers_,
                 .clock = clock_,
                 .thread_started = [&rights] { rights.Join(SoundThreads::Duty::Feeding); },
                 .kept_waiting = [&rights] { return rights.Now() != app::SoundPriority::Level::RealTime; }},
                engine::SoundEngine::Feeding::OwnThread) {
    std::promise<void> ready;
    engine_.Prepare(path, [&](const support::Result<void>&) { ready.set_value(); });
    ready.get_future().wait();
    engine_.BASS_SetConfig(decks::kConfigUpdatePeriod, kPeriodMs);
    engine_.BASS_SetConfig(decks::kConfigBuffer, kBufferMs);
    engine_.BASS_Init(1, static_cast<int>(kRate), 0);
    engine_.BASS_SetDevice(1);
    for (int deck = 0; deck < 2; ++deck) {
      const auto decoder = engine_.BASS_StreamCreateFile(false, path, 0, 0, decks::kStreamDecode);
      const auto stream = engine_.BASS_FX_TempoCreate(decoder, decks::kTempoFreeSource);
      engine_.BASS_FX_TempoSet(stream, 4, decks::kTempoUnchanged, decks::kTempoUnchanged);
      engine_.BASS_ChannelPlay(stream, false);
    }
  }
  [[nodiscard]] std::uint64_t Gaps() { return engine_.Health().late_blocks; }

 private:
  support::SteadyClock clock_;
  platform::audio::PulseDevices outputs_;
  platform::codec::FfmpegDecoderFactory decoders_;
  platform::stretch::LibraryStretcherFactory stretchers_;
  support::ThreadPool workers_{2};
  engine::SoundEngine engine_;
};

}  // namespace

int RunLoadChild(int argc, char* argv[]) {
  if (argc != 4 || !BecomeAnOrdinaryUser()) return 1;
  {
    platform::audio::testing::SoundServer server({{"hall", "Hall"}, {"bare", "Bare"}});
    const platform::codec::testing::MediaMaker media;
    const std::string path =
        media.Write("noise.wav", platform::codec::testing::Noise(seconds(std::atoi(argv[3]) + 30), 0.2));
    SoundThreads rights;
    TwoDecks decks(server.Address(), path, rights);
    const BareClient bare(server.Address(), "bare", [&rights] { rights.Join(SoundThreads::Duty::Callback); });
    while (!bare.Plays()) std::this_thread::sleep_for(std::chrono::milliseconds(10));
    std::this_thread::sleep_for(seconds(2));
    const std::uint64_t ours_before = decks.Gaps(), bare_before = bare.Underflows();
    StartBusyLoops(std::atoi(argv[2]));
    std::this_thread::sleep_for(seconds(std::atoi(argv[3])));
    std::printf("%f %f %f\n", static_cast<double>(decks.Gaps() - ours_before),
                static_cast<double>(bare.Underflows() - bare_before),
                rights.Now() == app::SoundPriority::Level::RealTime ? 1.0 : 0.0);
    std::fflush(stdout);
  }
  std::error_code error;
  fs::remove_all(std::getenv("HOME"), error);
  return 0;
}

std::vector<Figure> MeasureLoad() {
  std::vector<Figure> figures;
  for (const int loops : {0, 2, 8}) {
    const auto counts = RunChild("--load " + std::to_string(loops) + " 60");
    if (counts.size() != 3) return figures;
    figures.push_back({"two key-locked decks beside " + std::to_string(loops) + " busy loops, 60 s, " +
                           (counts[2] == 1 ? "real time granted" : "no real time") +
                           ": gaps, beside those of a client that hands over silence",
                       "", counts[0], counts[1], loops == 8 ? "no more" : "none"});
  }
  return figures;
}

}  // namespace bench
