#include "maps/analysis_commands.h"

#include <QFileInfo>

#include "analysis/analysis_texts.h"
#include "analysis/area_text.h"
#include "analysis/kataster_sheet.h"
#include "analysis/lines.h"
#include "analysis/overview.h"
#include "analysis/population_sheet.h"
#include "analysis/result_book.h"
#include "maps/note_pads.h"
#include "maps/row_look.h"
#include "platform/error.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/progress.h"
#include "platform/shell.h"
#include "state/dialog_hooks.h"
#include "state/global_state.h"

namespace {

const QString areaTitle = QStringLiteral("Flächenstatistik"), lineTitle = QStringLiteral("Linien berechnen"),
              areaError = QStringLiteral("Fehler - Flächenstatistik"),
              listingError = QStringLiteral("Fehler - Export der Einträge nach EXCEL");

void Told(const QString& title, const std::function<void()>& work) {
  try {
    work();
  } catch (const Error& error) {
    Message_Box(QString::number(error.number) + u'\n' + error.text, MsgButtons::OkCancel, MsgIcon::Critical, title);
  }
}

void Tell_No_Area() {
  Message_Box(QStringLiteral("\nEs ist keine Fläche, Figur oder Linie ausgewählt.\n"
                             "Mit der Maus auf das betreffende Objekt klicken \n"
                             "oder auf den linken Rand der Tabelle\n"
                             "in die Zeile des betreffenden Objekts setzen.\n"),
              MsgButtons::Ok, MsgIcon::Information, areaTitle);
}

void Tell_No_Line() {
  Message_Box(QStringLiteral("Es wurde keine Linie in der Tabelle der Karteneinträge gefunden.\n"
                             "Die Linienlänge kann deshalb nicht berechnet werden."),
              MsgButtons::Ok, MsgIcon::Information, lineTitle);
}

// Names of other scripts are kept: a text that Windows-1252 cannot hold is written as UTF-8.
void Show_Report(const QString& name, const QString& text) {
  const QString path = QFileInfo(TableFile).path() + u'/' + name;
  if (NotePad_Changed(NotePad_Of(path))) {
    Message_Box(QStringLiteral("Der Text in [") + path +
                    QStringLiteral("] wurde geändert.\nSpeichern Sie ihn unter einem anderen Namen, oder schließen Sie "
                                   "sein Fenster, bevor Sie ihn neu berechnen."),
                MsgButtons::Ok, MsgIcon::Warning, QStringLiteral("Notizen"));
    return;
  }
  const QByteArray bytes = To_1252(text);
  Replace_File(path, From_1252(bytes) == text ? bytes : text.toUtf8());
  if (dialogHooks.NotePad) dialogHooks.NotePad(path);
}

bool Ask_Again(const QString& text) {
  return Message_Box(text + QStringLiteral("\n\nOK: noch einmal versuchen. Abbrechen: die Arbeitsmappe bleibt, wie sie "
                                           "ist."),
                     MsgButtons::OkCancel, MsgIcon::Warning, QStringLiteral("Arbeitsmappe sichern.")) == MsgAnswer::Ok;
}

void Write_Sheet(const Sheet& sheet) {
  const auto book = Write_Result_Sheets(TableFile, {sheet}, Ask_Again);
  if (!book) return;
  QString text = QStringLiteral("Das Blatt \"%1\" steht in der Arbeitsmappe:\n%2").arg(sheet.name, book->path);
  if (!book->aside.isEmpty())
    text += QStringLiteral("\n\nDie vorhandene Datei hatte ein altes Format. Sie heißt jetzt:\n") + book->aside;
  text += QStringLiteral("\n\nSoll sie geöffnet werden?");
  const auto answer = Message_Box(text, MsgButtons::YesNo, MsgIcon::Question, QStringLiteral("Arbeitsmappe gesichert"));
  if (answer == MsgAnswer::Yes && !Open_With_Desktop(book->path))
    Message_Box(QStringLiteral("Die Arbeitsmappe kann nicht geöffnet werden:\n") + book->path, MsgButtons::Ok,
                MsgIcon::Warning, QStringLiteral("Arbeitsmappe"));
}

}  // namespace

void Show_Overview() {
  Told(areaError, [] {
    const QSizeF mm(static_cast<double>(MapWidthMm), static_cast<double>(MapHeightMm));
    Show_Report(QStringLiteral("OverView.inf"),
                Overview_Text(Read_Map_Input(), QSize(MapWidthPx, MapHeightPx), mm * static_cast<double>(PrintFactor)));
  });
}

void Write_Kataster() {
  Told(listingError, [] { Write_Sheet(Kataster_Sheet_Of(Read_Sorted_Map_Input())); });
}

void Show_Line_Lengths() {
  Told(areaError, [] {
    const MapInput input = Read_Map_Input();
    const auto lines = Calc_Lines(input);
    if (lines.empty()) return Tell_No_Line();
    Show_Report(QStringLiteral("Linien.stk"), Line_Text(input, lines));
  });
}

void Write_Line_Sheet() {
  Told(areaError, [] {
    const MapInput input = Read_Map_Input();
    const auto lines = Calc_Lines(input);
    if (lines.empty()) return Tell_No_Line();
    Write_Sheet(Line_Sheet(input, lines));
  });
}

void Show_Area_Sizes() {
  Told(areaError, [] {
    const MapInput input = Read_Map_Input();
    bool stopped = false;
    Progress progress(areaTitle + QStringLiteral("\nFlächen werden berechnet."), static_cast<int>(input.rows.size()));
    const auto text = Area_Text(input, [&] { return !(stopped = !progress.Advance()); });
    if (stopped) return;
    if (!text) return Tell_No_Area();
    Show_Report(QStringLiteral("Flaechen.stk"), *text);
  });
}

void Write_Area_Sheet() {
  Told(areaError, [] {
    const MapInput input = Read_Map_Input();
    const int first = First_Area(input.rows);
    if (first < 0) return Tell_No_Area();
    std::optional<Population> population;
    {
      Progress progress(areaTitle + QStringLiteral("\nFlächen werden berechnet."), static_cast<int>(input.rows.size()));
      population = Calc_Population_Values(input, first, [&] { return progress.Advance(); });
    }
    const auto sheet = population ? Population_Sheet(input, *population, {}) : std::nullopt;
    if (sheet) Write_Sheet(*sheet);
  });
}

void Tell_Size_In_Hand() {
  Told(areaError, [] {
    const auto look = Look_Of_Hand();
    const SizeBox box = look ? Size_Box(Map_Input_Without_Rows(), look->row) : SizeBox();
    if (box.text.isEmpty()) return Tell_No_Area();
    Message_Box(box.text, MsgButtons::Ok, MsgIcon::Information, box.title);
  });
}
