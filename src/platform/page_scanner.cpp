#include "platform/page_scanner.h"

#include <algorithm>
#include <map>
#include <set>

#include "platform/page_schema.h"

namespace page_scanner {
namespace {

constexpr int deepestTree = 40;

bool Fits(const FieldInfo& field, const Field& value) {
  if (std::holds_alternative<std::monostate>(value)) return true;
  return std::holds_alternative<QByteArray>(value) == (field.type == FieldType::Text);
}

// A table on the way out of the file.
struct Found {
  Table table;
  Described described;
  bool incomplete = false;  // a part of its tree cannot be read
  bool guessed = false;     // found by the text of its statement alone
};

// Rows that hang together.
struct Group {
  std::vector<Cell> rows;
  size_t width = 0;  // fields of the widest row
};

class Scanner {
 public:
  Scanner(const QByteArray& file, const std::vector<TableDef>& knownTables)
      : pages(file), known(knownTables), visited(static_cast<size_t>(pages.Count()) + 1, 0) {}

  std::vector<Table> Run() {
    Read_Schema();
    Drop_Wrong_Roots();
    for (Found& found : tables) Walk_Table(found);
    Place_Orphans();
    std::vector<Table> result;
    for (Found& found : tables)
      if (!found.table.fields.empty() && !(found.guessed && found.table.rows.empty()))
        result.push_back(std::move(found.table));
    return result;
  }

 private:
  bool Is_New(int page) const { return page >= 1 && page <= pages.Count() && !visited[static_cast<size_t>(page)]; }
  void Visit(int page) { visited[static_cast<size_t>(page)] = 1; }

  // Takes the rows below a page; false if a part is missing.
  bool Walk(int page, int depth, std::vector<Cell>& rows) {
    if (depth > deepestTree || !Is_New(page)) return false;
    if (depth > 0 && roots.count(page) > 0) return false;  // another table's
    if (pages.Kind(page) == PageKind::Inner) {
      Visit(page);
      bool whole = true;
      for (const Child& child : pages.Children(page)) whole = Walk(child.page, depth + 1, rows) && whole;
      return whole;
    }
    const bool isLeaf = pages.Kind(page) == PageKind::Leaf;
    std::vector<Cell> found = pages.Rows(page, true);
    if (!isLeaf && found.empty()) return false;
    Visit(page);
    std::move(found.begin(), found.end(), std::back_inserter(rows));
    return isLeaf;
  }

  static bool Is_Schema_Row(const Cell& row) {
    const auto* kind = row.fields.size() == 5 ? std::get_if<QByteArray>(&row.fields[0]) : nullptr;
    return kind && (*kind == "index" || *kind == "view" || *kind == "trigger" || Read_Description(row.fields));
  }

  // The rows of the description from a page on; false if a part is missing. A page of other rows is left to its table.
  bool Walk_Schema(int page, int depth, std::vector<Cell>& rows) {
    if (depth > deepestTree || !Is_New(page)) return false;
    if (pages.Kind(page) == PageKind::Inner) {
      Visit(page);
      bool whole = true;
      for (const Child& child : pages.Children(page)) whole = Walk_Schema(child.page, depth + 1, rows) && whole;
      return whole;
    }
    std::vector<Cell> found = pages.Rows(page, true);
    const auto fitting = std::count_if(found.begin(), found.end(), Is_Schema_Row);
    if (page > 1 && (fitting == 0 || fitting * 2 < static_cast<qsizetype>(found.size()))) return false;
    Visit(page);
    std::move(found.begin(), found.end(), std::back_inserter(rows));
    return pages.Kind(page) == PageKind::Leaf;
  }

  void Read_Schema() {
    std::vector<Cell> rows;
    schemaLost = !Walk_Schema(1, 0, rows);
    // Parts of the description that the first page no longer leads to.
    for (int page = 2; schemaLost && page <= pages.Count(); ++page)
      if (pages.Kind(page) == PageKind::Leaf) Walk_Schema(page, 1, rows);
    std::stable_sort(rows.begin(), rows.end(), [](const Cell& a, const Cell& b) { return a.key < b.key; });
    for (const Cell& row : rows)
      if (std::optional<Described> it = Read_Description(row.fields)) Add_Described(std::move(*it), false);
    for (int page = 1; page <= pages.Count(); ++page)
      if (!Is_New(page))
        for (Described& it : Find_Descriptions(pages.Bytes(page))) Add_Described(std::move(it), true);
  }

