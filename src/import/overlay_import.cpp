#include "import/overlay_import.h"

#include <QFileInfo>

#include "edit/bulk_change.h"
#include "hand/activation.h"
#include "platform/progress.h"
#include "platform/text.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/step.h"
#include "state/table_state.h"
#include "store/table_file.h"
#include "store/vertex_table.h"

namespace {

const QString undoCaption = QStringLiteral("Rückgängig: Import Top50*.ovl-Datei"),
              title = QStringLiteral("Overlay importieren");

size_t Count_Of(const OverlayFile& file, const OverlayPlan& plan, OverlayKind kind) {
  size_t count = 0;
  for (size_t i = 0; i < plan.marks.size(); ++i) count += plan.marks[i].Usable() && file.records[i].kind == kind;
  return count;
}

// One run through the usable objects of the plan.
class OverlayRun {
 public:
  OverlayRun(const OverlayFile& overlay, const OverlayPlan& whole)
      : file(overlay), plan(whole), progress(title, static_cast<int>(whole.entries.size())) {}

  OverlayResult Run() {
    const UndoStep step(QStringLiteral("Import Top50*.ovl-Datei"));
    const UndoPoint point(undoCaption);
    const bool written = In_Told_Transaction(title, [this] {
      lines = Free_Poly_Tables(QStringLiteral("Linie"), Count_Of(file, plan, OverlayKind::Line));
      areas = Free_Poly_Tables(QStringLiteral("Flaeche"), Count_Of(file, plan, OverlayKind::Area));
      for (size_t i = 0; i < plan.entries.size(); ++i) {
        if (plan.marks[i].Usable()) Write(plan.entries[i], file.records[i]);
        result.stopped = !progress.Advance();
        if (result.stopped) return;
      }
    });
    if (!written) {
      result.imported = 0;
      result.failed = true;
    }
    return std::move(result);
  }

 private:
  void Write(CarriedEntry entry, const OverlayRecord& record) {
    EntryRow& row = entry.row;
    if (!entry.vertices.empty()) {
      QStringList& names = record.kind == OverlayKind::Area ? areas : lines;
      if (names.isEmpty()) {
        result.refused.push_back({record.line, QStringLiteral("die Karte hat schon 1000 davon")});
        return;
      }
      row.ID = row.Eintrag = names.takeFirst();
      Write_Vertices(row.ID, entry.vertices);
    } else if (entry.Type().IsFigure()) {
      if (figures == 0) figures = EntryId::Parse(Next_Figure_ID()).Number();
      row.ID = QStringLiteral("Figur") + QString::number(figures++);
    }
    const QString fitting = Cut_Text(row.Eintrag, Tbl.EintragSize);
    if (fitting.size() < row.Eintrag.size())
      result.refused.push_back({record.line, QStringLiteral("Der Text wurde gekürzt: ") + row.Eintrag});
    row.Eintrag = fitting;
    Append_Entry(row);
    ++result.imported;
  }

  const OverlayFile& file;
  const OverlayPlan& plan;
  Progress progress;
  OverlayResult result;
  QStringList lines, areas;
  int figures = 0;
};

QString Kind_Text(OverlayKind kind) {
  switch (kind) {
    case OverlayKind::Text:
      return QStringLiteral("Text");
    case OverlayKind::Line:
      return QStringLiteral("Linie");
    case OverlayKind::Area:
      return QStringLiteral("Fläche");
    case OverlayKind::Rectangle:
      return QStringLiteral("Rechteck");
    case OverlayKind::Ellipse:
      break;
  }
  return QStringLiteral("Ellipse");
}

QString Degrees(double degrees) { return QString::number(degrees, 'f', 6).replace(u'.', u','); }

int Off_Map(const ImportCounts& counts) { return counts.left + counts.right + counts.up + counts.down + counts.zone; }

// Objects that are no entries here.
QStringList Left_Out(const OverlayFile& file) {
  QStringList texts;
  if (file.passedOver > 0) texts << QStringLiteral("%1 Bilder und Dreiecke wurden übergangen.").arg(file.passedOver);
  if (file.unknown > 0) texts << QStringLiteral("%1 Objekte sind von unbekannter Art.").arg(file.unknown);
  if (!file.faults.empty()) texts << QStringLiteral("%1 Angaben sind unbrauchbar.").arg(file.faults.size());
  return texts;
}

}  // namespace

