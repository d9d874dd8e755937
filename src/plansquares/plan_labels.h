#pragma once
#include <QRectF>
#include <QSet>
#include <QString>
#include <optional>
#include <vector>

#include "objects/draw_context.h"
#include "plansquares/raster_design.h"

// The labels of plan squares: at the edge of the window, at the raster's edge or in the middle of the squares.

// Label of a column or row of the raster, with its place on the surface.
struct PlanEdge {
  QString Text;
  double Pos = 0;
};
enum class EdgePart { Columns = 1, Rows = 2, Both = 3 };

// Gathers the squares of one pass and prints their labels over all entries. Positions are surface pixels.
class PlanLabels {
 public:
  // The raster's design decides where labels stand; without one there are none.
  void Set_Design(const RasterDesign& raster);
  // `shown`: the square lies in the window. `label` is what stands in its middle.
  void Add_Square(const QString& name, const QString& label, const QRectF& box, bool shown);
  // All of them, where the design says.
  void Print(DrawContext& context);

  // Remembers column and row of a square's name once each.
  void Plan_Edge_Collect(const QString& name, double x, double y);
  void Plan_Edge_Print(DrawContext& context, EdgePart which);
  const std::vector<PlanEdge>& Columns() const { return PlanCols; }
  const std::vector<PlanEdge>& Rows() const { return PlanRows; }

 private:
  struct Label {
    QString text;
    QRectF box;
  };
  double Widest(Surface& surface) const;  // of the labels, in the font that is set
  void Set_Paper_Font(DrawContext& context);
  bool Fit_Font(DrawContext& context);
  void Print_Edge(DrawContext& context, QPointF at, const QString& text);
  void Print_Centred(DrawContext& context);

  std::optional<RasterDesign> design;
  std::vector<PlanEdge> PlanCols, PlanRows;
  QSet<QString> knownCols, knownRows;
  std::vector<Label> labels;
  double width = 0, height = 0;        // of the smallest square
  double firstLeft = 0, firstTop = 0;  // of the raster
  bool any = false;
};
