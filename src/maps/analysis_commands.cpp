#include "maps/analysis_commands.h"

#include <QFileInfo>

#include "analysis/analysis_texts.h"
#include "analysis/area_text.h"
#include "analysis/kataster_sheet.h"
#include "analysis/lines.h"
#include "analysis/overview.h"
#include "analysis/population_sheet.h"
#include "maps/population_command.h"
#include "maps/result_output.h"
#include "maps/row_look.h"
#include "platform/message_box.h"
#include "platform/progress.h"
#include "state/global_state.h"

namespace {

const QString lineTitle = QStringLiteral("Linien berechnen"), areaError = QStringLiteral("Fehler - Flächenstatistik"),
              listingError = QStringLiteral("Fehler - Export der Einträge nach EXCEL");

void Tell_No_Line() {
  Message_Box(QStringLiteral("Es wurde keine Linie in der Tabelle der Karteneinträge gefunden.\n"
                             "Die Linienlänge kann deshalb nicht berechnet werden."),
              MsgButtons::Ok, MsgIcon::Information, lineTitle);
}

QString Beside_Table(const QString& name) { return QFileInfo(TableFile).path() + u'/' + name; }

}  // namespace

void Show_Overview() {
  Tell_Result_Error(areaError, [] {
    const QSizeF mm(static_cast<double>(MapWidthMm), static_cast<double>(MapHeightMm));
    Show_Report(Beside_Table(QStringLiteral("OverView.inf")),
                Overview_Text(Read_Map_Input(), QSize(MapWidthPx, MapHeightPx), mm * static_cast<double>(PrintFactor)));
  });
}

void Write_Kataster() {
  Tell_Result_Error(listingError, [] { Write_Result({Kataster_Sheet_Of(Read_Sorted_Map_Input())}); });
}

void Show_Line_Lengths() {
  Tell_Result_Error(areaError, [] {
    const MapInput input = Read_Map_Input();
    const auto lines = Calc_Lines(input);
    if (lines.empty()) return Tell_No_Line();
    Show_Report(Beside_Table(QStringLiteral("Linien.stk")), Line_Text(input, lines));
  });
}

void Write_Line_Sheet() {
  Tell_Result_Error(areaError, [] {
    const MapInput input = Read_Map_Input();
    const auto lines = Calc_Lines(input);
    if (lines.empty()) return Tell_No_Line();
    Write_Result({Line_Sheet(input, lines)});
  });
}

void Show_Area_Sizes() {
  Tell_Result_Error(areaError, [] {
    const MapInput input = Read_Map_Input();
    bool stopped = false;
    Progress progress(QStringLiteral("Flächenstatistik\nFlächen werden berechnet."),
                      static_cast<int>(input.rows.size()));
    const auto text = Area_Text(input, [&] { return !(stopped = !progress.Advance()); });
    if (stopped) return;
    if (!text) return Tell_No_Area();
    Show_Report(Beside_Table(QStringLiteral("Flaechen.stk")), *text);
  });
}

void Write_Area_Sheet() {
  Tell_Result_Error(areaError, [] { Calc_Population(Read_Map_Input(), {.diversity = false}); });
}

void Tell_Size_In_Hand() {
  Tell_Result_Error(areaError, [] {
    const auto look = Look_Of_Hand();
    const SizeBox box = look ? Size_Box(Map_Input_Without_Rows(), look->row) : SizeBox();
    if (box.text.isEmpty()) return Tell_No_Area();
    Message_Box(box.text, MsgButtons::Ok, MsgIcon::Information, box.title);
  });
}
