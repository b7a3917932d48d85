// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/recording/RecordingStation.h"

#include <algorithm>
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
constexpr seconds kWarnings[] = {seconds(300), seconds(900), seconds(3600)};
constexpr seconds kPlenty{7200};  ///< after a warning
constexpr std::chrono::milliseconds kPatience{1500};

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
  constexpr std::size_t kMost = 1000;
  RecordedTrack track;
  // Names of a file that is made ready beside the one that sounds are not its.
  if (deck.filename == deck.loaded) {
    track.artist = support::AsUtf8(deck.artist, kMost);
    track.title = support::AsUtf8(deck.title, kMost);
  }
  if (!track.artist.empty() || !track.title.empty()) return track;
  const std::size_t folder = deck.loaded.find_last_of("/\\");
  track.title = deck.loaded.substr(folder == std::string::npos ? 0 : folder + 1);
  track.title = support::AsUtf8(track.title.substr(0, track.title.rfind('.')), kMost);
  return track;
}

/// A path from a folder to what lies in it.
bool IsBelow(const fs::path& path) {
  return path.is_relative() && std::find(path.begin(), path.end(), "..") == path.end();
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
  work_.Post([this, folder = fs::path(Choice().folder)] { Rescue(folder); });
  Look();
}

void RecordingStation::Rescue(const fs::path& folder) {
  const fs::path journal = folder / kJournal;
  std::error_code ignored;
  for (const std::string& name : LinesOf(journal)) {
    const fs::path path = folder / name;
    if (!IsBelow(name) || !IsSoundFile(path) || !fs::exists(path, ignored)) continue;
    const auto length = recorder_->Repair(path.string());
    if (length) {
      context_.tell({Sentence::RecordingRescued, {name, support::FormatMinutes(length.Value().count())}});
    } else {
      context_.tell({Sentence::RecordingLost, {name}, {SayingOf(length.Failure())}});
    }
  }
  fs::remove(journal, ignored);
}

RecordingChoice RecordingStation::Choice() const {
  RecordingChoice choice = StoredRecordingChoice(context_.settings);
  choice.folder = context_.folder.NativeOfText(choice.folder).string();
  return choice;
}

void RecordingStation::Choose(const RecordingChoice& choice) {
  RecordingChoice stored = choice;
  if (choice.folder == Choice().folder) stored.folder = StoredRecordingChoice(context_.settings).folder;
  StoreRecordingChoice(context_.settings, stored);
  Look();
}

void RecordingStation::Look() {
  if (recorder_ == nullptr) return;
  const RecordingChoice choice = Choice();
  context_.workers.Post([this, choice, gate = context_.gate, box = context_.window, look = ++look_] {
    gate->Pass([&] {
      Shelf shelf{choice.folder, RecordingsIn(choice.folder), {}};
      if (const auto free = recorder_->FreeBytes(choice.folder))
        shelf.room = seconds(*free / BytesASecond(choice));
      box->Post([this, look, shelf = std::move(shelf)] {
        if (look != look_) return;
        shelf_ = shelf;
        ++looks_;
      });
    });
  });
}

void RecordingStation::Start() {
  context_.conductor->Order(*this, &RecordingStation::Begin, Choice());
}

void RecordingStation::Stop() {
  context_.conductor->Order(*this, &RecordingStation::StopRecorder);
}

void RecordingStation::StopRecorder() {
  if (state_ == State::Idle) return;
  stopping_ = true;
  if (number_ != 0) return recorder_->Stop();
  ++wish_;  // its folder is still being made
  state_ = State::Idle;
}

void RecordingStation::Begin(const RecordingChoice& choice) {
  if (recorder_ == nullptr || state_ != State::Idle) return;
  const std::tm now = local_time_();
  choice_ = choice;
  date_ = DateOf(now);
  title_ = date_ + " " + TwoDigits(now.tm_hour) + "." + TwoDigits(now.tm_min) + "." + TwoDigits(now.tm_sec);
  if (!support::Trim(choice.name).empty()) title_ = support::CleanFileName(choice.name) + " " + title_;
  stem_ = fs::path(choice.folder) / title_;
  tracks_.clear();
  shown_tracks_ = std::make_shared<std::vector<RecordedTrack>>();
  wave_ = {};
  shown_wave_.reset();
  files_.clear();
  file_begins_ = {};
  failure_.clear();
  warned_ = gap_told_ = seconds(0);
  state_ = State::Starting;
  stopping_ = false;
  number_ = 0;
  const fs::path folder = choice.files == RecordingChoice::Files::OneEach ? stem_ : stem_.parent_path();
  work_.Post([folder, lists = stem_.parent_path(), box = context_.conductor, this, wish = ++wish_] {
    Rescue(lists);  // what a stick that was not in at the start brings along
    std::error_code told_by_the_recorder;
    fs::create_directories(folder, told_by_the_recorder);
    box->Order(*this, &RecordingStation::StartRecorder, wish);
  });
}

void RecordingStation::StartRecorder(std::uint64_t wish) {
  if (wish != wish_ || state_ != State::Starting) return;
  first_.reset();
  if (leading_.Sounding()) first_ = now_;
  wished_output_ = output_;
  const RecordedTrack named = first_.value_or(RecordedTrack{{}, {}, title_, {}});
  const decks::RecordingWish wanted{FileOf(named), output_.device,
                                    static_cast<std::uint32_t>(output_.speaker) << 24, choice_.bits,
                                    choice_.bit_rate * 1000};
  file_ = wanted.file.path;
  another_leads_ = false;
  SaveJournal();
  // Behind the journal: a fall finds no file that is not named there.
  work_.Post([this, wanted, wish, box = context_.conductor] {
    box->Post([this, wanted, wish] {
      if (wish == wish_ && state_ == State::Starting) number_ = recorder_->Start(wanted);
    });
  });
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
  output_ = output;
  const auto leads = leading_.Look(view);
  if (leads) now_ = TrackOn(*leads);
  if (state_ != State::Idle) another_leads_ = another_leads_ || leads.has_value();
  if (state_ != State::Idle && number_ != 0 && progress.number == number_) Follow(progress);
  Publish(progress);
}

