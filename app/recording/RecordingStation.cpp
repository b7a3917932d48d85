// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/recording/RecordingStation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

#include "app/StationContext.h"
#include "app/WorkstationView.h"
#include "support/FileNames.h"
#include "support/Text.h"

namespace app {
namespace {

namespace fs = std::filesystem;
using std::chrono::seconds;
using support::Sentence;

constexpr const char* kJournal = "recording.part";
constexpr std::array<seconds, 3> kWarnings{seconds(3600), seconds(900), seconds(300)};

std::string TwoDigits(int number) {
  return (number < 10 ? "0" : "") + std::to_string(number);
}

std::string DateOf(const std::tm& time) {
  return std::to_string(time.tm_year + 1900) + "-" + TwoDigits(time.tm_mon + 1) + "-" +
         TwoDigits(time.tm_mday);
}

float LevelOf(float peak) {
  return peak > 0 ? std::max(20 * std::log10(peak), -90.0F) : -90.0F;
}

RecordedTrack TrackOn(const DeckView& deck) {
  RecordedTrack track{{}, deck.artist, deck.title, {}};
  if (track.artist.empty() && track.title.empty()) track.title = fs::path(deck.loaded).stem().string();
  return track;
}

std::vector<std::string> LinesOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  std::vector<std::string> lines;
  for (const std::string_view line : support::SplitLines(text)) lines.emplace_back(line);
  return lines;
}

}  // namespace

RecordingStation::RecordingStation(const StationContext& context, decks::ProgrammeRecorder* recorder,
                                   LocalTime local_time)
    : context_(context),
      recorder_(recorder),
      local_time_(local_time ? std::move(local_time) : LocalTimeNow),
      work_(context.workers, context.gate) {}

void RecordingStation::StartUp() {
  if (recorder_ == nullptr) return;
  work_.Post([this, journal = fs::path(Choice().folder) / kJournal] {
    std::error_code ignored;
    for (const std::string& name : LinesOf(journal)) {
      const fs::path path = journal.parent_path() / name;
      const auto length = recorder_->Repair(path.string());
      if (length) {
        context_.tell(
            context_.say(Sentence::RecordingRescued, {name, support::FormatMinutes(length.Value().count())}));
      } else if (fs::exists(path, ignored)) {
        context_.tell(context_.say(Sentence::RecordingLost, {name, context_.say(length.Failure())}));
      }
    }
    fs::remove(journal, ignored);
  });
}

RecordingChoice RecordingStation::Choice() const {
  RecordingChoice choice = StoredRecordingChoice(context_.settings);
  choice.folder = context_.folder.NativeOfText(choice.folder).string();
  return choice;
}

void RecordingStation::Choose(const RecordingChoice& choice) {
  StoreRecordingChoice(context_.settings, choice);
}

void RecordingStation::Start() {
  context_.conductor->Order(*this, &RecordingStation::Begin, Choice());
}

void RecordingStation::Stop() {
  context_.conductor->Post([this] {
    if (recorder_ != nullptr && state_ == State::Recording) recorder_->Stop();
  });
}

void RecordingStation::Begin(const RecordingChoice& choice) {
  if (recorder_ == nullptr || state_ != State::Idle) return;
  const std::tm now = local_time_();
  choice_ = choice;
  date_ = DateOf(now);
  title_ = date_ + " " + TwoDigits(now.tm_hour) + "." + TwoDigits(now.tm_min) + "." + TwoDigits(now.tm_sec);
  stem_ = fs::path(choice.folder) / title_;
  tracks_.clear();
  files_.clear();
  failure_.clear();
  warned_ = gap_told_ = seconds(0);
  state_ = State::Starting;
  const fs::path folder = choice.files == RecordingChoice::Files::OneEach ? stem_ : stem_.parent_path();
  work_.Post([folder, box = context_.conductor, this, wish = ++wish_] {
    std::error_code told_by_the_recorder;
    fs::create_directories(folder, told_by_the_recorder);
    box->Order(*this, &RecordingStation::StartRecorder, wish);
  });
}

void RecordingStation::StartRecorder(std::uint64_t wish) {
  if (wish != wish_ || state_ != State::Starting) return;
  RecordedTrack first = leading_.Sounding() ? now_ : RecordedTrack{{}, {}, title_, {}};
  decks::RecordingWish wanted{FileOf(first), output_.device,
                              static_cast<std::uint32_t>(output_.speaker) << 24, choice_.bits,
                              choice_.bit_rate * 1000};
  file_ = wanted.file.path;
  SaveJournal();
  if (leading_.Sounding()) {
    first.file = fs::path(file_).filename().string();
    tracks_.push_back(std::move(first));
    SaveLists();
  }
  number_ = recorder_->Start(wanted);
}

