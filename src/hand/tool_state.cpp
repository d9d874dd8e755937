#include "hand/tool_state.h"

#include "hand/activation.h"
#include "hand/hand_texts.h"
#include "hand/toolbar_table.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "tools/map_tool.h"
#include "view/redraw.h"

namespace {

QString State_Word(ToolMode mode) {
  switch (mode) {
    case ToolMode::Text:
      return QStringLiteral("Text");
    case ToolMode::Area:
      return QStringLiteral("Ply");
    case ToolMode::Line:
      return QStringLiteral("Ln");
    case ToolMode::Figure:
      return QStringLiteral("Fig");
    case ToolMode::Picture:
      return QStringLiteral("Bild");
    case ToolMode::Symbol:
      return QStringLiteral("Symbol");
    case ToolMode::Norm:
      break;
  }
  return QStringLiteral("Norm");
}

template <typename Change>
void With_Button(const char* key, Change&& change) {
  if (ToolButton* button = Toolbar1.Button(QString::fromLatin1(key))) change(*button);
}

// Where there is nothing to do for them, buttons of marked, hidden and inactive entries stay away.
void Dress_Counts() {
  for (const char* key : {"rechts", "links", "oben", "unten", "gleich", "Gruppe", "MarkDel", "unmark"})
    With_Button(key, [](ToolButton& button) { button.Visible = Map.MarkCount > 0; });
  With_Button("gleich", [](ToolButton& button) { button.Visible = Map.MarkCount > 1; });
  With_Button("Ein", [](ToolButton& button) {
    button.Visible = Map.HiddenCount > 0;
    button.ToolTipText = QString::number(Map.HiddenCount) + QStringLiteral(" unsichtbare Karteneinträge");
  });
  With_Button("Akt", [](ToolButton& button) { button.Visible = Map.InactiveCount > 0; });
}

void Dress_Norm() {
  With_Button("Map", [](ToolButton& button) { button.Value = Map.Visible; });
  With_Button("Tbl", [](ToolButton& button) {
    button.Value = frmMDI.TblVisible;
    button.Tag = frmMDI.TblVisible ? QStringLiteral("On") : QStringLiteral("Off");
  });
  With_Button("Ein", [](ToolButton& button) { button.Tag = QStringLiteral("Ein"); });
  With_Button("Akt", [](ToolButton& button) { button.Tag = QStringLiteral("Nak"); });
  Show_Chosen_Tool();
  Dress_Counts();
}

// The row whose tools are shown; an empty one for a text that is still being typed.
EntryRow Row_In_Hand() {
  if (!rsEntries || Map.Text2.Tag == QLatin1String("Neu") || rsEntries->Position() < 1) return {};
  return Read_Entry(*rsEntries);
}

void Dress_Figure(const EntryRow& row, const EntryType& type) {
  With_Button("Fill", [&](ToolButton& button) { button.ToolTipText = QStringLiteral("Figur %1 füllen").arg(row.ID); });
  With_Button("Curve", [&](ToolButton& button) {
    button.Enabled = type.IsFreeFigure();
    button.Value = type.base == static_cast<int>(EntryKind::FreeFigureRound);
  });
  With_Button("Ein", [&](ToolButton& button) {
    button.Value = !type.hidden;
    button.ToolTipText = type.hidden ? QStringLiteral("Figur wieder sichtbar machen")
                                     : QStringLiteral("Figur unsichtbar machen (ausblenden)");
  });
}

void Dress_Entry() {
  const EntryRow row = Row_In_Hand();
  const EntryType type = EntryType::Parse(row.Typ);
  const bool isNew = row.ID.isEmpty();
  const EntryId id = EntryId::Parse(row.ID);
  const bool northArrow = id.IsNorthArrow();
  QString name = isNew ? QStringLiteral("Text") : Entry_Name();
  name.replace(QLatin1Char('\n'), QLatin1Char(' '));
  if (Toolbar1.Tag == QLatin1String("Fig")) Dress_Figure(row, type);
  With_Button("Panel", [&](ToolButton& button) {
    const bool withText = Toolbar1.Tag == QLatin1String("Text") || Toolbar1.Tag == QLatin1String("Fig");
    if (withText && !row.Eintrag.isEmpty()) button.Caption += QLatin1Char(' ') + row.Eintrag;
  });
  With_Button("Fill", [&](ToolButton& button) {
    if (Toolbar1.Tag == QLatin1String("Ply")) button.ToolTipText = QStringLiteral("Fläche %1 füllen").arg(id.name);
  });
  With_Button("Rahmen", [&](ToolButton& button) { button.Value = FrameWord::Parse(isNew ? CurRA : row.RA).framed; });
  With_Button("Mark", [&](ToolButton& button) { button.Value = type.mark != Mark::None; });
  for (const char* label : {"FlBez", "LnBez"})
    With_Button(label, [&](ToolButton& button) { button.Value = row.Groesse >= 0; });
  With_Button("Lupe", [](ToolButton& button) {
    button.Tag = Map.LupeOn ? QStringLiteral("ein") : QStringLiteral("aus");
    button.Value = Map.LupeOn;
  });
  With_Button("Vis", [&](ToolButton& button) {
    button.Tag = QStringLiteral("Aus");
    button.Value = type.hidden && !northArrow;
    if (button.Value) button.ToolTipText = QStringLiteral("Eintrag wieder sichtbar machen");
  });
  With_Button("Akt", [&](ToolButton& button) {
    button.Tag = QStringLiteral("Akt");
    button.Value = !id.inactive;
    button.ToolTipText =
        name.trimmed() + (id.inactive ? QStringLiteral(" aktivieren") : QStringLiteral(" de-aktivieren"));
  });
  if (!isNew) return;
  // Of a text that is not yet in the table only these make sense.
  for (ToolButton& button : Toolbar1.buttons)
    button.Enabled = button.Key == QLatin1String("Ok") || button.Key == QLatin1String("Panel") ||
                     button.Key == QLatin1String("Del") || button.Key == QLatin1String("Lupe") ||
                     button.Key == QLatin1String("Farbe") || button.Key == QLatin1String("Rahmen") ||
                     button.Key == QLatin1String("Schrift");
}

}  // namespace

