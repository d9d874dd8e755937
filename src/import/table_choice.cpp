#include "import/table_choice.h"

#include "platform/message_box.h"
#include "state/global_state.h"

namespace {

const QString faultTitle = QStringLiteral("Importfehler");
const QString pixelsOnly = QStringLiteral("\n\nOK: Die Einträge kommen auf dieselben Pixel.\nAbbrechen: kein Import.");

// By the middle of the source, so that the exactness is known.
QString Conversion_Name(const CoordinateState& net) {
  const TablePlacing placing(PlaceWay::Converted, net, Coord);
  placing({net.MapWidthPx / 2, net.MapHeightPx / 2});
  return placing.Name();
}

std::optional<TablePlacing> Ask_For_Pixels(const QString& text) {
  const MsgAnswer answer = Message_Box(text + pixelsOnly, MsgButtons::OkCancel, MsgIcon::Warning, faultTitle);
  if (answer != MsgAnswer::Ok) return std::nullopt;
  return TablePlacing();
}

QString Difference_Text(const CoordinateState& net) {
  if (net.Geographic() && Coord.Geographic())
    return QStringLiteral("Die Karten der Quelldatei und der Zieldatei haben ein geografisches Koordinatennetz.");
  return QStringLiteral("Koordinatennetz in der Quelldatei und in der Zieldatei stimmen nicht überein.");
}

std::optional<TablePlacing> Ask_About_Difference(const CoordinateState& net) {
  const QString text = Difference_Text(net);
  if (!Can_Convert(net, Coord)) return Ask_For_Pixels(text);
  MsgRequest request;
  request.text = text +
                 QStringLiteral("\n\nUmrechnen: die Einträge kommen an dieselbe Stelle im Gelände (%1).")
                     .arg(Conversion_Name(net)) +
                 pixelsOnly.mid(1);
  request.buttons = MsgButtons::OkCancel;
  request.other = QStringLiteral("&Umrechnen");
  request.icon = MsgIcon::Question;
  request.title = faultTitle;
  const MsgAnswer answer = Message_Box(request);
  if (answer == MsgAnswer::Other) return TablePlacing(PlaceWay::Converted, net, Coord);
  if (answer == MsgAnswer::Ok) return TablePlacing();
  return std::nullopt;
}

}  // namespace

void Tell_Remarks(const TableSource& source) {
  if (source.Remarks().isEmpty()) return;
  Message_Box(source.File() + QStringLiteral("\n\n") + source.Remarks(), MsgButtons::Ok, MsgIcon::Information,
              QStringLiteral("Tabelle der alten Art"));
}

std::optional<TablePlacing> Ask_Placing(const TableSource& source) {
  CoordinateState net;
  try {
    net = Net_Of_Source(source.Header(), source.File(), Coord);
  } catch (const Error& error) {
    return Ask_For_Pixels(Error_Text(error));
  }
  switch (Match_Nets(net, Coord)) {
    case NetMatch::Same:
      return TablePlacing(PlaceWay::Coordinates, net, Coord);
    case NetMatch::NoSource:
      return Ask_For_Pixels(
          QStringLiteral("In der Quelldatei wurde keine Hinweise auf ein Koordinatensystem (z.B. GEO, UTM oder "
                         "Gauss-Krüger) gefunden."));
    case NetMatch::Differ:
    case NetMatch::NoTarget:
      return Ask_About_Difference(net);
    case NetMatch::None:
      break;
  }
  return TablePlacing();
}

bool Go_On_After_Step(const QString& step, const Error& error) {
  return Message_Box(step + QStringLiteral(":\n\n") + Error_Text(error), MsgButtons::OkCancel, MsgIcon::Warning,
                     faultTitle) == MsgAnswer::Ok;
}

bool Tell_Imported(const TableImportResult& result) {
  QString text = QString::number(result.imported) + QStringLiteral("  Einträge wurden importiert.");
  const QString title = QStringLiteral("Import erfolgreich");
  if (result.existed > 0) text += QStringLiteral("\n%1 waren schon vorhanden.").arg(result.existed);
  if (result.shortened > 0) text += QStringLiteral("\n%1 Texte wurden gekürzt.").arg(result.shortened);
  if (!result.missingColumns.isEmpty())
    text +=
        QStringLiteral("\nSpalten, die diese Tabelle nicht hat: ") + result.missingColumns.join(QStringLiteral(", "));
  if (result.refused.empty()) {
    Message_Box(text, MsgButtons::Ok, MsgIcon::Information, title);
    return false;
  }
  text += QStringLiteral(
              "\n%1 wurden abgelehnt, davon %2 außerhalb der Karte.\n\nSoll die Liste mit den Gründen "
              "gezeigt werden?")
              .arg(result.refused.size())
              .arg(result.outside);
  return Message_Box(text, MsgButtons::YesNo, MsgIcon::Question, title) == MsgAnswer::Yes;
}
