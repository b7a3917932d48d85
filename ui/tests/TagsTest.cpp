// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTableView>
#include <fstream>

#include "app/Language.h"
#include "ui/forms/MessageBox.h"
#include "ui/forms/TagCoverPanel.h"
#include "ui/forms/frmTags.h"
#include "ui/tests/Booth.h"
#include "ui/widgets/ElidedLabel.h"

namespace ui::testing {
namespace {

namespace track = catalogue::track;
using catalogue::TagField;
using catalogue::TagSheet;

/// The tag editor under real events, on the files of the catalogue's four rows.
class TagsTest : public Booth {
 protected:
  TagsTest() {
    for (int row = 1; row <= Music().Rows(); ++row) {
      TagSheet sheet;
      sheet[TagField::Artist] = Music().Cell(row, track::kArtist);
      sheet[TagField::Title] = Music().Cell(row, track::kTitle);
      sheet[TagField::Genre] = "House";
      tag_editor.AddFile(FileOf(row), sheet);
    }
    Open();
  }
  std::string FileOf(int row) { return std::string(Music().Cell(row, track::kFilename)); }
  void Work() {
    for (int i = 0; i < 3; ++i) {
      workers.RunAll();
      Settle();
    }
  }
  /// By the key, on rows from the first to this one.
  void EditRows(int rows) {
    ChooseRow(1);
    auto& grid = Find<QTableView>("Catalogue");
    for (int row = 2; row <= rows; ++row) QTest::keyClick(&grid, Qt::Key_Down, Qt::ShiftModifier);
    Press(Qt::Key_E, Qt::ControlModifier);
    Work();
    form = window->OpenEditors().TagEditor();
    ASSERT_NE(form, nullptr);
  }
  template <class Widget>
  Widget& In(const char* name) {
    auto* widget = form->findChild<Widget*>(QLatin1String(name));
    if (widget == nullptr) throw std::runtime_error(std::string("no widget in the editor named ") + name);
    return *widget;
  }
  void Press(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(&widget, key, modifiers);
    Work();
  }
  using Booth::Press;
  void ClickIn(const char* button) {
    QTest::mouseClick(&In<QPushButton>(button), Qt::LeftButton);
    Work();
  }
  void Type(const char* field, const char* text) {
    auto& edit = In<QLineEdit>(field);
    edit.setFocus();
    edit.selectAll();
    QTest::keyClicks(&edit, QLatin1String(text));
  }
  std::string Preview(int row) {
    auto& model = *In<QTableView>("TagFiles").model();
    return model.index(row, 1).data().toString().toStdString();
  }
  std::string State() { return In<QLabel>("TagState").text().toStdString(); }
  static QByteArray PngBytes() {
    QImage red(8, 8, QImage::Format_ARGB32);
    red.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    red.save(&buffer, "PNG");
    return bytes;
  }
  void DropCover(const std::string& path) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromStdString(path))});
    auto& panel = *form->findChild<TagCoverPanel*>();
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&panel, &enter);
    QDropEvent drop(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&panel, &drop);
    Work();
  }
  frmTags* form = nullptr;
};

