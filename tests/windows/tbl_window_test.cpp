#include "windows/store/tbl_window.h"

class TblWindowTest : public WindowTest {
 protected:
  void Open_With(int texts, int width = 1200, int height = 900) {
    Open(width, height);
    dbEntries->BeginTrans();
    for (int i = 0; i < texts; ++i) {
      const int x = 10 + 37 * i % (width - 60), y = 10 + 53 * i % (height - 40);
      Append_Entry({"Text", QStringLiteral("Ort %1").arg(i), "Arial", 10, 0, 0, 0, x, y, 0, 0, 0});
    }
    dbEntries->CommitTrans();
    events.TableChanged.Emit();
    events.RedrawWanted.Emit();
    Tbl.EditWarned = true;
    Settle();
  }
  TblWindow& Table() { return window->Table_Window(); }
  TblGrid& Grid() { return Table().Grid(); }
  TblModel& Model() { return Table().Model(); }
  QMdiSubWindow* Frame() { return qobject_cast<QMdiSubWindow*>(Table().parentWidget()); }
  QPoint Cell(int row, int column) {
    const QModelIndex index = Model().index(row, column);
    Grid().scrollTo(index);
    return Grid().visualRect(index).center();
  }
  void Click(int row, int column) {
    QTest::mouseClick(Grid().viewport(), Qt::LeftButton, Qt::NoModifier, Cell(row, column));
    Settle();
  }
};

TEST_F(TblWindowTest, TheTableStandsBelowTheMapUntilF4) {
  Open_With(3);
  ASSERT_TRUE(Frame()->isVisible());
  EXPECT_GE(Frame()->height(), 110);
  const int before = Map.ScaleHeight;
  Choose("mnuDBGridOn");
  EXPECT_FALSE(Frame()->isVisible());
  EXPECT_GT(Map.ScaleHeight, before);
  Choose("mnuDBGridOn");
  EXPECT_EQ(Map.ScaleHeight, before);
  Frame()->close();  // closing is hiding
  Settle();
  EXPECT_TRUE(Map.Maximized && !frmMDI.TblVisible);
  Choose("mnuDBGridOn");
  EXPECT_TRUE(Frame()->isVisible() && !Map.Maximized);
  // Dragged over the edge it is hidden with a message.
  MessageScript messages;
  Frame()->move(40, 40);
  QTest::qWait(250);
  EXPECT_TRUE(frmMDI.TblVisible);
  messages.Expect("über den Rand der Anwendung");
  Frame()->move(Frame()->parentWidget()->width() - 20, 40);
  QTest::qWait(250);
  EXPECT_FALSE(frmMDI.TblVisible);
}

// A click on a row takes its entry in hand and brings it into view; a click on the map moves the grid.
TEST_F(TblWindowTest, MapAndGridShareTheCurrentRow) {
  Open_With(60, 4000, 3000);
  Click(50, column::Eintrag);
  EXPECT_TRUE(Entry_In_Hand());
  EXPECT_EQ(Map.CurBookmark.toLongLong(), Model().Key_Of(50));
  const int x = Window_X(10 + 37 * 49 % 3940), y = Window_Y(10 + 53 * 49 % 2960);
  EXPECT_TRUE(QRect(0, 0, Map.ViewWidth, Map.ViewHeight).contains(x, y)) << x << ' ' << y;
  ASSERT_TRUE(Take_Entry(QString::number(Model().Key_Of(3))));
  Settle();
  EXPECT_EQ(Grid().currentIndex().row(), 3);
  EXPECT_TRUE(Grid().viewport()->rect().contains(Grid().visualRect(Grid().currentIndex()).center()));
  EXPECT_EQ(Grid().currentIndex().column(), column::Eintrag) << "sideways the grid stays";
  // Keys pass over rows; the last one counts.
  QTest::keyClick(&Grid(), Qt::Key_Down);
  Key_On(&Grid(), Qt::Key_Down);
  EXPECT_EQ(Map.CurBookmark.toLongLong(), Model().Key_Of(5));
}

TEST_F(TblWindowTest, TheGridFollowsRowsThatComeGoAndChange) {
  Open_With(30);
  ASSERT_EQ(Model().rowCount(), 31);
  Click(20, column::Xmap);
  Append_Entry({"Text", "Text", {}, 0, 0, 0, 0, 0, 0, 0, 0, 0});
  rsEntries->SetBookmark(QString::number(Model().Key_Of(5)));
  rsEntries->Delete();
  rsEntries->MoveTo(7);
  Set_Field(column::Eintrag, QStringLiteral("anders"));
  events.TableChanged.Emit();
  Settle();
  ASSERT_EQ(Model().rowCount(), 31);
  rsEntries->MoveFirst();
  for (int i = 0; i < 31; ++i, rsEntries->MoveNext()) {
    EXPECT_EQ(Model().Key_Of(i), rsEntries->Key());
    EXPECT_EQ(Model().index(i, column::Eintrag).data().toString(), rsEntries->Text(column::Eintrag)) << i;
  }
  // Closed and loaded once more: nothing of the old table is asked.
  MessageScript messages("unter einem eigenen Namen sichern?", MsgAnswer::No);
  Choose("mnuMapLoad");
  EXPECT_EQ(Model().rowCount(), 31);
  Choose("mnuMapClose");
  EXPECT_EQ(Model().rowCount(), 0);
  EXPECT_FALSE(Frame()->isVisible());
}

