#include "maps/population_command.h"

#include <QFileInfo>

#include "analysis/matrix_sheet.h"
#include "analysis/population_sheet.h"
#include "maps/color_command.h"
#include "maps/result_output.h"
#include "platform/error.h"
#include "platform/file_dialog.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/progress.h"
#include "state/global_state.h"

namespace {

const QString areaTitle = QStringLiteral("Flächenstatistik"), matrixTitle = QStringLiteral("Matrix der Arten"),
              areaError = QStringLiteral("Fehler - Flächenstatistik"),
              checkTitle = QStringLiteral("Fehler -  Populationsparameter berechnen"),
              question = QStringLiteral("Soll trotzdem eine Berechnung der Populationsparameter durchgeführt werden?");

bool Asked(const QString& text) {
  return Message_Box(text, MsgButtons::YesNo, MsgIcon::Question, checkTitle) == MsgAnswer::Yes;
}

// Is anything assigned to an area? Without it the user is asked, and figures may take the place of the areas.
// Nothing: the user does not want to go on.
std::optional<SpeciesFrom> Ask_Without_Assigned(const MapInput& input) {
  int toFigures = 0;
  for (const EntryRow& row : input.rows) {
    if (row.ID.indexOf(QLatin1String(">Fl"), 1) > 0) return SpeciesFrom::Areas;
    if (row.ID.indexOf(QLatin1String(">Fig"), 1) > 0) ++toFigures;
  }
  if (toFigures > 0) {
    const QString text =
        question + u'\n' + QString::number(toFigures) +
        QStringLiteral(
            "  Karteneinträge sind jedoch einer oder mehreren Figuren (Kreis, Quadrat, Ellipse oder "
            "Rechteck) zugeordnet.\n\n Soll für diese Einträge eine Berechnung der Populationsparameter "
            "durchgeführt werden?");
    return Asked(text) ? std::optional(SpeciesFrom::Figures) : std::nullopt;
  }
  const QString text =
      QStringLiteral("Es wurden keine Karteneinträge gefunden, \ndie einer Fläche zugeordnet sind.\n\n") + question;
  return Asked(text) ? std::optional(SpeciesFrom::Areas) : std::nullopt;
}

bool Wants_Matrix(const PopOptions& options) {
  return options.from != SpeciesFrom::Areas && options.from != SpeciesFrom::AllTexts;
}

std::unique_ptr<Progress> Steps(const QString& title, const QString& step, const MapInput& input, int passes = 1) {
  return std::make_unique<Progress>(title + u'\n' + step, passes * static_cast<int>(input.rows.size()));
}

// There is no evenness of a single species: as the division by nothing that it is.
bool Go_On_With_One_Species(const MapInput& input, const AreaPopulation& area) {
  const QString id = EntryId::Parse(input.rows[static_cast<size_t>(area.row)].ID).name;
  const QString text = QString::number(errors::divisionByZero) + u'\n' + Error_Text(errors::divisionByZero) +
                       QStringLiteral(
                           "\n\n%1: Von einer einzigen Art gibt es keine Evenness.\nOK: weiter mit der "
                           "nächsten Fläche.")
                           .arg(id);
  return Message_Box(text, MsgButtons::OkCancel, MsgIcon::Critical, areaError) == MsgAnswer::Ok;
}

struct Results {
  std::vector<Sheet> sheets;
  QStringList tooLarge;
};

// An area whose table of vertices is missing has no size. That is told; false if the user stops.
bool Tell_Without_Outline(const MapInput& input, const Population& population) {
  QStringList names;
  for (const AreaPopulation& area : population.areas) {
    const EntryRow& row = input.rows[static_cast<size_t>(area.row)];
    if (input.vertices(row).empty()) names += EntryId::Parse(row.ID).name;
  }
  return names.isEmpty() ||
         Message_Box(QStringLiteral("\nBei der Berechnung des Polygons ist ein Fehler aufgetreten.\nDie Eckpunkte "
                                    "fehlen: ") +
                         names.join(QStringLiteral(", ")),
                     MsgButtons::OkCancel, MsgIcon::Warning,
                     QStringLiteral("Fehler - Polygon berechnen")) == MsgAnswer::Ok;
}

// Both give false if the user stops.
bool Add_Population(const MapInput& input, const PopOptions& options, Progress& steps, Results& results) {
  const int first = First_Area(input.rows);
  if (first < 0) return true;
  const auto population = Calc_Population_Values(input, first, [&] { return steps.Advance(); });
  if (!population || !Tell_Without_Outline(input, *population)) return false;
  results.tooLarge = population->tooLarge;
  auto sheet = Population_Sheet(input, *population, {options.diversity, [&](const AreaPopulation& area) {
                                                       return Go_On_With_One_Species(input, area);
                                                     }});
  if (!sheet) return false;
  results.sheets.push_back(std::move(*sheet));
  return true;
}

bool Add_Matrix(const MapInput& input, SpeciesFrom from, Progress& steps, Results& results) {
  const auto matrix =
      Calc_Species_Matrix(input, [&] { return steps.Advance(); }, {.marked = from == SpeciesFrom::Marked});
  if (!matrix) return false;
  if (matrix->rows.empty()) return true;
  results.sheets.push_back(Matrix_Sheet(*matrix));
  results.tooLarge = matrix->tooLarge;  // those of the areas are among them
  return true;
}

// The matrix by itself; nothing, and that is told, if there is none or the user stops.
std::optional<SpeciesMatrix> Matrix_Of_Map() {
  const MapInput input = Read_Map_Input();
  std::optional<SpeciesMatrix> matrix;
  {
    const auto steps = Steps(matrixTitle, QStringLiteral("Arten werden gezählt."), input);
    matrix = Calc_Species_Matrix(input, [&] { return steps->Advance(); });
  }
  if (!matrix) return {};
  if (matrix->rows.empty()) {
    Message_Box(QStringLiteral("Auf der Karte gibt es keine Fläche, und keiner Figur, Linie oder Gruppe sind Einträge "
                               "zugeordnet."),
                MsgButtons::Ok, MsgIcon::Information, matrixTitle);
    return {};
  }
  if (!Tell_Too_Large(matrix->tooLarge, matrixTitle)) return {};
  return matrix;
}

// The statistics were wanted all the same, though there is nothing they could begin with.
void Tell_No_Area_Chosen() {
  Message_Box(QStringLiteral("\nEs ist keine Fläche ausgewählt.\n"
                             "Mauszeiger auf eine Fläche \n"
                             "oder auf den linken Rand der Tabelle\n"
                             "in die Zeile der betreffenden Fläche setzen\n"),
              MsgButtons::Ok, MsgIcon::Information, areaTitle);
}

}  // namespace

