// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "app/songs/SongView.h"
#include "karaoke/LyricPainter.h"
#include "ui/widgets/LyricLine.h"

class QPainter;

namespace ui {

/// How words are shown as sung.
enum class SungStyle { Sweep = 0, Word = 1 };

/// Everything that a display of words is made with.
struct SceneLook {
  karaoke::LyricLook lyric;
  SungStyle style = SungStyle::Sweep;
  QImage ball;     ///< null: our own
  QImage picture;  ///< behind the words; null: the colour alone
};

/// The picture of what the singers see at a time in a song; a pure function of that time.
///
/// Lines become pictures ahead of need, on another thread where there is one, and a frame only puts them
/// together. A line that is needed and not there yet is drawn at once. Threads: the window's, but for the
/// jobs it gives.
class LyricScene {
 public:
  explicit LyricScene(karaoke::LyricDisplay display) : display_(display) {}

  void SetLook(const SceneLook& look);
  void SetSize(QSize pixels);
  /// Null: no song.
  void SetWords(std::shared_ptr<const app::SongWords> words);
  [[nodiscard]] const std::shared_ptr<const app::SongWords>& Words() const { return words_; }

  /// The colour behind the words.
  [[nodiscard]] QColor Ground() const;
  /// The whole picture. Without a song it is the background.
  void Paint(QPainter& painter, std::chrono::microseconds time);

  /// The part that differs between the pictures of two times, in pixels; empty when they are the same.
  [[nodiscard]] QRect Difference(std::chrono::microseconds one, std::chrono::microseconds other);

  /// A line's pictures in one role.
  struct Drawn {
    std::shared_ptr<const LyricLine> line;
    std::vector<RowPicture> rows;
  };
  struct Key {
    int line = 0;  ///< kTitle and kArtist are those of the title card
    karaoke::LyricRole role = karaoke::LyricRole::CurrentText;
    auto operator<=>(const Key&) const = default;
  };
  static constexpr int kTitle = -2, kArtist = -1;
  /// A line to draw ahead; Keep takes what it made. Nothing when all is there.
  struct Job {
    std::uint64_t generation;
    Key key;
    std::function<Drawn()> draw;  ///< any thread
  };
  [[nodiscard]] std::optional<Job> NextJob(std::chrono::microseconds time);
  void Keep(std::uint64_t generation, const Key& key, Drawn drawn);
  /// Lines that had to be drawn while a frame waited.
  [[nodiscard]] int DrawnLate() const { return drawn_late_; }

 private:
  void Forget();
  [[nodiscard]] std::function<Drawn()> Maker(const Key& key) const;
  [[nodiscard]] const Drawn& Get(const Key& key);
  [[nodiscard]] std::vector<Key> Wanted(std::chrono::microseconds time) const;
  void PaintBackground(QPainter& painter);
  [[nodiscard]] QImage MakeBackground() const;
  void PaintTitle(QPainter& painter);
  void PaintPlain(QPainter& painter, const Key& key);
  void PaintSung(QPainter& painter, const karaoke::LyricFrame& frame);
  void PaintCountIn(QPainter& painter, const karaoke::LyricFrame& frame);
  void PaintBall(QPainter& painter, const karaoke::LyricFrame& frame);
  /// Top left of a row in pixels.
  [[nodiscard]] QPointF PlaceOf(const LyricLine& line, int number, std::size_t row) const;
  [[nodiscard]] LyricLine::Spans SungSpans(const LyricLine& line, const karaoke::LyricFrame& frame,
                                           std::size_t row) const;
  [[nodiscard]] double BallSize() const;

  const karaoke::LyricDisplay display_;
  SceneLook look_;
  LyricCanvas canvas_{QSize(0, 0)};
  std::shared_ptr<const app::SongWords> words_;  // with the station
  std::uint64_t generation_ = 0;
  std::map<Key, Drawn> drawn_;
  int drawn_late_ = 0;
  QImage background_;  ///< what is behind the words, in the display's size; null where it is one colour
  QImage ball_;        ///< the same of the ball
};

}  // namespace ui