TEST_F(TblWindowTest, CellsAreEditedInPlaceAndInTheLineAbove) {
  Open_With(5);
  Tbl.EditWarned = false;
  Click(2, column::Xmap);
  MessageScript messages("Vorsicht!");
  QTest::keyClick(&Grid(), Qt::Key_F2);
  auto* editor = Grid().viewport()->findChild<QLineEdit*>();
  ASSERT_TRUE(editor);
  editor->setText(QStringLiteral("123"));
  Key_On(editor, Qt::Key_Return);
  EXPECT_EQ(Model().index(2, column::Xmap).data().toString(), QStringLiteral("123"));
  EXPECT_EQ(Tbl.Tag, TableTag::Dirty);
  // A text of two lines goes by Text1; Enter takes it, Esc gives it up.
  Click(2, column::Eintrag);
  auto* Text1 = Table().findChild<QPlainTextEdit*>(QStringLiteral("Text1"));
  EXPECT_EQ(Text1->toPlainText(), "Ort 1");
  Text1->setPlainText(QStringLiteral("verworfen"));
  Text1->document()->setModified(true);
  QTest::keyClick(Text1, Qt::Key_Escape);
  EXPECT_EQ(Text1->toPlainText(), "Ort 1");
  Text1->setPlainText(QStringLiteral("oben\nunten"));
  Text1->document()->setModified(true);
  Key_On(Text1, Qt::Key_Return);
  EXPECT_EQ(Model().Text_Of(Model().index(2, column::Eintrag)), "oben\r\nunten");
  // Left without taking it: asked, not lost.
  Text1->setPlainText(QStringLiteral("fast vergessen"));
  Text1->document()->setModified(true);
  messages.Expect("Soll er in die Tabelle übernommen werden?", MsgAnswer::Yes);
  Click(4, column::Eintrag);
  EXPECT_EQ(Model().Text_Of(Model().index(2, column::Eintrag)), "fast vergessen");
  EXPECT_EQ(Text1->toPlainText(), "Ort 3");
  // The header row takes nothing.
  Click(0, column::Eintrag);
  EXPECT_FALSE(Text1->isEnabled());
  QTest::keyClick(&Grid(), Qt::Key_F2);
  EXPECT_FALSE(Grid().viewport()->findChild<QLineEdit*>());
}

TEST_F(TblWindowTest, TheDeleteKeyDeletesTheChosenRows) {
  Open_With(6);
  Click(2, column::ID);
  QTest::mouseClick(Grid().viewport(), Qt::LeftButton, Qt::ShiftModifier, Cell(4, column::ID));
  Settle();
  MessageScript messages("3 Einträge löschen ?", MsgAnswer::Yes);
  Key_On(&Grid(), Qt::Key_Delete);
  EXPECT_EQ(Model().rowCount(), 4);
  EXPECT_EQ(Grid().currentIndex().row(), 2) << "the eye stays where the rows were";
}

TEST_F(TblWindowTest, ColumnsAreAddedHiddenAndRemovedByTheirHeads) {
  Open_With(4);
  EXPECT_FALSE(window->Action("mnuSpaltDelete")->isEnabled());
  Choose_And("mnuSpaltAppend", "txtTitel : Anzahl; optInteger!; comOK!");
  ASSERT_EQ(Model().columnCount(), column::fixedCount + 1);
  EXPECT_EQ(Model().Name_Of(column::fixedCount), "Anzahl");
  EXPECT_EQ(Edit_Cell(Model().Key_Of(2), column::fixedCount, "17"), CellEdit::Written);
  Settle();
  EXPECT_EQ(Model().index(2, column::fixedCount).data().toString(), QStringLiteral("17"));
  const auto head = [this](int section) {
    QHeaderView* header = Grid().horizontalHeader();
    Grid().scrollTo(Model().index(1, section));
    QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier,
                      {header->sectionViewportPosition(section) + 8, header->height() / 2});
    Settle();
  };
  Choose("mnuSpaltHide");
  head(column::Schrift);
  EXPECT_TRUE(Grid().isColumnHidden(column::Schrift));
  Child<QDialog>("FrmSpltHide")->close();
  Settle();
  Choose("mnuSpaltShow");
  EXPECT_FALSE(Grid().isColumnHidden(column::Schrift));
  Choose("mnuSpaltDelete");
  auto* dialog = Child<QDialog>("FrmSpalteDel");
  ASSERT_TRUE(dialog);
  MessageScript messages("Bitte wählen Sie eine Spalte rechts");
  Press(*dialog, "comRemove");
  messages.Expect("Typ:  Diese ausgewählte Spalte wird vom Programm benötigt.");
  head(column::Typ);
  head(column::fixedCount);
  messages.Expect("Folgende Spalte wurde entfernt:");
  Press(*dialog, "comRemove");
  Settle();
  EXPECT_EQ(Model().columnCount(), column::fixedCount);
}

TEST_F(TblWindowTest, NotePadsAreOpenedAndAskedBeforeTheProgramEnds) {
  Open_With(1);
  Choose("mnuTextNew");
  auto* pad = Child<QWidget>("frmNotePad");
  auto* text = Part<QPlainTextEdit>(*pad, "Text1");
  text->insertPlainText(QStringLiteral("Fund"));
  EXPECT_EQ(pad->windowTitle(), "Notiz 1 *");
  MessageScript messages("wurde geändert.", MsgAnswer::Cancel);
  EXPECT_FALSE(window->close());
  EXPECT_TRUE(frmMDI.MapOpen);
  FileDialogScript files{Path("Fund.txt")};
  Choose("mnuTextSave");
  EXPECT_TRUE(QFile::exists(Path("Fund.txt")));
  // The same file again shows the same window.
  Choose("mnuRecentFile", 1);
  EXPECT_EQ(window->findChildren<QWidget*>("frmNotePad").size(), 1);
  Choose("mnuMapClose");
  EXPECT_EQ(Child<QWidget>("frmNotePad"), nullptr);
}
