#include "demo_sets.h"
#include "demo_table.h"

using namespace Qt::StringLiterals;

// The four small tables, each about one thing to try out.

void Add_First_Try(DemoTable& table) {
  table.Text({120, 60}, u"Demo 1: zum Ausprobieren"_s, On(14, Bold(Framed(1, 2, 22))));
  table.Text({120, 130}, u"Hier kann nichts verdorben werden:\r\nDiese Tabelle ist nur zum Üben da."_s, Plain());
  table.Area({{300, 700}, {420, 660}, {520, 720}, {510, 800}, {420, 850}, {310, 810}}, Filled(-4, 1, 11, true),
             {320, 870}, u"Teich am Weidensee"_s);
  table.Line({{1205, 1475}, {1480, 1500}, {1750, 1560}, {2050, 1640}}, Stroke(12, 3), {1500, 1440}, u"Feldweg"_s);
  table.Text({640, 560}, u"Bachstelze 2"_s, Framed(1));
  table.Text({1730, 520}, u"Buntspecht 1"_s, Framed(4));
  table.Text({2560, 690}, u"«"_s, Symbol(12));
  table.Reference(EntryKind::TextArrow, {1380, 250}, {1584, 391}, u"Grasfrosch, 14 Laichballen"_s, White_On(2));
  table.Figure(EntryKind::Circle, {1150, 740, 190, 190}, Filled(0, 12, 15));
}

void Add_Editing(DemoTable& table) {
  table.Text({120, 60}, u"Demo 3: Einträge bearbeiten"_s, On(14, Bold(Framed(1, 2, 22))));
  struct Lesson {
    QPoint at;
    QString text;
  };
  const Lesson lessons[] = {
      {{120, 140}, u"Anklicken: der Eintrag wird aktiv."_s},
      {{120, 180}, u"Ziehen: der Eintrag wird verschoben."_s},
      {{120, 220}, u"Ein aktiver Text steht zum Ändern bereit."_s},
      {{120, 260}, u"Rechte Maustaste: das Menü des Eintrags."_s},
      {{120, 300}, u"Entf: der Eintrag wird gelöscht."_s},
  };
  for (const Lesson& lesson : lessons) table.Text(lesson.at, lesson.text, Plain());

  table.Text({700, 420}, u"Verschieb mich zum Teich"_s, On(10, Framed(2)));
  table.Text({1450, 560}, u"Amsle (Schreibfehler!)"_s, Framed(4));
  table.Reference(EntryKind::TextLine, {1900, 300}, {1850, 560}, u"Fußpunkt versetzen"_s, White_On(5));
  table.Reference(EntryKind::TextCircle, {2280, 480}, {2585, 705}, u"Bezugslinie entfernen"_s, White_On(4));
  table.Area({{1230, 1650}, {1350, 1620}, {1470, 1670}, {1490, 1780}, {1390, 1850}, {1255, 1800}}, Filled(-2, 2, 15),
             {1270, 1880}, u"Eckpunkte korrigieren"_s);
  table.Area({{2000, 1280}, {2150, 1180}, {2350, 1190}, {2420, 1320}, {2300, 1490}, {2080, 1470}},
             Filled(-1, 4, 14, true), {2090, 1520}, u"Kanten eckig / abgerundet"_s);
  table.Line({{700, 1200}, {655, 1330}, {655, 1500}, {690, 1640}, {715, 1800}}, Stroke(1, 4, true), {380, 1500},
             u"Linienbreite ändern"_s);
  table.Figure(EntryKind::Rectangle, {2450, 1000, 190, 110}, Filled(1, 4, 14));
  table.Text({2450, 960}, u"Größe der Figur ändern"_s, Plain());
}

void Add_Texts_And_Symbols(DemoTable& table) {
  table.Text({120, 60}, u"Demo 4: Text und Symbol"_s, On(14, Bold(Framed(1, 2, 22))));
  struct Sample {
    QString text;
    EntryLook look;
  };
  EntryLook serif = Plain(0, 18), fixed = Plain(0, 16);
  serif.font.family = u"Times New Roman"_s;
  fixed.font.family = u"Courier New"_s;
  EntryLook underlined = Plain(0, 16);
  underlined.font.underline = true;
  const Sample samples[] = {
      {u"Arial 10: Zaunkönig"_s, Plain(0, 10)},
      {u"Arial 14: Rotkehlchen"_s, Plain(0, 14)},
      {u"Arial 20 fett: Singdrossel"_s, Bold(Plain(0, 20))},
      {u"Arial 16 kursiv: Turdus philomelos"_s, Italic(Plain(0, 16))},
      {u"unterstrichen: Rote Liste 2"_s, underlined},
      {u"Times New Roman 18: Kleiber"_s, serif},
      {u"Courier New 16: Nr. 0815"_s, fixed},
      {u"mit Rahmen, Breite 3"_s, Framed(12, 3, 16)},
      {u"gelber Hintergrund"_s, On(14, Plain(4, 16))},
      {u"durchsichtig, ohne Kasten"_s, Clear(1, 16)},
      {u"mehrere Zeilen:\r\nDatum 03.05.2025\r\nBeob. H. Lang"_s, Framed(2, 1, 14)},
  };
  int y = 150;
  for (const auto& [text, look] : samples) {
    table.Text({120, y}, text, look);
    y += 56;
  }
  const int angles[] = {0, 30, 60, 90, 135, 180, 225, 270, 315};
  for (const int angle : angles) {
    table.Text({1850, 900}, u"      Drehung %1°"_s.arg(angle), Turned(angle, angle == 0 ? 12 : 1, 16));
  }
  const QString codes = u"lnu«ÀOQü{JýE"_s;
  int x = 120;
  for (const QChar code : codes) {
    table.Text({x, 1000}, QString(code), Symbol((x / 80) % 2 == 0 ? 4 : 2, 32));
    x += 80;
  }
  table.Text({120, 950}, u"Symbole aus der Zeichentabelle:"_s, Plain());
}

void Add_Justifying(DemoTable& table) {
  table.Text({120, 60}, u"Demo 5: Texte justieren"_s, On(14, Bold(Framed(1, 2, 22))));
  table.Text({120, 130}, u"Texte einer Gruppe markieren, dann justieren:\r\nlinks, rechts, oben, unten"_s, Plain());
  const QString species[] = {u"Kohlmeise"_s,   u"Blaumeise"_s,   u"Sumpfmeise"_s, u"Weidenmeise"_s,
                             u"Haubenmeise"_s, u"Tannenmeise"_s, u"Kleiber"_s,    u"Waldbaumläufer"_s};
  const int shift[] = {0, 34, -21, 12, 47, -38, 25, -9};
  for (int i = 0; i < 8; ++i) {
    // One below the other, with ragged left edges; side by side, with ragged upper edges.
    table.Text({420 + shift[i], 420 + 60 * i}, species[i], Framed(2));
    table.Text({1300 + 190 * i, 1400 + shift[i]}, species[i], On(14, Framed(4)));
  }
  for (int i = 0; i < 4; ++i) {
    table.Text({1800 + 60 * i, 480 + 80 * i + shift[i]}, QString::number(i + 1) + u". Termin"_s,
               Framed(1, 1, 12 + 2 * i));
  }
}
