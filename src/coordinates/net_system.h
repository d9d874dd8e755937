#pragma once
#include <QPointF>
#include <QString>
#include <optional>

#include "platform/geodesy.h"
#include "state/coordinate_state.h"

// The net of a map as a reference system.

// Of a datum as files write it ("WGS-84", "G WGS 84", "DHDN", "Potsdam"); nothing for every other name.
std::optional<Datum> Datum_Of(const QString& text);
// Which kind of coordinates the net counts in; geographic without a net.
ReferenceSystem::Kind Net_Kind(const CoordinateState& state);
// Nothing without a net, and for datums and zones other than WGS-84, ETRS89 and Potsdam.
std::optional<ReferenceSystem> System_Of(const CoordinateState& state);
// A place of the map (map pixels) in that system, as Transformation takes it: degrees, or metres with the zone in front
// of a Gauß-Krüger Rechtswert and no zone in a UTM one. Nothing where the net does not reach.
std::optional<QPointF> Place_In_System(const CoordinateState& state, int x, int y);