void RecordingStation::Follow(const decks::RecordingProgress& progress) {
  if (progress.recording && state_ == State::Starting) {
    state_ = State::Recording;
    if (first_) AddTrack(*first_);
  }
  const bool over = progress.failure || state_ == State::Recording || stopping_;
  if (!progress.recording && over) return End(progress);
  if (state_ != State::Recording) return;
  if (output_ != wished_output_) {
    wished_output_ = output_;
    recorder_->Follow(output_.device, static_cast<std::uint32_t>(output_.speaker) << 24);
  }
  if (choice_.files == RecordingChoice::Files::One && progress.path != file_) {
    file_ = progress.path;
    file_begins_ = progress.file_begins;
    SaveJournal();
  }
  DrawWave(progress);
  if (std::exchange(another_leads_, false)) {
    RecordedTrack track = now_;
    track.place = progress.heard;
    TakeTrack(std::move(track));
  }
  Warn(progress);
}

void RecordingStation::TakeTrack(RecordedTrack track) {
  if (!tracks_.empty()) track.place = std::max(track.place, tracks_.back().place);
  if (choice_.files == RecordingChoice::Files::OneEach) {
    const decks::RecordingFile next = FileOf(track);
    recorder_->Cut(track.place, next);
    file_ = next.path;
    SaveJournal();
  }
  AddTrack(std::move(track));
}

void RecordingStation::AddTrack(RecordedTrack track) {
  const bool one = choice_.files == RecordingChoice::Files::One;
  track.file = file_;
  track.file_begins = one ? file_begins_ : track.place;
  tracks_.push_back(std::move(track));
  shown_tracks_ = std::make_shared<std::vector<RecordedTrack>>(tracks_);
  SaveLists();
}

void RecordingStation::DrawWave(const decks::RecordingProgress& progress) {
  const std::size_t drawn = wave_.columns.size();
  wave_.Add(progress.length, std::max(progress.left_peak, progress.right_peak));
  if (wave_.columns.size() != drawn) shown_wave_ = std::make_shared<RecordedWave>(wave_);
}

void RecordingStation::Warn(const decks::RecordingProgress& progress) {
  const auto lost = std::chrono::duration_cast<seconds>(progress.lost);
  if (lost > gap_told_) {
    gap_told_ = lost;
    context_.tell({Sentence::RecordingGap, {std::to_string(lost.count())}});
  }
  if (!progress.room) return;
  if (*progress.room > kPlenty) warned_ = seconds(0);
  const auto* const warning = std::find_if(std::begin(kWarnings), std::end(kWarnings),
                                           [&](seconds most) { return *progress.room <= most; });
  if (warning == std::end(kWarnings) || (warned_ != seconds(0) && warned_ <= *warning)) return;
  warned_ = *warning;
  const auto minutes = std::chrono::duration_cast<std::chrono::minutes>(*progress.room).count();
  context_.tell({Sentence::RecordingSpaceLow, {std::to_string(minutes)}});
}

void RecordingStation::End(const decks::RecordingProgress& progress) {
  if (progress.failure) {
    failure_ = context_.say(*progress.failure);
    context_.tell({Sentence::RecordingStopped, {}, {SayingOf(*progress.failure)}});
  }
  state_ = State::Idle;
  number_ = 0;
  // What ended by itself may not be whole: it stays in the journal.
  work_.Post([this, whole = !progress.failure, journal = stem_.parent_path() / kJournal] {
    std::error_code ignored;
    if (whole) fs::remove(journal, ignored);
    context_.window->Post([this] { Look(); });
  });
}

void RecordingStation::SaveLists() {
  if (tracks_.empty()) return;
  const bool one = choice_.files == RecordingChoice::Files::One;
  const std::string cue = one ? CueSheet(title_, date_.substr(0, 4), tracks_) : std::string();
  work_.Post([this, stem = stem_.string(), cue, list = TrackList(tracks_)] {
    for (const auto& [ending, text] : {std::pair(".cue", cue), std::pair(".txt", list)}) {
      if (text.empty()) continue;
      if (const auto saved = context_.files.Save(stem + ending, text); !saved) {
        context_.tell(SayingOf(saved.Failure()));
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
  view.title = title_;
  view.path = Path();
  view.file = progress.path;
  view.length = progress.length;
  view.bytes = progress.bytes;
  view.left_db = state_ == State::Recording ? LevelOf(progress.left_peak) : -90;
  view.right_db = state_ == State::Recording ? LevelOf(progress.right_peak) : -90;
  view.tracks = shown_tracks_;
  view.wave = shown_wave_;
  view.room = progress.room;
  view.failure = failure_;
  views_.Publish();
}

std::string RecordingStation::Path() const {
  if (choice_.files == RecordingChoice::Files::OneEach) return stem_.string();
  return files_.empty() ? std::string() : (stem_.parent_path() / files_.front()).string();
}

bool RecordingStation::ShutDown() {
  if (recorder_ == nullptr || state_ == State::Idle) return true;
  // The next start makes whole what a disk holds up now.
  if (!recorder_->End(kPatience)) return false;
  End(recorder_->Progress());
  return true;
}

}  // namespace app
