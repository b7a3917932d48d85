// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/Decode.h"

#include <gtest/gtest.h>

namespace ui {
namespace {

TEST(Decode, ValidUtf8IsTakenAsSuch) {
  EXPECT_EQ(Decode("Måns – Ø"), QString::fromUtf8("Måns – Ø"));
}

TEST(Decode, AnythingElseIsWindows1252) {
  EXPECT_EQ(Decode("M\xE5ns"), QString::fromUtf8("Måns"));
  EXPECT_EQ(Decode("\x80 \x93quoted\x94 \x9F"), QString::fromUtf8("€ “quoted” Ÿ"));
}

TEST(Decode, ACutOffSequenceIsNoUtf8) {
  EXPECT_EQ(Decode("Caf\xC3"), QString::fromUtf8("CafÃ"));
}

TEST(Decode, EveryByteGivesOneCharacter) {
  std::string bytes;
  for (int byte = 1; byte < 256; ++byte) bytes += static_cast<char>(byte);
  EXPECT_EQ(Decode(bytes).size(), 255);
}

TEST(Encode, LeavesTheBytesOfWhatNobodyChanged) {
  for (const char* bytes : {"M\xE5ns", "Måns", "Caf\xC3", ""}) EXPECT_EQ(Encode(Decode(bytes), bytes), bytes);
  EXPECT_EQ(Encode(QString::fromUtf8("Mån"), "M\xE5ns"), "Mån");
}

TEST(PathBytes, KeepsTheBytesOfANameInAnotherCodePage) {
  const QUrl url = QUrl::fromEncoded("file:///music/M%E5ns%20%23%25.mp3");
  EXPECT_EQ(PathBytes(url), "/music/M\xE5ns #%.mp3");
}

TEST(PathBytes, KeepsUtf8AndRefusesOtherPlaces) {
  EXPECT_EQ(PathBytes(QUrl::fromLocalFile(QString::fromUtf8("/é/ü.ogg"))), "/é/ü.ogg");
  EXPECT_EQ(PathBytes(QUrl(QStringLiteral("https://example.org/a.mp3"))), "");
}

}  // namespace
}  // namespace ui
