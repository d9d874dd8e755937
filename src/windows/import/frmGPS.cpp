#include "windows/import/frmGPS.h"

#include <QFileInfo>
#include <QHeaderView>
#include <QPointer>
#include <algorithm>

#include "import/gps_file.h"
#include "import/gps_guest.h"
#include "import/placing_question.h"
#include "maps/step_walk.h"
#include "platform/file_dialog.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/on_reset.h"
#include "state/run_guarded.h"
#include "state/step.h"
#include "ui_frmGPS.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/show_beside.h"
#include "windows/common/tool_place.h"
#include "windows/import/frmGPSGeraet.h"
#include "windows/import/frmGPS_model.h"
#include "windows/import/frmWpImport.h"

namespace {

const QString windowTitleText = QStringLiteral("Karteneinträge importieren");
const QString helpPage = QStringLiteral("GPS.htm");
const QString onward = QStringLiteral("&Weiter >>"), cancel = QStringLiteral("&Abbrechen");
constexpr int noNet = 5000;
QString lastFile;
const OnReset fresh(lastFile);

void Check_Net() {
  if (Coord.Geographic() || Coord.Metric()) return;
  Raise(noNet, QStringLiteral("Die Karte ist nicht georeferenziert - Kein Koordinatensystem gefunden - Menü 'Grid - "
                              "erstellen'."));
}

QString Ask_File(GpsContent wanted) {
  const bool waypoints = wanted == GpsContent::Waypoints;
  FileRequest request;
  request.title = waypoints ? QStringLiteral("Wegpunkte Import: ") : QStringLiteral("Track Import: ");
  const QString sample = ProgramFolder + (waypoints ? QStringLiteral("/Muster.wpt") : QStringLiteral("/Muster.trk"));
  const QFileInfo start(lastFile.isEmpty() ? sample : lastFile);
  request.folder = start.path();
  request.name = start.fileName();
  request.defaultExtension = waypoints ? QStringLiteral("WPT") : QStringLiteral("TRK");
  request.helpPage = helpPage;
  request.filter = (waypoints ? QStringLiteral("Datei (*.wpt;*.txt)|*.wpt;*.txt;|Alle Dateien (*.*)|*.*")
                              : QStringLiteral("Datei (*.trk;*.txt)|*.trk;*.txt;|Alle Dateien (*.*)|*.*")) +
                   QStringLiteral(
                       "|GPX, KML und andere (*.gpx;*.kml;*.kmz;*.fit;*.nmea;*.gdb;*.tcx;*.igc;*.loc;*.plt;*.zip;*.gz)"
                       "|*.gpx;*.kml;*.kmz;*.fit;*.nmea;*.gdb;*.tcx;*.igc;*.loc;*.plt;*.zip;*.gz");
  return File_Dialog(request).value_or(QString());
}

}  // namespace

FrmGPS::FrmGPS(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmGPS>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, [this] { return page; });
  setWindowModality(Qt::NonModal);
  setWindowTitle(windowTitleText);
  page = helpPage;
  model = new ImportModel(this);
  ui->Text1->setModel(model);
  Make_Menus();
  Connect_Parts();
  const std::pair<QLabel*, ImportStatus> symbols[] = {{ui->lblsmblinks, ImportStatus::Left},
                                                      {ui->lblsmbrechts, ImportStatus::Right},
                                                      {ui->lblsmboben, ImportStatus::Up},
                                                      {ui->lblsmbunten, ImportStatus::Down},
                                                      {ui->lblsmbOk, ImportStatus::Ok}};
  for (const auto& [label, status] : symbols) {
    label->setFont(Import_Symbol_Font());
    label->setStyleSheet(QStringLiteral("color: red"));
    label->setText(Import_Symbol_Text(Import_Symbol(status)));
  }
  closedListener = events.MapClosed.Connect([this] { reject(); });
  Forget_List();
}

FrmGPS::~FrmGPS() { events.MapClosed.Disconnect(closedListener); }

// What goes wrong with a file or a device is told: OK goes on, with another file perhaps; Cancel gives the import up.
void FrmGPS::Told(const std::function<void()>& work) {
  Run_Guarded([&] {
    try {
      work();
    } catch (const Error& error) {
      if (error.number == guestCancelled) return;
      const MsgAnswer answer = Message_Box(Error_Text(error), MsgButtons::OkCancel, MsgIcon::Warning, windowTitleText);
      if (answer != MsgAnswer::Ok) reject();
    }
  });
}

