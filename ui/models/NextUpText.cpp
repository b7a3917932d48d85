// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/NextUpText.h"

#include <filesystem>

#include "ui/strings/Decode.h"
#include "ui/strings/SingerWords.h"

namespace ui {

using SongState = app::SongView::State;

QString WishTitle(const singers::Wish& wish) {
  const QString title = Decode(wish.title);
  if (title.isEmpty()) return Decode(std::filesystem::path(wish.filename).stem().string());
  return wish.artist.empty() ? title : QStringLiteral("%1 – %2").arg(Decode(wish.artist), title);
}

NextUpCard::Form NextUpForm(const app::SingersSheet& sheet, const app::SongView& song) {
  const bool sounds = song.state == SongState::Playing || song.state == SongState::Paused;
  if (sheet.waits.empty()) return NextUpCard::Form::Hidden;
  if (!sounds) return NextUpCard::Form::Card;
  return song.disc.image == nullptr ? NextUpCard::Form::Strip : NextUpCard::Form::Hidden;
}

NextUpCard::Said NextUpSaid(const app::SingersSheet& sheet, NextUpCard::Form form, const Strings& say) {
  NextUpCard::Said said;
  said.head = say(form == NextUpCard::Form::Strip ? SingerWord::NextUpStrip : SingerWord::NextUp);
  if (!sheet.sang_last.empty()) said.thanks = say(SingerWord::ThankYou).arg(Decode(sheet.sang_last));
  if (form == NextUpCard::Form::Hidden) return said;
  for (const singers::Wait& wait : sheet.waits) {
    if (said.next.size() >= NextUpCard::kMost) break;
    const singers::Singer* singer = sheet.turns->Find(wait.singer);
    if (singer == nullptr || singer->wishes.empty()) continue;
    const singers::Wish& wish = singer->wishes.front();
    QString name = Decode(singer->name);
    if (!wish.partner.empty()) name += QStringLiteral(" & ") + Decode(wish.partner);
    said.next.push_back({name, WishTitle(wish)});
  }
  return said;
}

}  // namespace ui
