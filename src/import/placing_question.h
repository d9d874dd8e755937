#pragma once
#include <optional>

#include "coordinates/placing.h"
#include "platform/message_box.h"

// How a file's coordinates come onto the map where they are of another kind or datum: the user says it.

// AsWritten without a question where kind and datum agree. Else "Koordinatensystem falsch" or "Kartendatum falsch" with
// «Umrechnen» (the first choice, with the transformation and how exact it is; only where there is one), Yes (as they
// stand) and No: nothing then. `title` names the import.
std::optional<PlacingWay> Ask_Placing_Way(const GivenSystem& given, const CoordinateState& state, const QString& title);
// The same where nobody is there to ask: transformed where kind or datum differ. Nothing where they cannot be.
std::optional<PlacingWay> Usual_Placing_Way(const GivenSystem& given, const CoordinateState& state);
// Asks an importer's own words in the same way: yes and no, and «Umrechnen» first where they can be transformed.
std::optional<PlacingWay> Ask_Way(MsgRequest request, bool transformable);
// "Geografisch (WGS-84)", "UTM (ETRS89)", "Gauss-Krüger".
QString Given_Text(const GivenSystem& given);