  void Add_Described(Described described, bool guessed) {
    if (Find_Named(described.name)) return;
    if (described.root > pages.Count()) described.root = 0;
    Found found;
    found.table.name = described.name;
    found.described = std::move(described);
    found.guessed = guessed;
    tables.push_back(std::move(found));
  }

  // A damaged number leads into the midst of another table or to its top: rows are rather found without it.
  void Drop_Wrong_Roots() {
    std::map<int, int> uses;
    for (const Found& found : tables) ++uses[found.described.root];
    std::set<int> inside;
    for (int page = 2; page <= pages.Count(); ++page)
      for (const Child& child : pages.Children(page))
        if (uses.count(child.page) > 0 && child.page != page && Has_Keys(child)) inside.insert(child.page);
    for (Found& found : tables) {
      int& root = found.described.root;
      if (uses[root] > 1 || inside.count(root) > 0 || !Is_New(root)) root = 0;
      if (root > 0) roots.insert(root);
    }
  }

  // Are the keys of the page those that its place in the tree wants?
  bool Has_Keys(const Child& child) const {
    std::vector<qint64> keys;
    for (const Cell& row : pages.Rows(child.page)) keys.push_back(row.key);
    for (const Child& below : pages.Children(child.page))
      if (below.last != std::numeric_limits<qint64>::max()) keys.push_back(below.last);
    return !keys.empty() &&
           std::all_of(keys.begin(), keys.end(), [&](qint64 key) { return key > child.behind && key <= child.last; });
  }

