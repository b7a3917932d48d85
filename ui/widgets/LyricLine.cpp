// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/LyricLine.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "ui/strings/LyricCoding.h"
#include "ui/widgets/QtDrawing.h"
#include "ui/widgets/TextShape.h"

namespace ui {
namespace {

constexpr double kUsedWidth = 0.9;  ///< the rest is left free, as screens cut their edges off
constexpr double kPitch = 1.55;     ///< of a row's height: the ball jumps between the rows
constexpr float kSmallestPoints = 6;

/// Letters that need no blank beside them to begin a new row.
bool StandsAlone(QChar letter) {
  switch (letter.script()) {
    case QChar::Script_Han:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
    case QChar::Script_Thai:
      return true;
    default:
      return false;
  }
}

bool MayBreakBefore(const QString& text, int letter) {
  const QChar before = text[letter - 1], after = text[letter];
  return (before.isSpace() && !after.isSpace()) || StandsAlone(before) || StandsAlone(after);
}

LyricLine::Spans Merged(LyricLine::Spans spans) {
  std::sort(spans.begin(), spans.end());
  LyricLine::Spans merged;
  for (const auto& span : spans) {
    if (!merged.empty() && span.first <= merged.back().second) {
      merged.back().second = std::max(merged.back().second, span.second);
    } else {
      merged.push_back(span);
    }
  }
  return merged;
}

}  // namespace

LyricCanvas::LyricCanvas(QSize size) : pixels(size) {
  constexpr double kUnits = 480;
  scale = std::max(1.0, size.height() / kUnits);
  width = size.width() / scale;
  height = size.height() / scale;
}

LyricLine::LyricLine(const karaoke::ShownLine& line, std::string coding, karaoke::FontObject font,
                     const LyricCanvas& canvas, double share)
    : bytes_(line.text),
      coding_(std::move(coding)),
      text_(DecodeLyric(line.text, coding_)),
      font_(std::move(font)) {
  for (const karaoke::ShownSyllable& syllable : line.syllables) {
    const int begin = LetterAt(syllable.begin);
    syllables_.push_back({begin, std::max(LetterAt(syllable.end), begin)});
  }
  Break(canvas, share);
}

int LyricLine::LetterAt(std::size_t byte) const {
  const auto before = DecodeLyric(std::string_view(bytes_).substr(0, byte), coding_).size();
  return static_cast<int>(std::min(before, text_.size()));
}

void LyricLine::Break(const LyricCanvas& canvas, double share) {
  const double room = canvas.width * kUsedWidth;
  const auto fits = [&] {
    const double tall = rows_.front().height * (1 + kPitch * static_cast<double>(rows_.size() - 1));
    return Widest() <= room && (rows_.size() == 1 || tall <= canvas.height * share);
  };
  // Smaller only where no way of breaking it fits.
  for (;; font_.size *= 0.92F) {
    MakeRows({});
    const double whole = Widest();
    const int least = std::max(1, static_cast<int>(std::ceil(whole / room)));
    for (int rows = least; rows <= least + 1; ++rows) {
      MakeRows(rows == 1 ? std::vector<int>{} : BreaksFor(rows));
      if (fits() || font_.size <= kSmallestPoints) return;
    }
  }
}

/// Places to break at, so that the rows are about as wide as each other; fewer where there are not so many.
std::vector<int> LyricLine::BreaksFor(int rows) const {
  const LyricRow& whole = rows_.front();
  const int letters = static_cast<int>(whole.begins.size());
  std::vector<int> breaks;
  for (int row = 1; row < rows; ++row) {
    const double wanted = whole.width * row / rows;
    double passed = 0, nearest = whole.width;
    int best = 0;
    for (int letter = 1; letter < letters; ++letter) {
      const auto before = static_cast<std::size_t>(letter - 1);
      passed += std::abs(whole.ends[before] - whole.begins[before]);
      if (!MayBreakBefore(text_, letter) || (!breaks.empty() && letter <= breaks.back())) continue;
      if (std::abs(passed - wanted) >= nearest) continue;
      nearest = std::abs(passed - wanted);
      best = letter;
    }
    if (best != 0) breaks.push_back(best);
  }
  return breaks;
}

void LyricLine::MakeRows(const std::vector<int>& breaks) {
  rows_.clear();
  const QFont font = FontOf(font_);
  for (std::size_t i = 0; i <= breaks.size(); ++i) {
    LyricRow row;
    row.first = i == 0 ? 0 : breaks[i - 1];
    const int end = i == breaks.size() ? static_cast<int>(text_.size()) : breaks[i];
    row.text = text_.mid(row.first, end - row.first);
    while (!row.text.isEmpty() && row.text.back().isSpace()) row.text.chop(1);
    const TextShape shape(row.text, font);
    row.width = shape.Width();
    row.height = shape.Height();
    row.ascent = shape.Ascent();
    for (int letter = 0; letter < row.text.size(); ++letter) {
      row.begins.push_back(shape.Begin(letter));
      row.ends.push_back(shape.End(letter));
    }
    rows_.push_back(std::move(row));
  }
  pitch_ = rows_.front().height * kPitch;
}

double LyricLine::Widest() const {
  double widest = 0;
  for (const LyricRow& row : rows_) widest = std::max(widest, row.width);
  return widest;
}

std::size_t LyricLine::RowOf(int letter) const {
  std::size_t row = 0;
  while (row + 1 < rows_.size() && rows_[row + 1].first <= letter) ++row;
  return row;
}

/// Where letters begin and end within a row, in the direction of their script.
std::pair<double, double> LyricLine::Edges(const LyricRow& row, Letters letters) const {
  const int count = static_cast<int>(row.begins.size());
  const int begin = std::clamp(letters.begin - row.first, 0, count);
  const int end = std::clamp(letters.end - row.first, 0, count);
  if (begin >= end) {
    const double place = count == 0      ? 0
                         : begin < count ? row.begins[static_cast<std::size_t>(begin)]
                                         : row.ends.back();
    return {place, place};
  }
  return {row.begins[static_cast<std::size_t>(begin)], row.ends[static_cast<std::size_t>(end - 1)]};
}

LyricLine::Middle LyricLine::MiddleOf(std::size_t syllable) const {
  const Letters letters = syllables_[std::min(syllable, syllables_.size() - 1)];
  const std::size_t row = RowOf(letters.begin);
  const auto [begin, end] = Edges(rows_[row], letters);
  return {row, (begin + end) / 2};
}

LyricLine::Spans LyricLine::SungOf(std::size_t row, std::size_t syllable, double sweep) const {
  const LyricRow& shown = rows_[row];
  const int row_end = shown.first + static_cast<int>(shown.begins.size());
  Spans spans;
  const auto add = [&](double from, double to) {
    spans.emplace_back(std::min(from, to), std::max(from, to));
  };
  for (std::size_t i = 0; i <= syllable && i < syllables_.size(); ++i) {
    Letters letters = syllables_[i];
    const bool through = i < syllable || sweep >= 1;
    // What is sung is so up to where the next syllable begins, its blank included.
    if (through && i + 1 < syllables_.size() && i < syllable)
      letters.end = std::max(letters.end, syllables_[i + 1].begin);
    if (letters.end <= shown.first || letters.begin >= row_end) continue;
    const auto [from, to] = Edges(shown, letters);
    add(from, through ? to : from + (to - from) * sweep);
  }
  return Merged(std::move(spans));
}

LyricLine::Spans LyricLine::WordOf(std::size_t row, std::size_t begin, std::size_t end) const {
  const auto [from, to] = Edges(rows_[row], {LetterAt(begin), LetterAt(end)});
  if (from == to) return {};
  return {{std::min(from, to), std::max(from, to)}};
}

std::vector<RowPicture> DrawRows(const LyricLine& line, karaoke::LyricRole role,
                                 karaoke::LyricDisplay display, const karaoke::LyricLook& look,
                                 const LyricCanvas& canvas, const QPalette& palette) {
  std::vector<RowPicture> pictures;
  for (const LyricRow& row : line.Rows()) {
    // Letters lean and swing out of their places.
    const int margin = static_cast<int>(std::ceil(row.height * 0.3));
    const QSize size(static_cast<int>(std::ceil((row.width + 2 * margin) * canvas.scale)),
                     static_cast<int>(std::ceil((row.height + 2 * margin) * canvas.scale)));
    RowPicture& picture = pictures.emplace_back();
    picture.image = QImage(size, QImage::Format_ARGB32_Premultiplied);
    picture.margin = margin * canvas.scale;
    picture.image.fill(Qt::transparent);
    QPainter painter(&picture.image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(canvas.scale, canvas.scale);
    QtDrawingSystem system(palette);
    QtDrawingSurface surface(painter, system);
    karaoke::LyricPainter words(system);
    words.Look(look);
    words.Draw(role, display, surface, line.Font(), row.text.toStdString(), margin, margin);
  }
  return pictures;
}

}  // namespace ui
