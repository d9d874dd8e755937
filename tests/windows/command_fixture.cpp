#include "windows/command_fixture.h"

#include <QPointer>

#include "maps/menu_state.h"
#include "plansquares/raster_rows.h"
#include "platform/for_now.h"
#include "platform/text.h"
#include "windows/analysis/frmDistanz.h"
#include "windows/plansquares/frmRaster.h"

namespace {

QString First_Line(const MsgRequest& request) {
  const QString line = request.text.trimmed().section(u'\n', 0, 0);
  return request.title.trimmed() + (line.contains(u'/') ? QString() : u'|' + line);
}

void Serve_Events() {
  QCoreApplication::sendPostedEvents();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  QCoreApplication::processEvents();
}

// Its class, its title and the page it shows.
QString Window_Name(const QWidget& shown) {
  QString name = QString::fromLatin1(shown.metaObject()->className());
  if (!shown.windowTitle().isEmpty()) name += QStringLiteral(" '%1'").arg(shown.windowTitle().trimmed());
  if (const auto* help = qobject_cast<const HelpWindow*>(&shown)) name += u' ' + help->Page();
  if (const auto* raster = qobject_cast<const FrmRaster*>(&shown))
    name += u' ' + raster->findChild<QComboBox*>("cmbSize")->currentText();
  if (qobject_cast<const FrmDistanz*>(&shown))
    for (const auto* mode : shown.findChildren<QRadioButton*>())
      if (mode->isChecked()) name += u' ' + mode->text().remove(u'&');
  return name;
}

EntryRow Make(int typ, const QString& id, const QString& text, int x, int y, int width = 0, int height = 0) {
  const int kind = std::abs(typ) % 100;
  return {id, text, kind <= 4 ? "Arial" : kind >= 20 ? "F 1" : "-", 10, 0, 14, -101, x, y, width, height, typ};
}

}  // namespace

void CommandTest::SetUp() {
  WindowTest::SetUp();
  Install_Clipboard();
  map = Make_Map(QStringLiteral("Karte.bmp"), 500, 400);
  QImage picture(20, 20, QImage::Format_RGB32);
  picture.fill(Qt::red);
  ASSERT_TRUE(picture.save(Path("Foto.bmp")));
  Write_Lines(Path("Karte.cal"), Utm_Calibration({100, 300}, 80));
  QDir().mkpath(Program_File("Hilfe"));
  for (const char* page : {"index.htm", "Einstellungen.htm"})
    Write_Lines(Program_File("Hilfe/") + QLatin1String(page), {QStringLiteral("<p>Seite</p>")});
  ASSERT_TRUE(Open_User_Map(Make_Map(QStringLiteral("Andere.bmp"), 300, 200)));
  ASSERT_TRUE(Open_User_Map(map));
  Make_Entries();
  Close_Map();
  Table_File_Copy(Path("KARTE.MDB"), Path("Anfang.sav"));
  Watch_Services();
  Begin_Anew();
  untouched = Rows();
}

void CommandTest::TearDown() {
  closer.stop();
  Close_Windows();
  Drop_Hand();
  WindowTest::TearDown();
  Set_Printer(printer);
}

void CommandTest::Make_Entries() {
  Append_Entry(Make(0, "Text", "Reh", 40, 10));
  Append_Entry(Make(1, "Text>Flaeche1", "Otter", 40, 40, 60, 90));
  EntryRow sign = Make(0, "Text", "J", 200, 40);
  sign.Schrift = QStringLiteral("Wingdings");
  Append_Entry(sign);
  Append_Entry(Make(5, "Bild", Path("Foto.bmp"), 300, 40));
  Write_Vertices("Linie1", {{40, 200}, {140, 220}, {90, 260}});
  Append_Entry(Make(4, "Linie1", "Bach", 40, 190, 1, 1));
  Write_Vertices("Flaeche1", {{200, 150}, {290, 150}, {240, 240}});
  Append_Entry(Make(4, "Flaeche1", "Moor", 200, 140, 1, 1));
  Append_Entry(Make(20, "Figur1", "Haus", 320, 150, 60, 40));
  Write_Vertices("Figur2", {{400, 150}, {460, 160}, {430, 220}});
  EntryRow free = Make(24, "Figur2", "Zaun", 400, 150, 60, 70);
  Append_Entry(free);
  Append_Entry(Make(11, "Mass", "Mass", 40, 340, 100, 8));
  Append_Entry(Make(-12, "Np", "Nordpfeil", 460, 340));
  Append_Entry(Make(100, "Text", "Biber", 300, 300));
  Append_Entry(Make(120, "Figur3>Linie1", "Stall", 350, 320, 40, 30));
  Append_Entry(Make(220, "Figur4", "Turm", 250, 310, 20, 50));
  Append_Entry(Make(-1, "Text", "Geist", 150, 120));
  Append_Entry(Make(0, "-Text", "Stein", 150, 90));
  RasterDesign raster = Raster_Ini();
  raster.size = QStringLiteral("50");
  ASSERT_TRUE(Take_Raster(raster, Plan({60, 280, 100, 50}, 50)));
  dbEntries->AddColumn(QStringLiteral("MapData"), {QStringLiteral("Finder"), FieldType::Text, 30});
}

