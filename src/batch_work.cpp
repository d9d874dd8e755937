#include "batch_work.h"

#include <QFileInfo>
#include <cstdio>

#include "analysis/all_results.h"
#include "batch_import.h"
#include "batch_sheet.h"
#include "exchange/csv_export.h"
#include "objects/draw_context.h"
#include "platform/error.h"
#include "platform/files.h"
#include "platform/picture.h"
#include "platform/surface.h"
#include "printing/print_map.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "tools/area_trace.h"
#include "tools/poly_editor.h"
#include "tools/trace_tool.h"
#include "view/redraw.h"

using namespace Qt::StringLiterals;

namespace {

QImage Draw_Map(double factor) {
  if (factor == 1) return Map_Picture_With_Entries();
  const QSize size(std::max(1, qRound(MapWidthPx * factor)), std::max(1, qRound(MapHeightPx * factor)));
  QImage picture = Make_Canvas(size.width(), size.height());
  if (picture.isNull()) Raise(errors::outOfMemory);
  {
    const auto surface = Make_Surface(picture);
    DrawContext context{*surface, {.Zoom = 1 / factor}, QRectF(QPointF(), size)};
    Draw_Background(context);
    Draw_Entries(context);
    Draw_Grid(context);
  }
  return picture;
}

ExitStatus Print_Into_Pdf(const BatchOrder& batch) {
  PrintOrder order;
  order.settings = Read_Print_Settings();
  if (batch.factor) order.settings.factor = *batch.factor;
  if (batch.orientation) order.settings.orientation = *batch.orientation;
  order.paper = Paper_Of(batch.format, order.settings.orientation);
  order.map = Map_To_Print();
  const int pages = Print_Geometry(order.settings, order.paper, order.map).Pages();
  order.range = batch.range.value_or(PrintRange{1, pages});
  if (order.range.from > pages) {
    Tell(u"So viele Blätter hat die Karte nicht; sie braucht %1."_s.arg(pages));
    return failed;
  }
  const PrintHooks hooks{[&] { return Make_Pdf_Job(batch.target, order.paper, QFileInfo(batch.map).fileName()); }, {}};
  return Print_Map(order, hooks) == PrintEnd::Done ? done : failed;
}

// Beside the map, named like its table.
ExitStatus Write_Csv(const BatchOrder& order) {
  const QString table = QFileInfo(TableFile).completeBaseName();
  const QString path = QFileInfo(order.map).path() + u'/' + table + u".csv"_s;
  const QStringList lines = Csv_Export_Lines(table + u".MDB"_s);
  try {
    Write_Lines(path, lines);
  } catch (const Error& error) {
    Raise(error.number, error.text + u": "_s + path);
  }
  return done;
}

// The rest is written even if one of the evaluations fails.
ExitStatus Write_Results(const BatchOrder& order) {
  const ResultFiles files = Write_All_Results({order.target, order.matrix, order.neighbours}, Load_Picture(order.map));
  if (!files.aside.isEmpty())
    Tell(u"Die vorhandene Arbeitsmappe hat ein altes Format. Sie heißt jetzt: "_s + files.aside);
  for (const QString& problem : files.problems) Tell(problem);
  return files.problems.isEmpty() ? done : failed;
}

ExitStatus Save_Drawing(const BatchOrder& order) {
  Save_Picture(Draw_Map(order.zoom), order.target);
  return done;
}

ExitStatus Find_Area(const BatchOrder& order) {
  const TraceRequest request{Map.MapClip[0].image, order.at, order.tolerance, {}};
  const TraceResult result = order.fill ? Digi_Fill(request) : Digi_Trace_RGB(request);
  if (!result.Found()) {
    Tell(result.fault);
    return failed;
  }
  for (const QPoint point : result.outline) std::printf("%d %d\n", point.x(), point.y());
  if (result.part >= runOutPart)
    Tell(u"Die Fläche füllt %1 % der Karte. Eine kleinere Toleranz trennt sie von ihrer Umgebung."_s.arg(
        static_cast<int>(result.part * 100)));
  if (!order.changesTable) return done;
  return Append_Poly(PolyEditor::Kind::Area, result.outline, u"Fläche digitalisieren"_s) ? done : failed;
}

}  // namespace

ExitStatus Do_Batch_Work(const BatchOrder& order) {
  switch (order.work) {
    case BatchWork::Print:
      return Print_Into_Pdf(order);
    case BatchWork::Csv:
      return Write_Csv(order);
    case BatchWork::Results:
      return Write_Results(order);
    case BatchWork::WriteExchange:
      return Write_Exchange(order);
    case BatchWork::TakeExchange:
      return Take_Exchange(order);
    case BatchWork::Gps:
      return Take_Gps(order);
    case BatchWork::TakeOverlay:
      return Take_Overlay(order);
    case BatchWork::TakeTable:
      return Take_Table(order);
    case BatchWork::Area:
      return Find_Area(order);
    case BatchWork::WriteSheet:
      return Write_Table_Sheet(order);
    case BatchWork::TakeSheet:
      return Take_Table_Sheet(order);
    case BatchWork::Calibrate:  // is done without an open map
    case BatchWork::Picture:
      break;
  }
  return Save_Drawing(order);
}
