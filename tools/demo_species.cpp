#include "demo_sets.h"
#include "demo_table.h"

using namespace Qt::StringLiterals;

// What was counted on areas, in a circle, along a route and in a group: numbers stand in front of the names, so that
// every evaluation has something to say.

namespace {

struct Find {
  QPoint at;
  QString text;
};
struct Place {
  QString assignedTo;  // ID of an area, figure or line
  int ink;
  std::vector<Find> finds;
};

const std::vector<Place>& Places() {
  static const std::vector<Place> places = {
      {u"Flaeche0"_s,
       2,
       {{{290, 1050}, u"6 Kiebitz"_s},
        {{440, 1070}, u"2 Wiesenpieper"_s},
        {{290, 1235}, u"3 Feldlerche"_s},
        {{440, 1245}, u"4 Kiebitz"_s},
        {{470, 1150}, u"Bekassine"_s}}},
      {u"Flaeche1"_s,
       5,
       {{{270, 1435}, u"24 Märzenbecher"_s},
        {{220, 1550}, u"9 Lungenkraut"_s},
        {{340, 1530}, u"3 Aronstab"_s},
        {{205, 1470}, u"2 Haselmaus"_s}}},
      {u"Flaeche2"_s,
       4,
       {{{1690, 455}, u"2 Mittelspecht"_s},
        {{1670, 590}, u"3 Buchfink"_s},
        {{1760, 640}, u"5 Kohlmeise"_s},
        {{1850, 510}, u"2 Rotkehlchen"_s},
        {{1900, 620}, u"Buchfink"_s}}},
      {u"Flaeche3"_s,
       4,
       {{{2530, 580}, u"7 Hirschkäfer"_s},
        {{2455, 650}, u"2 Eremit"_s},
        {{2600, 800}, u"5 Buchfink"_s},
        {{2470, 745}, u"Mittelspecht"_s}}},
      {u"Flaeche5"_s,
       4,
       {{{2050, 1320}, u"2 Schwarzspecht"_s},
        {{2090, 1440}, u"4 Haselmaus"_s},
        {{2270, 1290}, u"6 Kohlmeise"_s},
        {{2250, 1440}, u"2 Buchfink"_s},
        {{2065, 1385}, u"4 Tannenmeise"_s}}},
      {u"Figur4"_s,
       0,
       {{{1560, 950}, u"3 Gelbbauchunke"_s}, {{1570, 1000}, u"2 Bergmolch"_s}, {{1550, 1045}, u"8 Grasfrosch"_s}}},
      {u"Linie1"_s,
       12,
       {{{1850, 175}, u"4 Feldlerche"_s},
        {{2110, 320}, u"2 Goldammer"_s},
        {{2290, 385}, u"3 Feldlerche"_s},
        {{2360, 330}, u"Neuntöter"_s}}},
  };
  return places;
}

}  // namespace

void Add_Species(DemoTable& table) {
  const EntryType text{.base = static_cast<int>(EntryKind::Text)};
  constexpr double small = 10;
  for (const auto& [assignedTo, ink, finds] : Places()) {
    EntryId id = Named(u"Text"_s);
    id.assignment = assignedTo;
    for (const auto& [at, name] : finds) table.Text(id, text, at, name, Plain(ink, small));
  }
  EntryId orchids = Named(u"Text"_s);
  orchids.group = u"1"_s;
  orchids.hasGroup = true;
  for (const auto& [at, name] : {Find{{2560, 1830}, u"15 Türkenbund"_s}, Find{{2700, 1830}, u"4 Silberdistel"_s}})
    table.Text(orchids, text, at, name, Plain(5, small));
}
