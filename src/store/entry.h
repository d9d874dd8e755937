#pragma once
#include <QRect>
#include <QString>
#include <array>
#include <optional>
#include <type_traits>

#include "platform/database.h"
#include "state/global_state.h"
#include "store/current_row.h"
#include "store/entry_id.h"
#include "store/entry_type.h"
#include "store/fill_code.h"
#include "store/font_spec.h"
#include "store/frame_word.h"
#include "store/stored_number.h"

// Numbers of the twelve fixed columns of MapData, in their order.
namespace column {
inline constexpr int ID = 0, Eintrag = 1, Schrift = 2, Groesse = 3, VG = 4, HG = 5, RA = 6, Xmap = 7, Ymap = 8,
                     Xline = 9, Yline = 10, Typ = 11, fixedCount = 12;
}

// One row of MapData, typed. Positions are map pixels; Größe points or as the kind says.
struct EntryRow {
  QString ID, Eintrag, Schrift;
  double Groesse = 0;
  int VG = 0, HG = 0, RA = 0, Xmap = 0, Ymap = 0, Xline = 0, Yline = 0, Typ = 0;
  bool operator==(const EntryRow&) const = default;
};

// Definition of MapData, Qdata and of a vertex table.
TableDef MapData_Def();
TableDef Qdata_Def();
TableDef Vertex_Def(const QString& name);
// Makes MapData and Qdata with its one row in an empty database: the template.
void Make_Template(Database& database);

// Where a recordset has the twelve columns, by column::; and what becomes of integers beyond 16 bits.
using ColumnPlaces = std::array<int, column::fixedCount>;
inline constexpr ColumnPlaces ownPlaces{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
enum class Beyond16 { Error, Nearest };
// The current row of the recordset. Integers beyond 16 bits are error 6, with the column's name, or read as the
// nearest.
EntryRow Read_Entry(const Recordset& rows, const ColumnPlaces& places = ownPlaces, Beyond16 beyond = Beyond16::Error);
// The current row of rsEntries; nothing where another program wrote numbers beyond the columns' range: such a row is
// left to the repair.
std::optional<EntryRow> Read_Sound_Entry();
// The same of another row, nothing if it is gone; the cursor stays. Raises nothing.
std::optional<EntryRow> Sound_Entry_At(const QString& bookmark);
// Kind, mark and visibility of the current row of rsEntries.
EntryType Type_Here();
// Between AddNew or Edit and Update.
void Write_Entry(Recordset& rows, const EntryRow& entry);
// AddNew, write, Update; the current row stays. Marks the table dirty.
void Append_Entry(const EntryRow& entry);
// Edit, write, Update of the current row of rsEntries. Marks the table dirty.
void Update_Entry(const EntryRow& entry);

// Box of a figure or plan square in map pixels. Figures hold width and height in Xline, Yline; plan squares their lower
// right corner (a row whose corner is not beyond its position holds a size).
struct EntryBox {
  int x = 0, y = 0, width = 0, height = 0;
  bool operator==(const EntryBox&) const = default;
};
EntryBox entry_box(const EntryRow& row);  // of any kind
// Plan squares hold the opposite corner in place of width and height.
void set_entry_box(EntryRow& row, const EntryBox& box);

// What Schrift says of the font of a row's text. Lines and areas may have been given a fill there: that is "Arial".
QString Font_Text(const EntryType& type, const QString& schrift);

// Name of the current row for messages: "Text" CR, "Bild" CR, ID CR, "Planquadrat" CR, "Maßstab " size " ", "Symbol"
// CR. Raises what the table raises.
QString Entry_Name();
// Is a table open that holds entries?
bool Table_Is_Open();
// Puts the cursor on the current entry (Map.CurBookmark). False on the header row and without an entry.
bool On_Current_Entry();
// Entries of the open table without the header row; 0 without a table.
int Entry_Count();

// How a walk through the rows goes on: after a row the work has deleted the cursor stands on the next one already.
enum class Walk { On, RowGone, Stop };

// Calls the work for every row of rsEntries but the header, in table order, with the cursor on it; afterwards the
// cursor is where it was. Work returns nothing or how to go on.
template <typename Work>
void For_Each_Entry(Work&& work) {
  const KeepCurrentRow keep;
  rsEntries->MoveFirst();
  if (!rsEntries->Eof()) rsEntries->MoveNext();
  while (!rsEntries->Eof()) {
    Walk next = Walk::On;
    if constexpr (std::is_void_v<std::invoke_result_t<Work&>>)
      work();
    else
      next = work();
    if (next == Walk::Stop) return;
    if (next == Walk::On) rsEntries->MoveNext();
  }
}
