#include "store/header_row.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/text.h"
#include "state/global_state.h"
#include "state/table_state.h"

namespace {

constexpr int largest = std::numeric_limits<int16_t>::max();

// Paths beyond the column's width keep their beginning and their end: the end names the file.
QString Fitted(const QString& path) {
  if (path.size() <= textColumnWidth) return path;
  return path.left(3) + QStringLiteral("...") + path.right(textColumnWidth - 6);
}

int Margin(double mm) { return static_cast<int>(std::clamp(std::nearbyint(mm), 0.0, 1000.0)); }

}  // namespace

HeaderRow HeaderRow::FromEntry(const EntryRow& row, bool* repaired) {
  HeaderRow header;
  bool changed = false;
  if (EntryId::StoredIsHeader(row.ID)) {
    header.ID = row.ID;
  } else {
    changed = true;
  }
  header.tablePath = row.Eintrag;
  header.mapName = row.Schrift;
  header.left = Margin(row.Groesse);
  header.right = Margin(row.VG);
  header.top = Margin(row.HG);
  header.bottom = Margin(row.RA);
  header.width = row.Xmap;
  header.height = row.Ymap;
  header.orientation = row.Xline == 2 ? 2 : 1;
  if (row.Xline >= 3) changed = true;
  header.printFactor = row.Yline > 0 ? row.Yline / 1000.0 : 1.0;
  header.netVisible = row.Typ != -2;
  if (row.Typ != -1 && row.Typ != -2) changed = true;
  if (repaired != nullptr) *repaired = changed;
  return header;
}

EntryRow HeaderRow::ToEntry() const {
  EntryRow row;
  row.ID = ID;
  row.Eintrag = Fitted(tablePath);
  row.Schrift = Fitted(mapName);
  row.Groesse = left;
  row.VG = right;
  row.HG = top;
  row.RA = bottom;
  row.Xmap = std::min(width, largest);
  row.Ymap = std::min(height, largest);
  row.Xline = orientation;
  row.Yline = static_cast<int>(std::clamp(std::nearbyint(printFactor * 1000), 1.0, double(largest)));
  row.Typ = netVisible ? -1 : -2;
  return row;
}

HeaderRow Read_Header() {
  const KeepCurrentRow keep;
  rsEntries->MoveFirst();
  return HeaderRow::FromEntry(Read_Entry(*rsEntries));
}

void Write_Header(const HeaderRow& header) {
  const KeepCurrentRow keep;
  rsEntries->MoveFirst();
  const EntryRow row = header.ToEntry();
  if (Read_Entry(*rsEntries) != row) Update_Entry(row);
}

float Read_Font_Factor() {
  try {
    const auto settings = dbEntries->OpenRecordset(QStringLiteral("Qdata"));
    settings->MoveFirst();
    if (settings->Eof() || settings->Text(u"Nr") != QLatin1String("FSZ")) return 1.0F;
    const double factor = Val_Comma(settings->Text(u"Ort"));
    return factor > 0 ? static_cast<float>(std::clamp(factor, smallestFontFactor, largestFontFactor)) : 1.0F;
  } catch (const Error&) {
    return 1.0F;  // an older table without settings
  }
}

void Write_Font_Factor(float factor) {
  if (!dbEntries->HasTable(QStringLiteral("Qdata"))) dbEntries->CreateTable(Qdata_Def());
  const auto settings = dbEntries->OpenRecordset(QStringLiteral("Qdata"));
  settings->MoveFirst();
  if (settings->Eof()) {
    settings->AddNew();
  } else {
    settings->Edit();
  }
  settings->Set(u"Nr", QStringLiteral("FSZ"));
  settings->Set(u"Ort", QString::number(static_cast<double>(factor), 'g', 6));
  settings->Update();
}
