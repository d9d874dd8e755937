#include "workbook/workbook.h"

#include <QFileInfo>

#include "platform/files.h"
#include "workbook/workbook_book.h"
#include "workbook/workbook_sheet_xml.h"

using namespace workbook_inner;

namespace {
constexpr qint64 viewReach = 4096;  // a sheet's view stands near the start of its part

QString Quoted(const QString& path) { return u'"' + path + u'"'; }

bool Is_Old_Format(const QByteArray& bytes) { return bytes.startsWith("\xD0\xCF\x11\xE0"); }

// "KARTE.XLS" -> "KARTE_alt.XLS", "KARTE_alt2.XLS", ...: a name that is free.
QString Free_Aside_Name(const QString& path) {
  const qsizetype point = path.lastIndexOf(u'.');
  const qsizetype folder = path.lastIndexOf(u'/');
  const QString stem = point > folder ? path.left(point) : path, ending = point > folder ? path.mid(point) : QString();
  QString name = stem + QStringLiteral("_alt") + ending;
  for (int number = 2; !Find_File(name).isEmpty(); ++number)
    name = stem + QStringLiteral("_alt%1").arg(number) + ending;
  return name;
}

// When the file was changed last and how large it is; both empty without a file.
struct Stamp {
  QDateTime changed;
  qint64 size = -1;
  bool operator==(const Stamp&) const = default;
};
Stamp Stamp_Of(const QString& path) {
  const QString found = Find_File(path);
  if (found.isEmpty()) return {};
  const QFileInfo info(found);
  return {info.lastModified(), info.size()};
}
}  // namespace

QString Workbook_Name(const QString& table) {
  const qsizetype point = table.lastIndexOf(u'.');
  if (point < 0 || point < Clean_Path(table).lastIndexOf(u'/'))
    Raise(workbook_errors::bounds, QStringLiteral("Keine Tabellendatei gefunden\nName: ") + table);
  return table.left(point) + QStringLiteral(".XLS");
}

std::optional<WorkbookLock> Workbook_Lock(const QString& path) {
  const QString clean = Clean_Path(path);
  const QString found = Find_File(clean);
  const QString real = found.isEmpty() ? clean : found;
  const qsizetype cut = real.lastIndexOf(u'/') + 1;
  const QString file = Find_File(real.left(cut) + QStringLiteral(".~lock.") + real.mid(cut) + u'#');
  if (file.isEmpty()) return {};
  WorkbookLock lock{file, {}, {}};
  try {
    // "name,account,machine,date and time,profile;"
    const QStringList words = QString::fromUtf8(Read_Bytes(file)).split(u',');
    for (const QString& word : words.mid(0, 2))
      if (lock.user.isEmpty()) lock.user = word.trimmed();
    lock.since = words.value(3).trimmed();
  } catch (const Error&) {
    // That it is there is enough.
  }
  return lock;
}

QString Lock_Text(const QString& path, const WorkbookLock& lock) {
  QString text = QStringLiteral("Die Arbeitsmappe %1 ist in der Tabellenkalkulation geöffnet").arg(Quoted(path));
  QStringList known;
  if (!lock.user.isEmpty()) known += QStringLiteral("von ") + lock.user;
  if (!lock.since.isEmpty()) known += QStringLiteral("seit ") + lock.since;
  if (!known.isEmpty()) text += QStringLiteral(" (%1)").arg(known.join(u' '));
  return text + QStringLiteral(".\nBitte schließen Sie sie dort.\nIst sie nirgends geöffnet, löschen Sie die Datei %1.")
                    .arg(Quoted(lock.file));
}

struct Workbook::Inner {
  explicit Inner(QByteArray bytes) : package(std::move(bytes)), book(package) {}
  StyleTable& Styles() {
    if (styles) return *styles;
    const QString part = book.Part_Of_Kind(QStringLiteral("styles"));
    styles = std::make_unique<StyleTable>(part.isEmpty() ? QByteArray() : package.Read(part));
    return *styles;
  }
  const QStringList& Shared_Strings() {
    const QString part = book.Part_Of_Kind(QStringLiteral("sharedStrings"));
    if (!sharedRead && !part.isEmpty()) shared = Read_Shared_Strings(package.Read(part), part);
    sharedRead = true;
    return shared;
  }
  bool Is_Selected(const Book::Entry& entry) {
    return entry.worksheet && package.Has(entry.part) && Is_Selected_Sheet_Part(package.Read(entry.part, viewReach));
  }
  Book::Entry Existing(const QString& name) {
    const int index = book.Find(name);
    if (index < 0) Raise(9, QStringLiteral("Die Arbeitsmappe hat kein Tabellenblatt \"%1\".").arg(name));
    return book.Sheets()[static_cast<size_t>(index)];
  }
  void Show_First(int index, bool wasSelected);
  void Store_Styles();

  QString path, aside;
  Stamp stamp;
  Package package;
  Book book;
  std::unique_ptr<StyleTable> styles;
  QStringList shared;
  bool isNew = false, changed = false, sharedRead = false;
};

