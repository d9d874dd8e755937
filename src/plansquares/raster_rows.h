#pragma once
#include <QRectF>
#include <QString>
#include <optional>

#include "plansquares/raster_design.h"
#include "store/entry.h"

// The rows of plan squares (kind 16) and of their design (kind 17) in the table. Callers have given up the entry in
// hand.

// The column ID: "Plan", character 31, name. Plan_Name is empty for other rows.
QString Plan_Id(const QString& name);
QString Plan_Name(const QString& id);
// Column letters and row number of a raster's square; false for free ones.
bool Split_Name(const QString& name, QString& column, QString& row);

// A square as it stands in the table.
EntryRow Square_Row(const RasterDesign& design, const PlanSquare& square);
// Its corner is the first line of the raster.
EntryRow Design_Row(const RasterDesign& design, const RasterPlan& plan);
// Without corners; what is out of range becomes the nearest choice.
RasterDesign Design_Of(const EntryRow& row);

bool Has_Plan_Rows();  // squares or a design
// From the corner of the first square of the raster to the opposite one of the last.
std::optional<QRectF> Raster_Field();
// The design as it is stored, with the corners of the raster; none without a design row.
std::optional<RasterDesign> Raster_bearbeiten();

// Writes squares and design in place of those there are, after asking: one transaction, one undo point. Stopped by the
// user nothing has changed. True if the raster is in the table.
bool Take_Raster(const RasterDesign& design, const RasterPlan& plan);
// One free square; its row key, 0 if it could not be written.
qint64 Take_Free_Square(const RasterDesign& design, const RasterPlan& plan);
// Removes all squares and the design, marked and hidden ones too. Rows removed.
int Delete_Raster();
// All rows of both kinds but the marked ones take the new state. Rows changed.
int Show_Raster(bool visible);
