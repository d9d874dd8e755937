#include "maps/neighbour_command.h"

#include "analysis/neighbour_text.h"
#include "maps/result_output.h"
#include "platform/error.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/progress.h"

namespace {

const QString title = QStringLiteral("Distanz zu benachbarten Einträgen");

// N, or less where there are too few entries; 0 if nothing is to be computed.
int Agreed_Neighbours(int entries, int wanted) {
  const int possible = Reduced_Neighbours(entries, wanted);
  if (possible == wanted) return wanted;
  const QString found = QString::number(entries) + QStringLiteral(" relevante Einträge gefunden.\n\n");
  if (possible < 1) {
    Message_Box(found + QStringLiteral("Nachbarn gibt es erst von zwei Einträgen an."), MsgButtons::Ok,
                MsgIcon::Information, title);
    return 0;
  }
  const auto answer =
      Message_Box(found + QStringLiteral("Die Zahl N der nächstgelegenen Einträge wird reduziert.\n\n N = ") +
                      QString::number(possible),
                  MsgButtons::OkCancel, MsgIcon::Information, title);
  return answer == MsgAnswer::Ok ? possible : 0;
}

bool Write_Neighbours(NeighbourOrder& order) {
  const MapInput input = Read_Map_Input();
  const auto entries = Neighbour_Entries(input.rows);
  const auto count = static_cast<int>(entries.size());
  const int agreed = Agreed_Neighbours(count, order.neighbours);
  if (agreed < 1) return false;
  order.neighbours = agreed;
  std::optional<Neighbours> found;
  {
    Progress progress(title + QStringLiteral("\nNachbarn werden gesucht."), count);
    int before = 0;
    found =
        Find_Neighbours(entries, agreed, [&](int done) { return progress.Advance(done - before) && (before = done); });
  }
  if (!found) return false;
  const QStringList lines = Neighbour_Text(entries, *found, input.measure, {.detailed = order.detailed});
  return Show_Report(ProgramFolder + QStringLiteral("/Distanz.erg"),
                     lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n"));
}

}  // namespace

bool Calc_Neighbours(NeighbourOrder& order) {
  try {
    return Write_Neighbours(order);
  } catch (const Error& error) {
    Message_Box(Error_Text(error), MsgButtons::Ok, MsgIcon::Critical, QStringLiteral("Programmfehler 307"));
    return false;
  }
}
