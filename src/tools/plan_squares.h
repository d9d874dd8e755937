#pragma once
#include <QRect>
#include <functional>
#include <optional>

#include "plansquares/raster_design.h"

// Plan squares on the map: the preview of a raster that is being designed, its field, the switches of the menu.

// A raster that is not in the table.
struct RasterPreview {
  RasterPlan plan;
  RasterDesign design;
};
// Shows it over the map, none takes it away. Redraws.
void Show_Raster_Preview(std::optional<RasterPreview> preview);
bool Raster_Preview_Shown();  // is there one?

// The next drag on the map gives the field, map pixels; Esc drops it.
void Take_Bereich(std::function<void(QRect field)> taken, std::function<void()> dropped);

void Toggle_Raster_Active();   // mnuRasterAktiv
void Toggle_Raster_Visible();  // mnuRasterEinblenden
void mnuRasterDelete_Click();  // all squares and the design
// Into the table, squares active afterwards; a free square comes into the hand. False if nothing was written.
bool Take_Raster_On_Map(const RasterPreview& preview);
// The preview and the active raster end with their map.
void Connect_Plan_Squares();
