#include "demo_table.h"

#include <QPolygon>

#include "objects/north_arrow.h"
#include "state/global_state.h"
#include "store/header_row.h"
#include "store/vertex_table.h"

using namespace Qt::StringLiterals;

namespace {
FrameWord No_Frame() { return {.framed = false}; }

EntryRow Text_Row(QPoint at, const QString& text, const EntryLook& look) {
  return {.ID = u"Text"_s,
          .Eintrag = text,
          .Schrift = look.font.ToText(),
          .Groesse = look.size,
          .VG = look.ink,
          .HG = look.paper,
          .RA = look.frame.ToNumber(),
          .Xmap = at.x(),
          .Ymap = at.y()};
}

}  // namespace

EntryId Named(const QString& name) {
  EntryId id;
  id.name = name;
  return id;
}

EntryLook Plain(int ink, double size) {
  return {.font = {.family = u"Arial"_s}, .size = size, .ink = ink, .frame = No_Frame()};
}
EntryLook Framed(int color, int width, double size) {
  EntryLook look = Plain(0, size);
  look.frame = {.width = width, .color = color};
  return look;
}
EntryLook Clear(int ink, double size) {
  EntryLook look = Plain(ink, size);
  look.font.transparent = true;
  return look;
}
EntryLook Turned(double degrees, int ink, double size) {
  EntryLook look = Plain(ink, size);
  look.font.angle = degrees;
  return look;
}
EntryLook Symbol(int ink, double size) {
  EntryLook look = Clear(ink, size);
  look.font.family = u"Wingdings"_s;
  return look;
}
EntryLook Bold(EntryLook look) {
  look.font.bold = true;
  return look;
}
EntryLook Italic(EntryLook look) {
  look.font.italic = true;
  return look;
}
EntryLook On(int paper, EntryLook look) {
  look.paper = paper;
  return look;
}

EntryLook White_On(int paper) {
  EntryLook look = On(paper, Framed(0));
  look.ink = 15;
  return look;
}

ShapeLook Stroke(int color, int width, bool rounded) {
  return {.ink = color, .frame = No_Frame(), .width = width, .rounded = rounded};
}
ShapeLook Dashed(ShapeLook look) {
  look.dashed = true;
  return look;
}
ShapeLook Filled(int fillCode, int ink, int paper, bool rounded) {
  return {.ink = ink, .paper = paper, .frame = {.color = ink}, .fill = {fillCode}, .rounded = rounded};
}

DemoTable::DemoTable(const QString& path, const QString& mapName, QSize map) {
  dbEntries = Workspace::CreateDatabase(path);
  Make_Template(*dbEntries);
  rsEntries = dbEntries->OpenRecordset(u"MapData"_s);
  dbEntries->BeginTrans();
  // The path changes with the place the table is copied to; the program writes it at loading.
  const HeaderRow header{.tablePath = path.mid(path.lastIndexOf(u'/') + 1),
                         .mapName = mapName,
                         .width = map.width(),
                         .height = map.height()};
  Append_Entry(header.ToEntry());
  rsEntries->MoveFirst();
}

DemoTable::~DemoTable() {
  rsEntries.reset();
  dbEntries.reset();
}

void DemoTable::Finish() {
  dbEntries->CommitTrans();
  rsEntries.reset();
  dbEntries->Close();
}

void DemoTable::Text(QPoint at, const QString& text, const EntryLook& look) {
  Text(Named(u"Text"_s), {.base = static_cast<int>(EntryKind::Text)}, at, text, look);
}

void DemoTable::Text(const EntryId& id, EntryType type, QPoint at, const QString& text, const EntryLook& look) {
  EntryRow row = Text_Row(at, text, look);
  row.ID = id.ToText();
  row.Typ = type.ToNumber();
  Append_Entry(row);
}

void DemoTable::Reference(EntryKind kind, QPoint at, QPoint foot, const QString& text, const EntryLook& look) {
  EntryRow row = Text_Row(at, text, look);
  row.Xline = foot.x();
  row.Yline = foot.y();
  row.Typ = static_cast<int>(kind);
  Append_Entry(row);
}

QString DemoTable::Line(const std::vector<QPoint>& points, const ShapeLook& look, QPoint labelAt,
                        const QString& label) {
  return Polygon(u"Linie"_s, points, look, labelAt, label);
}

QString DemoTable::Area(const std::vector<QPoint>& points, const ShapeLook& look, QPoint labelAt,
                        const QString& label) {
  return Polygon(u"Flaeche"_s, points, look, labelAt, label);
}

