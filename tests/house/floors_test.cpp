#include <gmock/gmock.h>

#include <QDir>
#include <QFile>

#include "include_tree.h"
#include "support/fixture.h"

using namespace Qt::StringLiterals;
using ::testing::Contains;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

Floors House_Floors() {
  QFile file(QStringLiteral(FLURAX_SOURCE_DIR "/docs/architecture.md"));
  if (!file.open(QIODevice::ReadOnly)) return Floors({});
  return Floors::FromDocument(QString::fromUtf8(file.readAll()));
}

const SourceTree& House_Tree() {
  static const SourceTree tree = Read_Source_Tree(QStringLiteral(FLURAX_SOURCE_DIR "/src"));
  return tree;
}

std::string One_A_Line(const std::vector<QString>& texts) {
  std::string all;
  for (const QString& text : texts) all += '\n' + text.toStdString();
  return all;
}

Floors Small_House() { return Floors({{u"ground/*"_s, u"upper/early"_s}, {u"upper/*"_s}, {u"*/frm*"_s, u"main"_s}}); }

}  // namespace

TEST(Floors, IncludesOfTheHouseRunDownwardOnly) {
  const Floors floors = House_Floors();
  ASSERT_FALSE(floors.Empty()) << "docs/architecture.md has lost its list of floors";
  ASSERT_GT(House_Tree().size(), 60U);
  EXPECT_EQ(One_A_Line(Floor_Faults(House_Tree(), floors)), "");
}

TEST(Floors, NoCircleOfIncludes) { EXPECT_EQ(One_A_Line(Include_Circles(House_Tree())), ""); }

// What the list calls a window must be what the build puts into the library of windows, else a file could include
// widgets here and fail to link there, or the other way round.
TEST(Floors, WindowsOfTheListAreWindowsOfTheBuild) {
  const Floors floors = House_Floors();
  for (const QString& name : {u"start/frmMDI.h"_s, u"canvas/map_window.cpp"_s, u"store/tbl_window.h"_s,
                              u"canvas/dlgBMP.cpp"_s, u"start/mdi_window.cpp"_s, u"desktop/services.cpp"_s}) {
    EXPECT_EQ(floors.Of(name), floors.Top()) << name;
  }
  EXPECT_EQ(floors.Of(u"store/table_state.h"_s), floors.Of(u"start/global_state.h"_s));
  EXPECT_LT(*floors.Of(u"store/entry.cpp"_s), *floors.Of(u"start/table_file.cpp"_s));
}

// The walker itself, on made-up trees.

TEST(FloorWalker, SoundTreeHasNoFault) {
  const SourceTree tree = {{u"ground/a.h"_s, u"#pragma once\n#include <QImage>\n#include <vector>\n"_s},
                           {u"upper/b.cpp"_s, u"#include \"ground/a.h\"\n#include \"upper/early.h\"\n"_s},
                           {u"upper/early.h"_s, u"#include \"ground/a.h\"\n"_s},
                           {u"upper/frmB.cpp"_s, u"#include <QWidget>\n#include \"ui_frmB.h\"\n"_s}};
  EXPECT_THAT(Floor_Faults(tree, Small_House()), IsEmpty());
  EXPECT_THAT(Include_Circles(tree), IsEmpty());
}

TEST(FloorWalker, TellsStepsUpwardWithFileAndLine) {
  const SourceTree tree = {{u"ground/a.h"_s, u"#pragma once\n\n  #  include \"upper/b.h\"\n"_s},
                           {u"upper/early.cpp"_s, u"#include \"upper/b.h\"\n"_s},
                           {u"upper/b.h"_s, u"#include \"upper/frmB.h\"\n"_s},
                           {u"upper/frmB.h"_s, u""_s}};
  const auto faults = Floor_Faults(tree, Small_House());
  EXPECT_THAT(faults, SizeIs(3));
  EXPECT_THAT(faults, Contains(u"ground/a.h:3: floor 1 includes \"upper/b.h\" of floor 2"_s));
  EXPECT_THAT(faults, Contains(u"upper/early.cpp:1: floor 1 includes \"upper/b.h\" of floor 2"_s));
  EXPECT_THAT(faults, Contains(u"upper/b.h:1: floor 2 includes \"upper/frmB.h\" of floor 3"_s));
}

TEST(FloorWalker, TellsWidgetsBelowTheWindowsAndFilesWithoutFloor) {
  const SourceTree tree = {{u"ground/a.cpp"_s, u"#include <QMessageBox>\n#include <QtWidgets/QDialog>\n"_s},
                           {u"upper/b.h"_s, u"#include <QPrinter>\n#include <QPainter>\n"_s},
                           {u"cellar/c.h"_s, u""_s}};
  EXPECT_THAT(Floor_Faults(tree, Small_House()), SizeIs(4));
  EXPECT_FALSE(Is_Widget_Header(u"QImage"_s));
}

TEST(FloorWalker, FindsCircles) {
  const SourceTree tree = {{u"ground/a.h"_s, u"#include \"ground/b.h\"\n"_s},
                           {u"ground/b.h"_s, u"#include \"ground/c.h\"\n"_s},
                           {u"ground/c.h"_s, u"#include \"ground/b.h\"\n"_s},
                           {u"ground/d.h"_s, u"#include \"ground/d.h\"\n"_s}};
  const auto circles = Include_Circles(tree);
  EXPECT_THAT(circles, SizeIs(2));
  EXPECT_THAT(circles, Contains(u"ground/b.h -> ground/c.h -> ground/b.h"_s));
}
