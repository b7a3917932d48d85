// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <nlohmann/json.hpp>
#include <ostream>

#include "singers/RotationFile.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

using Json = nlohmann::ordered_json;

Json WishTree(const singers::Wish& wish) {
  return {{"file", ReadableText(wish.filename)},
          {"artist", ReadableText(wish.artist)},
          {"title", ReadableText(wish.title)},
          {"seconds", std::chrono::duration<double>(wish.length).count()},
          {"key", wish.semitones},
          {"tempo", wish.percent},
          {"volume", wish.volume},
          {"partner", ReadableText(wish.partner)}};
}

Json SingerTree(const singers::Singer& singer) {
  Json wishes = Json::array();
  for (const singers::Wish& wish : singer.wishes) wishes.push_back(WishTree(wish));
  return {{"id", singer.id},       {"name", ReadableText(singer.name)},
          {"held", singer.held},   {"sung", singer.sung},
          {"round", singer.round}, {"wishes", std::move(wishes)}};
}

}  // namespace

/// Who sings what after whom, and how long each would wait if the song on stage began now.
ExitCode InspectRotation(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  constexpr const char* kRules[] = {"turns", "newcomers first", "first come"};
  const auto text = WholeFile(arguments.words[0], err);
  if (!text) return ExitCode::NothingRead;
  const auto evening = singers::ParseRotation(*text);
  if (!evening) {
    err << "This is no list of singers, or not a whole one.\n";
    return ExitCode::NothingRead;
  }
  const singers::Rotation& rotation = evening->rotation;
  const auto& turn = rotation.OnStage();
  Json tree{{"date", ReadableText(evening->date)},
            {"rule", kRules[static_cast<int>(rotation.Rule())]},
            {"round", rotation.Round()},
            {"stage", nullptr},
            {"singers", Json::array()},
            {"waits", Json::array()}};
  if (turn) tree["stage"] = {{"id", turn->singer}, {"wish", WishTree(turn->wish)}};
  for (const singers::Singer& singer : rotation.Singers()) tree["singers"].push_back(SingerTree(singer));
  const auto rest = turn ? singers::TimeOf(turn->wish) : std::chrono::microseconds(0);
  for (const singers::Wait& wait : singers::WaitTimes(rotation, rest, evening->pace)) {
    tree["waits"].push_back({{"id", wait.singer},
                             {"before", wait.before},
                             {"least", wait.least.count()},
                             {"most", wait.most.count()}});
  }
  out << tree.dump() << '\n';
  return ExitCode::Read;
}

}  // namespace tools::djinspect
