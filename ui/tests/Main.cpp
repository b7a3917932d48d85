// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QApplication>

#include "ui/tests/Pictures.h"

/// "--pictures FOLDER [LANGUAGE]" runs no test, but writes what tools/compare_pictures.py compares.
int main(int count, char** arguments) {
  ::testing::InitGoogleTest(&count, arguments);
  const QApplication application(count, arguments);
  const QStringList words = QApplication::arguments();
  const auto at = words.indexOf(QStringLiteral("--pictures"));
  if (at >= 0 && at + 1 < words.size()) {
    if (GTEST_FLAG_GET(filter) == "*") GTEST_FLAG_SET(filter, "Pictures.*");
    ui::testing::RegisterPictures(words[at + 1].toStdString(), words.value(at + 2).toInt());
  }
  return RUN_ALL_TESTS();
}