TEST_F(TagsTest, WhatIsTypedIsWrittenByCtrlEnterAndTheRowFollows) {
  EditRows(1);
  EXPECT_EQ(In<QLineEdit>("TagArtist").text().toStdString(), "Anna Vogel");
  EXPECT_FALSE(In<QPushButton>("WriteTags").isEnabled());
  Type("TagArtist", "Anna V.");
  EXPECT_TRUE(In<QPushButton>("TagArtistMark").isVisible());
  EXPECT_FALSE(In<QPushButton>("TagTitleMark").isVisible());
  EXPECT_EQ(Music().Cell(1, track::kArtist), "Anna Vogel") << "nothing is written yet";
  Press(In<QLineEdit>("TagArtist"), Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(Music().Cell(1, track::kArtist), "Anna V.");
  EXPECT_EQ(tag_editor.SheetOf("one.mp3")[TagField::Title], "First Light");
  EXPECT_TRUE(State().starts_with("1 file written.")) << State();
  EXPECT_FALSE(In<QPushButton>("TagArtistMark").isVisible());
  Press(In<QLineEdit>("TagArtist"), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Music().Cell(1, track::kArtist), "Anna Vogel");
  EXPECT_EQ(In<QLineEdit>("TagArtist").text().toStdString(), "Anna Vogel");
}

TEST_F(TagsTest, OfManyFilesOnlyWhatIsTouchedIsWritten) {
  EditRows(3);
  EXPECT_EQ(In<QLineEdit>("TagArtist").placeholderText().toStdString(), "differs");
  EXPECT_EQ(In<QComboBox>("TagGenre").currentText().toStdString(), "House");
  Type("TagAlbum", "Party");
  tag_editor.SetProtected("two.ogg");
  ClickIn("WriteTags");
  EXPECT_EQ(Music().Cell(1, track::kAlbum), "Party");
  EXPECT_EQ(Music().Cell(3, track::kArtist), "Carlo");
  EXPECT_NE(Music().Cell(2, track::kAlbum), "Party");
  EXPECT_TRUE(In<QPlainTextEdit>("TagReport").toPlainText().contains(QStringLiteral("protected")));
}

TEST_F(TagsTest, PatternsAndRepairsAreSeenBeforeAnythingIsWritten) {
  EditRows(2);
  Type("FromNamePattern", "%title%");
  EXPECT_EQ(Preview(0), "Title: one");
  ClickIn("FromName");
  ClickIn("CaseUpper");
  EXPECT_EQ(Preview(1), "Artist: THE BELLS · Title: TWO · Genre: HOUSE");
  EXPECT_EQ(tag_editor.Writes(), 0);
  ClickIn("RevertTags");
  EXPECT_EQ(Preview(1), "");
  Type("FindText", "Bells");
  Type("ReplaceText", "Balls");
  ClickIn("ReplaceAll");
  ClickIn("WriteTags");
  EXPECT_EQ(tag_editor.SheetOf("two.ogg")[TagField::Artist], "The Balls");
  EXPECT_EQ(tag_editor.Writes(), 1) << "nothing differs in the other file";
}

TEST_F(TagsTest, FilesAreRenamedAfterAQuestionAndRowsFollow) {
  EditRows(2);
  Type("ToNamePattern", "%title%");
  EXPECT_EQ(Preview(0), "First Light.mp3");
  ClickIn("ToName");
  EXPECT_TRUE(tag_editor.Has("one.mp3")) << "not before it is agreed to";
  ClickIn("RenameBoxYes");
  EXPECT_EQ(Music().Cell(1, track::kFilename), "First Light.mp3");
  EXPECT_EQ(Preview(0), "(stays)");
  EXPECT_TRUE(tag_editor.Has("Second Wind.ogg"));
}

TEST_F(TagsTest, ACoverComesByDropAndClipboardAndWhatIsNoPictureIsRefused) {
  std::filesystem::create_directories(folder);
  const std::string picture = (folder / "picture.txt").string(), none = (folder / "none.png").string();
  std::ofstream(picture, std::ios::binary) << PngBytes().toStdString();
  std::ofstream(none, std::ios::binary) << "no picture";
  EditRows(1);
  DropCover(none);
  EXPECT_TRUE(State().starts_with("This is no picture")) << State();
  EXPECT_FALSE(form->Changed());
  DropCover(picture);
  ClickIn("WriteTags");
  EXPECT_EQ(tag_editor.SheetOf("one.mp3").cover.bytes, PngBytes().toStdString());
  ClickIn("CoverRemove");
  ClickIn("WriteTags");
  EXPECT_EQ(tag_editor.SheetOf("one.mp3").cover.bytes, "");
  QApplication::clipboard()->setImage(QImage::fromData(PngBytes()));
  ClickIn("CoverPaste");
  EXPECT_TRUE(In<QPushButton>("TagCoverMark").isVisible());
  std::filesystem::remove_all(folder);
}

TEST_F(TagsTest, EscapeAsksBeforeWhatIsTypedIsDropped) {
  EditRows(1);
  Type("TagTitle", "x");
  Press(In<QLineEdit>("TagTitle"), Qt::Key_Escape);
  ASSERT_TRUE(form->isVisible());
  ClickIn("DropTagsBoxNo");
  EXPECT_EQ(In<QLineEdit>("TagTitle").text().toStdString(), "x");
  window->close();
  EXPECT_TRUE(window->isVisible()) << "the window that all else closes with asks too";
  ClickIn("DropTagsBoxYes");
  Settle();
  EXPECT_EQ(tag_editor.Writes(), 0);
}

struct TagsCase {
  QSize size;
  int language;
};
class TagsLayoutTest : public TagsTest, public ::testing::WithParamInterface<TagsCase> {};

TEST_P(TagsLayoutTest, NoTextIsCutAndEveryControlHasANameAndATip) {
  window.reset();
  station->Language().Choose(GetParam().language);
  Open(GetParam().size);
  EditRows(4);
  form->resize(GetParam().size * 0.8);
  Type("TagAlbum", "touched");
  Settle();
  EXPECT_EQ(form->size(), GetParam().size * 0.8);
  for (const QWidget* widget : form->findChildren<QWidget*>()) {
    bool part = !widget->isVisible();
    for (const QWidget* up = widget->parentWidget(); up != nullptr && !part; up = up->parentWidget())
      part = qobject_cast<const QAbstractItemView*>(up) != nullptr ||
             qobject_cast<const QComboBox*>(up) != nullptr;
    if (part || widget->objectName() == QLatin1String("TagCover")) continue;
    const std::string name = widget->objectName().toStdString();
    const bool inside = qobject_cast<const QAbstractScrollArea*>(widget->parentWidget()) != nullptr;
    if (widget->focusPolicy() != Qt::NoFocus && !inside) {
      EXPECT_FALSE(name.empty()) << widget->metaObject()->className();
      EXPECT_FALSE(widget->accessibleName().isEmpty()) << name;
      EXPECT_FALSE(widget->toolTip().isEmpty()) << name;
    }
    const auto* label = qobject_cast<const QLabel*>(widget);
    const bool text = label != nullptr || qobject_cast<const QAbstractButton*>(widget) != nullptr;
    if (!text || qobject_cast<const ElidedLabel*>(widget) != nullptr) continue;
    EXPECT_GE(widget->width(), widget->sizeHint().width()) << name;
    EXPECT_GE(widget->height(), widget->sizeHint().height()) << name;
  }
}

INSTANTIATE_TEST_SUITE_P(Sizes, TagsLayoutTest,
                         ::testing::Values(TagsCase{{1366, 768}, 0}, TagsCase{{1366, 768}, 1},
                                           TagsCase{{1366, 768}, 2}, TagsCase{{3840, 2160}, 2}));

}  // namespace
}  // namespace ui::testing
