// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/LyricCoding.h"

#include <QStringDecoder>

#include "ui/strings/Decode.h"

namespace ui {
namespace {

constexpr const char* kWestern = "windows-1252";

}  // namespace

QString DecodeLyric(std::string_view bytes, const std::string& coding) {
  const QByteArrayView view(bytes.data(), static_cast<qsizetype>(bytes.size()));
  if (coding.empty() || coding == kWestern || view.isValidUtf8()) return Decode(bytes);
  QStringDecoder decoder(coding.c_str());
  if (!decoder.isValid()) return Decode(bytes);
  return decoder(view);
}

const std::vector<CodingChoice>& CodingChoices() {
  static const std::vector<CodingChoice> choices = [] {
    constexpr CodingChoice kAll[] = {
        {kWestern, LyricWord::Western},        {"windows-1250", LyricWord::CentralEuropean},
        {"windows-1251", LyricWord::Cyrillic}, {"KOI8-R", LyricWord::Cyrillic},
        {"IBM866", LyricWord::Cyrillic},       {"windows-1253", LyricWord::Greek},
        {"windows-1254", LyricWord::Turkish},  {"windows-1255", LyricWord::Hebrew},
        {"windows-1256", LyricWord::Arabic},   {"windows-1258", LyricWord::Vietnamese},
        {"TIS-620", LyricWord::Thai},          {"Shift_JIS", LyricWord::Japanese},
        {"EUC-JP", LyricWord::Japanese},       {"EUC-KR", LyricWord::Korean},
        {"GB18030", LyricWord::Chinese},       {"Big5", LyricWord::Chinese}};
    std::vector<CodingChoice> known;
    for (const CodingChoice& choice : kAll) {
      if (choice.coding == kWestern || QStringDecoder(choice.coding).isValid()) known.push_back(choice);
    }
    return known;
  }();
  return choices;
}

}  // namespace ui
