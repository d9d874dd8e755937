#pragma once
#include <QPoint>
#include <QRect>
#include <QSet>
#include <QString>
#include <functional>
#include <optional>
#include <vector>

#include "objects/draw_context.h"
#include "plansquares/raster_design.h"
#include "store/entry.h"

// Plan squares on the map: their labels, the preview of a raster that is being designed, the square under the mouse,
// the switches of the menu.

inline constexpr int planRegion = 16;  // kind of a hit region

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

// Preview of a raster over the map, not in the table; none takes it away. Redraws.
struct RasterPreview {
  RasterPlan plan;
  RasterDesign design;
};
void Show_Raster_Preview(std::optional<RasterPreview> preview);
bool Raster_Preview_Shown();
void Draw_Raster_Preview(DrawContext& context);

// The next drag on the map gives the field, map pixels; Esc drops it.
void Take_Bereich(std::function<void(QRect field)> taken, std::function<void()> dropped);

// Only while the raster is active do its squares take clicks.
bool Raster_Active();
void Set_Raster_Active(bool active);
void Toggle_Raster_Active();   // mnuRasterAktiv
void Toggle_Raster_Visible();  // mnuRasterEinblenden
void mnuRasterDelete_Click();
// Into the table, squares active afterwards; a free square comes into the hand. False if nothing was written.
bool Take_Raster_On_Map(const RasterPreview& preview);

// Shows lblPLQ over the square of that hit region, 0 for none. True if it changed.
bool Show_Plan_Label(int hit);
// The row in that hit region is a square of a raster: it is not dragged by a click.
bool Is_Raster_Square(int hit);
