// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/sound/FileAnalyses.h"
#include "app/work/IdleCores.h"
#include "app/work/WorkGate.h"
#include "support/Clock.h"
#include "support/Executor.h"
#include "support/Sentences.h"
#include "support/ports/FileSaver.h"

namespace app {

struct BatchProgress {
  enum class State { Idle, Running, Paused } state = State::Idle;
  int done = 0;
  int total = 0;
  int left_out = 0;
  std::string file;                               ///< the one that was begun last
  std::optional<std::chrono::seconds> remaining;  ///< once that can be told
};

/// The list of the files that a batch has left, in the program folder.
inline constexpr std::string_view kBatchList = "\\tlv.batch";

/// Has many files analysed, one after the other on each idle worker, for their rows and their tags.
///
/// Law: what is left when the program ends or is killed is gone on with by the next run, and no file whose
/// values were not saved is taken for done. Threads: the window's, which empties the box.
class BatchAnalysis {
 public:
  struct Outside {
    support::Executor& background;  ///< analyses
    support::Executor& workers;     ///< saves the list
    support::FileSaver& files;
    const support::Clock& clock;
    const support::Sentences& say;
  };
  /// What was found about a file.
  using Keep = FileAnalyses::Found;
  /// Now and then, and at each pause and at the end: what was kept so far is to be saved.
  using Save = std::function<void()>;

  BatchAnalysis(const AnalysisPorts& ports, const Outside& outside, std::shared_ptr<WorkGate> gate,
                std::shared_ptr<Mailbox> box, std::shared_ptr<const IdleCores> cores,
                std::filesystem::path list, Keep keep, Save save);

  using Files = std::vector<std::string>;
  /// Goes on with what the last run left.
  void StartUp(int gain_percent);
  /// Adds files to what is left, each once, as soon as a worker has asked for them; the threshold is that of
  /// the mix points.
  void Start(std::function<Files()> files, int gain_percent);
  void Pause();
  void Resume();
  /// Forgets what is left.
  void Cancel();
  /// The list is as it should be found by the next run. Requires: the gate is closed.
  void Flush();

  [[nodiscard]] BatchProgress Progress() const;
  /// A sentence for each file that could not be analysed.
  [[nodiscard]] const std::vector<std::string>& LeftOut() const { return left_out_; }

 private:
  struct List;
  struct Wish {
    std::function<Files()> files;
    int gain_percent;
  };
  void JoinNext();
  enum class Before { Forgotten, Kept };
  void Joined(Before before, std::shared_ptr<const Files> all, int gain_percent);
  void GoOn();
  void Begin(int slot);
  void Done(const std::string& file, const music::TrackAnalysis& found, const catalogue::FileMarks& marks);
  void CheckPoint();
  void SaveList();
  void Forget();
  void PutAway(std::shared_ptr<const Files> files);
  [[nodiscard]] std::size_t FirstOpen() const;

  const Outside outside_;
  const std::shared_ptr<WorkGate> gate_;
  const std::shared_ptr<Mailbox> box_;
  const std::shared_ptr<const IdleCores> cores_;
  const Keep keep_;
  const Save save_;
  FileAnalyses analyses_;
  BatchProgress::State state_ = BatchProgress::State::Idle;
  int gain_percent_ = 3;
  std::deque<Wish> wishes_;             ///< the first one is being joined to the files
  std::uint64_t forgotten_ = 0;         ///< how often all wishes were
  std::shared_ptr<const Files> files_;  // with the jobs that save them
  std::size_t next_ = 0;                ///< to be begun
  std::array<std::optional<std::size_t>, kDecks> slots_;
  int done_ = 0;
  int since_save_ = 0;
  std::size_t saved_from_ = 0;  ///< what lies before it is done and saved
  std::vector<std::string> left_out_;
  support::TimePoint since_{};  ///< the last start, stop or change of the list
  int done_since_ = 0;
  std::shared_ptr<List> list_;  // with the jobs that save it
};

}  // namespace app
