#include "edit/scale_edit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "edit/bulk_change.h"
#include "hand/activation.h"
#include "objects/scale_bar.h"
#include "platform/message_box.h"
#include "platform/text.h"
#include "state/step.h"
#include "store/anchor.h"

namespace {

const QString title = QStringLiteral("Maßstab - Fehler");
constexpr int thickness = 8;  // of the bar, map pixels
constexpr std::array<double, 4> unitMm{1, 10, 1000, 1e6};
constexpr double largest = 1e9;

const QStringList& Unit_Abbreviations() {
  static const QStringList units{QStringLiteral(" mm"), QStringLiteral(" cm"), QStringLiteral(" m"),
                                 QStringLiteral(" km")};
  return units;
}

double Unit_Mm(const QString& abbreviation) {
  const auto index = Unit_Abbreviations().indexOf(abbreviation);
  return index < 0 ? 0 : unitMm[static_cast<size_t>(index)];
}

// Millimetres of the scan per map pixel.
double Scan_Mm(bool vertical) {
  const double mm = static_cast<double>(vertical ? MapHeightMm : MapWidthMm);
  const int pixels = vertical ? MapHeightPx : MapWidthPx;
  return mm > 0 && pixels > 0 ? mm / pixels : 0;
}

QString Scale_Text(double mmPerPixel) {
  const double onPaper = Scan_Mm(false) * static_cast<double>(PrintFactor);
  const double number = onPaper > 0 ? mmPerPixel / onPaper : 0;
  QString text = QStringLiteral("Maßstab = 1 : ");
  text += number > 0 ? Format(number, number < 10 ? QStringLiteral("0.0#") : QStringLiteral("0")) : QStringLiteral("?");
  if (PrintFactor != 1.0F)
    text += QStringLiteral("\nincl. Druckfaktor = ") +
            Format(static_cast<double>(PrintFactor), QStringLiteral("#0.00")) +
            QStringLiteral(" (Menü: Karte - Druckvorschau)");
  return text;
}

void Delete_Scale_Rows() {
  For_Each_Entry([] {
    if (Type_Here().Kind() != EntryKind::Scale) return Walk::On;
    rsEntries->Delete();
    return Walk::RowGone;
  });
  Promote_Anchor();
}

}  // namespace

const QStringList& Scale_Units() {
  static const QStringList words{QStringLiteral("Millimeter"), QStringLiteral("Zentimeter"), QStringLiteral("Meter"),
                                 QStringLiteral("Kilometer")};
  return words;
}

QString Scale_Fault(const ScaleInput& input) {
  if (!(input.ScaleValue > 0)) return QStringLiteral("Die Zahl muss größer als 0 sein.");
  if (input.ScaleValue > largest) return QStringLiteral("Die Zahl ist zu groß.");
  if (input.ScaleLenPx < 1) return QStringLiteral("Die Messlinie muss mindestens 1 Pixel lang sein.");
  constexpr int most = std::numeric_limits<int16_t>::max();
  if (input.ScaleLenPx > most - std::max(0, input.at.x()))
    return QStringLiteral("Der Maßstab ist zu lang: er würde über die größte Karte hinausreichen.");
  return {};
}

EntryRow Make_Scale_Row(const ScaleInput& input) {
  EntryRow row;
  row.ID = QStringLiteral("Maßstab");
  row.Eintrag = Unit_Abbreviations()[static_cast<int>(input.unit)];
  row.Schrift = Number_Text(input.ScaleValue).replace(u'.', u',');
  row.Groesse = input.ScaleValue;
  row.VG = 9;
  row.HG = input.vertical ? 1 : 0;
  row.Xmap = input.at.x();
  row.Ymap = input.at.y();
  // Stored lying; the drawing swaps the axes of a standing bar.
  row.Xline = row.Xmap + input.ScaleLenPx;
  row.Yline = row.Ymap + thickness;
  row.Typ = static_cast<int>(EntryKind::Scale);
  return row;
}

std::optional<ScaleInput> Scale_Of_Map() {
  if (!Table_Is_Open()) return std::nullopt;
  std::optional<ScaleInput> found;
  For_Each_Entry([&found] {
    if (Type_Here().Kind() != EntryKind::Scale) return Walk::On;
    const EntryRow row = Read_Entry(*rsEntries);
    const ScaleValue scale = Scale_Of(row);
    const auto unit = Unit_Abbreviations().indexOf(scale.unit);
    ScaleInput input;
    input.ScaleValue = scale.number;
    input.unit = unit < 0 ? ScaleUnit::Meter : static_cast<ScaleUnit>(unit);
    input.ScaleLenPx = std::abs(row.Xline - row.Xmap);
    input.vertical = scale.vertical;
    input.at = {std::min(row.Xmap, row.Xline), std::min(row.Ymap, row.Yline)};
    found = input;
    return Walk::Stop;
  });
  return found;
}

bool Add_Scale_Row(const ScaleInput& input) {
  if (const QString fault = Scale_Fault(input); !fault.isEmpty()) {
    Message_Box(fault, MsgButtons::Ok, MsgIcon::Warning, title);
    return false;
  }
  if (!rsEntries || !dbEntries || (Entry_In_Hand() && !End_Entry())) return false;
  const EntryRow row = Make_Scale_Row(input);
  const UndoStep step(MapHasScale ? QStringLiteral("Maßstab ersetzt") : QString());
  const bool written = In_Told_Transaction(title, [&row] {
    Delete_Scale_Rows();
    Append_Entry(row);
  });
  if (!written) return false;
  Read_Scale(row);
  Show_Changed_Entries();
  return true;
}

int Scale_Pixels(double mm, bool vertical) {
  const double perPixel = Scan_Mm(vertical);
  return perPixel > 0 ? static_cast<int>(std::lround(std::clamp(mm / perPixel, 0.0, 1e6))) : 0;
}

double Scale_Mm(int pixels, bool vertical) { return pixels * Scan_Mm(vertical); }

QString Show_Scale_Text(const ScaleInput& input) {
  const bool sound = input.ScaleValue > 0 && input.ScaleLenPx > 0;
  return Scale_Text(sound ? input.ScaleValue * unitMm[static_cast<size_t>(input.unit)] / input.ScaleLenPx : 0);
}

QString Show_Scale_Text() { return Scale_Text(MapHasScale ? MapUnitPerPixel * Unit_Mm(MapUnit) : 0); }
