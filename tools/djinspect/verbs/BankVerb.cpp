// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <nlohmann/json.hpp>
#include <ostream>
#include <span>

#include "lightorgan/Memories.h"
#include "lightorgan/PatternBank.h"
#include "lightorgan/Snapshot.h"
#include "support/Text.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

using lightorgan::IoBoardSize;
using lightorgan::Side;
using lightorgan::StepTable;

struct Wish {
  Side side = Side::Io;
  IoBoardSize size = IoBoardSize::One;
  int number = 0;
  int ticks = 0;
};

std::optional<int> Count(const Arguments& arguments, std::string_view option) {
  constexpr std::int64_t kMost = 1'000'000;
  const auto given = arguments.options.find(option);
  if (given == arguments.options.end()) return 0;
  const auto value = support::ParseInteger(given->second);
  if (!value || *value < 0 || *value > kMost) return std::nullopt;
  return static_cast<int>(*value);
}

std::optional<Wish> WishOf(const Arguments& arguments) {
  const auto outputs = Count(arguments, "--outputs");
  const auto number = Count(arguments, "--number");
  const auto ticks = Count(arguments, "--play");
  const auto side = arguments.options.find("--side");
  const bool dac = side != arguments.options.end() && side->second == "dac";
  if (side != arguments.options.end() && !dac && side->second != "io") return std::nullopt;
  if (!outputs || (*outputs != 8 && *outputs != 16) || !number || !ticks) return std::nullopt;
  return Wish{dac ? Side::Dac : Side::Io, *outputs == 16 ? IoBoardSize::Two : IoBoardSize::One, *number,
              *ticks};
}

std::vector<std::int32_t> Values(const StepTable& table, int row) {
  std::vector<std::int32_t> values;
  for (int output = 1; output <= table.Outputs(); ++output) values.push_back(table.At(row, output));
  return values;
}

/// A speed that the memory does not hold is null.
nlohmann::ordered_json SideJson(std::string_view mode, const std::optional<int>& speed,
                                std::span<const int> levels) {
  nlohmann::ordered_json side{{"mode", mode}, {"speed", nullptr}, {"levels", levels}};
  if (speed) side["speed"] = *speed;
  return side;
}

}  // namespace

ExitCode InspectMemories(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  const auto outputs = Count(arguments, "--outputs");
  if (!outputs || (*outputs != 8 && *outputs != 16)) return ExitCode::WrongUse;
  const auto text = WholeFile(arguments.words[0], err);
  if (!text) return ExitCode::NothingRead;
  const auto lamps = static_cast<std::size_t>(*outputs);
  auto memories = nlohmann::ordered_json::array();
  for (const lightorgan::Memory& memory : lightorgan::ParseMemories(*text)) {
    nlohmann::ordered_json shown{{"name", ReadableText(memory.name)}};
    if (const auto state = lightorgan::ParseSnapshot(memory.text)) {
      shown["io"] = SideJson(lightorgan::SnapshotWord(state->io), state->io_speed,
                             std::span(state->io_levels).first(lamps));
      if (state->dac) {
        shown["dac"] = SideJson(lightorgan::SnapshotWord(*state->dac), state->dac_speed,
                                std::span(state->dac_levels).first(lamps));
      }
    }
    memories.push_back(std::move(shown));
  }
  out << memories.dump() << '\n';
  return ExitCode::Read;
}

ExitCode InspectBank(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  const auto wish = WishOf(arguments);
  if (!wish) return ExitCode::WrongUse;
  const auto text = WholeFile(arguments.words[0], err);
  if (!text) return ExitCode::NothingRead;
  const StepTable table = lightorgan::LoadBank(*text, wish->side, wish->number, wish->size);
  nlohmann::ordered_json bank;
  bank["rows"] = nlohmann::ordered_json::array();
  for (int row = 1; row <= table.Rows(); ++row) bank["rows"].push_back(Values(table, row));
  bank["played"] = nlohmann::ordered_json::array();
  for (int tick = 0, row = 0; tick < wish->ticks && table.Rows() > 0; ++tick) {
    row = lightorgan::NextRow(wish->side, row, table.Rows());
    if (wish->side == Side::Dac) {
      bank["played"].push_back(Values(table, row));
    } else {
      bank["played"].push_back(
          {lightorgan::PatternByte(table, row, 0), lightorgan::PatternByte(table, row, 1)});
    }
  }
  out << bank.dump() << '\n';
  return ExitCode::Read;
}

}  // namespace tools::djinspect