void CommandTest::Watch_Services() {
  Set_Message_Handler([this](const MsgRequest& request) {
    seen << QStringLiteral("Frage '%1'").arg(First_Line(request));
    return request.buttons == MsgButtons::Ok || request.buttons == MsgButtons::OkCancel ? MsgAnswer::Ok
                                                                                        : MsgAnswer::Yes;
  });
  Set_File_Dialog_Handler([this](const FileRequest& request) {
    seen << QStringLiteral("Datei '%1'").arg(request.title.trimmed());
    return std::optional<QString>();
  });
  Set_Input_Box_Handler([this](const QString& prompt, const QString&, const QString&) {
    seen << QStringLiteral("Eingabe '%1'").arg(prompt.simplified());
    return std::optional<QString>();
  });
  Set_Shell({[this](const QString& program, const QStringList&, const std::function<void()>&) {
               seen << QStringLiteral("Programm ") + program.section(u'/', -1);
               return true;
             },
             {}});
  PrinterFace face;
  face.ask = [this](const QString& title, int, int) {
    seen << QStringLiteral("Drucken '%1'").arg(title);
    return std::optional<PrintRange>();
  };
  printer = Set_Printer(face);
  events.MapOpened.Connect([this] { ++opened; });
  QObject::connect(&closer, &QTimer::timeout, qApp, [this] { Close_Waiting(); });
  closer.start(1);
}

// A dialog that waits for an answer.
void CommandTest::Close_Waiting() {
  QWidget* dialog = QApplication::activeModalWidget();
  if (looking || !dialog || !dialog->isVisible()) return;
  seen << Window_Name(*dialog);
  Look_At_It(*dialog);
  dialog->close();
}

// Events are served meanwhile: nothing may close it under the eye.
void CommandTest::Look_At_It(QWidget& shown) {
  const ForNow eye(looking, true);
  if (look) look(shown);
}

void CommandTest::Close_Windows() {
  Serve_Events();
  if (QWidget* popup = QApplication::activePopupWidget()) {
    if (const auto* menu = qobject_cast<QMenu*>(popup))
      seen << QStringLiteral("Menü ") + menu->menuAction()->objectName();
    popup->close();
  }
  QStringList names;
  QList<QPointer<QWidget>> shown;  // looking at one or closing it may take others along
  for (QWidget* open : QApplication::topLevelWidgets()) shown << open;
  for (const QPointer<QWidget>& open : shown) {
    if (!open || !open->isVisible() || open == window.get() || open->windowType() == Qt::Popup ||
        open->windowType() == Qt::ToolTip)
      continue;
    names << Window_Name(*open);
    Look_At_It(*open);
    if (open) open->close();
  }
  names.sort();
  seen += names;
  Serve_Events();
}

void CommandTest::Begin_Anew() {
  Close_Windows();
  if (!window->isVisible()) window->show();
  Drop_Hand();
  for (QMdiSubWindow* child : window->findChildren<QMdiSubWindow*>())
    if (qobject_cast<FrmNotePad*>(child->widget())) child->close();
  Serve_Events();
  Close_Map();
  Table_File_Delete(Path("KARTE.MDB"));
  Table_File_Copy(Path("Anfang.sav"), Path("KARTE.MDB"));
  frmMDI.Light = frmMDI.SafeMode = false;
  Write_Template(QStringLiteral("Wiese"), {.VG = 3, .HG = 5, .RA = 2, .TX = 4, .SB = 6});
  Kill_Quietly(Path("Karte neu.cal"));
  ASSERT_TRUE(Open_User_Map(map));
  Tbl.EditWarned = true;
  Map.Maximized = true;
  Table_On_Off(QStringLiteral("On"));
  Undo_Point(QStringLiteral("Rückgängig: Anfang"));
  frmMDI.RasterActive = true;
  Set_Zoom(1 / 0.9);
  Write_Lines(Path("Notiz.txt"), {QStringLiteral("Text der Notiz")});
  dialogHooks.NotePad(Path("Notiz.txt"));
  window->findChild<FrmNotePad*>()->findChild<QPlainTextEdit*>()->selectAll();
  QGuiApplication::clipboard()->setText(QStringLiteral("Ablage"));
  Serve_Events();
  seen.clear();
}

