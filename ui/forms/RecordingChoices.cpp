// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/RecordingChoices.h"

#include <QFile>
#include <QFileDialog>
#include <QGridLayout>
#include <QLineEdit>
#include <QPointer>
#include <algorithm>
#include <array>

#include "app/recording/RecordingStation.h"
#include "ui/forms/Dialogs.h"
#include "ui/strings/Decode.h"
#include "ui/strings/RecordingWords.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/QuietCombo.h"

namespace ui {
namespace {

using app::RecordingFormat;

struct Written {
  RecordingFormat format;
  int bits;  ///< 0: it has a bit rate
  const char* name;
};
constexpr std::array<Written, 7> kFormats{{{RecordingFormat::Flac, 16, "FLAC"},
                                           {RecordingFormat::Flac, 24, "FLAC"},
                                           {RecordingFormat::Wav, 16, "WAV"},
                                           {RecordingFormat::Wav, 24, "WAV"},
                                           {RecordingFormat::Ogg, 0, "Ogg Vorbis"},
                                           {RecordingFormat::Opus, 0, "Opus"},
                                           {RecordingFormat::Mp3, 0, "MP3"}}};
constexpr std::array<int, 6> kBitRates{96, 128, 160, 192, 256, 320};

int FormatOf(const app::RecordingChoice& choice) {
  const auto found = std::find_if(kFormats.begin(), kFormats.end(), [&](const Written& written) {
    return written.format == choice.format && (written.bits == 0 || written.bits == choice.bits);
  });
  return static_cast<int>(found - kFormats.begin());
}

}  // namespace

RecordingChoices::RecordingChoices(app::RecordingStation& station, const Look& look, QWidget* parent)
    : QWidget(parent), station_(station), look_(look), choice_(station.Choice()) {
  auto* grid = new QGridLayout(this);
  SetSpacingEm(*grid, 0, 0.4);
  AddName(*grid);
  AddFolder(*grid);
  AddFormat(*grid);
  AddFiles(*grid);
  grid->setColumnStretch(1, 1);
  ShowChoice();
}

void RecordingChoices::AddName(QGridLayout& grid) {
  name_ = new QLineEdit(Decode(choice_.name));
  Name(*name_, "RecordingName", look_.say.Of(RecordingWord::FileName));
  connect(name_, &QLineEdit::editingFinished, this, &RecordingChoices::Keep);
  grid.addWidget(Caption(look_.say(RecordingWord::FileName), look_.skin.text), 0, 0);
  grid.addWidget(name_, 0, 1, 1, 2);
}

void RecordingChoices::AddFolder(QGridLayout& grid) {
  folder_ = Sentence("RecordingFolder", look_.skin.dim);
  grid.addWidget(folder_, 1, 0, 1, 2);
  grid.addWidget(
      PlainButton("RecordingChooseFolder", look_.say.Of(RecordingWord::Folder), [this] { AskForFolder(); }),
      1, 2);
}

void RecordingChoices::AddFormat(QGridLayout& grid) {
  const auto& say = look_.say;
  format_ =
      Choice(look_.skin, "RecordingFormat", say.Of(RecordingWord::Format), {}, 0, [this](int) { Keep(); });
  for (const Written& written : kFormats) {
    const QString name = QLatin1String(written.name);
    format_->addItem(written.bits == 0 ? name : say(RecordingWord::Lossless).arg(name).arg(written.bits));
  }
  bit_rate_ =
      Choice(look_.skin, "RecordingBitRate", say.Of(RecordingWord::BitRate), {}, 0, [this](int) { Keep(); });
  for (const int rate : kBitRates) bit_rate_->addItem(say(RecordingWord::KilobitsASecond).arg(rate));
  grid.addWidget(Caption(say(RecordingWord::Format), look_.skin.text), 2, 0);
  grid.addWidget(format_, 2, 1);
  grid.addWidget(bit_rate_, 2, 2);
}

void RecordingChoices::AddFiles(QGridLayout& grid) {
  const auto& say = look_.say;
  files_ = Choice(look_.skin, "RecordingFiles", say.Of(RecordingWord::Files),
                  {say(RecordingWord::OneFile), say(RecordingWord::FileATrack)}, 0, [this](int) { Keep(); });
  grid.addWidget(Caption(say(RecordingWord::Files), look_.skin.text), 3, 0);
  grid.addWidget(files_, 3, 1, 1, 2);
}

void RecordingChoices::Keep() {
  const Written& written = kFormats[static_cast<std::size_t>(std::max(format_->currentIndex(), 0))];
  choice_.format = written.format;
  if (written.bits != 0) choice_.bits = written.bits;
  choice_.bit_rate = kBitRates[static_cast<std::size_t>(std::max(bit_rate_->currentIndex(), 0))];
  choice_.files =
      files_->currentIndex() == 1 ? app::RecordingChoice::Files::OneEach : app::RecordingChoice::Files::One;
  choice_.name = Encode(name_->text(), choice_.name);
  station_.Choose(choice_);
  ShowChoice();
}

void RecordingChoices::ShowChoice() {
  folder_->Show(Decode(choice_.folder));
  format_->setCurrentIndex(FormatOf(choice_));
  const auto* const rate = std::find_if(kBitRates.begin(), kBitRates.end() - 1,
                                        [this](int each) { return each >= choice_.bit_rate; });
  bit_rate_->setCurrentIndex(static_cast<int>(rate - kBitRates.begin()));
  bit_rate_->setEnabled(kFormats[static_cast<std::size_t>(FormatOf(choice_))].bits == 0);
  files_->setCurrentIndex(choice_.files == app::RecordingChoice::Files::OneEach ? 1 : 0);
}

// Not modal: the decks stay in reach while somebody looks for a folder.
void RecordingChoices::AskForFolder() {
  delete dialog_;
  dialog_ = MakeFileDialog(*this, look_, QFileDialog::Directory, look_.say(RecordingWord::ChooseFolder),
                           look_.say(Say::DialogChoose));
  dialog_->setObjectName(QStringLiteral("RecordingFolderDialog"));
  BeginBeside(*dialog_, choice_.folder);
  connect(dialog_, &QObject::destroyed, this, [this] { dialog_ = nullptr; });
  connect(dialog_, &QFileDialog::fileSelected, this, [this](const QString& name) {
    choice_.folder = QFile::encodeName(name).toStdString();
    Keep();
  });
  ShowDialog(*dialog_, *this);
}

}  // namespace ui
