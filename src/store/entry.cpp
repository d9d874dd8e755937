#include "store/entry.h"

#include "platform/text.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/table_state.h"
#include "store/transaction.h"

namespace {

FieldInfo Text_Field(const char* name) { return {QString::fromUtf8(name), FieldType::Text, textColumnWidth}; }
FieldInfo Number_Field(const char* name) { return {QString::fromUtf8(name), FieldType::Integer, 0}; }

int Read_Int16(const Recordset& rows, int number) {
  const qint64 value = rows.Integer(number);
  if (value != Stored_Number(value))
    Raise(errors::overflow, QStringLiteral("In der Spalte %1 steht eine Zahl, die zu groß ist: %2.")
                                .arg(rows.Fields()[static_cast<size_t>(number)].name)
                                .arg(value));
  return static_cast<int>(value);
}

// Rows of older tables may hold the size of a square instead of its corner.
bool Holds_Corner(const EntryRow& row) {
  return EntryType::Parse(row.Typ).Kind() == EntryKind::PlanSquare && row.Xline > row.Xmap && row.Yline > row.Ymap;
}

}  // namespace

TableDef MapData_Def() {
  return {QStringLiteral("MapData"),
          {Text_Field("ID"), Text_Field("Eintrag"), Text_Field("Schrift"),
           FieldInfo{QStringLiteral("Größe"), FieldType::Double, 0}, Number_Field("VG"), Number_Field("HG"),
           Number_Field("RA"), Number_Field("Xmap"), Number_Field("Ymap"), Number_Field("Xline"), Number_Field("Yline"),
           Number_Field("Typ")}};
}

TableDef Qdata_Def() { return {QStringLiteral("Qdata"), {Text_Field("Nr"), Text_Field("Ort"), Text_Field("Spzf")}}; }

TableDef Vertex_Def(const QString& name) { return {name, {Number_Field("xf"), Number_Field("yf")}}; }

void Make_Template(Database& database) {
  In_Transaction(database, [&database] {
    database.CreateTable(MapData_Def());
    database.CreateTable(Qdata_Def());
    const auto settings = database.OpenRecordset(QStringLiteral("Qdata"));
    settings->AddNew();
    settings->Set(0, QStringLiteral("FSZ"));
    settings->Set(1, QStringLiteral("1"));
    settings->Update();
  });
}

EntryRow Read_Entry(const Recordset& rows, const ColumnPlaces& places, Beyond16 beyond) {
  const auto place = [&places](int number) { return places[static_cast<size_t>(number)]; };
  const auto number = [&](int which) {
    return beyond == Beyond16::Nearest ? Stored_Number(rows.Integer(place(which))) : Read_Int16(rows, place(which));
  };
  EntryRow row;
  row.ID = rows.Text(place(column::ID));
  row.Eintrag = rows.Text(place(column::Eintrag));
  row.Schrift = rows.Text(place(column::Schrift));
  row.Groesse = rows.Number(place(column::Groesse));
  row.VG = number(column::VG);
  row.HG = number(column::HG);
  row.RA = number(column::RA);
  row.Xmap = number(column::Xmap);
  row.Ymap = number(column::Ymap);
  row.Xline = number(column::Xline);
  row.Yline = number(column::Yline);
  row.Typ = number(column::Typ);
  return row;
}

std::optional<EntryRow> Read_Sound_Entry() {
  try {
    return Read_Entry(*rsEntries);
  } catch (const Error&) {
    return std::nullopt;
  }
}

std::optional<EntryRow> Sound_Entry_At(const QString& bookmark) {
  if (bookmark.isEmpty() || !rsEntries || !rsEntries->IsOpen() || !rsEntries->HasRow(bookmark)) return std::nullopt;
  const KeepCurrentRow keep;
  rsEntries->SetBookmark(bookmark);
  return Read_Sound_Entry();
}

EntryType Type_Here() { return EntryType::Parse(rsEntries->Integer(column::Typ)); }

void Write_Entry(Recordset& rows, const EntryRow& entry) {
  rows.Set(column::ID, entry.ID);
  rows.Set(column::Eintrag, entry.Eintrag);
  rows.Set(column::Schrift, entry.Schrift);
  rows.Set(column::Groesse, entry.Groesse);
  const auto number = [&rows](int where, int value) { rows.Set(where, static_cast<qint64>(To_Int16(value))); };
  number(column::VG, entry.VG);
  number(column::HG, entry.HG);
  number(column::RA, entry.RA);
  number(column::Xmap, entry.Xmap);
  number(column::Ymap, entry.Ymap);
  number(column::Xline, entry.Xline);
  number(column::Yline, entry.Yline);
  number(column::Typ, entry.Typ);
}

namespace {

// A row that cannot be written leaves no half-open edit behind.
void Write_And_Update(const EntryRow& entry) {
  try {
    Write_Entry(*rsEntries, entry);
    rsEntries->Update();
  } catch (...) {
    if (rsEntries->Editing()) rsEntries->CancelUpdate();
    throw;
  }
  Tbl.Tag = TableTag::Dirty;
}

}  // namespace

void Append_Entry(const EntryRow& entry) {
  rsEntries->AddNew();
  Write_And_Update(entry);
}

void Update_Entry(const EntryRow& entry) {
  rsEntries->Edit();
  Write_And_Update(entry);
}

EntryBox entry_box(const EntryRow& row) {
  if (Holds_Corner(row)) return {row.Xmap, row.Ymap, row.Xline - row.Xmap, row.Yline - row.Ymap};
  return {row.Xmap, row.Ymap, row.Xline, row.Yline};
}

void set_entry_box(EntryRow& row, const EntryBox& box) {
  row.Xmap = box.x;
  row.Ymap = box.y;
  const bool corner = EntryType::Parse(row.Typ).Kind() == EntryKind::PlanSquare;
  row.Xline = corner ? box.x + box.width : box.width;
  row.Yline = corner ? box.y + box.height : box.height;
}

QString Font_Text(const EntryType& type, const QString& schrift) {
  return type.IsPolygon() && FillCode::IsFill(schrift) ? QStringLiteral("Arial") : schrift;
}

QString Entry_Name() {
  const QString id = rsEntries->Text(column::ID);
  const EntryType type = Type_Here();
  QString name = id + u'\n';
  if (type.IsText()) {
    const bool symbol = FontSpec::Parse(rsEntries->Text(column::Schrift)).IsSymbol();
    name = symbol ? QStringLiteral("Symbol\n") : QStringLiteral("Text\n");
  } else if (type.Kind() == EntryKind::Picture) {
    name = QStringLiteral("Bild\n");
  } else if (type.Kind() == EntryKind::Scale) {
    name = QStringLiteral("Maßstab ") + Number_Text(rsEntries->Number(column::Groesse)) + u' ';
  } else if (type.Kind() == EntryKind::PlanSquare || type.Kind() == EntryKind::PlanDesign) {
    name = QStringLiteral("Planquadrat\n");
  }
  return name;
}

int Entry_Count() {
  if (!rsEntries || !rsEntries->IsOpen()) return 0;
  return std::max(0, rsEntries->RecordCount() - 1);
}

bool Table_Is_Open() { return rsEntries && rsEntries->IsOpen() && Entry_Count() > 0; }

bool On_Current_Entry() {
  if (!Table_Is_Open()) return false;
  if (!Map.CurBookmark.isEmpty() && rsEntries->HasRow(Map.CurBookmark)) rsEntries->SetBookmark(Map.CurBookmark);
  return rsEntries->Position() > 0;
}