void FrmGPS::Make_Menus() {
  const auto load = [this](GpsContent wanted) { return [=, this] { Told([=, this] { Load(wanted); }); }; };
  Give_Menu_Bar(*this,
                {{"mnuGPS", QStringLiteral("GPS-&Gerät auslesen"), {}, [this] { Told([this] { Read_Device(); }); }},
                 {"mnuLoadWp", QStringLiteral("Weg&punkte laden"), QKeySequence::Open, load(GpsContent::Waypoints)},
                 {"mnuLoadTrack", QStringLiteral("&Tracks laden"), {}, load(GpsContent::Tracks)},
                 {"mnuHelp", QStringLiteral("&Hilfe"), {}, [this] { Show_Help(this, page); }}});
}

void FrmGPS::Connect_Parts() {
  connect(ui->cmdWeiter, &QPushButton::clicked, this, [this] { Told([this] { Next(); }); });
  ui->Text1->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
  ui->Text1->horizontalHeader()->setStretchLastSection(true);
  ui->Text1->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
}

void FrmGPS::Show_List(ImportList list, std::function<void()> onNext, const QString& ofPage) {
  page = ofPage;
  for (const char* name : {"mnuGPS", "mnuLoadWp", "mnuLoadTrack"})
    findChild<QAction*>(QLatin1String(name))->setVisible(!onNext);
  next = std::move(onNext);
  ui->lblHeader->setText(list.header);
  ui->lblInfo->setText(list.info);
  ui->lblInfo2->setText(list.info2);
  const ImportCounts counts = list.counts;
  const QString remark = list.info3;
  model->Show_List(std::move(list));
  ui->Text1->verticalHeader()->setDefaultSectionSize(ui->Text1->fontMetrics().height() + 6);
  // By the first rows: there may be a hundred thousand.
  ui->Text1->horizontalHeader()->setResizeContentsPrecision(200);
  ui->Text1->resizeColumnsToContents();
  Show_Counts(counts);
  Zusammenfassung(counts);
  if (!remark.isEmpty()) ui->lblInfo3->setText(ui->lblInfo3->text() + u'\n' + remark);
}

void FrmGPS::Forget_List() {
  if (choice != nullptr) choice->close();
  ImportList none;
  none.header = QStringLiteral("Noch ist keine Datei geladen.");
  none.info = QStringLiteral("Wegpunkte außerhalb der Karte");
  none.info2 = QStringLiteral("In der Karte sind bereits Einträge vorhanden mit");
  Show_List(none, {}, page);
  ui->lblInfo3->setText(QStringLiteral("Bitte wählen Sie oben 'Wegpunkte laden' oder 'Tracks laden'."));
  file = {};
  plan = {};
}

void FrmGPS::Show_Outcome(const QString& text, const QString& button) {
  ui->lblInfo3->setText(text);
  ui->cmdWeiter->setText(button);
}

void FrmGPS::Show_Counts(const ImportCounts& counts) {
  const std::pair<QLabel*, int> labels[] = {{ui->lblzulinks, counts.left},
                                            {ui->lblzurechts, counts.right},
                                            {ui->lblzuoben, counts.up},
                                            {ui->lblzuunten, counts.down},
                                            {ui->lblObjOk, counts.ok},
                                            {ui->lblNameExist, counts.sameName},
                                            {ui->lblPosExist, counts.samePosition},
                                            {ui->lblNamePosExist, counts.sameNameAndPosition}};
  for (const auto& [label, count] : labels) label->setText(QString::number(count));
}

void FrmGPS::Zusammenfassung(const ImportCounts& counts) {
  const bool any = counts.ok > 0;
  if (counts.all > 0) ui->lblInfo3->setText(Import_Summary(counts));
  ui->cmdWeiter->setText(any ? onward : cancel);
}

std::vector<int> FrmGPS::Marked_Rows() const {
  std::vector<int> rows;
  for (const QItemSelectionRange& range : ui->Text1->selectionModel()->selection())
    for (int row = range.top(); row <= range.bottom(); ++row) rows.push_back(row);
  std::sort(rows.begin(), rows.end());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  return rows;
}

// Loading ------------------------------------------------------------------------------------------------------------

void FrmGPS::Load(GpsContent wanted) {
  Check_Net();
  const QString path = Ask_File(wanted);
  if (path.isEmpty()) return;
  lastFile = path;
  Open_File(path, wanted);
}

