// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/SingersPanel.h"

#include <QCompleter>
#include <QHeaderView>
#include <QInputDialog>
#include <QLineEdit>
#include <QMenu>
#include <QSignalBlocker>
#include <QStringListModel>
#include <QTableWidget>
#include <algorithm>
#include <cmath>

#include "app/lists/ListStation.h"
#include "app/singers/SingerStation.h"
#include "support/Settings.h"
#include "ui/forms/Dialogs.h"
#include "ui/forms/Menus.h"
#include "ui/models/NextUpText.h"
#include "ui/strings/Decode.h"
#include "ui/strings/SingerWords.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/QuietCombo.h"

namespace ui {
namespace {

using app::SingerStation;
using singers::SingerId;
using singers::Wish;

enum SingerColumn { kTurn, kSinger, kSong, kWait };

constexpr int kMostWishKey = 12;
constexpr int kMostWishTempo = 20;

QString Signed(int value) {
  if (value == 0) return QStringLiteral("0");
  return (value > 0 ? QStringLiteral("+%1") : QStringLiteral("−%1")).arg(std::abs(value));
}

/// What guests wrote is no mark-up.
QString PlainTip(const QString& text) {
  return text.isEmpty() ? text : QStringLiteral("<qt>%1</qt>").arg(text.toHtmlEscaped());
}

}  // namespace

SingersPanel::SingersPanel(SingerStation& host, app::ListStation& lists, support::Settings& settings,
                           const Look& look, QWidget* parent)
    : Surface(look.skin.panel, parent), host_(host), lists_(lists), settings_(settings), look_(look) {
  const auto& say = look.say;
  Name(*this, "SingersPanel", say(SingerWord::Singers));
  auto nobody = std::make_shared<app::SingersSheet>();
  nobody->turns = std::make_shared<const singers::Rotation>();
  sheet_ = std::move(nobody);
  table_ = MakeTable(
      "SingersList", say.Of(SingerWord::Singers),
      {QString(), say(SingerWord::SingerHead), say(SingerWord::SongHead), say(SingerWord::WaitHead)}, kSong);
  // A long name leaves the song its half.
  table_->horizontalHeader()->setSectionResizeMode(kSinger, QHeaderView::Stretch);
  table_->horizontalHeaderItem(kWait)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
  connect(table_, &QTableWidget::itemSelectionChanged, this, [this] {
    const auto chosen = table_->selectionModel()->selectedRows();
    const int row = chosen.isEmpty() ? -1 : chosen.front().row();
    chosen_ =
        row < 0 || row >= static_cast<int>(lines_.size()) ? Line{} : lines_[static_cast<std::size_t>(row)];
    ShowChosen();
  });
  auto* menu = new ContextMenu(*table_, QStringLiteral("SingersMenu"));
  menu->AddFirst([this](QMenu& shown, const QPoint&) { FillMenu(shown); });
  below_ = new QWidget;
  rule_text_ = Sentence("RuleText", look.skin.dim);
  FillColumn(*below_, 0, 0.3, {rule_text_, {table_, 1}, MakeWish(), MakeActs(), MakeBreaks()});
  FillColumn(*this, 0.4, 0.3, {MakeHead(), {below_, 1}});
  below_->hide();
  ShowChosen();
}

QHBoxLayout* SingersPanel::MakeHead() {
  const auto& say = look_.say;
  name_ = new QLineEdit;
  Name(*name_, "NewSinger", say(SingerWord::NewSinger), say.Tip(SingerWord::NewSinger));
  name_->setPlaceholderText(say(SingerWord::NewSinger));
  name_->setMaxLength(static_cast<int>(singers::Rotation::kMostName));
  known_ = new QStringListModel(this);
  auto* completer = new QCompleter(known_, this);
  completer->setCaseSensitivity(Qt::CaseInsensitive);
  name_->setCompleter(completer);
  connect(name_, &QLineEdit::returnPressed, this, &SingersPanel::AddTyped);
  rule_ =
      Choice(look_.skin, "SingersRule", say.Of(SingerWord::RuleOfTurns),
             {say(SingerWord::TurnsRule), say(SingerWord::NewcomersRule), say(SingerWord::FirstComeRule)}, 0,
             [this](int rule) { host_.Do(&SingerStation::SetRule, static_cast<singers::Rule>(rule)); });
  next_ = PlainButton("NextSinger", say.Of(SingerWord::NextSinger), [this] { Next(); });
  SetHeightEm(*next_, kListHeadEms);
  return Row(0.4, {{name_, 1}, rule_, next_});
}

QHBoxLayout* SingersPanel::MakeBreaks() {
  constexpr int kPauses[] = {0, 3, 5, 10, 20, 30, 60};
  const auto& say = look_.say;
  auto* on = Lamp("BreakMusic", say.Of(SingerWord::BreakMusic),
                  [this](bool wanted) { lists_.SetBreakMusic(wanted); });
  on->setChecked(settings_.Flag("Karaoke", "BreakMusic"));
  QStringList pauses;
  for (const int seconds : kPauses) pauses << say(SingerWord::BreakSeconds).arg(seconds);
  // The nearest of them stands for one that was set elsewhere.
  const int stored = settings_.Number("Karaoke", "BreakPause");
  const auto* at = std::lower_bound(std::begin(kPauses), std::end(kPauses) - 1, stored);
  auto* pause = Choice(look_.skin, "BreakPause", say.Of(SingerWord::BreakPause), pauses,
                       static_cast<int>(at - std::begin(kPauses)),
                       [this, kPauses](int row) { lists_.SetBreakPause(kPauses[row]); });
  auto* screen = Lamp("SingersOnScreen", say.Of(SingerWord::OnScreen),
                      [this](bool shown) { settings_.SetFlag("Karaoke", "NextUp", shown); });
  screen->setChecked(settings_.Flag("Karaoke", "NextUp"));
  return Row(0.3, {screen, Part::Room(), on, pause});
}

QPushButton* SingersPanel::Act(const char* name, const Texts& texts, std::function<void(SingerId)> act) {
  auto* button = PlainButton(name, texts, [this, act = std::move(act)] {
    if (chosen_.id != 0) act(chosen_.id);
  });
  needs_choice_.push_back(button);
  return button;
}

QHBoxLayout* SingersPanel::MakeActs() {
  hold_ = Lamp("HoldSinger", look_.say.Of(SingerWord::HoldSinger), [this](bool held) {
    if (chosen_.id != 0) host_.Do(&SingerStation::Hold, chosen_.id, held);
  });
  needs_choice_.push_back(hold_);
  bring_back_ = PlainButton("BringSingerBack", look_.say.Of(SingerWord::BringSingerBack),
                            [this] { host_.Do(&SingerStation::BringBack); });
  const auto& say = look_.say;
  const auto arrow = [&](const char* sign, SingerWord word) {
    return Texts{QString::fromUtf8(sign), say(word), say.Tip(word)};
  };
  auto* up = Act("SingerUp", arrow("▲", SingerWord::SingerUp), [this](SingerId id) { MoveBy(id, -1); });
  auto* down = Act("SingerDown", arrow("▼", SingerWord::SingerDown), [this](SingerId id) { MoveBy(id, 1); });
  skip_ = Act("SkipSinger", say.Of(SingerWord::SkipSinger),
              [this](SingerId id) { host_.Do(&SingerStation::Skip, id); });
  auto* remove = Act("RemoveSinger", say.Of(SingerWord::RemoveSinger),
                     [this](SingerId id) { host_.Do(&SingerStation::Remove, id); });
  moves_ = {up, down};
  return Row(0.3, {up, down, hold_, skip_, Part::Room(), remove, bring_back_});
}

QHBoxLayout* SingersPanel::MakeWish() {
  const auto& say = look_.say;
  wish_ = Sentence("ChosenWish", look_.skin.dim);
  QStringList keys, tempos;
  for (int key = -kMostWishKey; key <= kMostWishKey; ++key)
    keys << say(SingerWord::WishKey) + QStringLiteral(" ") + Signed(key);
  for (int tempo = -kMostWishTempo; tempo <= kMostWishTempo; ++tempo)
    tempos << Signed(tempo) + QStringLiteral(" %");
  key_ = Choice(look_.skin, "WishKey", say.Of(SingerWord::WishKey), keys, kMostWishKey,
                [this](int row) { Change([row](Wish& how) { how.semitones = row - kMostWishKey; }); });
  tempo_ = Choice(look_.skin, "WishTempo", say.Of(SingerWord::WishTempo), tempos, kMostWishTempo,
                  [this](int row) { Change([row](Wish& how) { how.percent = row - kMostWishTempo; }); });
  partner_ = new QLineEdit;
  Name(*partner_, "WishPartner", say(SingerWord::WishPartner), say.Tip(SingerWord::WishPartner));
  partner_->setPlaceholderText(say(SingerWord::WishPartner));
  partner_->setMaxLength(static_cast<int>(singers::Rotation::kMostName));
  connect(partner_, &QLineEdit::editingFinished, this, &SingersPanel::ChangePartner);
  return Row(0.3, {{wish_, 3}, key_, tempo_, {partner_, 2}});
}

void SingersPanel::TakeName() {
  name_->setFocus();
  name_->selectAll();
}

void SingersPanel::Next() {
  ChangePartner();  // the key leaves no field
  host_.Do(&SingerStation::Next);
}

bool SingersPanel::IsEmpty() const {
  return sheet_->turns->Singers().empty();
}

SingerId SingersPanel::ChosenSinger() const {
  return chosen_.id;
}

QString SingersPanel::NameOf(SingerId id) const {
  const singers::Singer* singer = sheet_->turns->Find(id);
  return singer == nullptr ? QString() : Decode(singer->name);
}

const singers::Singer* SingersPanel::Chosen() const {
  return sheet_->turns->Find(chosen_.id);
}

void SingersPanel::AddTyped() {
  const std::string typed = name_->text().toUtf8().toStdString();
  const std::string clean = singers::CleanName(typed);
  if (clean.empty()) return;
  // Who brings another song is there already.
  if (const singers::Singer* known = sheet_->turns->FindName(clean)) {
    Choose({known->id, false});
  } else {
    host_.Do(&SingerStation::Add, typed);
  }
  // The completer fills the field again behind this signal.
  QMetaObject::invokeMethod(name_, &QLineEdit::clear, Qt::QueuedConnection);
}

void SingersPanel::Show(const app::SingersView& view) {
  if (names_ != view.names) {
    names_ = view.names;
    QStringList names;
    for (const std::string& name : *names_) names << Decode(name);
    known_->setStringList(names);
  }
  if (sheet_ == view.sheet) return;
  const bool was_empty = IsEmpty();
  sheet_ = view.sheet;
  Fill();
  if (was_empty == IsEmpty()) return;
  below_->setVisible(!IsEmpty());
  Q_EMIT Filled(!IsEmpty());
}

void SingersPanel::Fill() {
  const singers::Rotation& now = *sheet_->turns;
  singers::Rotation then = now;
  then.End();
  std::vector<Line> lines;
  if (now.OnStage()) lines.push_back({now.OnStage()->singer, true});
  for (const singers::Singer& singer : then.Singers()) lines.push_back({singer.id, false});
  {
    const QSignalBlocker quiet(table_);
    table_->setRowCount(static_cast<int>(lines.size()));
    lines_ = std::move(lines);
    for (std::size_t row = 0; row < lines_.size(); ++row) FillRow(static_cast<int>(row), lines_[row]);
  }
  rule_->setCurrentIndex(static_cast<int>(now.Rule()));
  constexpr SingerWord kRules[] = {SingerWord::TurnsText, SingerWord::NewcomersText,
                                   SingerWord::FirstComeText};
  rule_text_->Show(look_.say(kRules[static_cast<int>(now.Rule())]));
  next_->setEnabled(now.Next() != nullptr);
  bring_back_->setEnabled(now.Removed() > 0);
  // Whoever was added is the one that the next song is for.
  const bool came = sheet_->newest != newest_ && now.Find(sheet_->newest) != nullptr;
  if (came) newest_ = sheet_->newest;
  Choose(came ? Line{newest_, false} : chosen_);
}

void SingersPanel::Choose(const Line& wanted) {
  auto found = std::find(lines_.begin(), lines_.end(), wanted);
  if (found == lines_.end()) found = std::find(lines_.begin(), lines_.end(), Line{wanted.id, false});
  {
    const QSignalBlocker quiet(table_);
    if (found == lines_.end()) {
      table_->clearSelection();
      table_->setCurrentCell(-1, -1);
    } else {
      table_->selectRow(static_cast<int>(found - lines_.begin()));
    }
  }
  chosen_ = found == lines_.end() ? Line{} : *found;
  ShowChosen();
}

QString SingersPanel::SongText(const Wish& wish) const {
  const auto& say = look_.say;
  QString text = WishTitle(wish);
  if (wish.semitones != 0) text = say(SingerWord::InKey).arg(text, Signed(wish.semitones));
  return wish.partner.empty() ? text : say(SingerWord::WithPartner).arg(text, Decode(wish.partner));
}

QString SingersPanel::WaitText(SingerId id) const {
  const auto wait = std::find_if(sheet_->waits.begin(), sheet_->waits.end(),
                                 [&](const singers::Wait& each) { return each.singer == id; });
  if (wait == sheet_->waits.end()) return {};
  const auto least = wait->least.count() / 60, most = (wait->most.count() + 59) / 60;
  return look_.say(SingerWord::WaitRange).arg(least).arg(std::max(most, least + 1));
}

void SingersPanel::FillRow(int row, const Line& line) {
  const auto& say = look_.say;
  const singers::Singer* singer = sheet_->turns->Find(line.id);
  QString turn, song, wait, name = singer == nullptr ? QString() : Decode(singer->name);
  if (line.on_stage) {
    turn = QStringLiteral("▶");
    song = SongText(sheet_->turns->OnStage()->wish);
    wait = say(SingerWord::NowOn);
  } else if (singer != nullptr) {
    const auto here = sheet_->turns->OnStage() ? row : row + 1;
    turn = QString::number(here);
    const auto more = static_cast<int>(singer->wishes.size()) - 1;
    song = singer->wishes.empty() ? say(SingerWord::NoWish) : SongText(singer->wishes.front());
    if (more > 0) song = say(SingerWord::MoreWishes).arg(song, QString::number(more));
    wait = singer->held ? say(SingerWord::IsAway) : WaitText(line.id);
  }
  const bool dim = !line.on_stage && (singer == nullptr || singer->held || singer->wishes.empty());
  const QString cells[] = {turn, name, song, wait};
  for (int column = kTurn; column <= kWait; ++column) {
    QTableWidgetItem* item = table_->item(row, column);
    if (item == nullptr) table_->setItem(row, column, item = new QTableWidgetItem);
    item->setText(cells[column]);
    item->setToolTip(column == kSong ? PlainTip(cells[column]) : QString());
    item->setForeground(dim ? look_.skin.dim : line.on_stage ? look_.skin.Deck(1) : look_.skin.text);
    if (column == kWait) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    QFont font = table_->font();
    font.setBold(line.on_stage || column == kSinger);
    item->setFont(font);
  }
}

void SingersPanel::ShowChosen() {
  const singers::Singer* singer = Chosen();
  const auto& turn = sheet_->turns->OnStage();
  const bool sings = turn && singer != nullptr && turn->singer == singer->id;
  for (QPushButton* button : needs_choice_) button->setEnabled(singer != nullptr);
  // Who sings has a turn to come, which nobody skips or moves by mistake for this one.
  for (QPushButton* button : moves_) button->setEnabled(singer != nullptr && !sings);
  skip_->setEnabled(singer != nullptr && sings == chosen_.on_stage);
  hold_->setChecked(singer != nullptr && singer->held);
  const Wish* wish = singer == nullptr || singer->wishes.empty() ? nullptr : &singer->wishes.front();
  wish_->Show(wish != nullptr     ? WishTitle(*wish)
              : singer != nullptr ? look_.say(SingerWord::AskForWish).arg(Decode(singer->name))
                                  : look_.say(SingerWord::NobodyChosen));
  for (QWidget* control :
       {static_cast<QWidget*>(key_), static_cast<QWidget*>(tempo_), static_cast<QWidget*>(partner_)})
    control->setVisible(wish != nullptr);
  key_->setCurrentIndex(kMostWishKey + (wish == nullptr ? 0 : wish->semitones));
  const int tempo = wish == nullptr ? 0 : static_cast<int>(std::lround(wish->percent));
  tempo_->setCurrentIndex(kMostWishTempo + std::clamp(tempo, -kMostWishTempo, kMostWishTempo));
  // A hand that writes keeps its field, as long as it is about the same wish.
  const bool same = wish != nullptr && shown_.id == chosen_.id && shown_.wish.filename == wish->filename &&
                    shown_.wish.ticket == wish->ticket;
  const bool partner_is_another = !same || shown_.wish.partner != wish->partner;
  shown_ = {chosen_.id, wish == nullptr ? Wish() : *wish};
  if (same && (partner_->hasFocus() || !partner_is_another)) return;
  const QSignalBlocker quiet(partner_);
  partner_->setText(Decode(shown_.wish.partner));
}

/// The wish that is shown, with something else about it.
void SingersPanel::Change(const std::function<void(Wish&)>& change) {
  if (shown_.wish.filename.empty()) return;
  Wish how = shown_.wish;
  change(how);
  if (how == shown_.wish) return;
  host_.Do(&SingerStation::Change, shown_.id, shown_.wish, how);
  shown_.wish = how;  // a hand is faster than the sheet
}

void SingersPanel::ChangePartner() {
  const std::string partner = singers::CleanName(partner_->text().toUtf8().toStdString());
  Change([&](Wish& how) { how.partner = partner; });
}

/// Before the one that stands there now.
void SingersPanel::MoveBy(SingerId id, int steps) {
  const auto here = std::find(lines_.begin(), lines_.end(), Line{id, false});
  if (here == lines_.end()) return;
  const auto first =
      std::find_if(lines_.begin(), lines_.end(), [](const Line& line) { return !line.on_stage; });
  const auto place = std::clamp<std::ptrdiff_t>(here - first + steps, 0, lines_.end() - first - 1);
  host_.Do(&SingerStation::Move, id, static_cast<int>(place));
}

void SingersPanel::FillMenu(QMenu& menu) {
  const singers::Singer* singer = Chosen();
  if (singer == nullptr) return;
  const auto& say = look_.say;
  const SingerId id = chosen_.id;
  for (std::size_t i = 0; i < singer->wishes.size(); ++i) {
    const QString title = WishTitle(singer->wishes[i]);
    const Wish wish = singer->wishes[i];
    if (i > 0) {
      AddAct(menu, QStringLiteral("WishFirst%1").arg(i), say(SingerWord::WishFirst).arg(title), {},
             [this, id, wish] { host_.Do(&SingerStation::SingFirst, id, wish); });
    }
    AddAct(menu, QStringLiteral("Withdraw%1").arg(i), say(SingerWord::WithdrawWish).arg(title), {},
           [this, id, wish] { host_.Do(&SingerStation::Withdraw, id, wish); });
  }
  menu.addSeparator();
  AddAct(menu, QStringLiteral("RenameSinger"), say(SingerWord::RenameSinger), {},
         [this, id] { AskForName(id); });
}

void SingersPanel::AskForName(SingerId id) {
  auto* dialog = new QInputDialog(this);
  dialog->setObjectName(QStringLiteral("SingerNameDialog"));
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setLabelText(look_.say(SingerWord::SingerName));
  dialog->setTextValue(NameOf(id));
  connect(dialog, &QInputDialog::textValueSelected, this, [this, id](const QString& name) {
    host_.Do(&SingerStation::Rename, id, name.toUtf8().toStdString());
  });
  ShowDialog(*dialog, *this);
}

}  // namespace ui