OverlayResult Import_Overlay(const OverlayFile& file, const OverlayPlan& plan) {
  OverlayResult result;
  result.failed = true;
  if (!rsEntries || !rsEntries->IsOpen() || (Entry_In_Hand() && !End_Entry())) return result;
  result.failed = false;
  if (plan.counts.ok == 0) return result;
  const BusyPointer busy;
  result = OverlayRun(file, plan).Run();
  if (result.imported > 0) Show_Changed_Entries();
  return result;
}

ImportList Overlay_List(const OverlayFile& file, const OverlayPlan& plan, const QString& name,
                        const QString& transformation) {
  ImportList list;
  list.header = QStringLiteral("Import: ") + name;
  if (!transformation.isEmpty()) list.header += QStringLiteral(", umgerechnet: ") + transformation;
  list.info = QStringLiteral("Top50-Overlay-Objekte importieren.");
  list.info2 = QStringLiteral("Kartendatum der Top-Importdatei(unabänderlich): WGS-84");
  QStringList remarks = Left_Out(file);
  if (!Match_Of(Overlay_System(), Coord).datum && transformation.isEmpty())
    remarks.prepend(QStringLiteral("Warnung: Kartendatum der Karte und der Importdatei stimmmen nicht überein!"));
  remarks << QStringLiteral("Limit: Kartenbreite = %1 X_Pix;      Kartenhöhe = %2 Y_Pix;    Pixel")
                 .arg(QString::number(MapWidthPx), QString::number(MapHeightPx));
  list.info3 = remarks.join(u'\n');
  list.columns = {QStringLiteral("Objekt"), QStringLiteral("Text"), QStringLiteral("Längengrad"),
                  QStringLiteral("Breitengrad"), QStringLiteral("Zeile")};
  list.rows = static_cast<int>(plan.marks.size());
  list.counts = plan.counts;
  list.mark = [&plan](int row) { return plan.marks[static_cast<size_t>(row)]; };
  list.text = [&file](int row, int column) -> QString {
    const OverlayRecord& record = file.records[static_cast<size_t>(row)];
    switch (column) {
      case 0:
        return Kind_Text(record.kind);
      case 1:
        return record.text;
      case 2:
        return Degrees(record.points.front().x());
      case 3:
        return Degrees(record.points.front().y());
      default:
        return QString::number(record.line);
    }
  };
  return list;
}

QStringList Overlay_Summary(const OverlayFile& file, const OverlayPlan& plan, const OverlayResult& result) {
  QStringList lines = {QStringLiteral("%1 Einträge wurden importiert").arg(result.imported)};
  if (const int off = Off_Map(plan.counts); off > 0)
    lines << QStringLiteral("%1 Objekte liegen außerhalb der Karte.").arg(off);
  if (plan.counts.exists > 0) lines << QStringLiteral("%1 Objekte waren schon vorhanden.").arg(plan.counts.exists);
  if (plan.counts.unreadable > 0)
    lines << QStringLiteral("%1 Objekte haben keine brauchbare Koordinate.").arg(plan.counts.unreadable);
  lines << Left_Out(file);
  if (result.stopped) lines << QStringLiteral("Der Import wurde abgebrochen.");
  return lines;
}

QStringList Overlay_Refusals(const OverlayFile& file, const OverlayPlan& plan, const OverlayResult& result) {
  QStringList lines;
  const auto add = [&lines](int line, const QString& text) {
    lines << QStringLiteral("Zeile %1: %2").arg(line).arg(text);
  };
  for (const OverlayFault& fault : file.faults) add(fault.line, fault.text);
  for (size_t i = 0; i < plan.marks.size(); ++i) {
    const OverlayRecord& record = file.records[i];
    if (plan.marks[i].Usable()) continue;
    const QString name = record.text.isEmpty() ? Kind_Text(record.kind) : record.text;
    add(record.line, name + QStringLiteral(": ") + Import_Status_Text(plan.marks[i].status));
  }
  for (const OverlayFault& one : result.refused) add(one.line, one.text);
  return lines;
}