void FrmGPS::Open_File(const QString& path, GpsContent wanted) {
  Told([&] {
    Check_Net();
    page = helpPage;
    Forget_List();
    GpsFile read;
    {
      const BusyPointer busy;
      read = Read_Gps_File(path);
    }
    Take_File(std::move(read), wanted, QFileInfo(path).fileName());
  });
}

void FrmGPS::Read_Device() {
  Check_Net();
  const bool started = Start_Transfer_Program([guard = QPointer<FrmGPS>(this)](const QString& path) {
    if (guard) guard->Open_File(path, GpsContent::Waypoints);
  });
  if (started) return;
  if (!Has_Babel()) Raise(guestFailed, QStringLiteral("Das Hilfsprogramm 'G7toWin.exe' wurde nicht gefunden"));
  const auto device = Ask_Gps_Device(this);
  if (!device) return;
  Forget_List();
  Take_File(Read_Gps_Text(Babel_Device(device->format, device->port)), GpsContent::Waypoints, device->port);
}

void FrmGPS::Take_File(GpsFile read, GpsContent wanted, const QString& name) {
  if (wanted == GpsContent::Waypoints && read.waypoints.empty() && !read.tracks.empty()) wanted = GpsContent::Tracks;
  if (wanted == GpsContent::Tracks && read.tracks.empty() && !read.waypoints.empty()) wanted = GpsContent::Waypoints;
  if (const QString reason = Nothing_In(read); !reason.isEmpty())
    Raise(guestFailed, name + QStringLiteral(": ") + reason);
  const auto chosen = Ask_Placing_Way(read.system, Coord, windowTitleText);
  if (!chosen) return;
  file = std::move(read);
  way = *chosen;
  transformation =
      way == PlacingWay::Transformed ? Transformation_Name(file.system, Coord).value_or(QString()) : QString();
  const BusyPointer busy;
  plan = Plan_Gps(file, wanted, way);
  ImportList list = Gps_List(file, plan, transformation);
  list.header.prepend(name + QStringLiteral(":  "));
  Show_List(std::move(list), {}, helpPage);
}

// Importing ----------------------------------------------------------------------------------------------------------

void FrmGPS::Next() {
  if (model->List().counts.ok == 0) {
    reject();
    return;
  }
  if (next) return next();
  Choose_Look();
}

void FrmGPS::Choose_Look() {
  if (choice == nullptr) {
    choice = new FrmWpImport(this);
    Works_Beside(*choice, ui->Text1);  // the user marks rows in it
    connect(choice, &FrmWpImport::Import_Wanted, this, [this] { Told([this] { Import(); }); });
  }
  choice->Set_Content(plan.content);
  choice->show();
  choice->raise();
  choice->activateWindow();
}

void FrmGPS::Import() {
  const WpChoice wanted = choice->Choice();
  std::optional<std::vector<int>> chosen;
  if (wanted.mode == WpMode::Marked) {
    chosen = Marked_Rows();
    if (chosen->empty()) {
      Message_Box(QStringLiteral("Option: Markierte Wegpunkte importieren\n\nEs ist kein Eintrag markiert."),
                  MsgButtons::Ok, MsgIcon::Information, windowTitleText);
      return;
    }
  }
  if (wanted.existing == Existing::Taken) plan = Plan_Gps(file, plan.content, way, Existing::Taken);
  const int all = static_cast<int>(Gps_Units(file, plan, wanted.look).size());
  std::vector<GpsUnit> units = Gps_Units(file, plan, wanted.look, chosen);
  if (wanted.mode == WpMode::Single) units = Ask_One_By_One(std::move(units), plan.content);
  const GpsContent content = plan.content;
  const int readable = content == GpsContent::Waypoints ? plan.counts.all : all;
  GpsResult result;
  {
    const UndoStep step(QStringLiteral("Import"), UndoStep::Joins::Nothing);
    result = Import_Gps(units, content, wanted.look);
  }
  if (result.failed) return;
  choice->close();
  Forget_List();  // a second time would put every entry on the map twice
  QString outcome = QString::number(result.imported) + QStringLiteral(" Einträge wurden in die Karte importiert.");
  for (const GpsRefusal& one : result.refused)
    if (&one - result.refused.data() < 3)
      outcome += QStringLiteral("\nZeile %1: %2: %3").arg(QString::number(one.line), one.text, one.reason);
  Show_Outcome(outcome, cancel);
  if (!Tell_Gps_Import(result, content, readable, all)) Step_Back();
}

// Opening ------------------------------------------------------------------------------------------------------------

void Show_frmGPS(QWidget* parent) { Show_Beside<FrmGPS>(parent); }
