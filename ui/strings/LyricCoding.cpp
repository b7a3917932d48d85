// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/LyricCoding.h"

#include <QStringDecoder>

#include "ui/strings/Decode.h"

namespace ui {
namespace {

bool IsUtf8(std::string_view bytes) {
  QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  static_cast<void>(QString(utf8(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())))));
  return !utf8.hasError();
}

struct PairCount {
  int pairs = 0;
  int kana = 0;
  bool possible = true;
};

void CountPairs(std::string_view bytes, PairCount& count) {
  const auto within = [](unsigned byte, unsigned first, unsigned last) {
    return byte >= first && byte <= last;
  };
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const unsigned lead = static_cast<unsigned char>(bytes[i]);
    if (lead < 0x80 || within(lead, 0xA1, 0xDF)) continue;  // one byte: ASCII, or a half-width kana
    const unsigned trail = i + 1 < bytes.size() ? static_cast<unsigned char>(bytes[i + 1]) : 0;
    const bool leads = within(lead, 0x81, 0x9F) || within(lead, 0xE0, 0xFC);
    count.possible = count.possible && leads && (within(trail, 0x40, 0x7E) || within(trail, 0x80, 0xFC));
    count.kana +=
        (lead == 0x82 && within(trail, 0x9F, 0xF1)) || (lead == 0x83 && within(trail, 0x40, 0x96)) ? 1 : 0;
    ++count.pairs;
    ++i;
  }
}

}  // namespace

LyricCoding CodingOf(std::span<const std::string_view> texts) {
  PairCount count;
  for (const std::string_view text : texts) {
    if (!IsUtf8(text)) CountPairs(text, count);
  }
  const bool japanese = count.possible && count.kana > 0 && count.kana * 4 >= count.pairs;
  return japanese ? LyricCoding::ShiftJis : LyricCoding::Western;
}

QString DecodeLyric(std::string_view bytes, LyricCoding coding) {
  if (coding == LyricCoding::Western || IsUtf8(bytes)) return Decode(bytes);
  QStringDecoder decoder("Shift_JIS");
  if (!decoder.isValid()) return Decode(bytes);
  return decoder(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

}  // namespace ui
