// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/ApplyPanel.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <cmath>

#include "app/Collections.h"
#include "ui/forms/BatchBar.h"
#include "ui/forms/ColourPanel.h"
#include "ui/forms/Dialogs.h"
#include "ui/forms/FolderList.h"
#include "ui/strings/Decode.h"
#include "ui/strings/ScanWords.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/Kit.h"

namespace ui {
namespace {

struct Option {
  app::ApplyMode mode;
  const char* name;
  int caption;
  int tip;

  template <typename Word>
  constexpr Option(app::ApplyMode what, const char* object, Word captioned, Word tipped)
      : mode(what), name(object), caption(static_cast<int>(captioned)), tip(static_cast<int>(tipped)) {}
};

constexpr Option kOptions[] = {
    {app::ApplyMode::ReindexMusic, "ReindexMusic", Say::ReindexMusic, Say::ReindexMusicTip},
    {app::ApplyMode::ReindexKaraoke, "ReindexKaraoke", Say::ReindexKaraoke, Say::ReindexKaraokeTip},
    {app::ApplyMode::AnalyseAll, "AnalyseAll", ScanWord::AnalyseAll, ScanWord::AnalyseAllTip},
    {app::ApplyMode::ChooseDirectory, "ChooseDirectory", Say::ChooseDirectory, Say::ChooseDirectoryTip},
    {app::ApplyMode::ChannelColours, "KeepColours", Say::KeepColours, Say::KeepColoursTip},
    {app::ApplyMode::Help, "OpenHelp", Say::OpenHelp, Say::OpenHelpTip}};

QPushButton* MakePlain(const QString& name, const QString& caption, const QString& tip) {
  return PlainButton(name, {caption, caption, tip});
}

}  // namespace

ApplyPanel::ApplyPanel(app::Workstation& workstation, const ColourPanel& colours, const Look& look,
                       QWidget* parent)
    : QWidget(parent), workstation_(workstation), colours_(colours), look_(look) {
  auto* options = new QGridLayout;
  SetSpacingEm(*options, 0, 0.2);
  MakeOptions(*options);
  FillColumn(*this, 0, 0.6,
             {Heading(look.say(Say::Collection)), options, MakeFolder(),
              new FolderList(workstation.Settings(), look), MakeButtons(), Part::Room()});
  ShowFolder(workstation.Settings().Text("Settings", "Directory"));
}

void ApplyPanel::MakeOptions(QGridLayout& grid) {
  for (std::size_t i = 0; i < options_.size(); ++i) {
    const Option& option = kOptions[i];
    auto* button = new QRadioButton(look_.say(Say(option.caption)));
    Name(*button, option.name, look_.say(Say(option.caption)), look_.say(Say(option.tip)));
    grid.addWidget(button, static_cast<int>(i), 0);
    options_[i] = button;
  }
  options_[0]->setChecked(true);
}

QHBoxLayout* ApplyPanel::MakeFolder() {
  folder_ = new QLineEdit;
  Name(*folder_, "Directory", look_.say.Of(Say::Folder));
  return Row(0.6, {Caption(look_.say(Say::Folder), look_.skin.dim), {folder_, 1}});
}

QHBoxLayout* ApplyPanel::MakeButtons() {
  const auto& say = look_.say;
  apply_ = MakePlain(QStringLiteral("Apply"), say(Say::Apply), say(Say::ApplyTip));
  connect(apply_, &QPushButton::clicked, this, &ApplyPanel::Apply);
  cancel_ = MakePlain(QStringLiteral("CancelScan"), say(Say::CancelScan), say(Say::CancelScanTip));
  cancel_->hide();
  connect(cancel_, &QPushButton::clicked, this, [this] { workstation_.Collections().CancelScans(); });
  progress_ = new ElidedLabel;
  progress_->UseTwoLines();
  Name(*progress_, "ScanProgress");
  SetTextColour(*progress_, look_.skin.dim);
  return Row(0.6, {apply_, cancel_, {progress_, 1}});
}

app::ApplyMode ApplyPanel::Mode() const {
  for (std::size_t i = 0; i < options_.size(); ++i) {
    if (options_[i]->isChecked()) return kOptions[i].mode;
  }
  return kOptions[0].mode;
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

void ApplyPanel::Apply() {
  const app::ApplyMode mode = Mode();
  if (mode == app::ApplyMode::ChooseDirectory) return AskForFolder();
  // The workstation may outlive the panel, which a change of language makes anew.
  workstation_.ApplyButton().Press(
      {mode, Folder(), colours_.Colours()},
      [panel = QPointer<ApplyPanel>(this)](const app::Reindex::Outcome& outcome) {
        if (!panel.isNull()) panel->ShowOutcome(outcome);
      });
  if (mode == app::ApplyMode::ChannelColours) progress_->Show(look_.say(Say::ColoursKept));
}

void ApplyPanel::ShowOutcome(const app::Reindex::Outcome& outcome) {
  const auto& say = look_.say;
  QString text = outcome.replaced ? say(Say::ScanFound).arg(outcome.found) : say(Say::ScanChangedNothing);
  if (!outcome.sentence.empty()) text += QLatin1Char(' ') + Decode(outcome.sentence);
  progress_->Show(text);
  Q_EMIT Scanned();
}

void ApplyPanel::Show() {
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