void CommandTest::Begin_Again() {
  Close_Windows();
  if (!frmMDI.MapOpen || !window->isVisible() || Rows() != untouched || MapFile != map) return Begin_Anew();
  Drop_Hand();
  Set_Buttons();
  seen.clear();
}

QString CommandTest::Name_Here() {
  const QString text = rsEntries->Text(column::Eintrag);
  return text.isEmpty() || text.contains(u'/') ? rsEntries->Text(column::ID) : text;
}

QString CommandTest::Key_Of(const QString& name) {
  const KeepCurrentRow keep;
  for (rsEntries->MoveFirst(); !rsEntries->Eof(); rsEntries->MoveNext())
    if (Name_Here() == name) return rsEntries->Bookmark();
  return {};
}

QMap<QString, EntryRow> CommandTest::Rows() {
  QMap<QString, EntryRow> rows;
  if (!rsEntries) return rows;
  For_Each_Entry([&rows] {
    QString name = Name_Here();
    while (rows.contains(name)) name += u'*';
    rows[name] = Read_Entry(*rsEntries);
  });
  return rows;
}

QMap<QString, QString> CommandTest::State() const {
  QMap<QString, QString> state;
  const auto flag = [&state](const char* name, bool on) { state[QString::fromUtf8(name)] = on ? "an" : "aus"; };
  state["Zoom"] = QString::number(std::lround(100 / static_cast<double>(Map.Zoom)));
  state["Zoommenü"] = Map.ZoomMenu;
  flag("hell", frmMDI.Light);
  flag("abgesichert", frmMDI.SafeMode);
  flag("Tabelle", frmMDI.TblVisible);
  flag("Koordinaten", frmMDI.mouseUnit == MouseUnit::Coordinates);
  flag("Raster aktiv", frmMDI.RasterActive);
  flag("Netz", GridVisible && Coord.Grid != gridNone);
  flag("Lupe", Tool_Laid_Over() != nullptr);
  flag("Karte maximiert", Map.Maximized);
  state["Werkzeug"] = Map.Tool;
  state["Karte"] = MapFile.section(u'/', -1);
  state["Spalten verborgen"] = QString::number(Tbl.HiddenColumns.size());
  state["Rückgängig"] = Menu("mnuReset").Enabled ? Menu("mnuReset").Caption : QString();
  state["Ablage"] = QGuiApplication::clipboard()->text().trimmed();
  state["Vorlage"] = Read_Lines(Program_File("Flurax.ini")).filter("FL:").join(u' ');
  state["Notiz"] = Read_Lines(Path("Notiz.txt")).join(u' ');
  flag("gesichert", InfoBar.Panel[2].endsWith(QLatin1String(" gesichert.")));
  for (int slot = 0; slot < NotePads.size(); ++slot)
    if (Is_Open_NotePad(slot)) state["Notizen"] += NotePad_Title(slot) + u' ';
  if (const auto* pad = window->findChild<FrmNotePad*>()) state["Text der Notiz"] = pad->Text().trimmed();
  if (const auto* front = window->findChild<QMdiArea*>()->activeSubWindow())
    state["vorn"] = front->widget()->objectName();
  QString hand;
  if (Entry_In_Hand()) {
    hand = QStringLiteral("neuer Text");
    const KeepCurrentRow keep;
    if (!Map.InHand.isEmpty()) rsEntries->SetBookmark(Map.InHand), hand = Name_Here();
  }
  state["Hand"] = hand;
  state["Status"] = InfoBar.Panel[0].left(60);
  return state;
}

