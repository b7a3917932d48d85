// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/ApplyPanel.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <cmath>

#include "app/Collections.h"
#include "ui/forms/BatchBar.h"
#include "ui/forms/Dialogs.h"
#include "ui/forms/FolderList.h"
#include "ui/strings/Decode.h"
#include "ui/strings/ScanWords.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/Kit.h"

namespace ui {
ApplyPanel::ApplyPanel(app::Workstation& workstation, const Look& look, QWidget* parent)
    : QWidget(parent), workstation_(workstation), look_(look) {
  analysis_ = new BatchBar(QStringLiteral("All"), workstation.Collections().Batch(), look);
  FillColumn(*this, 0, 0.6,
             {Heading(look.say(Say::Collection)), MakeFolder(), new FolderList(workstation.Settings(), look),
              MakeScans(), analysis_, Part::Room()});
  ShowFolder(workstation.Settings().Text("Settings", "Directory"));
}

QLayout* ApplyPanel::MakeFolder() {
  folder_ = new QLineEdit;
  Name(*folder_, "Directory", look_.say.Of(Say::Folder));
  auto* browse = PlainButton("BrowseDirectory", look_.say.Of(Say::Browse), [this] { AskForFolder(); });
  return Row(0.6, {Caption(look_.say(Say::Folder), look_.skin.dim), {folder_, 1}, browse});
}

QLayout* ApplyPanel::MakeScans() {
  const auto& say = look_.say;
  auto* music =
      PlainButton("ReindexMusic", say.Of(Say::ReindexMusic), [this] { Scan(app::ApplyMode::ReindexMusic); });
  auto* karaoke = PlainButton("ReindexKaraoke", say.Of(Say::ReindexKaraoke),
                              [this] { Scan(app::ApplyMode::ReindexKaraoke); });
  auto* analyse = PlainButton("AnalyseAll", say.Of(ScanWord::AnalyseAll), [this] {
    workstation_.ApplyButton().Press({app::ApplyMode::AnalyseAll, {}, {}});
  });
  cancel_ = PlainButton("CancelScan", say.Of(Say::CancelScan),
                        [this] { workstation_.Collections().CancelScans(); });
  cancel_->hide();
  progress_ = Sentence("ScanProgress", look_.skin.dim);
  progress_->UseTwoLines();
  return Column(0.6, {Row(0.6, {music, karaoke, Part::Room()}), Row(0.6, {analyse, Part::Room()}),
                      Row(0.6, {cancel_, {progress_, 1}})});
}

std::string ApplyPanel::Folder() const {
  const QString text = folder_->text();
  return text == SystemText(shown_folder_) ? shown_folder_ : QFile::encodeName(text).toStdString();
}

// The default comes with the backslash that data file names have everywhere.
QString ApplyPanel::SystemText(const std::string& folder) const {
  const std::string program = workstation_.SkinFolder().parent_path().string();
  const QString text = Decode(folder);
  if (program.empty() || !folder.starts_with(program + '\\')) return text;
  const qsizetype length = Decode(program).size();
  return text.first(length) + text.sliced(length).replace(QLatin1Char('\\'), QDir::separator());
}

void ApplyPanel::ShowFolder(const std::string& folder) {
  shown_folder_ = folder;
  folder_->setText(SystemText(folder));
}

void ApplyPanel::Scan(app::ApplyMode mode) {
  // The workstation may outlive the panel, which a change of language makes anew.
  workstation_.ApplyButton().Press(
      {mode, Folder(), {}}, [panel = QPointer<ApplyPanel>(this)](const app::Reindex::Outcome& outcome) {
        if (!panel.isNull()) panel->ShowOutcome(outcome);
      });
}

void ApplyPanel::ShowOutcome(const app::Reindex::Outcome& outcome) {
  const auto& say = look_.say;
  QString text = outcome.replaced ? say(Say::ScanFound).arg(outcome.found) : say(Say::ScanChangedNothing);
  if (!outcome.sentence.empty()) text += QLatin1Char(' ') + Decode(outcome.sentence);
  progress_->Show(text);
  Q_EMIT Scanned();
}

void ApplyPanel::Show() {
  analysis_->Show(0);
  const bool scanning = workstation_.Collections().IsScanning();
  if (cancel_->isHidden() == scanning) cancel_->setVisible(scanning);
  if (!scanning) return;
  const app::ScanProgress progress = workstation_.Collections().Scanning();
  if (progress.total == 0) return progress_->Show(look_.say(Say::ScanListing));
  const QString files = look_.say(Say::ScanGoes).arg(progress.done).arg(progress.total);
  if (progress.Rate() < 1) return progress_->Show(files);
  progress_->Show(files + QLatin1Char(' ') +
                  look_.say.Count(ScanWord::ScanRate, std::lround(progress.Rate()))
                      .arg(TimeLeftText(progress.Remaining(), look_.say)));
}

// Not modal: the decks stay in reach while somebody looks for a folder.
void ApplyPanel::AskForFolder() {
  delete dialog_;
  dialog_ = MakeFileDialog(*this, look_, QFileDialog::Directory, Say::ChooseDirectory, Say::DialogChoose);
  dialog_->setObjectName(QStringLiteral("DirectoryDialog"));
  dialog_->setDirectory(folder_->text());
  connect(dialog_, &QFileDialog::fileSelected, this, [this](const QString& name) {
    const std::string folder = QFile::encodeName(name).toStdString();
    if (folder.empty()) return;
    workstation_.ApplyButton().Press({app::ApplyMode::ChooseDirectory, folder, {}});
    ShowFolder(folder);
  });
  ShowDialog(*dialog_, *this);
}

}  // namespace ui
