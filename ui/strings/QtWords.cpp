// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/QtWords.h"

#include <string_view>

namespace ui {
namespace {

struct Words {
  std::string_view qt;
  const char* dutch;
};

// Ampersands mark the keys of menus. What is not here stays in English.
constexpr Words kWords[] = {{"&Undo", "&Ongedaan maken"},
                            {"&Redo", "&Opnieuw"},
                            {"Cu&t", "K&nippen"},
                            {"&Copy", "&Kopiëren"},
                            {"Copy &Link Location", "&Adres kopiëren"},
                            {"&Paste", "&Plakken"},
                            {"Delete", "Wissen"},
                            {"Select All", "Alles selecteren"},
                            {"Name", "Naam"},
                            {"Size", "Grootte"},
                            {"Type", "Soort"},
                            {"Date Modified", "Gewijzigd"},
                            {"Computer", "Computer"},
                            {"My Computer", "Computer"},
                            {"Back", "Terug"},
                            {"Forward", "Vooruit"},
                            {"Parent Directory", "Bovenliggende map"},
                            {"&Rename", "&Naam wijzigen"},
                            {"&Delete", "&Verwijderen"},
                            {"Show &hidden files", "&Verborgen bestanden tonen"},
                            {"&New Folder", "Nieuwe &map"},
                            {"Remove", "Weghalen"},
                            {"Directories", "Mappen"},
                            {"Directory:", "Map:"},
                            {"Folder", "Map"},
                            {"%1\nFile not found.\nPlease verify the correct file name was given.",
                             "%1\nDit bestand is er niet. Kijk de naam nog eens na."},
                            {"%1\nDirectory not found.\nPlease verify the correct directory name was given.",
                             "%1\nDeze map is er niet. Kijk de naam nog eens na."},
                            {"OK", "OK"},
                            {"&OK", "&OK"},
                            {"Cancel", "Annuleren"},
                            {"&Cancel", "&Annuleren"}};

}  // namespace

QString QtWords::translate(const char* /*context*/, const char* words, const char* /*disambiguation*/,
                           int /*number*/) const {
  if (language_ != Strings::Language::Dutch || words == nullptr) return {};
  for (const Words& row : kWords) {
    if (row.qt == words) return QString::fromUtf8(row.dutch);
  }
  return {};
}

}  // namespace ui