QStringList CommandTest::Changes(const QMap<QString, EntryRow>& before, const QMap<QString, EntryRow>& after) {
  QStringList changes;
  if (!before.isEmpty() && after.isEmpty()) return {QStringLiteral("keine Einträge")};
  for (const QString& name : before.keys())
    if (!after.contains(name)) changes << u'-' + name;
  for (auto now = after.begin(); now != after.end(); ++now) {
    if (!before.contains(now.key())) {
      changes << u'+' + now.key();
      continue;
    }
    const EntryRow was = before[now.key()], is = *now;
    const auto number = [&](const char* column, double from, double to) {
      if (from != to) changes << QStringLiteral("%1.%2=%3").arg(now.key(), QString::fromUtf8(column), Number_Text(to));
    };
    if (was.ID != is.ID) changes << now.key() + QStringLiteral(".ID=") + is.ID;
    number("Größe", was.Groesse, is.Groesse);
    static const std::pair<const char*, int EntryRow::*> numbers[] = {
        {"VG", &EntryRow::VG},     {"HG", &EntryRow::HG},     {"RA", &EntryRow::RA},       {"Typ", &EntryRow::Typ},
        {"Xmap", &EntryRow::Xmap}, {"Ymap", &EntryRow::Ymap}, {"Xline", &EntryRow::Xline}, {"Yline", &EntryRow::Yline}};
    for (const auto& [column, field] : numbers) number(column, was.*field, is.*field);
  }
  return changes;
}

QString CommandTest::Effect_Of(const std::function<void()>& work) {
  Serve_Events();
  seen.clear();
  opened = 0;
  const auto rows = Rows();
  const auto state = State();
  const QString order = Order();
  dbEntries->Execute(QStringLiteral("CREATE TEMP TABLE IF NOT EXISTS gesehen(x)"));
  work();
  Serve_Events();
  const auto now = State();
  Close_Windows();
  QStringList effect = seen;
  if (!window->isVisible()) return (effect << QStringLiteral("Ende")).join(QLatin1String("; "));
  if (opened > 0) effect << QStringLiteral("Karte geöffnet");
  const auto after = Rows();
  if (frmMDI.MapOpen && opened == 0) {
    if (Error_Of([] { dbEntries->Execute(QStringLiteral("DELETE FROM temp.gesehen")); }) != 0)
      effect << QStringLiteral("Tabelle geladen");
    effect += Changes(rows, after);
    if (rows.keys() == after.keys() && Order() != order) effect << QStringLiteral("Reihenfolge ") + Order();
  }
  for (auto it = now.begin(); it != now.end(); ++it)
    if (state[it.key()] != *it && (it.key() != QLatin1String("Status") || !it->isEmpty()))
      effect << it.key() + u'=' + *it;
  return effect.join(QLatin1String("; "));
}

// Names of the rows that lie above the squares, from the back to the front.
QString CommandTest::Order() {
  QString names;
  if (rsEntries) For_Each_Entry([&names] { names += Name_Here().left(2); });
  return names;
}

void CommandTest::Type(Typing where, const QString& text) {
  TblWindow& table = window->Table_Window();
  const auto cell = [&table](const QString& name) {
    return table.Model().index(table.Model().Row_Of(Key_Of(name).toLongLong()), column::Eintrag);
  };
  switch (where) {
    case Typing::Nothing:
      return;
    case Typing::NewText:
      New_Text(100, 20);
      return Text_Typed(text);
    case Typing::Text:
      ASSERT_TRUE(Take_Entry(Key_Of("Otter")));
      return Text_Typed(text);
    case Typing::Cell: {
      table.Grid().setCurrentIndex(cell("Stein"));
      table.Take_Row();
      static_cast<QAbstractItemView&>(table.Grid()).edit(cell("Stein"));
      auto* editor = table.Grid().findChild<QLineEdit*>();
      ASSERT_NE(editor, nullptr);
      return editor->setText(text);
    }
    case Typing::Line:
      table.Grid().setCurrentIndex(cell("Stein"));
      table.Take_Row();
      auto* line = table.findChild<QPlainTextEdit*>("Text1");
      line->setPlainText(text);
      line->document()->setModified(true);
  }
}

bool CommandTest::Is_There(const QString& text) const {
  if (frmMDI.MapOpen && Rows().contains(text)) return true;
  const TblWindow& table = window->Table_Window();
  const auto* line = table.findChild<QPlainTextEdit*>("Text1");
  const auto* cell = table.findChild<QLineEdit*>();
  return (Map.Text2.Visible && Map.Text2.Text == text) || (cell && cell->text() == text) || line->toPlainText() == text;
}
