// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFileDialog>
#include <QPointer>
#include <QWidget>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "app/Workstation.h"
#include "app/lights/DocumentFlow.h"
#include "app/lights/Drafts.h"
#include "support/Clock.h"
#include "ui/strings/EditorWords.h"
#include "ui/widgets/Look.h"

class QHBoxLayout;
class QPushButton;

namespace ui {

/// A window of its own in which a document is made: its buttons, its file dialogs and its questions. None of
/// them blocks another window.
///
/// Law: the document outlives the contents, which a change of language or colours makes anew.
class EditorWindow : public QWidget {
  Q_OBJECT

 public:
  EditorWindow(const char* name, app::Workstation& workstation, const support::Clock& clock);

  /// Makes the contents; points: size of the type.
  void ApplySheet(const Look& look, double points);
  /// Before language or colours go, and by each editor's destructor: its fields tell the document until they
  /// are gone.
  void ClearSheet();
  void BringToFront();
  /// With the main window's frame.
  virtual void ShowFrame() = 0;
  [[nodiscard]] virtual bool Changed() const = 0;
  /// Asks first whether to save what was changed.
  void Leave(std::function<void()> then);
  /// With the main window's frame: what is not saved goes into a draft once a second.
  void KeepDraft();
  /// Takes the place of the document, as one that is not saved; asks first as Leave does.
  void Restore(const app::Drafts::Draft& draft);
  [[nodiscard]] app::DocumentFlow& Flow() { return flow_; }

 Q_SIGNALS:
  void Left();

 protected:
  using Path = std::filesystem::path;

  /// What the dialogs show.
  struct Files {
    Path folder;
    QString filter;
    QString suffix;
    QString suggested;  ///< name of a document that has no file yet
  };
  [[nodiscard]] virtual Files FilesOf() const = 0;
  [[nodiscard]] virtual QWidget* MakeBody() = 0;
  /// Brings everything that is seen to the document.
  virtual void ShowDocument() = 0;
  virtual void Undo() = 0;
  virtual void Redo() = 0;
  [[nodiscard]] virtual bool CanUndo() const = 0;
  [[nodiscard]] virtual bool CanRedo() const = 0;

  [[nodiscard]] virtual app::Drafts::Kind DraftKind() const = 0;
  /// Names the present state; never 0.
  [[nodiscard]] virtual std::uint64_t Stamp() const = 0;
  /// Gives the document's text on a worker.
  [[nodiscard]] virtual std::function<std::string()> DraftText() const = 0;

  // What the flow asks of the document.
  [[nodiscard]] virtual std::string Refusal() const = 0;
  [[nodiscard]] virtual std::string Question() const = 0;
  virtual void Write(const Path& path, std::function<void(bool written)> done) = 0;
  virtual void Read(const Path& path) = 0;
  virtual void ReadDraft(const std::string& text, const Path& path) = 0;
  virtual void Clear() = 0;

  /// The caption's part behind the program's name.
  void ShowTitle(EditorWord form);
  void ShowState();
  void Tell(const QString& text);
  void Ask(const QString& name, const QString& question, const QString& yes, const QString& no,
           std::function<void(bool)> answer);
  /// Left of the buttons that every editor has.
  [[nodiscard]] QHBoxLayout& Bar() { return *bar_; }
  [[nodiscard]] QPushButton* MakeButton(const char* name, EditorWord caption, EditorWord tip,
                                        const char* kind = "plain");
  [[nodiscard]] QFileDialog* MakeDialog(const char* name, EditorWord title, EditorWord accept);
  [[nodiscard]] const Look& Dressed() const { return *look_; }
  [[nodiscard]] QString Word(EditorWord word) const { return look_->say(word); }
  [[nodiscard]] bool IsDressed() const { return body_ != nullptr; }

  void closeEvent(QCloseEvent* event) override;
  /// The document's Undo and Redo go before those of its fields.
  bool eventFilter(QObject* watched, QEvent* event) override;

  app::Workstation& workstation_;
  const support::Clock& clock_;
  Path path_;  ///< of the document; empty when it has none

 private:
  void MakeBar();
  void AskSaveFirst(const std::function<void(app::DocumentFlow::SaveFirst)>& answer);
  void ChooseToOpen(const std::function<void(Path)>& answer);
  void ChooseToSave(const std::function<void(Path)>& answer);

  std::optional<Look> look_;
  app::DocumentFlow flow_;
  QWidget* body_ = nullptr;
  QHBoxLayout* bar_ = nullptr;
  QPushButton* undo_ = nullptr;
  QPushButton* redo_ = nullptr;
  QPointer<QFileDialog> dialog_;
  bool leaving_ = false;
  std::uint64_t drafted_ = 0;  ///< the state that is in the draft; 0: there is none
  std::uint64_t refused_ = 0;  ///< the state that nobody wants; 0: there is none
  support::TimePoint next_draft_{};
};

/// As the file system has it.
[[nodiscard]] std::filesystem::path PathOf(const QString& name);
[[nodiscard]] QString TextOf(const std::filesystem::path& path);

}  // namespace ui
