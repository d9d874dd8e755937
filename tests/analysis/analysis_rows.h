#pragma once
#include <QHash>

#include "analysis/map_input.h"

// Rows and shapes of a small map, by hand.
inline EntryRow Row(const QString& id, int typ, const QString& text = {}, int x = 10, int y = 20) {
  EntryRow row;
  row.ID = id;
  row.Typ = typ;
  row.Eintrag = text;
  row.Schrift = QStringLiteral("Arial");
  row.Xmap = x;
  row.Ymap = y;
  return row;
}

struct TestMap : MapInput {
  TestMap() {
    mapName = QStringLiteral("Karte.bmp");
    tableName = QStringLiteral("KARTE.MDB");
    measure = {.pixelMm = 0.25, .perPixel = 2, .unit = QStringLiteral(" m"), .hasScale = true};
    for (size_t i = 0; i < palette.size(); ++i) palette[i] = qRgb(static_cast<int>(i), 100, 200);
    vertices = [this](const EntryRow& row) { return shapes.value(EntryId::Parse(row.ID).TableName()); };
  }
  TestMap(const TestMap&) = delete;
  QHash<QString, std::vector<QPoint>> shapes;
  void Add(const QString& id, int typ, const QString& text = {}) { rows.push_back(Row(id, typ, text)); }
  // Texts that are assigned to something.
  void Assign(const QString& to, const QStringList& texts) {
    for (const QString& text : texts) Add(QStringLiteral("Text>") + to, 0, text);
  }
  void Add_Square(const QString& id, int side, int typ = 4, const QString& text = {}) {
    Add(id, typ, text);
    shapes[EntryId::Parse(id).TableName()] = {{0, 0}, {side, 0}, {side, side}, {0, side}};
  }
};
