// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <deque>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "decks/ports/ProgrammeRecorder.h"
#include "engine/Limiter.h"
#include "engine/ProgrammeTap.h"
#include "engine/ports/Encoder.h"

namespace engine {

/// One recording on its way from a programme to its files.
///
/// Law: its files together hold each frame of the programme once, limited to 1 dB below full scale; what came
/// too fast is silence of the same length. Threads: the recorder's.
class RecordingTake {
 public:
  /// Until Begin it has no file. The encoders outlive it.
  RecordingTake(const decks::RecordingWish& wish, std::unique_ptr<ProgrammeReader> reader,
                EncoderFactory& encoders);

  support::Result<void> Begin();
  /// Before a file gets so large, the recording goes on in a next one: "Evening (2).wav".
  void LimitFiles(std::int64_t bytes) { largest_ = bytes; }
  /// Writes what is there, but for the newest `held` frames: a cut that is ordered a moment late still falls
  /// where it should.
  support::Result<void> Take(std::int64_t held);
  support::Result<void> Sync() { return encoder_->Sync(); }
  /// frame: of the recording.
  void Cut(std::int64_t frame, decks::RecordingFile next);
  /// Goes on with another programme of the same sample rate.
  support::Result<void> Follow(std::unique_ptr<ProgrammeReader> reader);
  /// All that is there, then the end of the file.
  support::Result<void> Finish();
  /// The end of the file, as good as it can be.
  void Abandon();

  /// How much longer it takes until what the programme gave last is heard.
  [[nodiscard]] std::int64_t Ahead(std::int64_t heard) const { return reader_->Written() - heard; }
  [[nodiscard]] bool Begun() const { return encoder_ != nullptr; }
  [[nodiscard]] int SampleRate() const { return reader_->SampleRate(); }
  [[nodiscard]] const std::string& Path() const { return file_.path; }
  [[nodiscard]] std::int64_t Frames() const { return frames_; }
  /// Of the file that is written now, in the recording.
  [[nodiscard]] std::int64_t FileBegins() const { return file_begins_; }
  [[nodiscard]] std::int64_t Lost() const { return lost_; }
  [[nodiscard]] std::int64_t Bytes() const;
  /// Programme frame of the recording's first one; nothing until something of the programme was taken.
  [[nodiscard]] std::optional<std::int64_t> Base() const { return base_; }
  /// Of the two sides since the last call.
  [[nodiscard]] std::pair<float, float> TakePeaks();

 private:
  struct Part {
    std::int64_t from = 0;
    decks::RecordingFile file;
  };
  support::Result<void> Open(const decks::RecordingFile& file);
  /// The present file goes on where the next one cannot be made.
  support::Result<void> Next(const decks::RecordingFile& file);
  /// The file that goes on where this one is as large as it may be.
  [[nodiscard]] decks::RecordingFile Continued();
  support::Result<void> Limit(std::span<float> stereo);
  support::Result<void> LimitSilence(std::int64_t frames);
  support::Result<void> Write(std::span<const float> stereo);

  const decks::RecordingWish wish_;
  EncoderFactory& encoders_;
  std::unique_ptr<ProgrammeReader> reader_;
  decks::RecordingFile file_;
  std::unique_ptr<Encoder> encoder_;
  Limiter limiter_;
  std::deque<Part> parts_;  ///< to come, ascending
  std::int64_t skip_;       ///< frames that come out of the limiter before the first of the programme
  std::int64_t taken_ = 0;  ///< frames that went into the limiter
  std::optional<std::int64_t> base_;
  std::int64_t frames_ = 0;  ///< in the files
  std::int64_t file_begins_ = 0;
  std::int64_t largest_ = std::numeric_limits<std::int64_t>::max();
  int continued_ = 1;           ///< files of one name
  std::string continued_from_;  ///< the path of the first
  std::int64_t lost_ = 0;
  std::int64_t bytes_ = 0;  ///< of the files that are complete
  float left_ = 0;
  float right_ = 0;
  std::vector<float> block_;
};

}  // namespace engine
