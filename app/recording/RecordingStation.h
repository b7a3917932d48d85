// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/OutputView.h"
#include "app/lists/EveningLog.h"
#include "app/recording/KeptRecordings.h"
#include "app/recording/RecordedTracks.h"
#include "app/recording/RecordedWave.h"
#include "app/recording/RecordingChoice.h"
#include "app/work/OrderedWork.h"
#include "decks/ports/ProgrammeRecorder.h"
#include "support/TripleBuffer.h"

namespace app {

struct StationContext;
struct WorkstationView;

/// What the window draws of the recording; a snapshot of one tick.
struct RecordingView {
  enum class State { Idle, Starting, Recording };
  State state = State::Idle;
  bool possible = false;  ///< there is a recorder
  RecordingChoice choice;
  std::string title;  ///< its name, and when it began
  std::string path;   ///< as KeptRecording has it
  std::string file;   ///< native path of the one that is written, or was last
  std::chrono::microseconds length{0};
  std::int64_t bytes = 0;
  float left_db = -90;  ///< dB below full scale, -90 is silence
  float right_db = -90;
  /// With the whole path of their files. Shared, because a snapshot never changes; never null.
  std::shared_ptr<const std::vector<RecordedTrack>> tracks;
  std::shared_ptr<const RecordedWave> wave;  ///< null before the first
  std::optional<std::chrono::seconds> room;  ///< until the disk is full; empty: not known yet
  std::string failure;                       ///< why the last one ended, a sentence; else empty
};

/// Records what the hall hears, with a list of the tracks, and finds at the start what a fall left behind.
///
/// Law: while something is recorded, "recording.part" in its folder names its files, a line each, and stays
/// there until they are whole. Threads:
/// commands, View and what was looked at on the window's; Tick on the conductor; ShutDown once the conductor
/// has stopped and the gate is closed.
class RecordingStation {
 public:
  /// recorder: null where nothing can be recorded. local_time: null is the system's.
  RecordingStation(const StationContext& context, decks::ProgrammeRecorder* recorder, LocalTime local_time);

  /// A worker looks for a recording that was cut short, in the folder stored.
  void StartUp();
  void Tick(const WorkstationView& view);
  /// Completes what is recorded. False when a disk holds it up: the recorder must then stay alive.
  bool ShutDown();
  /// Writes the lists that wait. Requires: no worker is held up.
  void Flush() { work_.Flush(); }
  [[nodiscard]] const RecordingView& View() { return views_.Read(); }

  /// The choice as it is stored.
  [[nodiscard]] RecordingChoice Choice() const;
  /// Stores the choice; a recording that goes on keeps its own.
  void Choose(const RecordingChoice& choice);
  void Start();
  void Stop();

  /// A worker looks what the folder that is chosen holds, and how much room its disk has.
  void Look();
  struct Shelf {
    std::string folder;  ///< native path
    std::vector<KeptRecording> recordings;
    std::optional<std::chrono::seconds> room;  ///< for a recording as it is chosen; empty: not known
  };
  /// As it was looked at last.
  [[nodiscard]] const Shelf& OnTheShelf() const { return shelf_; }
  /// Grows with each look that has come back.
  [[nodiscard]] std::uint64_t Looks() const { return looks_; }

 private:
  using State = RecordingView::State;

  // The conductor's.
  void Begin(const RecordingChoice& choice);
  void StartRecorder(std::uint64_t wish);
  /// Makes whole what a fall left in a folder. A worker's.
  void Rescue(const std::filesystem::path& folder);
  void StopRecorder();
  void Follow(const decks::RecordingProgress& progress);
  void TakeTrack(RecordedTrack track);
  void AddTrack(RecordedTrack track);
  void DrawWave(const decks::RecordingProgress& progress);
  void Warn(const decks::RecordingProgress& progress);
  void End(const decks::RecordingProgress& progress);
  void SaveLists();
  void SaveJournal();
  [[nodiscard]] decks::RecordingFile FileOf(const RecordedTrack& track) const;
  void Publish(const decks::RecordingProgress& progress);
  [[nodiscard]] std::string Path() const;

  const StationContext& context_;
  decks::ProgrammeRecorder* const recorder_;
  const LocalTime local_time_;
  OrderedWork work_;
  State state_ = State::Idle;
  RecordingChoice choice_;
  OutputView output_;         ///< of deck 1
  OutputView wished_output_;  ///< that the recorder was told
  std::optional<RecordedTrack> first_;
  std::uint64_t wish_ = 0;
  std::uint64_t number_ = 0;  ///< the recorder's
  bool stopping_ = false;
  std::string date_;
  std::string title_;
  std::filesystem::path stem_;  ///< of the lists; folder of the files where there is one a track
  std::string file_;            ///< the newest
  std::chrono::microseconds file_begins_{0};
  std::vector<std::string> files_;
  LeadingTrack leading_;
  RecordedTrack now_;           ///< leads, or did last
  bool another_leads_ = false;  ///< since the recorder was told to start, and not noted yet
  std::vector<RecordedTrack> tracks_;
  std::shared_ptr<const std::vector<RecordedTrack>> shown_tracks_ =
      std::make_shared<std::vector<RecordedTrack>>();
  RecordedWave wave_;
  std::shared_ptr<const RecordedWave> shown_wave_;
  std::chrono::seconds warned_{0};  ///< of so little room; 0: not yet
  std::chrono::seconds gap_told_{0};
  std::string failure_;
  support::TripleBuffer<RecordingView> views_;
  // The window's.
  Shelf shelf_;
  std::uint64_t looks_ = 0;
  std::uint64_t look_ = 0;  ///< the newest that was asked for
};

}  // namespace app
