#include "import/placing_question.h"

#include "coordinates/net_system.h"

namespace {

QString With_Datum(const QString& kind, const QString& datum) {
  return datum.trimmed().isEmpty() ? kind : kind + QStringLiteral(" (") + datum.trimmed() + u')';
}

}  // namespace

QString Given_Text(const GivenSystem& given) {
  CoordinateState kind;
  switch (given.kind) {
    case ReferenceSystem::Kind::Geographic:
      kind.Grid = gridGeographic;
      break;
    case ReferenceSystem::Kind::Utm:
      kind.Grid = gridUtm;
      break;
    case ReferenceSystem::Kind::GaussKrueger:
      kind.Grid = gridGaussKrueger;
      break;
  }
  return With_Datum(Grid_Type_Text(kind).trimmed(), given.datum);
}

std::optional<PlacingWay> Usual_Placing_Way(const GivenSystem& given, const CoordinateState& state) {
  if (Match_Of(given, state).Whole()) return PlacingWay::AsWritten;
  if (Transformation_Name(given, state)) return PlacingWay::Transformed;
  return std::nullopt;
}

std::optional<PlacingWay> Ask_Placing_Way(const GivenSystem& given, const CoordinateState& state,
                                          const QString& title) {
  const SystemMatch match = Match_Of(given, state);
  if (match.Whole()) return PlacingWay::AsWritten;
  const auto name = Transformation_Name(given, state);
  MsgRequest request;
  request.text =
      (match.kind ? QStringLiteral("Kartendatum falsch:\n") : QStringLiteral("Koordinatensystem falsch:\n")) +
      QStringLiteral("Datei: ") + Given_Text(given) + QStringLiteral("\nKarte: ") +
      Given_Text({Net_Kind(state), state.GridDatum}) + QStringLiteral("\nMöchten Sie die Prozedur fortsetzen?");
  if (name) {
    request.text += QStringLiteral(
                        "\n\nUmrechnen: die Koordinaten werden in das Netz der Karte umgerechnet (%1).\n"
                        "Ja: sie werden genommen, wie sie in der Datei stehen.")
                        .arg(*name);
  }
  request.title = title;
  return Ask_Way(std::move(request), name.has_value());
}

std::optional<PlacingWay> Ask_Way(MsgRequest request, bool transformable) {
  request.buttons = MsgButtons::YesNo;
  request.icon = MsgIcon::Question;
  request.defaultButton = transformable ? MsgDefault::First : MsgDefault::Second;
  if (transformable) request.other = QStringLiteral("&Umrechnen");
  switch (Message_Box(request)) {
    case MsgAnswer::Other:
      return PlacingWay::Transformed;
    case MsgAnswer::Yes:
      return PlacingWay::AsWritten;
    default:
      return std::nullopt;
  }
}