void Tell_No_Area() {
  Message_Box(QStringLiteral("\nEs ist keine Fläche, Figur oder Linie ausgewählt.\n"
                             "Mit der Maus auf das betreffende Objekt klicken \n"
                             "oder auf den linken Rand der Tabelle\n"
                             "in die Zeile des betreffenden Objekts setzen.\n"),
              MsgButtons::Ok, MsgIcon::Information, areaTitle);
}

void Calc_Population(const MapInput& input, const PopOptions& options) {
  Results results;
  auto steps = Steps(areaTitle, QStringLiteral("Flächen werden berechnet."), input, Wants_Matrix(options) ? 2 : 1);
  if (!Add_Population(input, options, *steps, results)) return;
  if (Wants_Matrix(options)) {
    steps->Say(QStringLiteral("Arten werden gezählt."));
    if (!Add_Matrix(input, options.from, *steps, results)) return;
  }
  if (results.sheets.empty()) {
    steps.reset();
    Tell_No_Area_Chosen();
  } else if (Tell_Too_Large(results.tooLarge, areaTitle)) {
    Write_Result(results.sheets, std::move(steps));
  }
}

void Calc_Chosen_Population(const PopOptions& options) {
  if (options.from == SpeciesFrom::AllTexts) {
    Assign_Colors({.leadingNumbers = true});
    return;
  }
  Tell_Result_Error(areaError, [&options] {
    const MapInput input = Read_Map_Input();
    PopOptions wanted = options;
    if (wanted.from == SpeciesFrom::Areas) {
      const auto from = Ask_Without_Assigned(input);
      if (!from) return;
      wanted.from = *from;
    }
    if (First_Area_Row(input.rows) < 0 &&
        !Asked(QStringLiteral("FLURAX hat keine Fläche (Polygon) auf der Karte gefunden.\n\n") + question))
      return;
    Calc_Population(input, wanted);
  });
}

void Write_Matrix_Sheet() {
  Tell_Result_Error(areaError, [] {
    if (const auto matrix = Matrix_Of_Map()) Write_Result({Matrix_Sheet(*matrix)});
  });
}

void Write_Matrix_Csv() {
  Tell_Result_Error(areaError, [] {
    const auto matrix = Matrix_Of_Map();
    if (!matrix) return;
    const QFileInfo table(TableFile);
    const auto path = File_Dialog({.save = true,
                                   .title = QStringLiteral("Matrix der Arten als CSV sichern"),
                                   .folder = table.path(),
                                   .name = table.completeBaseName() + QStringLiteral("_Matrix.csv"),
                                   .defaultExtension = QStringLiteral("csv"),
                                   .filter = QStringLiteral("CSV-Tabelle (*.csv)|*.csv")});
    if (!path) return;
    Replace_File(*path, Matrix_Csv(*matrix));
    Message_Box(QStringLiteral("Die Matrix wurde in folgende Datei geschrieben:\n") + *path, MsgButtons::Ok,
                MsgIcon::Information, matrixTitle);
  });
}
