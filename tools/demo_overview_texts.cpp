#include "demo_sets.h"
#include "demo_table.h"

using namespace Qt::StringLiterals;

namespace {

struct Item {
  QPoint at;
  QString text;
  EntryLook look;
};

void Add_Texts(DemoTable& table) {
  const Item items[] = {
      // framed, in several colours and widths
      {{180, 25}, u"Brutvögel Regnitztal 2025"_s, On(14, Bold(Framed(1, 3, 22)))},
      {{790, 250}, u"Weißstorch 2 ad., 3 juv."_s, Framed(12, 2)},
      {{1000, 420}, u"Flussregenpfeifer"_s, Framed(1)},
      {{1280, 140}, u"Turmfalke, Kirche"_s, Framed(4)},
      {{2250, 150}, u"Rebhuhn, 1 Kette"_s, Framed(6, 2)},
      {{2620, 300}, u"Neuntöter 1,1"_s, On(11, Framed(2))},
      {{2720, 1450}, u"Rauchschwalbe 12 BP"_s, Framed(1)},
      {{1180, 2080}, u"Schleiereule, Scheune"_s, Framed(5, 2)},
      {{120, 1850}, u"Grünspecht rufend"_s, On(10, Framed(2))},
      {{60, 640}, u"Große Rohrdommel?"_s, On(7, Italic(Framed(8)))},
      // plain boxes
      {{1450, 560}, u"Goldammer 5"_s, Plain()},
      {{1470, 780}, u"Bluthänfling 2"_s, Plain(2)},
      {{2080, 1000}, u"Feldlerche 4 singend"_s, Plain(4)},
      // no box
      {{1730, 505}, u"Hohltaube"_s, Clear(4)},
      {{2480, 700}, u"Hirschkäfer"_s, Bold(Clear(4, 16))},
      {{2600, 1900}, u"Türkenbund"_s, Italic(Clear(5, 16))},
      {{2620, 1960}, u"Silberdistel"_s, Italic(Clear(5, 16))},
      {{960, 1650}, u"Dohle 8"_s, Clear(1)},
      {{2180, 1410}, u"Haselmaus"_s, Clear(4)},
  };
  for (const Item& item : items) table.Text(item.at, item.text, item.look);
}

void Add_Lines_And_Angles(DemoTable& table) {
  const Item items[] = {
      {{60, 900}, u"Sumpfdotterblume\r\n> 200 Ex.\r\n19.04.2025 KM"_s, Framed(2)},
      {{1200, 1010}, u"Laubfrosch\r\nca. 30 Rufer"_s, On(10, Framed(2, 2))},
      {{2050, 760}, u"Wespenbussard\r\nBalz 24.05.\r\nHorst?"_s, Plain(4)},
      {{100, 1720}, u"Pirol\r\n2 Sänger\r\nB. Roth"_s, On(14, Framed(4))},
      {{2420, 1780}, u"Uhu\r\nRupfung"_s, Clear(0, 16)},
      // turned counter-clockwise
      {{690, 900}, u"Regnitzaue"_s, Turned(50, 1, 18)},
      {{880, 560}, u"NSG Altwasser"_s, Turned(80, 2, 16)},
      {{760, 2110}, u"Bahndamm: Zauneidechse"_s, Turned(58, 4)},
      {{1480, 300}, u"Heckenzug"_s, Turned(320, 6, 16)},
      {{2460, 1330}, u"Waldrand"_s, Turned(295, 2, 16)},
  };
  for (const Item& item : items) table.Text(item.at, item.text, item.look);
}

void Add_Symbols(DemoTable& table) {
  // Codes of the symbol font: star, square, lozenge, flag, aeroplane, tick, filled circle, flower.
  const Item items[] = {
      {{2560, 610}, u"«"_s, Symbol(12)}, {{2700, 730}, u"n"_s, Symbol(4)},     {{1880, 430}, u"u"_s, Symbol(1)},
      {{870, 300}, u"O"_s, Symbol(12)},  {{1160, 470}, u"Q"_s, Symbol(1)},     {{2520, 1560}, u"ü"_s, Symbol(2)},
      {{560, 760}, u"l"_s, Symbol(9)},   {{390, 1480}, u"{"_s, Symbol(5, 32)},
  };
  for (const Item& item : items) table.Text(item.at, item.text, item.look);
}

// Texts that point at the place they speak of.
void Add_References(DemoTable& table) {
  struct Pointing {
    EntryKind kind;
    QPoint foot;
    Item item;
  };
  const Pointing items[] = {
      {EntryKind::TextLine, {900, 660}, {{640, 590}, u"Uferschwalbe 46 Röhren"_s, White_On(6)}},
      {EntryKind::TextLine, {1584, 391}, {{1380, 250}, u"Erdkröte, Laichplatz"_s, White_On(2)}},
      {EntryKind::TextLine, {2700, 1900}, {{2420, 2020}, u"Frauenschuh 7 blühend"_s, White_On(5)}},
      {EntryKind::TextLine, {640, 1440}, {{350, 1350}, u"Biber, Fraßspur"_s, White_On(8)}},
      {EntryKind::TextArrow, {2585, 705}, {{2280, 480}, u"Eremit, alte Eiche"_s, White_On(4)}},
      {EntryKind::TextArrow, {1295, 850}, {{1400, 870}, u"Gelbbauchunke"_s, On(14, Framed(0))}},
      {EntryKind::TextArrow, {745, 1850}, {{880, 1750}, u"Eisvogel, Brutröhre"_s, White_On(9)}},
      {EntryKind::TextArrow, {1000, 1500}, {{800, 1380}, u"Mauersegler 9 BP"_s, White_On(1)}},
      {EntryKind::TextCircle, {1840, 560}, {{2120, 560}, u"Rotmilan, Horst 3 juv."_s, White_On(12)}},
      {EntryKind::TextCircle, {2240, 1360}, {{2480, 1220}, u"Sperlingskauz"_s, White_On(5)}},
      {EntryKind::TextCircle, {420, 745}, {{560, 690}, u"Rohrweihe, Nest"_s, White_On(4)}},
      {EntryKind::TextCircle, {1700, 980}, {{1760, 1060}, u"Wendehals"_s, White_On(3)}},
  };
  for (const auto& [kind, foot, item] : items) table.Reference(kind, item.at, foot, item.text, item.look);
}

}  // namespace

void Add_Overview_Texts(DemoTable& table) {
  Add_Texts(table);
  Add_Lines_And_Angles(table);
  Add_Symbols(table);
  Add_References(table);
  table.Picture({1440, 1930}, birdPicture, {.width = 2, .color = 1});

  const EntryType text{.base = static_cast<int>(EntryKind::Text)};
  table.Text(Named(u"Text"_s), text.Hidden(), {2500, 950}, u"Wanderfalke, Brutplatz geheim"_s, Framed(12));
  EntryId inactive = Named(u"Text"_s), assigned = inactive;
  inactive.inactive = true;
  table.Text(inactive, text, {1240, 2150}, u"Stand: 30.06.2025"_s, Clear(8));
  assigned.assignment = u"Flaeche0"_s;
  table.Text(assigned, text, {390, 1190}, u"2 Gelege"_s, Clear(2));
}

void Add_Overview(DemoTable& table) {
  Add_Overview_Shapes(table);
  Add_Overview_Texts(table);
  Add_Species(table);
}
