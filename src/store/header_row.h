#pragma once
#include <QString>

#include "store/entry.h"

// The first row of MapData: data of the map the table belongs to. Nobody else takes its columns apart.
struct HeaderRow {
  QString ID = QStringLiteral("!Unbekannt");
  QString tablePath;                             // Eintrag
  QString mapName;                               // Schrift: the map's path, shortened beyond 30 characters
  int left = 0, right = 0, top = 0, bottom = 0;  // print margins in mm (Größe, VG, HG, RA)
  int width = 0, height = 0;                     // map pixels (Xmap, Ymap)
  int orientation = 1;                           // 1 portrait, 2 landscape (Xline)
  double printFactor = 1.0;                      // Yline / 1000
  bool netVisible = true;                        // Typ -1, else -2
  bool operator==(const HeaderRow&) const = default;

  static HeaderRow FromEntry(const EntryRow& row, bool* repaired = nullptr);  // *repaired: something was put right
  // Numbers are brought within 16 bits, texts cut to the column.
  EntryRow ToEntry() const;
};

// Header of the open table (first row of rsEntries); the cursor stays.
HeaderRow Read_Header();
void Write_Header(const HeaderRow& header);
// The enlargement of fonts on paper, from Qdata: the first row's Ort if its Nr is "FSZ", within its limits, else 1.0.
float Read_Font_Factor();
inline constexpr double smallestFontFactor = 0.3, largestFontFactor = 3.0;
// Makes Qdata where it is missing. Raises what the database raises.
void Write_Font_Factor(float factor);