decks::RecordingFile RecordingStation::FileOf(const RecordedTrack& track) const {
  const std::string ending = "." + std::string(ExtensionOf(choice_.format));
  if (choice_.files == RecordingChoice::Files::One) return {stem_.string() + ending, title_, {}, date_};
  const int number = static_cast<int>(files_.size()) + 1;
  const std::string name = support::CleanFileName(TwoDigits(number) + " " + NameOf(track)) + ending;
  return {(stem_ / name).string(), track.title, track.artist, date_};
}

void RecordingStation::Tick(const WorkstationView& view) {
  if (recorder_ == nullptr) return;
  const decks::RecordingProgress progress = recorder_->Progress();
  const OutputView output = view.outputs[0];
  if (state_ == State::Recording && output != output_) {
    recorder_->Follow(output.device, static_cast<std::uint32_t>(output.speaker) << 24);
  }
  output_ = output;
  const auto leads = leading_.Look(view);
  if (leads) now_ = TrackOn(*leads);
  if (state_ != State::Idle && number_ != 0 && progress.number == number_) {
    Follow(progress, leads.has_value());
  }
  Publish(progress);
}

void RecordingStation::Follow(const decks::RecordingProgress& progress, bool another_leads) {
  if (progress.recording) state_ = State::Recording;
  if (!progress.recording && (progress.failure || state_ == State::Recording)) return End(progress);
  if (state_ != State::Recording) return;
  if (another_leads) {
    RecordedTrack track = now_;
    track.place = progress.heard;
    TakeTrack(std::move(track));
  }
  Warn(progress);
}

void RecordingStation::TakeTrack(RecordedTrack track) {
  if (choice_.files == RecordingChoice::Files::OneEach) {
    const decks::RecordingFile next = FileOf(track);
    recorder_->Cut(track.place, next);
    file_ = next.path;
    SaveJournal();
  }
  track.file = fs::path(file_).filename().string();
  tracks_.push_back(std::move(track));
  SaveLists();
}

void RecordingStation::Warn(const decks::RecordingProgress& progress) {
  const auto lost = std::chrono::duration_cast<seconds>(progress.lost);
  if (lost > gap_told_) {
    gap_told_ = lost;
    context_.tell(context_.say(Sentence::RecordingGap, {std::to_string(lost.count())}));
  }
  if (!progress.room) return;
  for (const seconds warning : kWarnings) {
    if (*progress.room > warning || (warned_ != seconds(0) && warned_ <= warning)) continue;
    warned_ = warning;
    const auto minutes = std::chrono::duration_cast<std::chrono::minutes>(*progress.room).count();
    context_.tell(context_.say(Sentence::RecordingSpaceLow, {std::to_string(minutes)}));
  }
}

void RecordingStation::End(const decks::RecordingProgress& progress) {
  if (progress.failure) {
    failure_ = context_.say(*progress.failure);
    context_.tell(context_.say(Sentence::RecordingStopped, {failure_}));
  }
  SaveLists();
  state_ = State::Idle;
  number_ = 0;
  work_.Post([journal = stem_.parent_path() / kJournal] {
    std::error_code ignored;
    fs::remove(journal, ignored);
  });
}

void RecordingStation::SaveLists() {
  if (tracks_.empty()) return;
  const bool one = choice_.files == RecordingChoice::Files::One;
  const std::string cue =
      one ? CueSheet(fs::path(file_).filename().string(), title_, date_.substr(0, 4), tracks_)
          : std::string();
  work_.Post([this, stem = stem_.string(), cue, list = TrackList(tracks_)] {
    for (const auto& [ending, text] : {std::pair(".cue", cue), std::pair(".txt", list)}) {
      if (text.empty()) continue;
      if (const auto saved = context_.files.Save(stem + ending, text); !saved) {
        context_.tell(context_.say(saved.Failure()));
      }
    }
  });
}

void RecordingStation::SaveJournal() {
  files_.push_back(fs::path(file_).lexically_relative(stem_.parent_path()).string());
  std::string text;
  for (const std::string& name : files_) text += name + "\r\n";
  work_.Post([this, text, journal = stem_.parent_path() / kJournal] {
    // A disk that takes no journal takes no recording either, and that is told.
    static_cast<void>(context_.files.Save(journal, text));
  });
}

void RecordingStation::Publish(const decks::RecordingProgress& progress) {
  RecordingView& view = views_.Draft();
  view = {};
  view.state = state_;
  view.possible = true;
  view.choice = choice_;
  view.file = progress.path;
  view.length = progress.length;
  view.bytes = progress.bytes;
  view.left_db = state_ == State::Recording ? LevelOf(progress.left_peak) : -90;
  view.right_db = state_ == State::Recording ? LevelOf(progress.right_peak) : -90;
  view.tracks = static_cast<int>(tracks_.size());
  view.room = progress.room;
  view.failure = failure_;
  views_.Publish();
}

void RecordingStation::ShutDown() {
  if (recorder_ != nullptr && state_ == State::Recording) {
    recorder_->Stop();
    SaveLists();
    End({});
  }
  work_.Flush();
}

}  // namespace app
