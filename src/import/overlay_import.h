#pragma once
#include <QString>
#include <QStringList>
#include <vector>

#include "import/import_list.h"
#include "import/overlay.h"
#include "import/table_entry.h"

// Objects of an overlay file onto the map: first a plan that says of each where it falls, then the entries.

struct OverlayPlan {
  std::vector<CarriedEntry> entries;  // one a record; shapes and figures get their names when they are made
  std::vector<ImportMark> marks;
  ImportCounts counts;
  bool cancelled = false;  // the user ended the conversion after an error
};

// The system of every overlay file.
GivenSystem Overlay_System();

// An object with a point off the map does not come. Raises what Placing raises. `existingToo`: what is on the map with
// the same text at the same place comes again.
OverlayPlan Plan_Overlay(const OverlayFile& file, PlacingWay way, bool existingToo);

struct OverlayResult {
  int imported = 0;
  bool stopped = false;               // the user ended it; what came in before stays
  bool failed = false;                // an error took everything back; it was told
  std::vector<OverlayFault> refused;  // the map has no name left for them, texts that were cut
};
// One undo point "Rückgängig: Import Top50*.ovl-Datei", one transaction, one redraw.
OverlayResult Import_Overlay(const OverlayFile& file, const OverlayPlan& plan);

// For the window of imports; file and plan must outlive it. `transformation`: "" where nothing is transformed.
ImportList Overlay_List(const OverlayFile& file, const OverlayPlan& plan, const QString& name,
                        const QString& transformation);
// What came of it, as lines.
QStringList Overlay_Summary(const OverlayFile& file, const OverlayPlan& plan, const OverlayResult& result);
// What did not come, with line and reason.
QStringList Overlay_Refusals(const OverlayFile& file, const OverlayPlan& plan, const OverlayResult& result);
