// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// What holds for every adapter of the window's ports: the window's own and the one that tests use.
#include <QFile>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QWidget>

#include "app/testing/FakeWindow.h"
#include "support/Languages.h"
#include "ui/forms/HelpWindow.h"
#include "ui/forms/MessageBox.h"
#include "ui/forms/MessageBoxes.h"
#include "ui/tests/Booth.h"

namespace ui::testing {
namespace {

using Sentences = std::vector<std::string>;

/// Both ports and what a user sees of them.
class WindowRig {
 public:
  virtual ~WindowRig() = default;
  virtual app::Prompts& Prompts() = 0;
  virtual app::Help& Help() = 0;
  virtual Sentences Seen() = 0;
  virtual std::string PageSeen() = 0;
};

class FakeRig final : public WindowRig {
 public:
  app::Prompts& Prompts() override { return window_; }
  app::Help& Help() override { return window_; }
  Sentences Seen() override { return window_.Sentences(); }
  std::string PageSeen() override { return window_.Opened(); }

 private:
  app::testing::FakeWindow window_;
};

class RealRig final : public WindowRig {
 public:
  RealRig() {
    boxes_.Speak(say_);
    help_.Speak(say_);
  }
  app::Prompts& Prompts() override { return boxes_; }
  app::Help& Help() override { return help_; }
  Sentences Seen() override {
    Sentences seen;
    for (const auto* box : owner_.findChildren<MessageBox*>()) {
      if (box->isVisible()) seen.push_back(box->Text().toStdString());
    }
    return seen;
  }
  std::string PageSeen() override {
    const auto* viewer = owner_.findChild<QTextBrowser*>();
    if (viewer == nullptr || !viewer->isVisible()) return {};
    return (viewer->source().toString() + viewer->toPlainText()).toStdString();
  }

 private:
  const Strings say_{Strings::Language::English};
  QWidget owner_;
  MessageBoxes boxes_{owner_};
  HelpWindow help_{owner_};
};

class WindowPorts : public ::testing::TestWithParam<bool> {
 protected:
  WindowPorts() {
    if (GetParam()) {
      rig_ = std::make_unique<RealRig>();
    } else {
      rig_ = std::make_unique<FakeRig>();
    }
    for (const char* name : {"introduction.htm", "keys.htm"}) {
      QFile page(folder_.filePath(QLatin1String(name)));
      EXPECT_TRUE(page.open(QIODevice::WriteOnly));
      page.write("<p>A page</p>");
    }
  }
  void OpenHelpAt(const std::string& topic) {
    rig_->Help().Open(folder_.filePath(QStringLiteral("manual.chm")).toStdString(), topic);
  }
  [[nodiscard]] bool SeesPage(const std::string& name) {
    return rig_->PageSeen().find(name) != std::string::npos;
  }

  QTemporaryDir folder_;
  std::unique_ptr<WindowRig> rig_;
};
INSTANTIATE_TEST_SUITE_P(FakeAndReal, WindowPorts, ::testing::Bool());

TEST_P(WindowPorts, EverySentenceIsSeenAsItWasToldAndNoneWaitsForTheOtherToBeClosed) {
  EXPECT_EQ(rig_->Seen(), Sentences{});
  const Sentences sentences{"The first one.", "<b>The \"second\"</b> & last one."};
  for (const std::string& sentence : sentences) rig_->Prompts().Tell(sentence);
  EXPECT_EQ(rig_->Seen(), sentences);
}

TEST_P(WindowPorts, TheTopicAskedForLastIsShownAndOneThatIsMissingIsNamed) {
  EXPECT_EQ(rig_->PageSeen(), "");
  for (const char* topic : {"introduction.htm", "keys.htm", "nowhere.htm", "keys.htm"}) {
    OpenHelpAt(topic);
    EXPECT_TRUE(SeesPage(topic)) << topic;
  }
  EXPECT_FALSE(SeesPage("nowhere.htm"));
}

}  // namespace
}  // namespace ui::testing
