// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>
#include <nlohmann/json.hpp>
#include <ostream>

#include "dmx/FixtureFile.h"
#include "dmx/FixtureProblems.h"
#include "dmx/ShowFile.h"
#include "dmx/ShowTime.h"
#include "dmx/packs/PackImport.h"
#include "dmx/packs/PackReader.h"
#include "platform/files/DiskFileSaver.h"
#include "platform/fixtures/FixtureReaders.h"
#include "support/Text.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

using Json = nlohmann::ordered_json;

/// The third value of a preset is a text that should be a number.
Json NumberIn(const std::string& text) {
  if (const auto whole = support::ParseInteger(text)) return *whole;
  const auto real = support::ParseReal(text);
  if (real && std::isfinite(*real)) return *real;
  return support::LeadingInteger(text);
}

Json PresetsOf(const dmx::FixtureChannel& channel) {
  auto list = Json::array();
  for (const dmx::presets& preset : channel.presets) {
    list.push_back({{"effect", static_cast<int>(preset.Effect)},
                    {"picture", preset.picture},
                    {"name", ReadableText(preset.name)},
                    {"start", preset.StartLevel},
                    {"end", preset.EndLevel},
                    {"third", NumberIn(preset.third)}});
  }
  return list;
}

Json FixtureTree(const dmx::Fixture& fixture) {
  Json tree{{"name", ReadableText(fixture.name)},
            {"type", static_cast<int>(fixture.type)},
            {"tilt", fixture.tilt_angle},
            {"pan", fixture.pan_angle},
            {"beam", fixture.beam_angle},
            {"channels", Json::array()},
            {"problems", dmx::FixtureProblems(fixture)}};
  for (const dmx::FixtureChannel& channel : fixture.channels) {
    tree["channels"].push_back({{"function", static_cast<int>(channel.function)},
                                {"label", ReadableText(channel.label)},
                                {"presets", PresetsOf(channel)}});
  }
  return tree;
}

Json FixturesOf(const dmx::Show& show) {
  auto list = Json::array();
  for (const dmx::DMXfilename& fixture : show.fixtures) {
    list.push_back({{"filename", ReadableText(fixture.Filename)},
                    {"startChannel", fixture.StartChannel},
                    {"numberOf", fixture.NumberOf}});
  }
  return list;
}

Json StepTree(const dmx::SceneStep& step) {
  Json tree{{"fadeTime", ReadableText(step.FadeTime)},
            {"waitTime", ReadableText(step.WaitTime)},
            {"channels", Json::array()}};
  for (const dmx::Sliders& record : step.SceneChannel) {
    tree["channels"].push_back({{"value", record.ChannelValue},
                                {"changed", record.Changed},
                                {"dif", record.Dif},
                                {"prev", record.Prev}});
  }
  return tree;
}

/// Step by step, as a whole show is too much for one tree.
void PrintShow(const dmx::Show& show, std::ostream& out) {
  out << "{\"fixtures\": " << FixturesOf(show).dump() << ",\n \"scenes\": [";
  const char* before_scene = "\n  ";
  for (const dmx::Scene& scene : show.scenes) {
    out << before_scene << "{\"name\": " << Json(ReadableText(scene.SceneName)).dump()
        << ", \"loops\": " << scene.Loops << ", \"length\": \"" << dmx::ShowTimeText(dmx::LengthOf(scene))
        << "\", \"steps\": [";
    const char* before_step = "\n   ";
    for (const dmx::SceneStep& step : scene.Steps) {
      out << before_step << StepTree(step).dump();
      before_step = ",\n   ";
    }
    out << "]}";
    before_scene = ",\n  ";
  }
  out << "]}\n";
}

template <typename Reading>
void PrintRemarks(const Reading& reading, std::ostream& err) {
  for (const std::string& note : reading.notes) err << note << '\n';
  if (reading.ended_early) err << "The file ends early.\n";
}

ExitCode Fail(const support::Error& failure, std::ostream& err) {
  err << failure.text << '\n';
  return ExitCode::NothingRead;
}

ExitCode InspectImport(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  const platform::fixtures::FixtureReaders formats;
  const auto read = dmx::OpenPackFixture(formats, arguments.words[0]);
  if (!read) return Fail(read.Failure(), err);
  const dmx::PackFixture& fixture = read.Value();
  const auto named = arguments.options.find("--mode");
  const auto mode = dmx::FindMode(fixture, named == arguments.options.end() ? "" : named->second);
  if (!mode) return Fail(mode.Failure(), err);
  const auto made = dmx::ImportMode(fixture, mode.Value());
  if (!made) return Fail(made.Failure(), err);
  Json tree{{"maker", ReadableText(fixture.maker)}, {"model", ReadableText(fixture.model)}};
  tree["modes"] = Json::array();
  for (const dmx::PackMode& one : fixture.modes) tree["modes"].push_back(ReadableText(one.name));
  tree["fixture"] = FixtureTree(made.Value().fixture);
  tree["notes"] = Json::array();
  for (const std::string& note : made.Value().notes) tree["notes"].push_back(ReadableText(note));
  out << tree.dump(2) << '\n';
  return ExitCode::Read;
}

}  // namespace

/// A fixture file, and what the editor would find wrong with it; or the one that a mode of somebody else's
/// fixture becomes.
ExitCode InspectFixture(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  if (arguments.Has("--import")) return InspectImport(arguments, out, err);
  if (arguments.Has("--mode")) return ExitCode::WrongUse;
  const auto reading = dmx::OpenFixture(arguments.words[0]);
  if (!reading) {
    err << reading.Failure().text << '\n';
    return ExitCode::NothingRead;
  }
  PrintRemarks(reading.Value(), err);
  out << FixtureTree(reading.Value().fixture).dump(2) << '\n';
  return ExitCode::Read;
}

/// A show file as it stands; nothing is patched. Writes it again where asked to.
ExitCode InspectShow(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  const auto reading = dmx::OpenShow(arguments.words[0]);
  if (!reading) {
    err << reading.Failure().text << '\n';
    return ExitCode::NothingRead;
  }
  PrintRemarks(reading.Value(), err);
  PrintShow(reading.Value().show, out);
  const auto copy = arguments.options.find("--rewrite");
  if (copy == arguments.options.end()) return ExitCode::Read;
  platform::files::DiskFileSaver saver;
  const auto saved = dmx::SaveShow(saver, copy->second, reading.Value().show);
  if (saved) return ExitCode::Read;
  err << saved.Failure().text << '\n';
  return ExitCode::NothingRead;
}

}  // namespace tools::djinspect
