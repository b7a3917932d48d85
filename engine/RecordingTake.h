// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
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

  [[nodiscard]] int SampleRate() const { return reader_->SampleRate(); }
  [[nodiscard]] const std::string& Path() const { return file_.path; }
  [[nodiscard]] std::int64_t Frames() const { return frames_; }
  [[nodiscard]] std::int64_t Lost() const { return lost_; }
  [[nodiscard]] std::int64_t Bytes() const;
  /// The frame of the recording that a frame of the programme is.
  [[nodiscard]] std::int64_t PlaceOf(std::int64_t programme_frame) const { return programme_frame - base_; }
  /// Of the two sides since the last call.
  [[nodiscard]] std::pair<float, float> TakePeaks();

 private:
  struct Part {
    std::int64_t from = 0;
    decks::RecordingFile file;
  };
  support::Result<void> Open(const decks::RecordingFile& file);
  support::Result<void> Next(Part part);
  support::Result<void> Limit(std::span<float> stereo);
  support::Result<void> LimitSilence(std::int64_t frames);
  support::Result<void> Write(std::span<const float> stereo);

  const decks::RecordingWish wish_;
  EncoderFactory& encoders_;
  std::unique_ptr<ProgrammeReader> reader_;
  decks::RecordingFile file_;
  std::unique_ptr<Encoder> encoder_;
  Limiter limiter_;
  std::deque<Part> parts_;   ///< to come, ascending
  std::int64_t skip_;        ///< frames that come out of the limiter before the first of the programme
  std::int64_t taken_ = 0;   ///< frames that went into the limiter
  std::int64_t base_ = 0;    ///< programme frame of the recording's frame 0
  std::int64_t frames_ = 0;  ///< in the files
  std::int64_t lost_ = 0;
  std::int64_t bytes_ = 0;  ///< of the files that are complete
  float left_ = 0;
  float right_ = 0;
  std::vector<float> block_;
};

}  // namespace engine
