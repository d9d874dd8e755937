#pragma once
#include <QColor>
#include <QImage>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <memory>
#include <span>

class QPaintDevice;
class QPainter;

// How pen and fill meet what is there: the raster operations of the stored drawing modes.
enum class DrawMode { Invert = 6, And = 9, NotXor = 10, Nop = 11, Copy = 13 };
enum class FillStyle {
  Solid = 0,
  None = 1,
  Horizontal = 2,
  Vertical = 3,
  Upward = 4,
  Downward = 5,
  Cross = 6,
  DiagonalCross = 7
};
// Pens with gaps exist at width 1 only; a wider one is solid.
enum class PenStyle { Solid = 0, Dash = 1, Dot = 2, DashDot = 3, DashDotDot = 4, None = 5 };

struct PenState {
  QRgb ForeColor = qRgb(0, 0, 0);
  QRgb FillColor = qRgb(0, 0, 0);
  DrawMode mode = DrawMode::Copy;
  double DrawWidth = 1;  // surface pixels
  PenStyle pen = PenStyle::Solid;
  FillStyle fill = FillStyle::None;
};

struct FontKey {
  QString family = QStringLiteral("Arial");
  double points = 12;  // at 96 dpi: pixels = round(points * 96 / 72), 1 to 2880
  bool bold = false, italic = false, underline = false;
  int charset = 0;
  bool operator==(const FontKey&) const = default;
};

// The 16 colours of the numbered colour table (0 black .. 15 white).
QRgb QBColor(int number);

// A drawing target. Coordinates are surface pixels at 96 dpi with y downward; on the screen they are whole numbers, on
// paper fractions count. Shapes are not antialiased on images. The state is public, as a pen in the hand.
class Surface {
 public:
  virtual ~Surface() = default;
  PenState pen;

  virtual QRectF Extent() const = 0;             // the drawable area
  virtual bool IsPaper() const = 0;              // vector output: fractions count
  virtual void Cls(QRgb color) = 0;              // fills the surface with one colour
  virtual void SetClip(const QRectF& area) = 0;  // an empty rectangle lifts it

  // Picture part `source` (picture pixels) onto `target`. Nearest pixel when enlarged.
  virtual void PaintPicture(const QRectF& target, const QImage& picture, const QRectF& source) = 0;
  // The whole picture.
  void PaintPicture(const QRectF& target, const QImage& picture) {
    PaintPicture(target, picture, QRectF(picture.rect()));
  }

  // Lines leave out their last pixel. A box has width x height pixels all in all: its pen lies on the rim inside, the
  // fill (pen.fill, FillColor) within. FilledBox is width x height pixels of one colour. The same holds for the box of
  // an ellipse; along lines, polygons and curves a wide pen runs with its middle. Hatch lines are 8 pixels apart, in
  // FillColor, fast on the surface; the gaps show what is below.
  virtual void Line(QPointF from, QPointF to) = 0;
  virtual void Box(const QRectF& box) = 0;
  virtual void FilledBox(const QRectF& box, QRgb color) = 0;
  virtual void Ellipse(const QRectF& box) = 0;
  virtual void Polyline(std::span<const QPointF> points) = 0;
  virtual void Polygon(std::span<const QPointF> points) = 0;  // odd-even fill, then the outline
  // Fills a polygon with the colour mixed half and half with what is there; no outline, whatever the pen state.
  virtual void Veil(std::span<const QPointF> points, QRgb color) = 0;
  // Point 0, then three points a curve. `closed` fills it with the fill style.
  virtual void Bezier(std::span<const QPointF> points, bool closed) = 0;

  // False if the family is not installed: "Arial" is taken instead.
  virtual bool SetFont(const FontKey& font) = 0;
  virtual const FontKey& Font() const = 0;
  virtual int TextWidth(const QString& text) = 0;   // widest line
  virtual int TextHeight(const QString& text) = 0;  // lines x height of a line
  // One or several lines (CR, LF, CR LF) in ForeColor, upper left corner at `at`.
  virtual void Print(QPointF at, const QString& text) = 0;
  // The same turned counter-clockwise by degrees about `at`, the upper left corner of the text.
  virtual void PrintRotated(QPointF at, const QString& text, double degrees) = 0;
};

// A surface over an image (Format_RGB32) or a page (QPdfWriter, QPrinter, or an image that stands for one). The device
// must outlive it. One painter is kept from construction to destruction; the image may be read and copied at any time
// meanwhile, but written only by the surface. Error 482 if the page cannot be drawn on.
std::unique_ptr<Surface> Make_Surface(QImage& image);

// What becomes of the modes that combine with what is there (And, NotXor, Invert): a printed page does not know them.
enum class PageModes {
  AsCopy,         // drawn as Copy
  CopyOnly,       // left out
  Combining,      // drawn; on an image only
  CombiningOnly,  // drawn, and all that is Copy is left out; on an image only
};
struct PageView {
  double scaleX = 1, scaleY = 1;  // device pixels a surface pixel
  QPointF origin;                 // device pixel of the surface's origin
  PageModes modes = PageModes::AsCopy;
};
// A surface on a page, as the view lays it there.
std::unique_ptr<Surface> Make_Page_Surface(QPaintDevice& page, const PageView& view);
// With a painter that lives longer: a document of several pages ends with its painter. Left as it was found.
std::unique_ptr<Surface> Make_Page_Surface(QPainter& page, const PageView& view);
// At the corner of the page, `scale` device pixels a surface pixel, modes as Copy.
inline std::unique_ptr<Surface> Make_Page_Surface(QPaintDevice& page, double scale) {
  return Make_Page_Surface(page, PageView{scale, scale, {}, PageModes::AsCopy});
}
// Draws nothing: tells what part of the surface was touched in a combining mode since the last question.
class ProbeSurface : public Surface {
 public:
  virtual QRectF Take_Combined() = 0;  // surface pixels; empty: none
};
std::unique_ptr<ProbeSurface> Make_Probe_Surface(const QRectF& extent);  // it measures texts as all surfaces do

// A white or coloured image fit for drawing (RGB32, 96 dpi).
QImage Make_Canvas(int width, int height, QRgb color = qRgb(255, 255, 255));

// Fonts. True if the family (or what stands for it) is installed. Arial, Helvetica, MS Sans Serif, Courier New, Times
// New Roman, Wingdings and Symbol always count as present.
bool Font_Installed(const QString& family);
// Is it a font of symbols, whose characters are codes of its own table?
bool Is_Symbol_Font(const QString& family);
// Text of a symbol font as Unicode: codes of Windows-1252 bytes or U+F020..U+F0FF.
QString Symbol_Text(const QString& family, const QString& text);
