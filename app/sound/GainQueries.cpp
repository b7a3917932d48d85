// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/sound/GainQueries.h"

#include <utility>

#include "decks/GainAnalysis.h"
#include "decks/ports/CommandRunner.h"

namespace app {
namespace {

GainAnswer AnswerOf(const decks::clsMp3Info& info) {
  GainAnswer answer{decks::GainText(info), std::nullopt};
  if (info.Analysed()) answer.lacks = support::Decibels{static_cast<float>(info.AlbumdBGain)};
  return answer;
}

}  // namespace

GainQueries::GainQueries(decks::CommandRunner* commands, const support::ProgramFolder& folder,
                         support::Executor& workers, std::shared_ptr<WorkGate> gate,
                         std::shared_ptr<Mailbox> box)
    : commands_(commands), folder_(folder), workers_(workers), gate_(std::move(gate)), box_(std::move(box)) {}

void GainQueries::Ask(const std::string& filename, const Done& done) {
  const decks::clsMp3Info known = known_[filename];
  if (known.Analysed() || commands_ == nullptr) return done(AnswerOf(known));
  workers_.Post([this, gate = gate_, box = box_, filename, done] {
    gate->Pass([&] {
      decks::clsMp3Info info;
      static_cast<void>(decks::GainAnalysis(*commands_, folder_).Query(filename, info));
      box->Post([this, filename, info, done] {
        known_[filename] = info;
        done(AnswerOf(info));
      });
    });
  });
}

}  // namespace app
