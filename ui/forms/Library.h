// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <vector>

#include "app/lights/EditorFiles.h"
#include "dmx/FixtureEdit.h"
#include "ui/forms/EditorWindow.h"
#include "ui/models/LevelMirror.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;

namespace ui {

class ChannelColumn;
class ChannelStrip;
class FixtureBrowser;
class PresetPanel;

/// The fixture editor: describes one kind of light, channel by channel, and tries it on the lamp itself.
class Library final : public EditorWindow {
  Q_OBJECT

 public:
  Library(app::Workstation& workstation, const support::Clock& clock);
  ~Library() override;

  void ShowFrame() override;
  [[nodiscard]] bool Changed() const override { return edit_.History().Changed(); }

 protected:
  [[nodiscard]] Files FilesOf() const override;
  [[nodiscard]] QWidget* MakeBody() override;
  void ShowDocument() override;
  void Undo() override { edit_.History().Undo(); }
  void Redo() override { edit_.History().Redo(); }
  [[nodiscard]] bool CanUndo() const override { return edit_.History().CanUndo(); }
  [[nodiscard]] bool CanRedo() const override { return edit_.History().CanRedo(); }
  [[nodiscard]] app::Drafts::Kind DraftKind() const override { return app::Drafts::Kind::Fixture; }
  [[nodiscard]] std::uint64_t Stamp() const override { return edit_.History().Stamp(); }
  [[nodiscard]] std::function<std::string()> DraftText() const override;
  [[nodiscard]] std::string Refusal() const override;
  [[nodiscard]] std::string Question() const override;
  void Write(const Path& path, std::function<void(bool)> done) override;
  void Read(const Path& path) override;
  void ReadDraft(const std::string& text, const Path& path) override;
  void Clear() override;
  void changeEvent(QEvent* event) override;

 private:
  enum class Counter { Tilt, Pan, Beam, Channels };
  static constexpr int kCounters = 4;

  QWidget* MakeHead();
  QWidget* MakeCounter(Counter counter);
  void MakeChannels();
  QWidget* MakeProblems();
  void MakeTools();
  void MakeBrowser();
  void MakeList();
  void ReadLibrary();
  /// The fixture that is open.
  void MarkInList();
  void ShowList(std::vector<app::LibraryFixture> fixtures);
  void Step(Counter counter, int by);
  void ToggleSliders();
  void ListenTo(const ChannelColumn& column);
  void ShowColumn(ChannelColumn& column);
  void ShowSliders();
  void ShowLevel(ChannelColumn& column);
  void ChooseChannel(int channel);
  void MoveFader(int channel, int level);
  [[nodiscard]] int DmxChannel(int channel) const { return start_channel_ + channel - 1; }
  void ShowCounters();
  void ShowProblems();
  void Opened(const dmx::FixtureReading& reading, const Path& path);

  dmx::FixtureEdit edit_;
  LevelMirror levels_;
  int start_channel_ = 1;  ///< where on the universe the fixture is tried
  int channel_ = 1;        ///< whose presets are shown
  bool sliders_shown_ = true;

  QListWidget* list_ = nullptr;
  QLineEdit* text1_ = nullptr;
  QComboBox* type_ = nullptr;
  std::array<QLabel*, kCounters> counters_{};
  QPushButton* toggle_ = nullptr;
  QLineEdit* start_ = nullptr;
  FixtureBrowser* browser_ = nullptr;
  ChannelStrip* channels_ = nullptr;
  PresetPanel* presets_ = nullptr;
  QWidget* problem_box_ = nullptr;
  QLabel* problem_head_ = nullptr;
  QPlainTextEdit* problems_ = nullptr;
};

}  // namespace ui
