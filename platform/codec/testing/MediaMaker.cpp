// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/testing/MediaMaker.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>

#include "platform/codec/FfmpegEncoderFactory.h"

namespace platform::codec::testing {
namespace {

/// Test media that cannot be made is a broken test machine: say so and stop.
void Require(bool done, const std::string& what) {
  if (done) return;
  std::fprintf(stderr, "MediaMaker: %s\n", what.c_str());
  std::abort();
}

std::filesystem::path NewFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "djtolven-media-XXXXXX").string();
  Require(mkdtemp(pattern.data()) != nullptr, "cannot make " + pattern);
  return pattern;
}

template <typename Number>
void Put(std::string& bytes, Number number) {
  char raw[sizeof(Number)];
  std::memcpy(raw, &number, sizeof raw);  // WAV is little endian, as every machine this runs on
  bytes.append(raw, sizeof raw);
}

}  // namespace

MediaMaker::MediaMaker() : folder_(NewFolder()) {}

MediaMaker::~MediaMaker() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

std::string MediaMaker::PathOf(std::string_view name) const {
  return folder_.string() + "/" + std::string(name);
}

std::string MediaMaker::Write(std::string_view name, const Sound& sound, int bit_rate) const {
  const std::string path = PathOf(name);
  auto opened = FfmpegEncoderFactory().Open(path, {sound.sample_rate, sound.channels, bit_rate});
  Require(opened.Ok(), opened ? "" : opened.Failure().text);
  const auto written = opened.Value()->Write(sound.samples);
  Require(written.Ok(), written ? "" : written.Failure().text);
  const auto finished = opened.Value()->Finish();
  Require(finished.Ok(), finished ? "" : finished.Failure().text);
  return path;
}

std::string MediaMaker::WriteBytes(std::string_view name, std::string_view bytes) const {
  const std::string path = PathOf(name);
  std::ofstream file(path, std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  Require(!file.fail(), "cannot write " + path);
  return path;
}

std::string MediaMaker::BytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  Require(!file.fail(), "cannot read " + path);
  return bytes.str();
}

std::string MediaMaker::Empty(std::string_view name) const {
  return WriteBytes(name, "");
}

std::string MediaMaker::Random(std::string_view name, std::size_t bytes) const {
  return WriteBytes(name, JunkBytes(bytes));
}

std::string MediaMaker::Text(std::string_view name) const {
  std::string text;
  while (text.size() < 20'000) text += "Shopping: bread, cheese, two bottles of milk, new strings.\r\n";
  return WriteBytes(name, text);
}

std::string MediaMaker::CutAt(const std::string& whole, std::string_view name, double part) const {
  const std::string bytes = BytesOf(whole);
  return WriteBytes(name, std::string_view(bytes).substr(
                              0, static_cast<std::size_t>(static_cast<double>(bytes.size()) * part)));
}

std::string MediaMaker::FirstBytes(const std::string& whole, std::string_view name, std::size_t bytes) const {
  return WriteBytes(name, BytesOf(whole).substr(0, bytes));
}

std::string MediaMaker::DamagedMiddle(const std::string& whole, std::string_view name) const {
  std::string bytes = BytesOf(whole);
  const std::size_t tenth = bytes.size() / 10;
  bytes.replace(bytes.size() / 2, tenth, JunkBytes(tenth));
  return WriteBytes(name, bytes);
}

std::string MediaMaker::JunkInFront(const std::string& whole, std::string_view name,
                                    std::size_t bytes) const {
  return WriteBytes(name, JunkBytes(bytes) + BytesOf(whole));
}

std::string MediaMaker::Renamed(const std::string& whole, std::string_view name) const {
  return WriteBytes(name, BytesOf(whole));
}

std::string FloatWavBytes(const std::vector<float>& samples, int sample_rate) {
  constexpr std::uint16_t kFloatCode = 3, kChannels = 1, kBits = 32, kFrameBytes = 4;
  const auto rate = static_cast<std::uint32_t>(sample_rate);
  const auto data_bytes = static_cast<std::uint32_t>(samples.size() * kFrameBytes);
  std::string bytes = "RIFF";
  Put(bytes, data_bytes + 36);
  bytes += "WAVEfmt ";
  Put(bytes, std::uint32_t{16});
  Put(bytes, kFloatCode);
  Put(bytes, kChannels);
  Put(bytes, rate);
  Put(bytes, rate * kFrameBytes);
  Put(bytes, kFrameBytes);
  Put(bytes, kBits);
  bytes += "data";
  Put(bytes, data_bytes);
  for (const float sample : samples) Put(bytes, sample);
  return bytes;
}

std::string JunkBytes(std::size_t count) {
  std::string bytes(count, '\0');
  std::uint32_t state = 12345;
  for (char& byte : bytes) {
    state = state * 1664525U + 1013904223U;
    byte = static_cast<char>(state >> 24);
  }
  return bytes;
}

}  // namespace platform::codec::testing

/// libvorbisenc loses a block of settings where it changes its mind about a bit rate; known to the leak
/// checker of test programs that make media.
extern "C" const char* __lsan_default_suppressions() {
  return "leak:vorbis_encode_setup_init\n";
}
