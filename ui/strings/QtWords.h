// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTranslator>

#include "ui/strings/Strings.h"

namespace ui {

/// The words that Qt's own dialogs and menus bring along, in the language of the window.
class QtWords final : public QTranslator {
  Q_OBJECT

 public:
  explicit QtWords(QObject* parent = nullptr) : QTranslator(parent) {}

  void Speak(Strings::Language language) { language_ = language; }
  [[nodiscard]] bool isEmpty() const override { return false; }
  [[nodiscard]] QString translate(const char* context, const char* words, const char* disambiguation,
                                  int number) const override;

 private:
  Strings::Language language_{};
};

}  // namespace ui
