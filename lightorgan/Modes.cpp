// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "lightorgan/Modes.h"

#include <array>

namespace lightorgan {
namespace {

template <typename Mode>
struct Words {
  Mode mode;
  std::string_view stored;
  std::string_view snapshot;
  std::string_view speed_section;
};

constexpr std::array<Words<IoMode>, 6> kIo{{{IoMode::Mono, "Mono", "MONO", "Mono"},
                                            {IoMode::Stereo, "Stereo", "STEREO", "Stereo"},
                                            {IoMode::Lo, "LO", "USESPECTRUMIO", "IOLO"},
                                            {IoMode::Pp, "PP", "PLAYBANKIO", "Banks"},
                                            {IoMode::Constant, "CONSTANT", "CONSTANTIO", ""},
                                            {IoMode::Beat, "Beat", "BEAT", ""}}};
constexpr std::array<Words<DacMode>, 3> kDac{{{DacMode::Lo, "LO", "USESPECTRUMDAC", "DACLO"},
                                              {DacMode::Pp, "PP", "PLAYBANKDAC", "BanksDAC"},
                                              {DacMode::Constant, "CONSTANT", "CONSTANTDAC", ""}}};

template <typename Table, typename Mode>
const auto& Row(const Table& table, Mode mode) {
  for (const auto& row : table) {
    if (row.mode == mode) return row;
  }
  return table.back();
}

template <typename Table, typename Mode>
Mode Find(const Table& table, std::string_view word, auto member, Mode otherwise) {
  for (const auto& row : table) {
    if (row.*member == word) return row.mode;
  }
  return otherwise;
}

}  // namespace

std::string_view StoredWord(IoMode mode) {
  return Row(kIo, mode).stored;
}
std::string_view StoredWord(DacMode mode) {
  return Row(kDac, mode).stored;
}
IoMode IoModeOf(std::string_view stored_word) {
  return Find(kIo, stored_word, &Words<IoMode>::stored, IoMode::Constant);
}
DacMode DacModeOf(std::string_view stored_word) {
  return Find(kDac, stored_word, &Words<DacMode>::stored, DacMode::Constant);
}
std::string_view SnapshotWord(IoMode mode) {
  return Row(kIo, mode).snapshot;
}
std::string_view SnapshotWord(DacMode mode) {
  return Row(kDac, mode).snapshot;
}
IoMode IoModeOfSnapshot(std::string_view word) {
  return Find(kIo, word, &Words<IoMode>::snapshot, IoMode::Constant);
}
DacMode DacModeOfSnapshot(std::string_view word) {
  return Find(kDac, word, &Words<DacMode>::snapshot, DacMode::Constant);
}
std::string_view SpeedSection(IoMode mode) {
  return Row(kIo, mode).speed_section;
}
std::string_view SpeedSection(DacMode mode) {
  return Row(kDac, mode).speed_section;
}

}  // namespace lightorgan
