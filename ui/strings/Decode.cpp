// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/Decode.h"

#include <QByteArray>
#include <QStringDecoder>
#include <array>

namespace ui {
namespace {

/// Windows-1252 from 0x80 to 0x9F; the five places without a character keep their number, as Windows does.
constexpr std::array<char16_t, 32> kWindows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

}  // namespace

QString Decode(std::string_view bytes) {
  QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  QString text = utf8(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
  if (!utf8.hasError()) return text;
  text.clear();
  text.reserve(static_cast<qsizetype>(bytes.size()));
  for (const char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    const bool special = code >= 0x80 && code < 0xA0;
    text += QChar(special ? kWindows1252[code - 0x80U] : char16_t{code});
  }
  return text;
}

std::string Encode(const QString& text, std::string_view shown_from) {
  return text == Decode(shown_from) ? std::string(shown_from) : text.toStdString();
}

std::string PathBytes(const QUrl& url) {
  if (!url.isLocalFile()) return {};
  // Not toLocalFile(): it decodes, and a name in another code page would not be found again.
  return QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1()).toStdString();
}

}  // namespace ui
