// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/skins/Skin.h"

#include <QApplication>
#include <QFile>
#include <QFont>
#include <QRegularExpression>
#include <QStyleFactory>
#include <algorithm>
#include <cmath>
#include <utility>

// Outside the namespace, as the macro wants it.
static void InitSkinResources() {
  Q_INIT_RESOURCE(skins);
}

namespace ui {
namespace {

Skin DarkSkin() {
  return {.ground = QColor(0x0b0e12),
          .panel = QColor(0x171c23),
          .raised = QColor(0x28313c),
          .well = QColor(0x0d1116),
          .stripe = QColor(0x1d232b),
          .chosen = QColor(0x2a3f54),
          .line = QColor(0x36414e),
          .text = QColor(0xf2f5f8),
          .dim = QColor(0xa9b6c4),
          .faint = QColor(0x6b7886),
          .warning = QColor(0xffc44d),
          .danger = QColor(0xff6b66),
          .good = QColor(0x3fcf7f),
          .warm = QColor(0xffc44d),
          .on_deck = QColor(0x081018),
          .decks = {QColor(0x38b6ff), QColor(0xff9f38)}};
}

Skin LightSkin() {
  return {.ground = QColor(0xc9d1da),
          .panel = QColor(0xf4f6f9),
          .raised = QColor(0xe1e7ee),
          .well = QColor(0xe4e9ef),
          .stripe = QColor(0xe9edf2),
          .chosen = QColor(0xcbdff1),
          .line = QColor(0x93a0ae),
          .text = QColor(0x10161d),
          .dim = QColor(0x46525f),
          .faint = QColor(0x7d8996),
          .warning = QColor(0x7a4d00),
          .danger = QColor(0xad1f1a),
          .good = QColor(0x1e8a4c),
          .warm = QColor(0xe8a200),
          .on_deck = QColor(0xffffff),
          .decks = {QColor(0x005f9e), QColor(0x97480a)}};
}

/// Lengths in em become pixels here: Qt would take them once and for all from the font a widget began with.
QString InPixels(const QString& sheet, int em) {
  static const QRegularExpression length(QStringLiteral("([0-9.]+)em\\b"));
  QString result;
  qsizetype done = 0;
  for (auto matches = length.globalMatch(sheet); matches.hasNext();) {
    const auto match = matches.next();
    result += sheet.mid(done, match.capturedStart() - done);
    result +=
        QString::number(std::max(1L, std::lround(match.captured(1).toDouble() * em))) + QStringLiteral("px");
    done = match.capturedEnd();
  }
  return result + sheet.mid(done);
}

QString StyleSheet(const Skin& skin, int em) {
  QFile file(QStringLiteral(":/skins/window.qss"));
  if (!file.open(QIODevice::ReadOnly)) return {};
  QString sheet = QString::fromUtf8(file.readAll());
  const std::pair<const char*, QColor> names[] = {
      {"@ground", skin.ground},  {"@panel", skin.panel},    {"@raised", skin.raised},
      {"@well", skin.well},      {"@line", skin.line},      {"@text", skin.text},
      {"@dim", skin.dim},        {"@faint", skin.faint},    {"@chosen", skin.chosen},
      {"@deck1", skin.decks[0]}, {"@deck2", skin.decks[1]}, {"@on_deck", skin.on_deck},
      {"@danger", skin.danger}};
  for (const auto& [name, colour] : names) sheet.replace(QLatin1String(name), colour.name());
  const bool compact = skin.density == Skin::Density::Compact;
  sheet.replace(QLatin1String("@high"), QLatin1String(compact ? "1.3em" : "1.6em"));
  sheet.replace(QLatin1String("@pad"), QLatin1String(compact ? "0.1em" : "0.25em"));
  return InPixels(sheet, em);
}

}  // namespace

QPalette Skin::Palette() const {
  QPalette palette;
  palette.setColor(QPalette::Window, ground);
  palette.setColor(QPalette::WindowText, text);
  palette.setColor(QPalette::Base, panel);
  palette.setColor(QPalette::AlternateBase, well);
  palette.setColor(QPalette::Text, text);
  palette.setColor(QPalette::PlaceholderText, dim);
  palette.setColor(QPalette::Button, raised);
  palette.setColor(QPalette::ButtonText, text);
  palette.setColor(QPalette::ToolTipBase, raised);
  palette.setColor(QPalette::ToolTipText, text);
  palette.setColor(QPalette::Highlight, decks[0]);
  palette.setColor(QPalette::HighlightedText, on_deck);
  palette.setColor(QPalette::Disabled, QPalette::ButtonText, faint);
  palette.setColor(QPalette::Disabled, QPalette::WindowText, faint);
  palette.setColor(QPalette::Disabled, QPalette::Text, faint);
  return palette;
}

const Skin& SkinOf(Skin::Name name, Skin::Density density) {
  static const auto skins = [] {
    std::array<Skin, 4> all{DarkSkin(), LightSkin(), DarkSkin(), LightSkin()};
    for (const std::size_t compact : {2U, 3U}) all[compact].density = Skin::Density::Compact;
    return all;
  }();
  return skins[static_cast<std::size_t>(density) * 2 + static_cast<std::size_t>(name)];
}

void ApplySkin(QApplication& application, const Skin& skin, int em) {
  static const bool prepared = [&application] {
    InitSkinResources();
    application.setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QFont font(QStringList{QStringLiteral("DejaVu Sans"), QStringLiteral("Verdana")});
    font.setPointSizeF(10);
    application.setFont(font);
    return true;
  }();
  static_cast<void>(prepared);
  const QString sheet = StyleSheet(skin, em);
  if (sheet == application.styleSheet()) return;  // every widget would take on its looks anew
  application.setPalette(skin.Palette());
  application.setStyleSheet(sheet);
}

}  // namespace ui