  Found* Find_Named(const QString& name) {
    const auto found = std::find_if(tables.begin(), tables.end(), [&name](const Found& it) {
      return !name.isEmpty() && it.table.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == tables.end() ? nullptr : &*found;
  }
  const TableDef* Find_Known(const QString& name) const {
    const auto found = std::find_if(known.begin(), known.end(), [&name](const TableDef& it) {
      return !it.name.isEmpty() && it.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == known.end() ? nullptr : &*found;
  }

  void Walk_Table(Found& found) {
    Group group;
    found.incomplete = !Walk(found.described.root, 0, group.rows);
    const TableDef* def = Find_Known(found.table.name);
    const auto take_columns = [&](size_t width) {
      Columns columns = Columns_Of(found.described, width, def, known);
      found.table.sql = columns.asDescribed ? found.described.sql : QByteArray();
      found.table.fields = std::move(columns.fields);
    };
    take_columns(Measured(group).width);
    if (found.table.fields.empty()) found.table.fields = Fields_Of(group);
    // A root that has become something else gives rows that do not fit; they find their own table later.
    if (!group.rows.empty() && !Suits(group, found.table.fields, false)) {
      found.incomplete = true;
      take_columns(0);
      strays.push_back(std::move(group));
      return;
    }
    Take(found.table, std::move(group.rows));
  }

  static void Take(Table& table, std::vector<Cell> rows) {
    for (Cell& row : rows) table.rows.try_emplace(row.key, std::move(row.fields));
  }

  static Group& Measured(Group& group) {
    for (const Cell& row : group.rows) group.width = std::max(group.width, row.fields.size());
    return group;
  }

  // Do the rows belong to such columns? Columns that were added later are missing in older rows.
  static bool Suits(const Group& group, const std::vector<FieldInfo>& fields, bool exactly) {
    if (group.width > fields.size() || (exactly && group.width != fields.size())) return false;
    size_t right = 0, values = 0;
    for (const Cell& row : group.rows)
      for (size_t i = 0; i < row.fields.size(); ++i, ++values) right += Fits(fields[i], row.fields[i]) ? 1u : 0u;
    return right * 10 >= values * 8;
  }

  // Columns by what stands in them.
  static std::vector<FieldInfo> Fields_Of(const Group& group, size_t from = 0, const QString& prefix = "Feld") {
    std::vector<FieldInfo> fields;
    for (size_t i = from; i < group.width; ++i) {
      FieldInfo field{prefix + QString::number(i + 1), FieldType::Integer, 0};
      for (const Cell& row : group.rows) {
        if (i >= row.fields.size()) continue;
        if (std::holds_alternative<QByteArray>(row.fields[i])) field.type = FieldType::Text;
        if (std::holds_alternative<double>(row.fields[i]) && field.type != FieldType::Text)
          field.type = FieldType::Double;
      }
      fields.push_back(field);
    }
    return fields;
  }

  // Pages that no tree leads to. Erased ones are not rows any more.
  void Place_Orphans() {
    for (const int page : pages.Erased())
      if (Is_New(page)) Visit(page);
    std::vector<Group> groups = std::move(strays);
    std::set<int> below;
    for (int page = 2; page <= pages.Count(); ++page)
      if (Is_New(page))
        for (const Child& child : pages.Children(page)) below.insert(child.page);
    // Whole trees first, from their tops; then what is left.
    for (const bool tops : {true, false})
      for (int page = 2; page <= pages.Count(); ++page) {
        if (!Is_New(page) || pages.Kind(page) == PageKind::Other || (tops && below.count(page) > 0)) continue;
        Group group;
        Walk(page, 0, group.rows);
        if (!group.rows.empty()) groups.push_back(std::move(Measured(group)));
      }
    std::stable_sort(groups.begin(), groups.end(),
                     [](const Group& a, const Group& b) { return a.rows.front().key < b.rows.front().key; });
    for (Group& group : groups) Place(group);
  }

  static bool Has_Room(const Table& table, const Group& group) {
    return std::none_of(group.rows.begin(), group.rows.end(),
                        [&table](const Cell& row) { return table.rows.count(row.key) > 0; });
  }
  static bool Adjoins(const Table& table, const Group& group) {
    return table.rows.count(group.rows.front().key - 1) > 0 || table.rows.count(group.rows.back().key + 1) > 0;
  }

  void Place(Group& group) {
    std::vector<Found*> fitting;
    for (Found& found : tables)
      if (Suits(group, found.table.fields, false) && Has_Room(found.table, group) &&
          (!found.table.name.isEmpty() || Adjoins(found.table, group)))
        fitting.push_back(&found);
    // What speaks for one of several tables with the same columns, from the strongest reason to the weakest.
    const auto prefer = [&fitting](const auto& reason) {
      if (fitting.size() > 1 && std::any_of(fitting.begin(), fitting.end(), reason))
        std::erase_if(fitting, [&reason](const Found* it) { return !reason(it); });
    };
    prefer([](const Found* it) { return it->incomplete; });
    prefer([&group](const Found* it) { return Suits(group, it->table.fields, true); });
    prefer([&group](const Found* it) { return Adjoins(it->table, group); });
    if (fitting.size() == 1) return Take(fitting[0]->table, std::move(group.rows));
    Place_By_Columns(group);
  }

  // The table's own name is lost: known columns tell it, or nothing does.
  void Place_By_Columns(Group& group) {
    const TableDef* best = nullptr;
    for (const TableDef& def : known) {
      Group front = group;
      for (Cell& row : front.rows) row.fields.resize(std::min(row.fields.size(), def.fields.size()));
      front.width = std::min(group.width, def.fields.size());
      // Further columns are possible where there are many.
      const bool wide = def.fields.size() >= 8 && group.width >= def.fields.size();
      if ((wide || group.width == def.fields.size()) && Suits(front, def.fields, true) &&
          (!best || best->fields.size() < def.fields.size()))
        best = &def;
    }
    Found* found = best ? Find_Named(best->name) : nullptr;
    if (found && !Has_Room(found->table, group)) best = nullptr;
    if (!found || !best) {
      Found fresh;
      if (best) {
        fresh.table.name = best->name;
        fresh.table.fields = best->fields;
      }
      fresh.incomplete = true;
      tables.push_back(std::move(fresh));
      found = &tables.back();
    }
    std::vector<FieldInfo>& fields = found->table.fields;
    if (group.width > fields.size()) {
      found->table.sql.clear();
      const std::vector<FieldInfo> further = Fields_Of(group, fields.size(), fields.empty() ? "Feld" : "Spalte");
      fields.insert(fields.end(), further.begin(), further.end());
    }
    Take(found->table, std::move(group.rows));
  }

  PageReader pages;
  const std::vector<TableDef>& known;
  std::vector<char> visited;
  std::vector<Found> tables;
  std::set<int> roots;
  std::vector<Group> strays;
  bool schemaLost = false;
};

}  // namespace

std::vector<Table> Scan(const QByteArray& file, const std::vector<TableDef>& known) {
  return Scanner(file, known).Run();
}

}  // namespace page_scanner
