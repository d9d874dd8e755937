#include "plansquares/raster_rows.h"

#include <algorithm>
#include <cstdlib>
#include <functional>

#include "plansquares/raster_texts.h"
#include "platform/message_box.h"
#include "platform/progress.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/table_state.h"
#include "store/anchor.h"
#include "store/stored_number.h"
#include "store/table_file.h"
#include "store/transaction.h"

namespace {

const QString idWord = QStringLiteral("Plan");
constexpr char16_t nameMark = 0x1f;
const QString designMark = QStringLiteral("0 -");  // behind the font of the design row
const QString freeName = QStringLiteral("frei-");

bool Is_Plan(const EntryType& type) {
  return type.Kind() == EntryKind::PlanSquare || type.Kind() == EntryKind::PlanDesign;
}

// The rows of squares and design, the cursor on each.
void For_Each_Plan_Row(const std::function<Walk()>& work) {
  For_Each_Entry([&work] { return Is_Plan(Type_Here()) ? work() : Walk::On; });
}

int Count_Plan_Rows() {
  if (!rsEntries) return 0;
  int count = 0;
  For_Each_Plan_Row([&count] { return ++count, Walk::On; });
  return count;
}

void Show_Change() {
  if (!Map.CurBookmark.isEmpty() && !rsEntries->HasRow(Map.CurBookmark)) Map.CurBookmark.clear();
  events.TableChanged.Emit();
  events.RedrawWanted.Emit();
}

// False if the user stopped it.
bool Remove_Rows(Progress& progress) {
  bool goesOn = true;
  For_Each_Plan_Row([&] {
    rsEntries->Delete();
    goesOn = progress.Advance();
    return goesOn ? Walk::RowGone : Walk::Stop;
  });
  Promote_Anchor();
  return goesOn;
}

int Clamped(int value, int most) { return std::clamp(value, 1, most); }

QString Pixels(int value) { return QString::number(value); }

}  // namespace

QString Plan_Id(const QString& name) { return idWord + QChar(nameMark) + name; }

QString Plan_Name(const QString& id) {
  const QString name = EntryId::Parse(id).name;
  return name.startsWith(idWord + QChar(nameMark)) ? name.mid(idWord.size() + 1) : QString();
}

bool Split_Name(const QString& name, QString& columnText, QString& rowText) {
  const qsizetype dash = name.indexOf(u'-');
  if (dash < 1 || dash > 2) return false;
  columnText = name.left(dash);
  rowText = name.mid(dash + 1);
  bool number = false;
  return rowText.toInt(&number) > 0 && number &&
         std::all_of(columnText.begin(), columnText.end(), [](QChar sign) { return sign.isLetter(); });
}

EntryRow Square_Row(const RasterDesign& design, const PlanSquare& square) {
  EntryRow row;
  row.Typ = static_cast<int>(EntryKind::PlanSquare);
  row.ID = Plan_Id(square.name);
  row.Eintrag = square.name;
  row.Schrift = design.font;
  row.Groesse = design.fontSize;
  row.VG = design.VG;
  row.HG = design.HG;
  Sound_Colors(row.VG, row.HG);
  row.RA = row.VG;
  set_entry_box(row, {square.box.x(), square.box.y(), square.box.width(), square.box.height()});
  return row;
}

EntryRow Design_Row(const RasterDesign& design, const RasterPlan& plan) {
  EntryRow row = Square_Row(design, plan.squares.front());
  row.Typ = static_cast<int>(EntryKind::PlanDesign);
  row.ID = Plan_Id(QStringLiteral("Raster"));
  row.Eintrag = design.size.trimmed();
  row.Schrift = design.font + designMark;
  row.Xmap = 100 * static_cast<int>(design.field) + static_cast<int>(design.unit);
  row.Ymap = static_cast<int>(design.labels);
  row.Xline = design.fontSize > 0 ? plan.edgeX.front() : 0;
  row.Yline = design.fontSize > 0 ? plan.edgeY.front() : 0;
  return row;
}

RasterDesign Design_Of(const EntryRow& row) {
  RasterDesign design;
  design.size = Shown_Text(row.Eintrag);
  design.field = static_cast<RasterField>(Clamped(row.Xmap / 100, 2));
  design.unit = static_cast<CornerUnit>(Clamped(row.Xmap % 100, 4));
  design.labels = static_cast<LabelPlace>(Clamped(row.Ymap, 4));
  design.font = row.Schrift.left(longestSchrift);
  if (design.font.endsWith(designMark)) design.font.chop(designMark.size());
  if (design.font.isEmpty()) design.font = QStringLiteral("Arial");
  design.fontSize = Stored_Size(row.Groesse);
  design.VG = row.VG;
  design.HG = row.HG;
  Sound_Colors(design.VG, design.HG);
  return design;
}

bool Has_Plan_Rows() { return Count_Plan_Rows() > 0; }

