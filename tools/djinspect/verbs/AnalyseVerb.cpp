// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <nlohmann/json.hpp>
#include <ostream>

#include "decks/AnalysisPass.h"
#include "music/TrackForm.h"
#include "platform/analysis/EburLoudnessMeters.h"
#include "platform/analysis/QmBeatTrackers.h"
#include "tools/djinspect/verbs/DecodingEngine.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

void TellForm(const music::TrackAnalysis& found, nlohmann::ordered_json& told) {
  const music::TrackForm& form = *found.form;
  told["key"] = form.key ? music::NameOf(*form.key) : "";
  told["keyConfidence"] = form.key_confidence;
  told["downbeats"] = nlohmann::json::array();
  if (form.bar) {
    for (const music::Seconds beat : music::DownbeatsOf(*found.grid, *form.bar))
      told["downbeats"].push_back(beat.count());
  }
  told["sections"] = nlohmann::json::array();
  for (const music::Section& section : form.sections) {
    told["sections"].push_back({{"start", section.start.count()},
                                {"end", section.end.count()},
                                {"kind", music::NameOf(section.kind)}});
  }
}

nlohmann::ordered_json AsJson(const music::TrackAnalysis& found, const music::MixPoints& points) {
  nlohmann::ordered_json told = {{"bpm", nullptr},
                                 {"confidence", nullptr},
                                 {"beats", nlohmann::json::array()},
                                 {"loudness", nullptr},
                                 {"truePeak", nullptr}};
  if (!found.grid->Empty()) {
    told["bpm"] = found.grid->Nominal().value;
    told["confidence"] = found.grid->Confidence();
  }
  for (const music::Seconds beat : found.grid->Beats()) told["beats"].push_back(beat.count());
  if (found.loudness.valid) {
    told["loudness"] = found.loudness.integrated.value;
    told["truePeak"] = found.loudness.true_peak.value;
  }
  told["startSeconds"] = points.start_seconds;
  told["endSeconds"] = points.end_seconds;
  TellForm(found, told);
  return told;
}

}  // namespace

ExitCode InspectAnalysis(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  DecodingEngine decoding;
  platform::analysis::EburLoudnessMeters meters;
  platform::analysis::QmBeatTrackers trackers;
  const std::string& file = arguments.words[0];
  if (const auto prepared = decoding.Prepare(file); !prepared) {
    err << prepared.Failure().text << '\n';
    return ExitCode::NothingRead;
  }
  decks::AnalysisPass pass(decoding.engine, decoding.engine, {&meters, &trackers}, file);
  // While the engine holds the decoded file for this stream, the scan need not decode it again.
  const auto stream = decoding.engine.BASS_StreamCreateFile(false, file, 0, 0, decks::kStreamDecode);
  while (pass.Step()) {
  }
  const music::TrackAnalysis found = pass.Finish();
  NoIndicator nobody;
  const auto points = decks::MixPointScan(decoding.engine, decoding.engine).Run({file}, nobody);
  decoding.engine.BASS_StreamFree(stream);
  if (!points) {
    err << decoding.engine.LastError().text << '\n';
    return ExitCode::NothingRead;
  }
  out << AsJson(found, *points).dump(2) << '\n';
  return ExitCode::Read;
}

}  // namespace tools::djinspect
