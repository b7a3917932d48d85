// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/Strings.h"

#include <cassert>
#include <string>
#include <vector>

#include "support/Sentences.h"
#include "ui/strings/Words.h"

namespace ui {

QString Strings::Text(int number) const {
  const char* const text = support::TextOf(Words(), number, language_);
  assert(std::string_view(text).find('{') == std::string_view::npos && "this text takes a number");
  return QString::fromUtf8(text);
}

QString Strings::TipOf(int number) const {
  return Text(number + support::kTips);
}

QString Strings::Counted(int number, std::initializer_list<qint64> counts) const {
  std::vector<std::string> parts;
  for (const qint64 count : counts) parts.push_back(std::to_string(count));
  const char* const text = support::TextOf(Words(), number, language_);
  const std::string chosen = support::ChooseForms(text, [&parts](std::size_t place) {
    return place < parts.size() ? std::string_view(parts[place]) : std::string_view();
  });
  QString filled = QString::fromUtf8(chosen.data(), static_cast<qsizetype>(chosen.size()));
  for (const std::string& part : parts) filled = filled.arg(QString::fromStdString(part));
  return filled;
}

}  // namespace ui
