// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/LyricScene.h"

#include <QGuiApplication>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/widgets/QtDrawing.h"
#include "ui/widgets/Smile.h"

namespace ui {
namespace {

using karaoke::LyricFrame;
using karaoke::LyricRole;
using std::chrono::microseconds;

// Shares of the display's height.
constexpr double kLineLetters = 0.085;
constexpr double kTitleLetters = 0.11;
constexpr double kArtistLetters = 0.07;
constexpr double kLineMiddles[] = {0.31, 0.735};  ///< middles of the two blocks
constexpr double kMostOfHeight = 0.33;            ///< the most that the rows of a line take
constexpr double kBall = 0.058;
constexpr double kJump = 0.75;  ///< of a row's height

constexpr int kLinesAhead = 3;

constexpr QColor kCurtainTop(0x3A, 0x1A, 0x26);
constexpr QColor kVeil(0x0B, 0x05, 0x08, 150);

karaoke::ShownLine CardLine(const std::string& text) {
  karaoke::ShownLine line;
  line.text = text;
  line.syllables.push_back({{}, {}, 0, text.size()});
  return line;
}

}  // namespace

void LyricScene::Forget() {
  ++generation_;
  drawn_.clear();
}

void LyricScene::SetLook(const SceneLook& look) {
  look_ = look;
  background_ = {};
  ball_ = {};
  Forget();
}

void LyricScene::SetSize(QSize pixels) {
  if (pixels == canvas_.pixels) return;
  canvas_ = LyricCanvas(pixels);
  background_ = {};
  ball_ = {};
  Forget();
}

void LyricScene::SetWords(std::shared_ptr<const app::SongWords> words) {
  if (words == words_) return;
  words_ = std::move(words);
  Forget();
}

std::function<LyricScene::Drawn()> LyricScene::Maker(const Key& key) const {
  const auto& lines = words_->show.Lines();
  karaoke::ShownLine line = key.line == kTitle    ? CardLine(words_->title)
                            : key.line == kArtist ? CardLine(words_->artist)
                                                  : lines[static_cast<std::size_t>(key.line)];
  const double share = key.line == kTitle    ? kTitleLetters
                       : key.line == kArtist ? kArtistLetters
                                             : kLineLetters;
  constexpr double kPointsAUnit = 72.0 / 96;
  const karaoke::FontObject font{look_.lyric.font_name,
                                 static_cast<float>(canvas_.height * share * kPointsAUnit),
                                 look_.lyric.font_bold, look_.lyric.font_italic};
  return [line = std::move(line), coding = words_->coding, font, role = key.role, look = look_.lyric,
          canvas = canvas_, display = display_, palette = QGuiApplication::palette()] {
    Drawn drawn{std::make_shared<const LyricLine>(line, coding, font, canvas, kMostOfHeight), {}};
    drawn.rows = DrawRows(*drawn.line, role, display, look, canvas, palette);
    return drawn;
  };
}

const LyricScene::Drawn& LyricScene::Get(const Key& key) {
  const auto found = drawn_.find(key);
  if (found != drawn_.end()) return found->second;
  ++drawn_late_;
  return drawn_[key] = Maker(key)();
}

/// Everything that the frames of the coming lines need, the nearest first.
std::vector<LyricScene::Key> LyricScene::Wanted(microseconds time) const {
  if (words_ == nullptr || canvas_.pixels.isEmpty()) return {};
  std::vector<Key> keys;
  const LyricFrame frame = words_->show.At(time);
  const auto& lines = words_->show.Lines();
  if (frame.title || lines.empty()) keys = {{kTitle, LyricRole::CurrentText}, {kArtist, LyricRole::NextText}};
  if (lines.empty()) return keys;
  int first = 0;
  if (frame.next) first = static_cast<int>(*frame.next);
  if (frame.current) first = static_cast<int>(*frame.current);
  if (!frame.title && !frame.next && !frame.current) return keys;
  const int last = std::min(first + kLinesAhead, static_cast<int>(lines.size()) - 1);
  for (int line = first; line <= last; ++line) {
    for (const LyricRole role : {LyricRole::CurrentText, LyricRole::CurrentWord, LyricRole::NextText}) {
      keys.push_back({line, role});
    }
  }
  return keys;
}

std::optional<LyricScene::Job> LyricScene::NextJob(microseconds time) {
  const std::vector<Key> wanted = Wanted(time);
  // What lies behind is not needed again unless somebody seeks.
  std::erase_if(drawn_, [&](const auto& entry) {
    return std::find(wanted.begin(), wanted.end(), entry.first) == wanted.end();
  });
  for (const Key& key : wanted) {
    if (!drawn_.contains(key)) return Job{generation_, key, Maker(key)};
  }
  return std::nullopt;
}

void LyricScene::Keep(std::uint64_t generation, const Key& key, Drawn drawn) {
  if (generation == generation_) drawn_.try_emplace(key, std::move(drawn));
}

QPointF LyricScene::PlaceOf(const LyricLine& line, int number, std::size_t row) const {
  const LyricRow& shown = line.Rows()[row];
  // A line stays where it is from its being the next one until it is sung.
  const double middle = canvas_.height * kLineMiddles[number % 2];
  const double first = middle - line.Pitch() * static_cast<double>(line.Rows().size() - 1) / 2;
  const double top = first + line.Pitch() * static_cast<double>(row) - shown.height / 2;
  const double left = (canvas_.width - shown.width) / 2;
  return {std::round(left * canvas_.scale), std::round(top * canvas_.scale)};
}

void LyricScene::Paint(QPainter& painter, microseconds time) {
  PaintBackground(painter);
  if (words_ == nullptr || canvas_.pixels.isEmpty()) return;
  const LyricFrame frame = words_->show.At(time);
  if (frame.title || words_->show.Lines().empty()) return PaintTitle(painter);
  if (frame.next) PaintPlain(painter, {static_cast<int>(*frame.next), LyricRole::NextText});
  if (!frame.current) return;
  PaintSung(painter, frame);
  PaintCountIn(painter, frame);
  PaintBall(painter, frame);
}

QRect LyricScene::Difference(microseconds one, microseconds other) {
  const QRect whole(QPoint(0, 0), canvas_.pixels);
  if (words_ == nullptr || canvas_.pixels.isEmpty()) return whole;
  const LyricFrame before = words_->show.At(one), after = words_->show.At(other);
  if (before == after) return {};
  const bool same_lines =
      before.title == after.title && before.current == after.current && before.next == after.next;
  if (!same_lines || !after.current) return whole;
  // The line that is sung, with the room that the ball and the count-in take.
  const int number = static_cast<int>(*after.current);
  const LyricLine& line = *Get({number, LyricRole::CurrentText}).line;
  QRectF changed;
  for (std::size_t row = 0; row < line.Rows().size(); ++row) {
    const LyricRow& shown = line.Rows()[row];
    changed |= QRectF(PlaceOf(line, number, row), QSizeF(shown.width, shown.height) * canvas_.scale);
  }
  const double room = line.Rows().front().height * canvas_.scale;
  const double above = (kJump + 0.4) * room + BallSize();
  const double beside = BallSize() + room;
  return changed.adjusted(-beside, -above, beside, room).toAlignedRect() & whole;
}

QColor LyricScene::Ground() const {
  return ColourOf(look_.lyric.background);
}

void LyricScene::PaintBackground(QPainter& painter) {
  if (look_.picture.isNull() && !look_.lyric.stage) {
    return painter.fillRect(QRect(QPoint(0, 0), canvas_.pixels), Ground());
  }
  if (background_.isNull()) background_ = MakeBackground();
  painter.drawImage(0, 0, background_);
}

QImage LyricScene::MakeBackground() const {
  QImage made(canvas_.pixels, QImage::Format_RGB32);
  made.fill(Ground());
  QPainter filler(&made);
  const QRect whole(QPoint(0, 0), canvas_.pixels);
  if (look_.lyric.stage && look_.picture.isNull()) {
    QLinearGradient curtain(0, 0, 0, whole.height());
    curtain.setColorAt(0, kCurtainTop);
    curtain.setColorAt(1, Ground());
    filler.fillRect(whole, curtain);
  }
  if (look_.picture.isNull()) return made;
  const QImage scaled =
      look_.picture.scaled(canvas_.pixels, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
  filler.drawImage((whole.width() - scaled.width()) / 2, (whole.height() - scaled.height()) / 2, scaled);
  // A bright picture must not take the words away.
  if (look_.lyric.stage) filler.fillRect(whole, kVeil);
  return made;
}

void LyricScene::PaintTitle(QPainter& painter) {
  const auto block = [&](int line, LyricRole role, double middle) {
    const Drawn& card = Get({line, role});
    const auto rows = card.line->Rows().size();
    for (std::size_t row = 0; row < rows; ++row) {
      const LyricRow& shown = card.line->Rows()[row];
      const double top =
          canvas_.height * middle +
          card.line->Pitch() * 0.8 * (static_cast<double>(row) - static_cast<double>(rows - 1) / 2) -
          shown.height / 2;
      const RowPicture& picture = card.rows[row];
      painter.drawImage(
          QPointF(std::round((canvas_.width - shown.width) / 2 * canvas_.scale - picture.margin),
                  std::round(top * canvas_.scale - picture.margin)),
          picture.image);
    }
  };
  if (!words_->title.empty()) block(kTitle, LyricRole::CurrentText, words_->artist.empty() ? 0.5 : 0.42);
  if (!words_->artist.empty()) block(kArtist, LyricRole::NextText, words_->title.empty() ? 0.5 : 0.68);
}

void LyricScene::PaintPlain(QPainter& painter, const Key& key) {
  const Drawn& drawn = Get(key);
  for (std::size_t row = 0; row < drawn.rows.size(); ++row) {
    const RowPicture& picture = drawn.rows[row];
    painter.drawImage(PlaceOf(*drawn.line, key.line, row) - QPointF(picture.margin, picture.margin),
                      picture.image);
  }
}

LyricLine::Spans LyricScene::SungSpans(const LyricLine& line, const LyricFrame& frame,
                                       std::size_t row) const {
  if (!frame.syllable) return {};
  if (look_.style == SungStyle::Word) return line.WordOf(row, frame.word_begin, frame.word_end);
  return line.SungOf(row, *frame.syllable, frame.sweep);
}

void LyricScene::PaintSung(QPainter& painter, const LyricFrame& frame) {
  const int number = static_cast<int>(*frame.current);
  const Drawn& plain = Get({number, LyricRole::CurrentText});
  const Drawn& sung = Get({number, LyricRole::CurrentWord});
  for (std::size_t row = 0; row < plain.rows.size(); ++row) {
    const RowPicture& picture = plain.rows[row];
    const QPointF place = PlaceOf(*plain.line, number, row) - QPointF(picture.margin, picture.margin);
    const double width = plain.line->Rows()[row].width;
    const double right = picture.image.width();
    const auto stripe = [&](const QImage& image, double from, double to) {
      const QRectF part(from, 0, to - from, image.height());
      if (to > from) painter.drawImage(place + QPointF(from, 0), image, part);
    };
    double at = 0;
    for (const auto& [from, to] : SungSpans(*plain.line, frame, row)) {
      // Whole pixels, so that the two pictures meet without a seam; the ends take their margins along.
      const double begin = from <= 0.5 ? 0 : std::round(from * canvas_.scale + picture.margin);
      const double end = to >= width - 0.5 ? right : std::round(to * canvas_.scale + picture.margin);
      stripe(picture.image, at, begin);
      stripe(sung.rows[row].image, std::max(at, begin), end);
      at = std::max(at, end);
    }
    stripe(picture.image, at, right);
  }
}

void LyricScene::PaintCountIn(QPainter& painter, const LyricFrame& frame) {
  if (frame.count_in <= 0) return;
  const int number = static_cast<int>(*frame.current);
  const LyricLine& line = *Get({number, LyricRole::CurrentText}).line;
  const std::size_t last = line.Rows().size() - 1;
  const double unit = canvas_.scale;
  const double across = canvas_.height * 0.03 * unit;
  const double gap = across * 0.8;
  const double top = PlaceOf(line, number, last).y() + line.Rows()[last].height * 1.2 * unit;
  const double left = (canvas_.width * unit - (4 * across + 3 * gap)) / 2;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(ColourOf(look_.lyric.outline), karaoke::PenWidthFor(line.Font().size) * unit));
  painter.setBrush(ColourOf(look_.lyric.fill[static_cast<std::size_t>(LyricRole::CurrentWord)]));
  for (int dot = 0; dot < frame.count_in; ++dot) {
    painter.drawEllipse(QRectF(left + dot * (across + gap), top, across, across));
  }
  painter.restore();
}

double LyricScene::BallSize() const {
  return std::round(canvas_.height * kBall * canvas_.scale);
}

void LyricScene::PaintBall(QPainter& painter, const LyricFrame& frame) {
  if (!frame.ball) return;
  const int number = static_cast<int>(*frame.current);
  const LyricLine& line = *Get({number, LyricRole::CurrentText}).line;
  const double size = BallSize();
  const auto landing = [&](std::optional<std::size_t> syllable) {
    const LyricLine::Middle to = syllable ? line.MiddleOf(*syllable) : LyricLine::Middle{};
    const QPointF row = PlaceOf(line, number, to.row);
    const double letters = line.Rows()[to.row].ascent * 0.2;  // it lands on the letters, not on their box
    return QPointF(row.x() + to.x * canvas_.scale, row.y() + letters * canvas_.scale);
  };
  const QPointF from = landing(frame.ball->from), to = landing(frame.ball->to);
  const double jump = frame.ball->height * line.Rows().front().height * kJump * canvas_.scale;
  const QPointF foot = from + (to - from) * frame.ball->way - QPointF(0, jump);
  if (ball_.isNull()) {
    const auto pixels = static_cast<int>(size);
    ball_ = look_.ball.isNull()
                ? Smile(pixels)
                : look_.ball.scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                      .convertToFormat(QImage::Format_ARGB32_Premultiplied);
  }
  painter.drawImage(
      QPointF(std::round(foot.x() - ball_.width() / 2.0), std::round(foot.y() - ball_.height())), ball_);
}

}  // namespace ui