std::optional<QRectF> Raster_Field() {
  if (!rsEntries) return std::nullopt;
  std::optional<EntryBox> first, last;
  For_Each_Plan_Row([&] {
    QString columnText, rowText;
    const bool square = Type_Here().Kind() == EntryKind::PlanSquare &&
                        Split_Name(Plan_Name(rsEntries->Text(column::ID)), columnText, rowText);
    if (!square) return Walk::On;
    last = entry_box(Read_Entry(*rsEntries));
    if (!first) first = last;
    return Walk::On;
  });
  if (!first) return std::nullopt;
  const QPointF from(first->x, first->y), to(last->x + last->width, last->y + last->height);
  return QRectF(from, to).normalized();
}

std::optional<RasterDesign> Raster_bearbeiten() {
  if (!rsEntries) return std::nullopt;
  std::optional<RasterDesign> design;
  For_Each_Plan_Row([&] {
    if (Type_Here().Kind() != EntryKind::PlanDesign) return Walk::On;
    design = Design_Of(Read_Entry(*rsEntries));
    return Walk::Stop;
  });
  // Corners that were coordinates or measures are left to the raster itself.
  const bool pixels = design && (design->unit == CornerUnit::Pixel || design->unit == CornerUnit::OnMap);
  const auto field = pixels ? Raster_Field() : std::nullopt;
  if (!field || design->field != RasterField::Part) return design;
  const QRect box = field->toRect();
  design->P1x = Pixels(box.x());
  design->P1y = Pixels(box.y());
  design->P2x = Pixels(box.x() + box.width());
  design->P2y = Pixels(box.y() + box.height());
  return design;
}

bool Take_Raster(const RasterDesign& design, const RasterPlan& plan) {
  if (!rsEntries || plan.squares.empty()) return false;
  const int there = Count_Plan_Rows();
  if (there > 0 && Message_Box(raster_texts::alreadyThere, MsgButtons::OkCancel, MsgIcon::Question,
                               raster_texts::alreadyThereTitle) != MsgAnswer::Ok)
    return false;
  const UndoPoint point(raster_texts::takeUndo);
  const BusyPointer busy;
  const bool written = In_Told_Transaction(raster_texts::takeTitle, [&] {
    Progress progress(raster_texts::takeTitle + u'\n' + raster_texts::taking,
                      there + static_cast<int>(plan.squares.size()));
    if (!Remove_Rows(progress)) return false;
    for (const PlanSquare& square : plan.squares) {
      Append_Entry(Square_Row(design, square));
      if (!progress.Advance()) return false;
    }
    Append_Entry(Design_Row(design, plan));
    return true;
  });
  if (written) Show_Change();
  return written;
}

qint64 Take_Free_Square(const RasterDesign& design, const RasterPlan& plan) {
  if (!rsEntries || plan.squares.empty()) return 0;
  int highest = 0;
  For_Each_Plan_Row([&highest] {
    const QString name = Plan_Name(rsEntries->Text(column::ID));
    if (name.startsWith(freeName)) highest = std::max(highest, name.mid(freeName.size()).toInt());
    return Walk::On;
  });
  const UndoPoint point(raster_texts::takeUndo);
  PlanSquare square = plan.squares.front();
  square.name = freeName + QString::number(highest + 1);
  if (!In_Told_Transaction(raster_texts::takeTitle, [&] { Append_Entry(Square_Row(design, square)); })) return 0;
  rsEntries->MoveLast();
  const qint64 key = rsEntries->Key();
  Map.CurBookmark = rsEntries->Bookmark();
  Show_Change();
  return key;
}

int Delete_Raster() {
  const int there = Count_Plan_Rows();
  if (there == 0) return 0;
  const UndoPoint point(raster_texts::deleteUndo);
  const BusyPointer busy;
  const bool written = In_Told_Transaction(raster_texts::deleteTitle, [there] {
    Progress progress(raster_texts::deleteTitle + u'\n' + raster_texts::deleting, there);
    return Remove_Rows(progress);
  });
  if (!written) return 0;
  Show_Change();
  return there;
}

int Show_Raster(bool visible) {
  if (Count_Plan_Rows() == 0) return 0;
  const UndoPoint point(raster_texts::changeUndo);
  int changed = 0;
  const BusyPointer busy;
  const bool written = In_Told_Transaction(QStringLiteral("Planquadrate"), [&] {
    For_Each_Plan_Row([&] {
      const EntryType type = Type_Here(), wanted = visible ? type.Shown() : type.Hidden();
      // Marked rows stay as they are.
      if (type.mark != Mark::None || type == wanted) return Walk::On;
      rsEntries->Edit();
      rsEntries->Set(column::Typ, static_cast<qint64>(wanted.ToNumber()));
      rsEntries->Update();
      ++changed;
      return Walk::On;
    });
  });
  if (written && changed > 0) Show_Change();
  return written ? changed : 0;
}
