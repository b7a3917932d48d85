// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sidestore/SoundContent.h"

#include <gtest/gtest.h>

#include <sstream>

namespace platform::sidestore {
namespace {

std::string Noise(std::size_t size, unsigned seed = 1) {
  std::string noise(size, '\0');
  for (char& byte : noise) {
    seed = seed * 1664525 + 1013904223;
    byte = static_cast<char>(seed >> 24);
  }
  return noise;
}

std::string ContentOf(const std::string& bytes) {
  std::istringstream file(bytes);
  return ContentText(file, FindSound(file, bytes.size())).value_or("(nothing)");
}

std::string Id3(std::size_t size) {
  const std::string head{
      'I', 'D', '3', 4, 0, 0, 0, 0, static_cast<char>(size >> 7), static_cast<char>(size & 127)};
  return head + std::string(size, 't');
}

std::string Page(std::uint64_t time, unsigned number, const std::string& body) {
  std::string page = "OggS" + std::string(23, '\0');
  for (int i = 0; i < 8; ++i) page[static_cast<std::size_t>(6 + i)] = static_cast<char>(time >> (8 * i));
  page[18] = static_cast<char>(number);
  page[22] = static_cast<char>(body.size() * 7 + number);  // stands for the checksum
  page[26] = static_cast<char>((body.size() + 254) / 255);
  for (std::size_t left = body.size(); left > 0; left -= std::min<std::size_t>(left, 255)) {
    page += static_cast<char>(std::min<std::size_t>(left, 255));
  }
  return page + body;
}

std::string Ogg(unsigned header_pages, const std::string& sound) {
  std::string file;
  unsigned number = 0;
  for (; number < header_pages; ++number) file += Page(0, number, "header");
  for (std::size_t at = 0; at < sound.size(); at += 4000)
    file += Page(at + 1, number++, sound.substr(at, 4000));
  return file;
}

TEST(SoundContent, IsTheSameWhateverTagsAreAroundTheSound) {
  const std::string sound = "\xFF\xFB" + Noise(100'000);
  const std::string id3v1 = "TAG" + std::string(125, ' ');
  const std::string ape = std::string(68, 'a') + "APETAGEX" +
                          std::string("\xD0\7\0\0\x64\0\0\0\1\0\0\0\0\0\0\0", 16) + std::string(8, '\0');
  const std::string lyrics = "LYRICSBEGIN" + std::string(9, 'l') + "000020LYRICS200";
  const std::string wanted = ContentOf(sound);
  EXPECT_EQ(wanted.size(), 16U);
  for (const std::string& file : {Id3(200) + sound, Id3(20) + Id3(700) + sound + id3v1, sound + ape + id3v1,
                                  sound + lyrics + id3v1, Id3(1000) + sound + ape}) {
    EXPECT_EQ(ContentOf(file), wanted);
  }
  const std::string flac = Noise(50'000, 2);
  const auto in_flac = [&](char size) {
    return std::string("fLaC\0\0\0\x22", 8) + std::string(34, 's') + std::string("\x84\0\0", 3) + size +
           std::string(static_cast<std::size_t>(size), 'c') + flac;
  };
  EXPECT_EQ(ContentOf(in_flac(10)), ContentOf(in_flac(90)));
  const auto in_asf = [&](char header) {
    return "\x30\x26\xB2\x75" + std::string(12, 'g') + header + std::string(7, '\0') +
           std::string(static_cast<std::size_t>(header) - 24, 'h') + flac;
  };
  EXPECT_EQ(ContentOf(in_asf(40)), ContentOf(in_asf(100)));
  const std::string loud = Noise(1'000'000, 3);
  EXPECT_EQ(ContentOf(Ogg(2, loud)), ContentOf(Ogg(5, loud))) << "later pages got other numbers";
}

TEST(SoundContent, IsAnotherWhereTheSoundDiffersAtItsBeginningMiddleEndOrLength) {
  const std::string sound = "\xFF\xFB" + Noise(1'000'000);
  const std::string wanted = ContentOf(sound);
  for (const std::size_t at : {std::size_t{100}, std::size_t{500'000}, sound.size() - 1}) {
    std::string other = sound;
    other[at] = static_cast<char>(other[at] + 1);
    EXPECT_NE(ContentOf(other), wanted) << at;
  }
  EXPECT_NE(ContentOf(sound + "x"), wanted);
  EXPECT_NE(ContentOf(Ogg(2, sound)), ContentOf(Ogg(2, Noise(1'000'002, 9))));
}

TEST(SoundContent, IsToldOfAnyBytes) {
  const std::string heads[] = {Id3(100),           "fLaC", "OggS", "\x30\x26\xB2\x75", "....ftyp",
                               "RIFF....WAVEdata", "TAG",  ""};
  for (const std::string& head : heads) {
    for (std::size_t size = 0; size < 200; size += 3) {
      std::string file = head + Noise(size, static_cast<unsigned>(size));
      EXPECT_EQ(ContentOf(file).size(), 16U) << head << size;
      EXPECT_EQ(ContentOf(file + std::string(40, '\xFF')).size(), 16U) << head << size;
    }
  }
}

}  // namespace
}  // namespace platform::sidestore
