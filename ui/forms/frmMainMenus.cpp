// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// What rows can be done with, in the menus on them.
#include <QMenu>

#include "app/Decks.h"
#include "ui/forms/KaraokePage.h"
#include "ui/forms/Menus.h"
#include "ui/forms/MusicPage.h"
#include "ui/forms/PlaylistPanel.h"
#include "ui/forms/frmMain.h"
#include "ui/models/DeckChoice.h"
#include "ui/models/KeyMap.h"
#include "ui/strings/ScanWords.h"
#include "ui/strings/TagWords.h"

namespace ui {

void frmMain::GiveRowMenus() {
  const auto give = [this](ContextMenu& menu, TableId table) {
    menu.AddFirst([this, table](QMenu& shown, const QPoint&) { FillRowMenu(shown, table); });
  };
  give(music_->RowMenu(), TableId::Catalogue);
  for (int playlist = 1; playlist <= app::kPlaylists; ++playlist)
    give(PanelOf(PlaylistId(playlist)).RowMenu(), PlaylistId(playlist));
  karaoke_->RowMenu().AddFirst([this](QMenu& menu, const QPoint&) {
    FillSongMenu(menu);
    AddAct(menu, QStringLiteral("SongsEditTags"), (*say_)(TagWord::EditTags), KeyOfTags(), [this] {
      EditTags();
    })->setEnabled(!karaoke_->ChosenRows().empty());
  });
}

void frmMain::FillRowMenu(QMenu& menu, TableId table) {
  const auto& say = *say_;
  Activate(table);
  const TrackRows rows = ChosenRows();
  const bool chosen = !rows.rows.empty();
  for (const int deck : {1, 2}) {
    AddAct(menu, QStringLiteral("RowsToDeck%1").arg(deck), say(Say::LoadOn).arg(deck),
           KeyOf(Command::Load, deck), [this, deck, rows] { Load(deck, rows); })
        ->setEnabled(chosen && MayLoad(Deck(deck)));
  }
  AddAct(menu, QStringLiteral("RowsListen"), say(Say::Listen), KeyOfListening(), [this] {
    ListenToChosen();
  })->setEnabled(chosen);
  menu.addSeparator();
  for (int playlist = 1; playlist <= app::kPlaylists; ++playlist) {
    if (PlaylistId(playlist) == table) continue;
    AddAct(menu, QStringLiteral("RowsToPlaylist%1").arg(playlist), say(Say::PutInto).arg(playlist),
           KeyOfPlaylist(playlist), [this, playlist] { AddChosenTo(playlist); })
        ->setEnabled(chosen);
  }
  AddAct(menu, QStringLiteral("RowsEditTags"), say(TagWord::EditTags), KeyOfTags(), [this] {
    EditTags();
  })->setEnabled(chosen);
  if (table != TableId::Catalogue) return;
  AddAct(menu, QStringLiteral("RowsAnalyse"), say(ScanWord::Analyse), {}, [this] {
    AnalyseChosen();
  })->setEnabled(chosen);
}

}  // namespace ui
