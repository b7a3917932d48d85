// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QAbstractButton>
#include <QAccessible>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLayout>
#include <QScrollBar>
#include <QSlider>
#include <QTableView>
#include <cmath>
#include <map>
#include <set>

#include "app/lights/LightStation.h"
#include "dmx/testing/Rig.h"
#include "ui/tests/Booth.h"
#include "ui/widgets/ChannelFader.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/TransportButton.h"
#include "ui/widgets/WaveOverview.h"

namespace ui::testing {
namespace {

struct Case {
  QSize size;
  int language;
  bool playing;
};

/// Everything in the window at every size, language and page.
class LayoutTest : public Booth, public ::testing::WithParamInterface<Case> {
 protected:
  LayoutTest() {
    station->Language().Choose(GetParam().language);
    AddTrack("long.mp3", "An orchestra with a name that goes on and on and on until the deck ends",
             "A title that is far too long for any deck of the world, and then some more of it");
    Open(GetParam().size);
    if (!GetParam().playing) return;
    station->Outputs().Set(3, {2, 0});
    workers.RunAll();
    Settle();
    LoadAndPlay(1, 5);
    LoadAndPlay(2, 1);
    workers.RunAll();
    Press(Qt::Key_Space, Qt::ControlModifier);
    DropRow(5, "PlayListView1");
    DropRow(1, "PlayListView1");
    DropFiles({QUrl::fromLocalFile(QStringLiteral("/m/letter.txt"))}, "MusicPage");
  }

  template <class Check>
  void OnEveryPage(Check check) {
    for (int page = 0; page < 8; ++page) {
      Press(static_cast<Qt::Key>(Qt::Key_1 + page), Qt::ControlModifier);
      OnWhatIsShown(check);
      if (page == kConsole) OnTheLiveConsole(check);
      if (page != kEffects) continue;
      Click("EffectsMixing");
      OnWhatIsShown(check);
    }
  }
  template <class Check>
  void OnWhatIsShown(Check check) {
    for (QWidget* widget : window->findChildren<QWidget*>()) {
      if (widget->isVisible() && !IsPartOfAControl(*widget)) check(*widget);
    }
  }
  /// Without fixtures, and with four pars and two heads.
  template <class Check>
  void OnTheLiveConsole(Check check) {
    Click("LiveView");
    OnWhatIsShown(check);
    dmx::DMXname rig;
    for (const int start : {1, 4, 7, 10}) dmx::testing::AddRgbPar(rig, start);
    for (const int start : {21, 31}) dmx::testing::AddHead(rig, start);
    station->Lights().TakePatch(rig);
    Settle();
    OnWhatIsShown(check);
    station->Lights().TakePatch({});
    Settle();
    Click("FadersView");
  }
  static constexpr int kConsole = 3;
  static constexpr int kEffects = 5;

