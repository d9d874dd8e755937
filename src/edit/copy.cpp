#include "edit/copy.h"

#include <algorithm>
#include <utility>

#include "edit/bulk_change.h"
#include "edit/figure_extras.h"
#include "edit/move.h"
#include "hand/activation.h"
#include "platform/message_box.h"
#include "platform/text.h"
#include "state/events.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/table_state.h"
#include "store/entry_edit.h"
#include "store/vertex_table.h"

ClipboardFace clipboardFace;

namespace {

const QString title = QStringLiteral("Karteneintrag");
constexpr int step = 30;  // window pixels between an entry and its copy

// A row with all its columns, those the user added included.
struct WholeRow {
  EntryRow entry;
  std::vector<Value> values;
};

WholeRow Read_Whole_Row() {
  WholeRow row{Read_Entry(*rsEntries), {}};
  for (int i = 0; i < static_cast<int>(rsEntries->Fields().size()); ++i) row.values.push_back(rsEntries->Raw(i));
  return row;
}

// Upper left corner of what is seen of the row; of lines, areas and free figures that of their vertices.
QPoint Corner_Of(const EntryRow& row) {
  const EntryType type = EntryType::Parse(row.Typ);
  QPoint corner(row.Xmap, row.Ymap);
  if (!type.IsPolygon() && !type.IsFreeFigure()) return corner;
  const std::vector<QPoint> vertices = Load_Vertices(EntryId::Parse(row.ID).TableName());
  for (size_t i = 0; i < vertices.size(); ++i)
    corner =
        i == 0 ? vertices[0] : QPoint(std::min(corner.x(), vertices[i].x()), std::min(corner.y(), vertices[i].y()));
  return corner;
}

// Where "Kopie: " would not be read as a text, or would make another one of it, the text stays.
bool Takes_Prefix(const EntryRow& row) {
  const EntryType type = EntryType::Parse(row.Typ);
  if (!type.IsText() && !type.IsPolygon() && !type.IsFigure()) return false;
  if (FontSpec::Parse(row.Schrift).IsSymbol()) return false;
  return !row.Eintrag.trimmed().isEmpty() && !row.Eintrag.contains(QLatin1String("Kopie"));
}

// The name of the copy: kinds with vertices get a number of their own. False if none is left; that was told.
bool Rename_Copy(EntryRow& row) {
  const EntryType type = EntryType::Parse(row.Typ);
  EntryId id = EntryId::Parse(row.ID);
  id.hasGroup = false;  // a copy does not move with the others
  id.group.clear();
  if (type.IsPolygon() && (id.IsLine() || id.IsArea())) {
    id.name = New_Poly_Table(id.IsLine() ? QStringLiteral("Linie") : QStringLiteral("Flaeche"));
  } else if (type.IsFigure()) {
    id.name = Next_Figure_ID();
  }
  if (id.name.isEmpty()) return false;
  row.ID = id.ToText();
  return true;
}

// Stop marks and what stands behind them are copied too.
void Copy_Vertices(const QString& from, const QString& to) {
  const std::vector<Database::PointRow>* points = from == to ? nullptr : dbEntries->Points(from);
  if (points == nullptr) return;
  std::vector<QPoint> copy;
  for (const Database::PointRow& point : *points) copy.emplace_back(point.x, point.y);
  Write_Vertices(to, copy);
}

// Appends the copy shifted by map pixels; it is the current row then.
bool Append_Copy(WholeRow row, const QString& text, int dx, int dy) {
  const EntryRow source = row.entry;
  EntryRow& copy = row.entry;
  try {
    if (!Rename_Copy(copy)) return false;
  } catch (const Error& error) {
    Message_Box(error.text + QStringLiteral("\n\nDer Eintrag wurde nicht kopiert."), MsgButtons::Ok, MsgIcon::Warning,
                QStringLiteral("Fehler"));
    return false;
  }
  return Append_In_Transaction(title, [&] {
    copy.Eintrag = text;
    copy.Typ = EntryType::Parse(copy.Typ).Shown().Marked(Mark::None).ToNumber();
    Copy_Vertices(EntryId::Parse(source.ID).TableName(), EntryId::Parse(copy.ID).TableName());
    Shift_Row(copy, dx, dy);
    if (EntryId::Parse(copy.ID).TableName() != EntryId::Parse(source.ID).TableName()) Shift_Vertices(copy, dx, dy);
    rsEntries->AddNew();
    for (size_t i = column::fixedCount; i < row.values.size(); ++i)
      rsEntries->Set(static_cast<int>(i), std::move(row.values[i]));
    Write_Entry(*rsEntries, copy);
    rsEntries->Update();
    Copy_Extras(source, copy);
  });
}

// The copy lies above all others and is in hand, ready to be moved.
void Take_Copy(bool inHand) {
  Show_Changed_Entries();
  if (inHand) Take_Entry(Map.CurBookmark);
}

// 30 pixels on, or back near the edge, and inside the window.
int Copy_Place(int place, int size) {
  const int moved = place > size - step ? place - step : place + step;
  return std::clamp(moved, 0, std::max(0, size - step));
}

}  // namespace

void Copy_Entry() {
  if (!On_Current_Entry()) return;
  const bool inHand = Entry_In_Hand();
  const QString source = rsEntries->Bookmark();
  if (inHand && !End_Entry()) return;
  Map.CurBookmark = source;
  if (!On_Current_Entry()) return;
  const WholeRow row = Read_Whole_Row();
  if (clipboardFace.setText) clipboardFace.setText(row.entry.Eintrag);
  QString text = row.entry.Eintrag;
  if (Takes_Prefix(row.entry)) text = Cut_Text(QStringLiteral("Kopie: ") + text, Tbl.EintragSize);
  const QPoint corner = Corner_Of(row.entry);
  const QPoint place(Copy_Place(Window_X(corner.x()), Map.ScaleWidth),
                     Copy_Place(Window_Y(corner.y()), Map.ScaleHeight));
  if (Append_Copy(row, text, Map_X(place.x()) - corner.x(), Map_Y(place.y()) - corner.y())) Take_Copy(inHand);
}

void Place_Duplicate(const QString& source, QPoint window) {
  if (!Table_Is_Open() || !rsEntries->HasRow(source)) return;
  const bool inHand = Entry_In_Hand();
  if (inHand && !End_Entry()) return;
  Map.CurBookmark = source;
  if (!On_Current_Entry()) return;
  const WholeRow row = Read_Whole_Row();
  const QPoint corner = Corner_Of(row.entry);
  if (Append_Copy(row, row.entry.Eintrag, Map_X(window.x()) - corner.x(), Map_Y(window.y()) - corner.y()))
    Take_Copy(inHand);
}

bool Add_Text(QPoint window, const QString& text) {
  if (!rsEntries || (Entry_In_Hand() && !End_Entry())) return false;
  QString lines = text;
  lines.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n').remove(QChar(0));
  while (lines.endsWith(u'\n')) lines.chop(1);
  if (lines.trimmed().isEmpty()) return false;
  if (!Save_Text_Entry(Typed_Text({Map_X(window.x()), Map_Y(window.y())}, lines), TextRow::New)) return false;
  Show_Changed_Entries();
  return true;
}