QString DemoTable::Polygon(const QString& kind, const std::vector<QPoint>& points, const ShapeLook& look,
                           QPoint labelAt, const QString& label) {
  const QString name = New_Poly_Table(kind);
  Create_Vertex_Table(name);
  Write_Vertices(name, points);
  const bool isArea = kind == "Flaeche"_L1;
  EntryId id = Named(name);
  id.ends = look.ends;
  constexpr int solidLine = 1, dashedLine = 2;
  const int lineStyle = look.dashed ? dashedLine : solidLine;
  const FontSpec font{.family = u"Arial"_s, .transparent = true};
  Append_Entry({.ID = id.ToText(),
                .Eintrag = label.isEmpty() ? name : label,
                .Schrift = font.ToText(),
                .Groesse = label.isEmpty() ? -8.0 : 14.0,
                .VG = look.ink,
                .HG = look.paper,
                .RA = look.frame.ToNumber(),
                .Xmap = labelAt.x(),
                .Ymap = labelAt.y(),
                .Xline = look.width,
                .Yline = isArea ? look.fill.ToNumber() : lineStyle,
                .Typ = static_cast<int>(look.rounded ? EntryKind::PolygonRound : EntryKind::Polygon)});
  return name;
}

void DemoTable::Figure(EntryKind kind, const QRect& box, const ShapeLook& look, double degrees) {
  const QString word = kind == EntryKind::Rectangle ? u"Rechteck"_s
                       : kind == EntryKind::Square  ? u"Quadrat"_s
                       : kind == EntryKind::Ellipse ? u"Ellipse"_s
                                                    : u"Kreis"_s;
  EntryRow row{.ID = Next_Figure_ID(),
               .Eintrag = word,
               .Schrift = look.fill.ToSchrift(degrees),
               .Groesse = 10,
               .VG = look.ink,
               .HG = look.paper,
               .RA = look.frame.ToNumber(),
               .Typ = static_cast<int>(kind)};
  set_entry_box(row, {.x = box.x(), .y = box.y(), .width = box.width(), .height = box.height()});
  Append_Entry(row);
}

void DemoTable::FreeFigure(const std::vector<QPoint>& points, const ShapeLook& look) {
  const QString name = Next_Figure_ID();
  Create_Vertex_Table(name);
  Write_Vertices(name, points);
  const QRect box = QPolygon(QList<QPoint>(points.begin(), points.end())).boundingRect();
  EntryRow row{.ID = name,
               .Eintrag = u"Freie Figur"_s,
               .Schrift = look.fill.ToSchrift(),
               .Groesse = 10,
               .VG = look.ink,
               .HG = look.paper,
               .RA = look.frame.ToNumber(),
               .Typ = static_cast<int>(look.rounded ? EntryKind::FreeFigureRound : EntryKind::FreeFigure)};
  // QRect counts its last pixel in: the corners lie one less apart.
  set_entry_box(row, {.x = box.x(), .y = box.y(), .width = box.width() - 1, .height = box.height() - 1});
  Append_Entry(row);
}

void DemoTable::Picture(QPoint at, const QString& file, const FrameWord& frame, QPoint foot) {
  Append_Entry({.ID = u"Bild"_s,
                .Eintrag = file,
                .Schrift = u"-"_s,
                .VG = 0,
                .HG = 15,
                .RA = frame.ToNumber(),
                .Xmap = at.x(),
                .Ymap = at.y(),
                .Xline = foot.x(),
                .Yline = foot.y(),
                .Typ = static_cast<int>(EntryKind::Picture)});
}

void DemoTable::PlanSquares(QPoint corner, int columns, int rows, int side, const QString& sizeText) {
  const QString prefix = u"Plan"_s + QChar(31);
  const FrameWord lines{.width = 2, .color = 5};
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      const QString name = QChar(u'A' + column) + u'-' + QString::number(row + 1);
      EntryRow square{.ID = prefix + name,
                      .Eintrag = name,
                      .Schrift = u"Arial"_s,
                      .Groesse = 10,
                      .VG = 5,
                      .HG = 15,
                      .RA = lines.ToNumber(),
                      .Typ = static_cast<int>(EntryKind::PlanSquare)};
      set_entry_box(square, {corner.x() + column * side, corner.y() + row * side, side, side});
      Append_Entry(square);
    }
  }
  // A part of the map, given in pixels, names in the middle of the squares.
  constexpr int partOfMap = 2, inPixels = 2, namesInTheMiddle = 4;
  Append_Entry({.ID = prefix + u"Raster"_s,
                .Eintrag = sizeText,
                .Schrift = u"Arial 0 -"_s,
                .Groesse = 10,
                .VG = 5,
                .HG = 15,
                .RA = lines.ToNumber(),
                .Xmap = 100 * partOfMap + inPixels,
                .Ymap = namesInTheMiddle,
                .Xline = corner.x(),
                .Yline = corner.y(),
                .Typ = static_cast<int>(EntryKind::PlanDesign)});
}

void DemoTable::ScaleBar(QPoint at, int length, int value, const QString& unit) {
  constexpr int thickness = 8;
  Append_Entry({.ID = u"Maßstab"_s,
                .Eintrag = unit,
                .Schrift = QString::number(value),
                .Groesse = static_cast<double>(value),
                .VG = 9,
                .HG = 0,
                .RA = 0,
                .Xmap = at.x(),
                .Ymap = at.y(),
                .Xline = at.x() + length,
                .Yline = at.y() + thickness,
                .Typ = static_cast<int>(EntryKind::Scale)});
}

void DemoTable::NorthArrow(QPoint at) { Append_Entry(Make_North_Arrow(at, 0, 15)); }