  /// Scroll areas and lists are made of parts of their own.
  static bool IsPartOfAControl(const QWidget& widget) {
    for (const QWidget* up = widget.parentWidget(); up != nullptr; up = up->parentWidget()) {
      if (qobject_cast<const QAbstractScrollArea*>(up) != nullptr) return true;
      if (qobject_cast<const QComboBox*>(up) != nullptr) return true;
    }
    return false;
  }
  static bool IsControl(const QWidget& widget) { return widget.focusPolicy() != Qt::NoFocus; }
  static std::string Called(const QWidget& widget) {
    return widget.objectName().toStdString() + " (" + widget.metaObject()->className() + ")";
  }
};

TEST_P(LayoutTest, EveryControlHasANameATipAndAnObjectName) {
  OnEveryPage([](QWidget& widget) {
    if (!IsControl(widget)) return;
    EXPECT_FALSE(widget.objectName().isEmpty()) << Called(widget);
    EXPECT_FALSE(widget.toolTip().isEmpty()) << Called(widget);
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&widget);
    ASSERT_NE(interface, nullptr);
    EXPECT_FALSE(interface->text(QAccessible::Name).isEmpty()) << Called(widget);
  });
}

TEST_P(LayoutTest, NamesOfControlsAreDifferent) {
  Press(Qt::Key_8, Qt::ControlModifier);
  std::map<QString, std::string> names;
  for (QWidget* widget : window->findChildren<QWidget*>()) {
    if (!widget->isVisible() || IsPartOfAControl(*widget) || !IsControl(*widget)) continue;
    const auto [at, fresh] = names.emplace(widget->accessibleName(), Called(*widget));
    EXPECT_TRUE(fresh) << Called(*widget) << " is called like " << at->second;
  }
}

TEST_P(LayoutTest, NothingIsClipped) {
  EXPECT_EQ(window->width(), GetParam().size.width()) << "made wider by what has no room";
  OnEveryPage([this](QWidget& widget) {
    const QRect place(widget.mapTo(window.get(), QPoint(0, 0)), widget.size());
    EXPECT_TRUE(window->rect().contains(place)) << Called(widget);
    const bool elides = qobject_cast<ElidedLabel*>(&widget) != nullptr;
    const auto* label = qobject_cast<QLabel*>(&widget);
    const bool wraps = label != nullptr && label->wordWrap();
    QSize needed = elides ? widget.minimumSizeHint() : widget.sizeHint();
    if (wraps) needed = QSize(0, widget.heightForWidth(widget.width()));
    const bool shows_text = qobject_cast<QLabel*>(&widget) != nullptr ||
                            qobject_cast<QAbstractButton*>(&widget) != nullptr ||
                            qobject_cast<QComboBox*>(&widget) != nullptr;
    if (!shows_text) return;
    EXPECT_GE(widget.width(), needed.width()) << Called(widget);
    EXPECT_GE(widget.height(), needed.height()) << Called(widget);
  });
}

TEST_P(LayoutTest, NothingOverlaps) {
  OnEveryPage([](QWidget& widget) {
    const auto siblings = widget.parentWidget()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
    for (const QWidget* other : siblings) {
      if (other == &widget || !other->isVisible()) continue;
      EXPECT_FALSE(other->geometry().intersects(widget.geometry()))
          << Called(widget) << " and " << Called(*other);
    }
  });
}

TEST_P(LayoutTest, AFingerHitsThePlayingControls) {
  OnEveryPage([](QWidget& widget) {
    const bool transport = qobject_cast<TransportButton*>(&widget) != nullptr;
    const bool slim = qobject_cast<WaveOverview*>(&widget) != nullptr;  // its place is chosen along it
    if (!transport && (slim || qobject_cast<QSlider*>(&widget) == nullptr)) return;
    const bool many =
        qobject_cast<ChannelFader*>(&widget) != nullptr;  // 32 share the smallest window's width
    EXPECT_GE(std::min(widget.width(), widget.height()), many ? 35 : 36) << Called(widget);
  });
}

TEST_P(LayoutTest, AllTextGrowsWithTheWindow) {
  const QSize size = GetParam().size;
  const double points = window->font().pointSizeF();
  if (size.width() < 1366) {
    EXPECT_NEAR(points, 8.5, 0.1) << "still readable";
  } else if (size.height() >= 720) {
    EXPECT_NEAR(points, 10 * std::max(1.0, std::floor(size.height() / 90.0) / 10), 0.1);
  }
  OnEveryPage([&](QWidget& widget) {
    EXPECT_GE(widget.font().pointSizeF(), points - 0.1) << Called(widget);
    EXPECT_LE(widget.font().pointSizeF(), points * 2.6 + 0.1) << Called(widget);
  });
  for (const char* largest : {"deck1Remaining", "deck2Remaining"}) {
    EXPECT_GE(Find<QLabel>(largest).font().pointSizeF(), points * 2) << "readable from a metre away";
  }
  const auto& grid = Find<QTableView>("Catalogue");
  EXPECT_NEAR(grid.font().pointSizeF(), points, 0.1);
  EXPECT_NEAR(grid.horizontalHeader()->font().pointSizeF(), points, 0.1);
  EXPECT_GE(grid.rowHeight(0), grid.fontMetrics().height());
}

TEST_P(LayoutTest, RowsAreAsHighAsTheirLetters) {
  for (const QTableView* table : window->findChildren<QTableView*>()) {
    const int row = table->verticalHeader()->defaultSectionSize();
    EXPECT_GE(row, table->fontMetrics().height()) << table->objectName().toStdString();
    EXPECT_LE(row, 4 * table->fontMetrics().height()) << table->objectName().toStdString();
  }
}

TEST_P(LayoutTest, NoHeadOfAColumnIsCut) {
  for (const char* name : {"Catalogue", "PlayListView1", "PlayListView3", "KaraokeGrid"}) {
    auto& grid = Find<QTableView>(name);
    const int padding = QFontInfo(grid.font()).pixelSize() * 6 / 10;
    for (int column = 0; column < grid.model()->columnCount(); ++column) {
      if (grid.isColumnHidden(column)) continue;
      const QString head = grid.model()->headerData(column, Qt::Horizontal).toString();
      EXPECT_GE(grid.columnWidth(column), grid.fontMetrics().horizontalAdvance(head) + padding)
          << name << ": " << head.toStdString();
    }
  }
  auto& grid = Find<QTableView>("Catalogue");
  EXPECT_GE(grid.columnWidth(3), grid.fontMetrics().horizontalAdvance(QStringLiteral("100:00")));
}

TEST_P(LayoutTest, PlaylistsShowTheirFourColumnsInTheGivenWidths) {
  const int widths[] = {120, 120, 50, 50};
  for (const char* name : {"PlayListView1", "PlayListView2"}) {
    auto& grid = Find<QTableView>(name);
    const double scale = QFontInfo(grid.font()).pixelSize() / (10.0 * 96 / 72);
    ASSERT_EQ(grid.model()->columnCount(), 4);
    for (int column = 0; column < 4; ++column) {
      EXPECT_GE(grid.columnWidth(column), std::lround(widths[column] * scale) - 2) << name;
      EXPECT_LE(grid.columnWidth(column), widths[column] * scale * 1.1) << name;
    }
    EXPECT_GE(grid.columnWidth(2), grid.fontMetrics().horizontalAdvance(QStringLiteral("03:45")) + 6);
    EXPECT_GE(grid.columnWidth(3), grid.fontMetrics().horizontalAdvance(QStringLiteral("128.0")) + 6);
  }
}

TEST_P(LayoutTest, TabReachesEveryControl) {
  std::set<QWidget*> reached;
  QWidget* widget = window->nextInFocusChain();
  for (; widget != window.get(); widget = widget->nextInFocusChain()) reached.insert(widget);
  OnEveryPage([&](QWidget& control) {
    if ((control.focusPolicy() & Qt::TabFocus) == 0) return;
    EXPECT_TRUE(reached.contains(&control)) << Called(control);
  });
}

INSTANTIATE_TEST_SUITE_P(Sizes, LayoutTest,
                         ::testing::Values(Case{{1200, 640}, 0, true}, Case{{1200, 640}, 1, true},
                                           Case{{1200, 640}, 2, true}, Case{{1366, 768}, 0, true},
                                           Case{{1366, 768}, 1, true}, Case{{1366, 768}, 2, true},
                                           Case{{1366, 700}, 0, false}, Case{{1920, 1080}, 0, true},
                                           Case{{3840, 2160}, 0, true}, Case{{3840, 2160}, 1, true}));

}  // namespace
}  // namespace ui::testing