void Set_Toolbar(int active, ToolMode mode) {
  const BusyPointer busy;
  const QString state = State_Word(mode);
  if (mode == ToolMode::Norm && active != 0 && Toolbar1.Tag == QLatin1String("Norm")) return events.StateChanged.Emit();
  Fill_Toolbar(state);
  if (mode == ToolMode::Norm) {
    if (active == 0) Map.LupeOn = false;  // its button is gone
    Dress_Norm();
  } else {
    const MapTool* tool = Map_Tool_In_Use();
    if (!tool || !tool->Keeps_Hand()) {
      Drop_Map_Tool();
      Map.Tool.clear();
    }
    for (ToolButton& button : Toolbar1.buttons) button.Enabled = true;
    Dress_Entry();
  }
  events.StateChanged.Emit();
}

ToolMode Tool_Mode_Of(const EntryRow& row) {
  const EntryType type = EntryType::Parse(row.Typ);
  const EntryId id = EntryId::Parse(row.ID);
  if (id.IsHeader()) return ToolMode::Norm;
  if (type.IsPolygon()) return id.IsArea() ? ToolMode::Area : id.IsLine() ? ToolMode::Line : ToolMode::Norm;
  if (type.IsFigure()) return ToolMode::Figure;
  if (type.Kind() == EntryKind::Picture) return ToolMode::Picture;
  if (!type.IsText()) return ToolMode::Norm;
  return FontSpec::Parse(row.Schrift).IsSymbol() ? ToolMode::Symbol : ToolMode::Text;
}

void Dress_Toolbar() {
  if (Toolbar1.Tag == QLatin1String("Norm")) Dress_Norm();
}

void Insert_Popup(int x, int y) {
  Map.PopupAt = {x, y};
  events.StateChanged.Emit();
  events.PopupWanted.Emit();
}

void Toggle_Lupe() {
  Map.LupeOn = !Map.LupeOn;
  With_Button("Lupe", [](ToolButton& button) {
    button.Tag = Map.LupeOn ? QStringLiteral("ein") : QStringLiteral("aus");
    button.Value = Map.LupeOn;
  });
  if (Map.LupeOn) {
    Delete_Regions();
    InfoBar.Panel[0] = hand_texts::lupe;
  } else {
    InfoBar.Panel[0] = Entry_Status_Text();
    Map_Redraw();
  }
  events.StateChanged.Emit();
  events.HandChanged.Emit();
}

void Choose_Tool(const QString& tool) {
  const bool again = Map.Tool == tool;
  Drop_Map_Tool();
  if (Entry_In_Hand() && !End_Entry()) return;
  Map.Tool = again ? QString() : tool;
  InfoBar.Panel[0] = Map.Tool == QLatin1String("Text")   ? hand_texts::placeText
                     : Map.Tool == QLatin1String("Symb") ? hand_texts::placeSymbol
                     : Map.Tool == QLatin1String("Bild") ? hand_texts::placePicture
                                                         : QString();
  Show_Chosen_Tool();
  events.StateChanged.Emit();
  events.HandChanged.Emit();
}

void Show_Chosen_Tool() {
  for (const char* key : {"Text", "Bild", "Symb", "Linie", "Fl", "Fd", "Fig", "Scale", "Rfline"})
    With_Button(key, [&](ToolButton& button) { button.Value = Map.Tool == QLatin1String(key); });
}
