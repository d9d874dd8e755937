#include "import/gps_import.h"

#include "edit/bulk_change.h"
#include "hand/activation.h"
#include "platform/message_box.h"
#include "platform/progress.h"
#include "platform/text.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/table_state.h"
#include "store/entry.h"
#include "store/vertex_table.h"

namespace {

const QString undoCaption = QStringLiteral("Rückgängig: Import");
constexpr int trackWidth = 2;       // map pixels
constexpr double labelSize = 8;     // points
constexpr size_t fewestPoints = 2;  // of a line

QString Title_Of(GpsContent content) {
  return content == GpsContent::Waypoints ? QStringLiteral("Import Wegpunkte") : QStringLiteral("Import Tracks");
}

// One run through what was chosen; the text column's width decides what is cut.
class GpsRun {
 public:
  GpsRun(GpsContent what, const GpsLook& wanted, size_t units)
      : content(what), progress(QStringLiteral("GPS-Daten importieren"), static_cast<int>(units)) {
    row.VG = wanted.VG;
    row.HG = wanted.HG;
    row.RA = wanted.RA;
    if (content == GpsContent::Waypoints) {
      row.ID = QStringLiteral("Text");
      row.Schrift = wanted.font.font.ToText();
      row.Groesse = wanted.font.size;
      row.Typ = static_cast<int>(EntryKind::TextLine);
    } else {
      row.Schrift = QStringLiteral("Arial");
      row.Groesse = labelSize;
      row.Typ = static_cast<int>(EntryKind::Polygon);
    }
  }

