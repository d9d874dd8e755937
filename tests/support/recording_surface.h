#pragma once
// A surface that draws nothing and writes down the calls that would draw.
class RecordingSurface final : public Surface {
 public:
  struct Call {
    QString what;                 // name of the method
    std::vector<QPointF> points;  // ends, corners, or the place of a text; of a box its upper left and lower right
    PenState pen;
  };
  explicit RecordingSurface(const QRectF& size, bool onPaper = false) : extent(size), paper(onPaper) {}
  std::vector<Call> calls;

  QRectF Extent() const override { return extent; }
  bool IsPaper() const override { return paper; }
  void Cls(QRgb) override { Note("Cls"); }
  void SetClip(const QRectF&) override {}
  void PaintPicture(const QRectF& target, const QImage&, const QRectF&) override { Note_Box("PaintPicture", target); }
  void Line(QPointF from, QPointF to) override { Note("Line", {from, to}); }
  void Box(const QRectF& box) override { Note_Box("Box", box); }
  void FilledBox(const QRectF& box, QRgb) override { Note_Box("FilledBox", box); }
  void Ellipse(const QRectF& box) override { Note_Box("Ellipse", box); }
  void Polyline(std::span<const QPointF> points) override { Note("Polyline", {points.begin(), points.end()}); }
  void Polygon(std::span<const QPointF> points) override { Note("Polygon", {points.begin(), points.end()}); }
  void Veil(std::span<const QPointF> points, QRgb) override { Note("Veil", {points.begin(), points.end()}); }
  void Bezier(std::span<const QPointF> points, bool) override { Note("Bezier", {points.begin(), points.end()}); }
  bool SetFont(const FontKey& key) override { return font = key, true; }
  const FontKey& Font() const override { return font; }
  int TextWidth(const QString& text) override { return static_cast<int>(7 * text.size()); }
  int TextHeight(const QString&) override { return 12; }
  void Print(QPointF at, const QString&) override { Note("Print", {at}); }
  void PrintRotated(QPointF at, const QString&, double) override { Note("PrintRotated", {at}); }

 private:
  void Note(const char* what, std::vector<QPointF> points = {}) { calls.push_back({what, std::move(points), pen}); }
  void Note_Box(const char* what, const QRectF& box) { Note(what, {box.topLeft(), box.bottomRight()}); }
  QRectF extent;
  bool paper;
  FontKey font;
};
