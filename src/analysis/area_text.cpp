#include "analysis/area_text.h"

#include "analysis/analysis_texts.h"
#include "platform/text.h"

namespace {
const QString lineEnd = QStringLiteral("\r\n");
const QString rule(60, u'-');
constexpr int nameWidth = 20;

QString Whole(double value) { return Format(value, QStringLiteral("### ### ##0")).trimmed(); }

// A long name by its beginning and its end, which tell more than its middle.
QString Short_Species(const QString& name) {
  if (name.size() <= nameWidth) return name;
  return name.left(5) + QStringLiteral("...") + name.right(nameWidth - 8);
}

class ShapeText {
 public:
  ShapeText(const MapInput& map, QString& target) : input(map), unit(map.measure.unit), text(target) {}

  void Write(const AreaPopulation& shape) {
    const EntryRow& row = input.rows[static_cast<size_t>(shape.row)];
    text += lineEnd + QStringLiteral("Bezeichner:      ") + EntryId::Parse(row.ID).name +
            Pad_Left(row.Eintrag.simplified(), nameWidth) + lineEnd + rule;
    text +=
        lineEnd + QStringLiteral("Maßeinheit:            ") + QStringLiteral("Pixel") + Pad_Left(unit.trimmed(), 16);
    Write_Sizes(shape.size);
    text += lineEnd + lineEnd + QStringLiteral("zugeordnete Einträge:") + Pad_Left(QString::number(shape.assigned), 7);
    if (shape.assigned > 0) {
      Write_Density(shape);
      Write_Species(shape.species);
    }
    text += lineEnd;
  }

 private:
  void Write_Sizes(const ShapeSize& size) {
    const bool metres = unit == QLatin1String(" m");
    text += lineEnd + QStringLiteral("Flächengröße: ") + Pad_Left(Whole(size.areaPx), 14) +
            Pad_Left(Format_Number(size.areaNat), 16) + unit + QStringLiteral("^2");
    if (metres && input.measure.hasScale)
      text +=
          QStringLiteral("  =  ") + Number_Text(size.areaNat / 10000).replace(u'.', u',') + QStringLiteral(" Hektar");
    text += lineEnd + QStringLiteral("Flächenumfang:") + Pad_Left(Whole(size.perimeterPx), 14) +
            Pad_Left(Format_Number(size.perimeterNat), 16) + unit;
    if (metres)
      text += QStringLiteral("   =   ") + Number_Text(size.perimeterNat / 1000).replace(u'.', u',') +
              QStringLiteral(" Kilometer");
  }

  void Write_Density(const AreaPopulation& shape) {
    if (!shape.density || !shape.inverse) return;
    const auto number = [](float value) { return Format(double(value), QStringLiteral("### ### ##0.000")).trimmed(); };
    const auto decade = [](qint64 value) { return Whole(static_cast<double>(value)); };
    text += lineEnd + QStringLiteral("Populationsdichte:\t") + number(shape.density->value) +
            QStringLiteral(" Einträge pro ") + decade(shape.density->decade) + unit + QStringLiteral("^2  ");
    text +=
        lineEnd + QStringLiteral("Fläche pro Eintrag:\t") + number(shape.inverse->value) + unit + QStringLiteral("^2 ");
    if (shape.inverse->decade != 1)
      text += QStringLiteral(" für ") + decade(shape.inverse->decade) + QStringLiteral(" Einträge");
  }

  void Write_Species(const SpeciesList& list) {
    const auto columns = [](double count, double percent) {
      return u'\t' + Pad_Left(Whole(count)) + u'\t' + Pad_Left(Format(percent, QStringLiteral("##0.00")));
    };
    text +=
        QStringLiteral("\r\n\r\n\t\t\t  Abundanz\tDominanz") + QStringLiteral("\r\n\t\t\t      n   \t   %         ");
    for (const SpeciesCount& species : list.species)
      text += lineEnd + QStringLiteral("Art:\t") + Pad_Right(Short_Species(species.name), nameWidth) +
              columns(static_cast<double>(species.total), double(species.dominance));
    text += lineEnd + QStringLiteral("Insgesamt:\t") + Pad_Right(QString::number(list.species.size()), nameWidth) +
            columns(static_cast<double>(list.individuals), double(list.percentSum));
  }

  const MapInput& input;
  const QString& unit;
  QString& text;
};
}  // namespace

std::optional<QString> Area_Text(const MapInput& input, const std::function<bool()>& step) {
  QString text = QStringLiteral("Flächenstatistik:\r\n\t") + input.mapName + lineEnd;
  const AssignedEntries assigned(input.rows);
  ShapeText shapes(input, text);
  bool any = false, digits = false;
  QStringList tooLarge;
  for (size_t i = 0; i < input.rows.size(); ++i) {
    const EntryRow& row = input.rows[i];
    const EntryType type = EntryType::Parse(row.Typ);
    if (!type.IsPolygon() && !type.IsFigure()) continue;
    const EntryId id = EntryId::Parse(row.ID);
    if (!Is_Area_Row(row, id) && !Is_Figure_Row(row, id)) continue;
    if (step && !step()) return {};
    const AreaPopulation shape = Population_Of(input, static_cast<int>(i), assigned);
    shapes.Write(shape);
    any = true;
    digits = digits || shape.species.digitsSeen;
    tooLarge += shape.species.tooLarge;
  }
  if (!any) return {};
  text += lineEnd + rule;
  if (!input.measure.hasScale) text += analysis_texts::Scale_Hint();
  text += analysis_texts::Note_Hint();
  if (digits) text += lineEnd + lineEnd + analysis_texts::Digits_Hint();
  if (!tooLarge.isEmpty()) text += lineEnd + lineEnd + analysis_texts::Too_Large(tooLarge);
  return text + lineEnd;
}
