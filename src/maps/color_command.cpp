#include "maps/color_command.h"

#include "analysis/color_sheet.h"
#include "maps/result_output.h"
#include "platform/message_box.h"
#include "platform/progress.h"
#include "state/map_state.h"

namespace {

const QString errorTitle = QStringLiteral("Fehler - Abundanz berechnen"),
              heading = QStringLiteral("Zuordnung der Texteinträge zur Hintergrundfarbe der Karte.");

Sheet Broken_Off(const MapInput& input) {
  Sheet sheet(QStringLiteral("Zuordnung"));
  CellStyle bold;
  bold.bold = true;
  sheet.Put(1, 1, heading, bold);
  sheet.Put(2, 1, input.mapName);
  sheet.Put(3, 1, input.tableName);
  sheet.Put(5, 1, QStringLiteral("Fehler: Auswertung abgebrochen!"));
  return sheet;
}

// Tells the watcher, or the progress window where there is none.
class Teller {
 public:
  Teller(const ColorWatch& who, int rows) : watch(who), total(rows) {
    if (!watch.step) window = std::make_unique<Progress>(QStringLiteral("Texteinträge -> Excel\n") + heading, total);
  }
  void Say(const QString& text) {
    if (watch.say) watch.say(text);
    if (window) window->Say(text);
  }
  bool Step() {
    const bool on = watch.step ? watch.step(++done, total) : window->Advance();
    if (on && ++passed == total) Say(QStringLiteral("Karteneinträge werden sortiert."));
    return on;
  }
  std::unique_ptr<Progress> Window() { return std::move(window); }

 private:
  const ColorWatch& watch;
  std::unique_ptr<Progress> window;
  int total = 0, done = 0, passed = 0;
};

}  // namespace

ColorEnd Assign_Colors(const ColorOptions& options, const ColorWatch& watch) {
  ColorEnd end = ColorEnd::Failed;
  Tell_Result_Error(errorTitle, [&] {
    const MapInput input = Read_Map_Input();
    const QImage& scan = Map.MapClip[0].image;
    Teller teller(watch, static_cast<int>(input.rows.size()));
    std::optional<ColorAssignment> colors;
    try {
      colors = Assign_To_Colors(
          input.rows, options, [&scan](QPoint at) { return Scan_Color(scan, at); },
          [&teller] { return teller.Step(); });
    } catch (const Error& error) {
      teller.Say(QStringLiteral(" Fehler!"));
      const auto answer = Message_Box(QString::number(error.number) + u'\n' + Error_Text(error), MsgButtons::OkCancel,
                                      MsgIcon::Critical, errorTitle);
      if (answer == MsgAnswer::Ok) Write_Result({Broken_Off(input)}, teller.Window());
      return;
    }
    if (!colors) {
      end = ColorEnd::Stopped;
      return;
    }
    teller.Say(QStringLiteral("Zusammenfassung wird erstellt."));
    const Sheet sheet = Color_Sheet(input, *colors, options);
    end = Write_Result({sheet}, teller.Window()) ? ColorEnd::Written : ColorEnd::Stopped;
  });
  return end;
}
