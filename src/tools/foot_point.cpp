#include "tools/foot_point.h"

#include <algorithm>
#include <array>
#include <limits>

#include "edit/bulk_change.h"
#include "hand/activation.h"
#include "hand/hand_controls.h"
#include "hand/hand_texts.h"
#include "objects/reference_line.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/mdi_state.h"
#include "tools/map_tool.h"

namespace {

const QString title = QStringLiteral("Fußpunkt");
const QString toolName = QStringLiteral("Rfline");
constexpr int markerSize = 16, firstDistance = 40;

bool Takes_Foot(const std::optional<EntryRow>& row) {
  if (!row || row->ID.isEmpty()) return false;
  const EntryType type = EntryType::Parse(row->Typ);
  return !type.hidden && (type.IsText() || type.Kind() == EntryKind::Picture);
}

bool Has_End_Mark(const EntryType& type) {
  return type.Kind() == EntryKind::Text || type.Kind() == EntryKind::TextLine || type.Kind() == EntryKind::TextArrow ||
         type.Kind() == EntryKind::TextCircle;
}

QRect Entry_Box() {
  for (const LiveControl* control : std::array<LiveControl*, 2>{&Map.Text2, &Map.imgBild})
    if (control->Visible) return Control_Box(*control);
  return Region_Bounds(Map.InHand.toLongLong()).toAlignedRect();
}

QPoint In_View(QPoint window) {
  return {std::clamp(window.x(), 0, std::max(0, Map.ViewWidth - 1)),
          std::clamp(window.y(), 0, std::max(0, Map.ViewHeight - 1))};
}

void Write_Foot_Point(QPoint window) {
  const QPoint at = In_View(window);
  constexpr int most = std::numeric_limits<int16_t>::max();
  const int x = std::clamp(Map_X(at.x()), 1, most);  // 0 would mean no reference line
  const int y = std::clamp(Map_Y(at.y()), 0, most);
  Map.CurBookmark = Map.InHand;
  Write_Changes(Change_Of_Current([x, y](EntryRow& row, qint64) {
                  EntryType type = EntryType::Parse(row.Typ);
                  const bool first = row.Xline <= 0;
                  row.Xline = x;
                  row.Yline = y;
                  row.ID = EntryId::Parse(row.ID).WithoutReferenceDigit().ToText();
                  if (!first || !Has_End_Mark(type) || type.base > 1) return;
                  type.base = Map.ReferenceEnd;
                  row.Typ = type.ToNumber();
                }),
                title);
}

class FootTool final : public MapTool {
 public:
  QString Name() const override { return toolName; }
  QString Status() const override { return hand_texts::footMove; }
  bool Keeps_Hand() const override { return true; }
  void Press(QPoint window, MouseKeys) override {
    pressed = true;
    Show_At(window);
  }
  void Move(QPoint window, bool) override { Show_At(window); }
  void Release(QPoint window) override {
    if (!pressed) return;  // the press was not on the map
    End_Map_Tool();
    Write_Foot_Point(window);
  }
  OverPaint Paint_Over() const override {
    const auto start = Reference_Start(Entry_Box(), foot);
    if (!start) return {};
    QPainterPath path;
    path.moveTo(*start);
    path.lineTo(foot);
    return Dashed(path);
  }
  void Dropped() override {
    Map.imgRfLine.Visible = false;
    const auto row = Row_In_Hand();
    if (row && row->Xline > 0) Show_Marker({Window_X(row->Xline), Window_Y(row->Yline)});
  }
  void Show_At(QPoint window) {
    foot = In_View(window);
    Show_Marker(foot);
    events.HandChanged.Emit();
  }

 private:
  static void Show_Marker(QPoint at) {
    Map.imgRfLine.Left = at.x() - markerSize / 2;
    Map.imgRfLine.Top = at.y() - markerSize / 2;
    Map.imgRfLine.Width = Map.imgRfLine.Height = markerSize;
    Map.imgRfLine.Visible = true;
  }

  bool pressed = false;
  QPoint foot;
};

}  // namespace

bool Can_Have_Foot_Point() { return Takes_Foot(Row_In_Hand()); }

bool Has_Foot_Point() {
  const auto row = Row_In_Hand();
  return Takes_Foot(row) && row->Xline > 0;
}

void Move_Foot_Point() {
  if (Map_Tool_In_Use() && Map.Tool == toolName) return Drop_Map_Tool();
  if (!Can_Have_Foot_Point()) return;
  auto tool = std::make_unique<FootTool>();
  FootTool& inUse = *tool;
  if (!Use_Map_Tool(std::move(tool))) return;
  const EntryRow row = Row_In_Hand().value_or(EntryRow());
  const QRect box = Entry_Box();
  inUse.Show_At(row.Xline > 0 ? QPoint(Window_X(row.Xline), Window_Y(row.Yline))
                              : QPoint(box.left(), box.bottom() + firstDistance));
}

bool Remove_Foot_Point() {
  if (!Has_Foot_Point()) return false;
  const QString text = QStringLiteral("Fußpunkt für den Text: %1 entfernen?").arg(Row_In_Hand()->Eintrag);
  if (Message_Box(text, MsgButtons::YesNo, MsgIcon::Question, title) != MsgAnswer::Yes) return false;
  Map.CurBookmark = Map.InHand;
  return Write_Changes(Change_Of_Current([](EntryRow& row, qint64) { row.Xline = row.Yline = 0; }), title) > 0;
}

void Change_Foot_Point() {
  if (Has_Foot_Point())
    Remove_Foot_Point();
  else
    Move_Foot_Point();
}

int End_Mark_In_Hand() {
  const auto row = Row_In_Hand();
  if (!Takes_Foot(row)) return 0;
  const EntryType type = EntryType::Parse(row->Typ);
  if (!Has_End_Mark(type)) return 0;
  return std::max(1, type.base);
}

void Set_End_Mark(int mark) {
  if (mark < 1 || mark > 3) return;
  Map.ReferenceEnd = mark;
  const int now = End_Mark_In_Hand();
  if (now == 0 || now == mark || !Store_Pending_Text()) return;
  Map.CurBookmark = Map.InHand;
  Write_Changes(Change_Of_Current([mark](EntryRow& row, qint64) {
                  EntryType type = EntryType::Parse(row.Typ);
                  type.base = mark;
                  row.Typ = type.ToNumber();
                }),
                title);
}
