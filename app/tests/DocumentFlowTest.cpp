// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lights/DocumentFlow.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace app {
namespace {

using SaveFirst = DocumentFlow::SaveFirst;

/// Whoever is asked answers at once, and everything is written down.
class DocumentFlowTest : public ::testing::Test {
 protected:
  std::string Taken() {
    std::string all;
    for (const std::string& event : std::exchange(events, {})) all += (all.empty() ? "" : ", ") + event;
    return all;
  }

  std::vector<std::string> events;
  bool changed = true;
  std::string refusal;
  std::string question;
  bool written = true;
  SaveFirst save_first = SaveFirst::Yes;
  bool mend = false;
  bool chosen = true;
  std::function<void(SaveFirst)> open_question;
  bool answers = true;

  DocumentFlow flow{{[this] { return changed; }, [this] { return refusal; }, [this] { return question; },
                     [this](const DocumentFlow::Path& path, const std::function<void(bool)>& done) {
                       events.push_back("write " + path.string());
                       if (written) changed = false;
                       done(written);
                     },
                     [this](const DocumentFlow::Path& path) { events.push_back("read " + path.string()); },
                     [this] { events.push_back("clear"); }},
                    {[this](const std::function<void(SaveFirst)>& answer) {
                       events.push_back("save first?");
                       open_question = answer;
                       if (answers) answer(save_first);
                     },
                     [this](const std::string& text, const std::function<void(bool)>& answer) {
                       events.push_back("mend " + text + "?");
                       answer(mend);
                     },
                     [this](const std::function<void(DocumentFlow::Path)>& answer) {
                       events.push_back("open which?");
                       if (chosen) answer("in");
                     },
                     [this](const std::function<void(DocumentFlow::Path)>& answer) {
                       events.push_back("save as?");
                       if (chosen) answer("out");
                     },
                     [this](const std::string& text) { events.push_back("tell " + text); }}};
};

TEST_F(DocumentFlowTest, WhatWasNotChangedIsLeftWithoutAQuestion) {
  changed = false;
  flow.New();
  EXPECT_EQ(Taken(), "clear");
  flow.Open();
  EXPECT_EQ(Taken(), "open which?, read in");
  flow.Leave([this] { events.push_back("left"); });
  EXPECT_EQ(Taken(), "left");
}

TEST_F(DocumentFlowTest, YesSavesWithAllItsOwnQuestionsAndGoesOn) {
  question = "errors";
  flow.New();
  EXPECT_EQ(Taken(), "save first?, mend errors?, save as?, write out, clear");
  changed = true;
  flow.Open();
  EXPECT_EQ(Taken(), "save first?, mend errors?, save as?, write out, open which?, read in");
  changed = true;
  flow.Leave([this] { events.push_back("left"); });
  EXPECT_EQ(Taken(), "save first?, mend errors?, save as?, write out, left");
}

TEST_F(DocumentFlowTest, NoThrowsAwayAndCancelStays) {
  save_first = SaveFirst::No;
  flow.New();
  EXPECT_EQ(Taken(), "save first?, clear");
  save_first = SaveFirst::Cancel;
  flow.Open();
  EXPECT_EQ(Taken(), "save first?");
}

TEST_F(DocumentFlowTest, ASaveThatComesToNothingEndsWhateverItWasPartOf) {
  struct {
    const char* happened;
    const char* expected;
    std::function<void()> arrange;
  } const cases[] = {
      {"no name", "save first?, tell no name", [this] { refusal = "no name"; }},
      {"mending", "save first?, mend errors?", [this] { refusal = "", question = "errors", mend = true; }},
      {"dialog closed", "save first?, mend errors?, save as?", [this] { mend = false, chosen = false; }},
      {"disk full", "save first?, mend errors?, save as?, write out",
       [this] { chosen = true, written = false; }}};
  for (const auto& one : cases) {
    one.arrange();
    flow.New();
    EXPECT_EQ(Taken(), one.expected) << one.happened;
  }
}

TEST_F(DocumentFlowTest, AnAnswerToAnOldQuestionDoesNothingOnceANewerCommandWasGiven) {
  answers = false;
  flow.New();
  const auto old_question = open_question;
  flow.Save();
  EXPECT_EQ(Taken(), "save first?, save as?, write out");
  old_question(SaveFirst::No);
  old_question(SaveFirst::Yes);
  EXPECT_EQ(Taken(), "");
}

}  // namespace
}  // namespace app
