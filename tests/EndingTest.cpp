// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later

// How the whole program ends when it is not its user who closes the window: by signals, with a window that
// stands still, without its display. The program runs in a process of its own, at emulated boxes of this
// one.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <QComboBox>
#include <QTest>
#include <QTimer>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "platform/usb/testing/EmulatedK8061.h"
#include "platform/usb/testing/EmulatedK8062.h"
#include "program/Run.h"
#include "ui/forms/frmMain.h"

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using platform::usb::testing::EmulatedK8061;
using platform::usb::testing::EmulatedK8062;
using platform::usb::testing::K8062Decoder;
using SteadyClock = std::chrono::steady_clock;

constexpr const char* kEvening = "--evening";
constexpr const char* kJournal = "tlv.night";
constexpr EmulatedK8061::Lamps kDark{0, {}};
constexpr const char* kGo = "go";  ///< a file: the lamp is lit, the end may come

/// What befalls the program, in the same moment in which a setting was changed.
struct End {
  const char* name;
  std::vector<int> signals;
  bool window_stands_still = false;
  bool display_goes = false;
};

const End kEnds[] = {{"terminate", {SIGTERM}},
                     {"hangup", {SIGHUP}},
                     {"interrupt", {SIGINT}},
                     {"three_signals", {SIGTERM, SIGINT, SIGTERM}},
                     {"standing_window", {SIGTERM}, true},
                     {"lost_display", {}, false, true}};

const End& EndOf(const std::string& name) {
  for (const End& end : kEnds) {
    if (end.name == name) return end;
  }
  std::abort();
}

// --- in the program's process

void ChangeASettingAndEnd(ui::frmMain& window, const End& end) {
  QTest::keyClick(window.findChild<QComboBox*>(QStringLiteral("CrossfaderCurve")), Qt::Key_Down);
  for (const int number : end.signals) kill(getpid(), number);
  while (end.window_stands_still) pause();
}

void LightLamps(ui::frmMain& window) {
  const auto find = [&window](const char* name) { return window.findChild<QWidget*>(QLatin1String(name)); };
  for (const char* button : {"Page4", "K8062"}) QTest::mouseClick(find(button), Qt::LeftButton);
  find("Fader3")->setFocus();
  QTest::keyClicks(find("Fader3"), QStringLiteral("123"));
  for (const char* button : {"Page5", "UseK8000", "btnOn3", "Page6"}) {
    QTest::mouseClick(find(button), Qt::LeftButton);
  }
}

int Evening(int argc, char* argv[], const fs::path& home, const End& end) {
  QApplication application(argc, argv);
  QTimer timer;
  return program::Run(application, home, [&](ui::frmMain& window) {
    LightLamps(window);
    QObject::connect(&timer, &QTimer::timeout, [&] {
      if (!fs::exists(home / kGo)) return;
      timer.stop();
      ChangeASettingAndEnd(window, end);
    });
    timer.start(5);
  });
}

// --- in the test's process

/// A program that is started with some of the environment changed, and killed with this object.
class Process {
 public:
  Process(std::vector<std::string> arguments, const std::vector<std::string>& environment) {
    std::vector<char*> list;
    for (std::string& argument : arguments) list.push_back(argument.data());
    list.push_back(nullptr);
    id_ = fork();
    if (id_ != 0) return;
    for (const std::string& variable : environment) putenv(strdup(variable.c_str()));
    execvp(list[0], list.data());
    _exit(127);
  }
  ~Process() {
    kill(id_, SIGKILL);
    if (!status_) waitpid(id_, nullptr, 0);
  }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  void Kill() const { kill(id_, SIGKILL); }
  /// What it exited with, -1 when a signal ended it, -2 when it still runs after the time.
  int ExitWithin(std::chrono::milliseconds time) {
    const auto until = SteadyClock::now() + time;
    int status = 0;
    while (waitpid(id_, &status, WNOHANG) == 0) {
      if (SteadyClock::now() > until) return -2;
      std::this_thread::sleep_for(10ms);
    }
    status_ = status;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  pid_t id_ = -1;
  std::optional<int> status_;
};

/// A display that nobody sees.
class Display {
 public:
  explicit Display(const fs::path& folder)
      : server_(
            {"sh", "-c", "exec Xvfb -displayfd 1 -nolisten tcp > " + (folder / "display").string() + " 2>&1"},
            {"LD_PRELOAD="}),
        told_(folder / "display") {}
  /// Empty when it does not come up.
  std::string Number() {
    for (const auto until = SteadyClock::now() + 20s; SteadyClock::now() < until;) {
      std::ifstream file(told_);
      std::string line;
      if (std::getline(file, line) && !file.eof()) return ":" + line;
      std::this_thread::sleep_for(10ms);
    }
    return {};
  }
  void Go() const { server_.Kill(); }

