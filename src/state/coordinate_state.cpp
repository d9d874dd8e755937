#include "state/coordinate_state.h"

CoordinateState Coord;

QString Grid_Type_Text(const CoordinateState& state) {
  switch (state.Grid) {
    case gridGeographic:
      return QStringLiteral(" Geografisch ");
    case gridUtm:
      return QStringLiteral(" UTM ");
    case gridGaussKrueger:
      return QStringLiteral(" Gauss-Krüger ");
    default:
      return {};
  }
}