  GpsResult Run(const std::vector<GpsUnit>& units) {
    result.point = std::make_shared<UndoPoint>(undoCaption);
    const bool written = In_Told_Transaction(Title_Of(content), [&] {
      if (content == GpsContent::Tracks) tables = Free_Poly_Tables(QStringLiteral("Linie"), units.size());
      for (const GpsUnit& unit : units) {
        content == GpsContent::Waypoints ? Write_Waypoint(unit) : Write_Track(unit);
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
  void Refuse(const GpsUnit& unit, QString reason) {
    result.refused.push_back({unit.line, unit.text, std::move(reason)});
  }

  QString Fitting(const GpsUnit& unit) {
    const int width = Tbl.EintragSize;
    QString text = Cut_Text(unit.text, width);
    if (text.size() != unit.text.size())
      result.notes.push_back(
          {unit.line, unit.text, QStringLiteral("Der Text wurde auf %1 Zeichen gekürzt").arg(width)});
    return text;
  }

  void Write_Waypoint(const GpsUnit& unit) {
    row.Eintrag = Fitting(unit);
    row.Xmap = row.Xline = unit.points.front().x();
    row.Ymap = row.Yline = unit.points.front().y();
    Append_Entry(row);
    ++result.imported;
  }

  void Write_Track(const GpsUnit& unit) {
    if (unit.points.size() < fewestPoints) return Refuse(unit, QStringLiteral("ein einzelner Punkt ist keine Linie"));
    if (tables.isEmpty()) return Refuse(unit, QStringLiteral("die Karte hat schon 1000 Linien"));
    const QString table = tables.takeFirst();
    Write_Vertices(table, unit.points);
    row.ID = table;
    row.Eintrag = Fitting(unit);
    row.Xmap = unit.points.front().x();
    row.Ymap = unit.points.front().y();
    row.Xline = trackWidth;
    row.Yline = 0;
    Append_Entry(row);
    ++result.imported;
  }

  GpsContent content;
  Progress progress;
  EntryRow row;
  QStringList tables;
  GpsResult result;
};

}  // namespace

GpsLook Usual_Gps_Look() {
  GpsLook look;
  look.VG = CurVG;
  look.HG = CurHG;
  look.RA = CurRA;
  return look;
}

std::vector<GpsUnit> Ask_One_By_One(std::vector<GpsUnit> units, GpsContent content) {
  std::vector<GpsUnit> taken;
  for (GpsUnit& unit : units) {
    const MsgAnswer answer = Message_Box(
        unit.text + QStringLiteral("\n\ndiesen Eintrag in die Karte importieren? "), MsgButtons::YesNoCancel,
        MsgIcon::Question,
        content == GpsContent::Waypoints ? QStringLiteral("Wegpunkte Import") : QStringLiteral("Track Import"));
    if (answer == MsgAnswer::Cancel) break;
    if (answer == MsgAnswer::Yes) taken.push_back(std::move(unit));
  }
  return taken;
}

GpsResult Import_Gps(const std::vector<GpsUnit>& units, GpsContent content, const GpsLook& look) {
  GpsResult result;
  result.failed = true;
  if (!rsEntries || !rsEntries->IsOpen() || (Entry_In_Hand() && !End_Entry())) return result;
  result.failed = false;
  if (units.empty()) return result;
  const BusyPointer busy;
  result = GpsRun(content, look, units.size()).Run(units);
  if (result.imported > 0) Show_Changed_Entries();
  return result;
}

bool Tell_Gps_Import(const GpsResult& result, GpsContent content, int readable, int importable) {
  QString text = QString::number(result.imported) + QStringLiteral(" Einträge wurden in die Karte importiert.\n");
  if (result.imported != importable)
    text = QStringLiteral("%1 Einträge in der Datei, %2 davon tatsächlich importiert.\n\n")
               .arg(QString::number(readable), QString::number(result.imported)) +
           QStringLiteral(
               "Sie können den Import in die Karte rückgängig machen,\nindem Sie 'Abbrechen' \noder das Menü "
               "'Einträge - rückgängig' \nwählen. ");
  const bool taken = result.imported > 0;
  const MsgAnswer answer =
      Message_Box(text, taken ? MsgButtons::OkCancel : MsgButtons::Ok, MsgIcon::Information, Title_Of(content));
  return !taken || answer != MsgAnswer::Cancel;
}

// What is shown and told
// -----------------------------------------------------------------------------------------------

namespace {

QString Places_Text(const GpsFile& file, const QString& transformation) {
  QString text = file.system.kind == ReferenceSystem::Kind::Geographic ? QStringLiteral("Geografisch")
                 : file.system.kind == ReferenceSystem::Kind::Utm      ? QStringLiteral("UTM")
                                                                       : QStringLiteral("Gauss-Krüger");
  if (!file.system.datum.isEmpty()) text += QStringLiteral(" (") + file.system.datum + u')';
  if (!transformation.isEmpty()) text += QStringLiteral(", umgerechnet: ") + transformation;
  return QStringLiteral("Koordinaten der Datei: ") + text;
}

// "11,097464" or "646560".
QString Coordinate_Text(double value, bool geographic) {
  return QString::number(value, 'f', geographic ? 6 : 0).replace(u'.', u',');
}

struct RecordTexts {
  int line = 0;
  QString name, comment;
  GivenPlace place;
};

// The record by its number in the plan. Tracks are found by bisection: their first records.
class Records {
 public:
  Records(const GpsFile& gpsFile, GpsContent what) : file(gpsFile), content(what) {
    size_t first = 0;
    for (const GpsTrack& track : file.tracks) {
      starts.push_back(first);
      first += track.points.size();
    }
  }
  RecordTexts At(size_t index) const {
    if (content == GpsContent::Waypoints) {
      const GpsWaypoint& point = file.waypoints[index];
      return {point.line, point.name, point.comment, point.place};
    }
    const auto next = std::upper_bound(starts.begin(), starts.end(), index);
    const auto track = static_cast<size_t>(next - starts.begin()) - 1;
    const GpsPoint& point = file.tracks[track].points[index - starts[track]];
    return {point.line, file.tracks[track].name, {}, point.place};
  }

 private:
  const GpsFile& file;
  GpsContent content;
  std::vector<size_t> starts;
};

}  // namespace

ImportList Gps_List(const GpsFile& file, const GpsPlan& plan, const QString& transformation) {
  const bool waypoints = plan.content == GpsContent::Waypoints;
  const bool geographic = file.system.kind == ReferenceSystem::Kind::Geographic;
  ImportList list;
  list.header = Places_Text(file, transformation);
  list.info =
      waypoints ? QStringLiteral("Wegpunkte außerhalb der Karte") : QStringLiteral("Trackunkte außerhalb der Karte");
  list.info2 = waypoints ? QStringLiteral("In der Karte sind bereits Einträge vorhanden mit")
                         : QStringLiteral("In der Karte sind bereits Tracks oder Linien vorhanden mit");
  list.columns = {QStringLiteral("Name"), QStringLiteral("Zone"),
                  geographic ? QStringLiteral("Längengrad") : QStringLiteral("Rechtswert"),
                  geographic ? QStringLiteral("Breitengrad") : QStringLiteral("Hochwert"), QStringLiteral("Bemerkung")};
  QStringList remarks;
  if (!file.remark.isEmpty()) remarks << file.remark;
  if (!file.faults.empty())
    remarks << QStringLiteral("%1 Zeilen sind nicht lesbar, die erste: Zeile %2 %3.")
                   .arg(QString::number(file.faults.size()), QString::number(file.faults[0].line), file.faults[0].text);
  list.info3 = remarks.join(u'\n');
  list.rows = static_cast<int>(plan.records.size());
  list.counts = plan.counts;
  list.mark = [&plan](int row) { return plan.records[static_cast<size_t>(row)].mark; };
  list.text = [records = Records(file, plan.content), geographic](int row, int column) -> QString {
    const RecordTexts record = records.At(static_cast<size_t>(row));
    switch (column) {
      case 0:
        return record.name;
      case 1:
        return record.place.zone > 0 ? QString::number(record.place.zone) : QString();
      case 2:
        return Coordinate_Text(record.place.x, geographic);
      case 3:
        return Coordinate_Text(record.place.y, geographic);
      default:
        return record.comment;
    }
  };
  return list;
}

QStringList Gps_Report(const GpsPlan& plan, const GpsResult& result) {
  const bool waypoints = plan.content == GpsContent::Waypoints;
  const ImportCounts& counts = plan.counts;
  const auto line = [](const QString& what, qsizetype number) { return what + QStringLiteral(": %1").arg(number); };
  QStringList lines;
  lines << line(waypoints ? QStringLiteral("Wegpunkte gelesen") : QStringLiteral("Trackpunkte gelesen"), counts.all)
        << line(waypoints ? QStringLiteral("Wegpunkte importiert") : QStringLiteral("Linien importiert"),
                result.imported)
        << line(QStringLiteral("außerhalb der Karte"),
                counts.left + counts.right + counts.up + counts.down + counts.zone)
        << line(QStringLiteral("schon vorhanden"), counts.exists)
        << line(QStringLiteral("abgelehnt"), counts.unreadable + static_cast<qsizetype>(result.refused.size()));
  return lines;
}

QStringList Gps_Faults(const GpsFile& file) {
  QStringList lines;
  if (!file.remark.isEmpty()) lines << file.remark;
  for (const GpsFault& fault : file.faults) lines << QStringLiteral("Zeile %1: %2").arg(fault.line).arg(fault.text);
  return lines;
}

QStringList Gps_Refusals(const GpsFile& file, const GpsPlan& plan, const GpsResult& result) {
  QStringList lines;
  const auto add = [&lines](int line, const QString& name, const QString& reason) {
    lines << QStringLiteral("Zeile %1: %2: %3").arg(QString::number(line), name, reason);
  };
  const Records records(file, plan.content);
  for (size_t i = 0; i < plan.records.size(); ++i) {
    if (plan.records[i].mark.Usable()) continue;
    const RecordTexts record = records.At(i);
    add(record.line, record.name, Import_Status_Text(plan.records[i].mark.status));
  }
  for (const auto* all : {&result.refused, &result.notes})
    for (const GpsRefusal& one : *all) add(one.line, one.text, one.reason);
  return lines;
}
