// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QScrollArea>
#include <QTableView>

#include "ui/forms/DMX.h"
#include "ui/forms/Library.h"
#include "ui/tests/EditorBooth.h"
#include "ui/widgets/ElidedLabel.h"

namespace ui::testing {
namespace {

struct EditorCase {
  QSize size;
  int language;
  Qt::Key editor;
};

/// Both editors with something in them, at every size and in every language.
class EditorLayoutTest : public EditorBooth, public ::testing::WithParamInterface<EditorCase> {
 protected:
  EditorLayoutTest() {
    window.reset();
    station->Language().Choose(GetParam().language);
    Open(GetParam().size);
    Press(GetParam().editor, Qt::ControlModifier | Qt::ShiftModifier);
    const bool library = GetParam().editor == Qt::Key_L;
    editor = library ? static_cast<EditorWindow*>(window->OpenEditors().FixtureEditor())
                     : static_cast<EditorWindow*>(window->OpenEditors().ShowEditor());
    editor->resize(GetParam().size);
    Work();
    if (library) editor->Flow().Open(folder / "DMXlibrary" / "Head.dmx");
    if (!library) {
      for (const char* button : {"PatchFixture", "AddScene", "AddStep"}) Click(button);
    }
    Work();
  }

  /// Those that are seen, without the parts that lists are made of.
  std::vector<QWidget*> Controls() {
    std::vector<QWidget*> controls;
    for (QWidget* widget : editor->findChildren<QWidget*>()) {
      bool part = !widget->isVisible();
      for (const QWidget* up = widget->parentWidget(); up != nullptr && !part; up = up->parentWidget()) {
        part = qobject_cast<const QAbstractItemView*>(up) != nullptr ||
               qobject_cast<const QComboBox*>(up) != nullptr;
      }
      if (!part) controls.push_back(widget);
    }
    return controls;
  }
};

TEST_P(EditorLayoutTest, EveryControlHasANameAndATip) {
  for (const QWidget* widget : Controls()) {
    const bool inside = qobject_cast<const QAbstractScrollArea*>(widget->parentWidget()) != nullptr;
    if (widget->focusPolicy() == Qt::NoFocus || inside) continue;
    EXPECT_FALSE(widget->objectName().isEmpty()) << widget->metaObject()->className();
    EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
    EXPECT_FALSE(widget->toolTip().isEmpty()) << widget->objectName().toStdString();
  }
}

TEST_P(EditorLayoutTest, NoTextIsCut) {
  EXPECT_EQ(editor->size(), GetParam().size);
  for (const QWidget* widget : Controls()) {
    const bool elides = qobject_cast<const ElidedLabel*>(widget) != nullptr;
    const auto* label = qobject_cast<const QLabel*>(widget);
    const bool wraps = label != nullptr && label->wordWrap();
    const bool text = label != nullptr || qobject_cast<const QAbstractButton*>(widget) != nullptr;
    if (!text || elides || wraps) continue;
    EXPECT_GE(widget->width(), widget->sizeHint().width()) << widget->objectName().toStdString();
    EXPECT_GE(widget->height(), widget->sizeHint().height()) << widget->objectName().toStdString();
  }
}

INSTANTIATE_TEST_SUITE_P(
    Editors, EditorLayoutTest,
    ::testing::Values(EditorCase{{1200, 640}, 1, Qt::Key_L}, EditorCase{{1200, 640}, 2, Qt::Key_L},
                      EditorCase{{3840, 2160}, 0, Qt::Key_L}, EditorCase{{1200, 640}, 1, Qt::Key_D},
                      EditorCase{{1200, 640}, 2, Qt::Key_D}, EditorCase{{3840, 2160}, 0, Qt::Key_D}));

}  // namespace
}  // namespace ui::testing
