#include "view/draw_rows.h"

#include "store/entry.h"
#include "view/entry_painter.h"
#include "view/faulty_rows.h"

namespace {

// Draws the current row, and asks about one that cannot be drawn.
struct RowDrawer {
  explicit RowDrawer(DrawContext& context) : painter(context) {}
  void Draw_Here() {
    try {
      painter.Draw_Row(*rsEntries);
    } catch (const Error& error) {
      faulty.Meet(error);
    }
  }
  DrawCounts Finish() {
    painter.Finish();
    DrawCounts counts = painter.Counts();
    counts.deleted = faulty.Delete();
    return counts;
  }
  EntryPainter painter;
  FaultyRows faulty;
};

}  // namespace

DrawCounts Draw_Entries(DrawContext& context) {
  if (!rsEntries) return {};
  RowDrawer drawer(context);
  For_Each_Entry([&drawer] { drawer.Draw_Here(); });
  return drawer.Finish();
}

DrawCounts Draw_Rows(DrawContext& context, const std::vector<int>& rows) {
  if (!rsEntries) return {};
  RowDrawer drawer(context);
  {
    const KeepCurrentRow keep;
    for (const int row : rows) {
      if (row >= rsEntries->RecordCount()) break;  // a question on the way has let the user go on
      rsEntries->MoveTo(row);
      drawer.Draw_Here();
    }
  }
  return drawer.Finish();
}
