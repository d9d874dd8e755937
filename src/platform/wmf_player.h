#pragma once
#include <QPainter>
#include <QSet>
#include <QSize>
#include <optional>
#include <set>
#include <span>
#include <variant>
#include <vector>

#include "platform/wmf_records.h"
#include "platform/work_budget.h"

// Plays the records of a metafile onto an image. Numbers of a file are held within bounds where they are taken over, so
// that no later arithmetic overflows, and whatever is drawn is paid for from the budget first.

namespace wmf {

inline constexpr int largestSide = 4096;  // a larger picture is reduced: lines have no pixels of their own

struct Layout {
  qint64 recordStart = 0;
  QRect box;   // in the picture's units
  QSize size;  // pixels
};

struct PenObject {
  int style = 0, width = 0;
  QRgb color = 0xff000000;
};
struct BrushObject {
  int style = 0;
  QRgb color = 0xffffffff;
  int hatch = 0;
};
struct FontObject {
  int height = 12, escapement = 0;
  bool bold = false, italic = false, underline = false;
  QString family;
};
struct OtherObject {};
using Object = std::variant<OtherObject, PenObject, BrushObject, FontObject>;

struct DrawingState {
  QPoint origin;
  QSize extent;
  PenObject pen;
  BrushObject brush;
  FontObject font;
  QRgb textColor = 0xff000000, backColor = 0xffffffff;
  bool opaqueBack = true, winding = false;
  int align = 0, rop = 13;
  QPoint position;
};

class Player {
 public:
  Player(QImage& image, const Layout& layout, int milliseconds);
  // Error 481 when the picture becomes too costly.
  void Play(quint16 number, const Words& words);

 private:
  bool Play_State(quint16 number, const Words& words);
  bool Play_Window(quint16 number, const Words& words);
  void Save_State();
  void Restore_State(int which);

  bool Play_Object(quint16 number, const Words& words);
  void Add_Object(Object object);
  Object Font_Of(const Words& words) const;
  void Take_Pen_And_Brush(bool withBrush);

  bool Play_Shape(quint16 number, const Words& words);
  void Play_Box(quint16 number, const Words& words);
  void Play_Chain(bool closed, const Words& words);
  void Poly_Polygon(const Words& words);
  void Arc(quint16 number, const Words& words);
  void Pattern_Fill(const Words& words);

  void Play_Text(quint16 number, const Words& words);
  void Draw_Text(QPoint at, const QByteArray& bytes, std::optional<QRectF> backBox);
  void Play_Bitmap(quint16 number, const Words& words);

  double ScaleX() const;
  double ScaleY() const;
  QPointF Place(int x, int y) const;
  // Box of a record that gives bottom, right, top, left; and one that gives height, width, y, x.
  QRectF Box(const Words& words, qint64 first) const;
  QRectF Sized_Box(const Words& words, qint64 first) const;
  QList<QPointF> Points(const Words& words, qint64 first, qint64 count) const;

  // Payments before something is drawn.
  double Area_Seen(const QRectF& box) const;
  void Pay_For_Fill(const QRectF& box);
  void Pay_For_Edges(std::span<const QPointF> points);    // of a filled shape
  void Pay_For_Outline(std::span<const QPointF> points);  // with the pen
  void Pay_For_Box(const QRectF& box);                    // fill and outline of what lies in it

  QPainter painter;
  QSize size;
  WorkBudget budget;
  DrawingState state;
  std::vector<DrawingState> saved;
  std::vector<std::optional<Object>> objects;
  std::set<size_t> freePlaces;  // in `objects`
  QSet<QString> fontsUsed;
};

}  // namespace wmf