 private:
  Process server_;
  fs::path told_;
};

bool Comes(const fs::path& file) {
  for (const auto until = SteadyClock::now() + 20s; SteadyClock::now() < until;) {
    if (fs::exists(file)) return true;
    std::this_thread::sleep_for(10ms);
  }
  return false;
}

class Ending : public ::testing::TestWithParam<End> {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "ending-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    home_ = pattern;
    bus_.SetPace(2ms);
    bus_.Plug();
    board_.Plug();
  }
  void TearDown() override { fs::remove_all(home_); }

  std::string Settings() const {
    std::ostringstream text;
    text << std::ifstream(home_ / "djtolven" / "settings.ini").rdbuf();
    return text.str();
  }

  fs::path home_;
  EmulatedK8062 bus_;
  EmulatedK8061 board_{bus_, 3, 0};
};

TEST_P(Ending, LeavesTheLampsDarkAndTheNewestSettingOnTheDisk) {
  const End& end = GetParam();
  std::vector<std::string> environment = {"XDG_CONFIG_HOME=" + home_.string(),
                                          "PULSE_SERVER=unix:" + (home_ / "no-server").string()};
  std::unique_ptr<Display> display;
  if (end.display_goes) {
    display = std::make_unique<Display>(home_);
    const std::string number = display->Number();
    ASSERT_NE(number, "") << "Xvfb is needed";
    environment.insert(environment.end(), {"QT_QPA_PLATFORM=xcb", "DISPLAY=" + number});
  }
  Process program({"/proc/self/exe", kEvening, home_.string(), end.name}, environment);
  ASSERT_TRUE(bus_.WaitUntil([](const K8062Decoder& box) { return box.Shown()[2] == 123; }));
  ASSERT_TRUE(board_.Shows({1 << 2, {}})) << "a lamp of the light organ";
  ASSERT_EQ(Settings().find("CrossfaderCurve"), std::string::npos);
  ASSERT_TRUE(Comes(home_ / kJournal));
  std::ofstream(home_ / kGo) << "go";
  if (display != nullptr) {
    std::this_thread::sleep_for(50ms);
    display->Go();
  }
  const int wanted = end.display_goes ? EXIT_FAILURE : end.window_stands_still ? 128 + SIGTERM : 0;
  EXPECT_EQ(program.ExitWithin(20s), wanted);
  EXPECT_EQ(bus_.Box().Shown(), K8062Decoder::Frame());
  EXPECT_TRUE(board_.WaitUntil([](const auto& lamps, const auto& /*counts*/) { return lamps == kDark; }));
  EXPECT_NE(Settings().find("CrossfaderCurve=1"), std::string::npos) << Settings();
  EXPECT_EQ(fs::exists(home_ / kJournal), end.display_goes) << "what nobody wished to end goes on";
}

INSTANTIATE_TEST_SUITE_P(Ends, Ending, ::testing::ValuesIn(kEnds),
                         [](const auto& end) { return std::string(end.param.name); });

}  // namespace

int main(int argc, char* argv[]) {
  if (argc == 4 && std::string(argv[1]) == kEvening) return Evening(argc, argv, argv[2], EndOf(argv[3]));
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