Workbook::Workbook(const QString& path) {
  const QString clean = Clean_Path(path);
  const Stamp stamp = Stamp_Of(clean);
  const QString found = Find_File(clean);
  QByteArray bytes = found.isEmpty() ? QByteArray() : Read_Bytes(found);
  const bool old = Is_Old_Format(bytes);
  try {
    if (!found.isEmpty() && !old && !bytes.startsWith("PK"))
      Raise(workbook_errors::damaged, QStringLiteral("Die Datei ist keine Arbeitsmappe oder beschädigt."));
    if (old) bytes.clear();
    const bool fresh = bytes.isEmpty();
    inner = std::make_unique<Inner>(std::move(bytes));
    inner->isNew = fresh;
  } catch (const Error& error) {
    if (error.number != workbook_errors::damaged) throw;
    Raise(error.number, error.text + u'\n' + found);
  }
  inner->path = found.isEmpty() ? clean : found;
  inner->stamp = stamp;
  if (old) inner->aside = Free_Aside_Name(inner->path);
}

Workbook::~Workbook() = default;

bool Workbook::IsNew() const { return inner->isNew; }
QString Workbook::AsidePath() const { return inner->aside; }

QStringList Workbook::SheetNames() const {
  QStringList names;
  for (const Book::Entry& entry : inner->book.Sheets()) names += entry.name;
  return names;
}

bool Workbook::HasSheet(const QString& name) const { return inner->book.Find(name) >= 0; }

Sheet Workbook::Read(const QString& name) const {
  const Book::Entry entry = inner->Existing(name);
  Sheet sheet(entry.name);
  if (entry.worksheet)
    Read_Sheet_Part(sheet, inner->package.Read(entry.part), entry.part,
                    {inner->Shared_Strings(), inner->Styles(), inner->book.Counts_From_1904()});
  return sheet;
}

bool Workbook::IsEmpty(const QString& name) const {
  const Book::Entry entry = inner->Existing(name);
  return entry.worksheet && !inner->package.Has(Relations::Part_Of(entry.part)) && !inner->book.Is_Named(entry.name) &&
         Is_Empty_Sheet_Part(inner->package.Read(entry.part), entry.part);
}

// A sheet that says of itself that it is selected, beside another one that is shown, would have the user write into
// both. Such a sheet of others stays the one that is shown.
void Workbook::Inner::Show_First(int index, bool wasSelected) {
  const std::vector<Book::Entry> sheets = book.Sheets();
  for (size_t i = 0; i < sheets.size(); ++i)
    if (static_cast<int>(i) != index && !wasSelected && Is_Selected(sheets[i])) return;
  book.Set_Active(index);
}

void Workbook::Put(const Sheet& sheet) {
  if (!Is_Sheet_Name(sheet.name))
    Raise(workbook_errors::bounds,
          QStringLiteral("\"%1\" kann kein Name eines Tabellenblatts sein (höchstens 31 Zeichen, keines von []:*?/\\).")
              .arg(sheet.name));
  Book& book = inner->book;
  int index = book.Find(sheet.name);
  if (index >= 0 && !book.Sheets()[static_cast<size_t>(index)].worksheet) {
    book.Remove_Sheet(index);
    index = -1;
  }
  QString part;
  bool selected = false;
  if (index >= 0) {
    const Book::Entry entry = book.Sheets()[static_cast<size_t>(index)];
    selected = inner->Is_Selected(entry);
    part = entry.part;
    book.Renew_Sheet(index);
    inner->package.Remove(Relations::Part_Of(part));
  } else {
    part = book.Add_Sheet(sheet.name);
  }
  const auto last = static_cast<int>(book.Sheets().size()) - 1;
  inner->Show_First(last, selected);
  const SheetFrame frame{book.Main_Namespace().toStdString(), book.Has_View(), selected};
  inner->package.Put(part, Write_Sheet_Part(sheet, inner->Styles(), frame));
  if (last > 0) book.Ask_Calculation();
  inner->changed = true;
}

void Workbook::RemoveEmpty(const QString& part) {
  for (const QString& name : SheetNames()) {
    if (!name.contains(part) || inner->book.Visible_Count() < 2 || !IsEmpty(name)) continue;
    inner->book.Remove_Sheet(inner->book.Find(name));
    inner->changed = true;
  }
}

void Workbook::Inner::Store_Styles() {
  if (!styles || !styles->Changed()) return;
  QString part = book.Part_Of_Kind(QStringLiteral("styles"));
  if (part.isEmpty()) part = book.Add_Part(QStringLiteral("styles"), QStringLiteral("styles.xml"));
  package.Put(part, styles->Bytes());
}

void Workbook::Save() {
  if (!inner->changed) return;
  const QString& path = inner->path;
  if (const auto lock = Workbook_Lock(path)) Raise(workbook_errors::openElsewhere, Lock_Text(path, *lock));
  if (Stamp_Of(path) != inner->stamp)
    Raise(
        workbook_errors::changed,
        QStringLiteral("Die Arbeitsmappe %1 wurde inzwischen von einem anderen Programm geändert.").arg(Quoted(path)));
  inner->Store_Styles();
  inner->book.Store();
  try {
    const QByteArray bytes = inner->package.Bytes();
    if (!inner->aside.isEmpty()) File_Rename(path, inner->aside);
    try {
      Replace_File(path, bytes);
    } catch (const Error&) {
      if (!inner->aside.isEmpty()) File_Rename(inner->aside, path);
      throw;
    }
  } catch (const Error& error) {
    Raise(error.number,
          QStringLiteral("Die Arbeitsmappe %1 kann nicht geschrieben werden:\n").arg(Quoted(path)) + error.text);
  }
  inner->stamp = Stamp_Of(path);
  inner->aside.clear();
  inner->changed = false;
}
