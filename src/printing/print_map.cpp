#include "printing/print_map.h"

#include <QImage>
#include <QPainter>
#include <QSet>
#include <algorithm>
#include <cmath>

#include "platform/error.h"
#include "platform/message_box.h"
#include "platform/text.h"
#include "printing/print_texts.h"
#include "state/coordinate_state.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/table_state.h"
#include "state/task_line.h"
#include "store/header_row.h"

namespace {

constexpr int cancelledByDriver = 396;
constexpr double sharpest = 3.0, coarsest = 1.0, sharpnessStep = 0.5;
constexpr double screenDpi = 96;
constexpr double frameMargin = 5;  // mm for the labels of the net

// Asks once an entry in a job: it may reach over many sheets.
bool Go_On_After(const FailedEntry& entry, QSet<qint64>& asked) {
  if (asked.contains(entry.key)) return true;
  asked.insert(entry.key);
  return Message_Box(print_texts::entryFailed.arg(entry.text), MsgButtons::YesNo, MsgIcon::Question,
                     entry.figure ? print_texts::figureTitle : print_texts::problemTitle) == MsgAnswer::Yes;
}

// One sheet as a picture, in two halves beside each other.
void Draw_As_Bitmap(QPainter& page, const Paper& paper, const PrintGeometry& geometry, const PrintSheet& sheet,
                    const SheetLook& look, double sharpness) {
  const double dpi = screenDpi * sharpness, dots = dpi / 25.4, scale = paper.dpi / screenDpi;
  {
    const auto surface = Make_Page_Surface(page, PageView{scale, scale, {}, PageModes::AsCopy});
    QRectF half = Sheet_Target(geometry, sheet);
    half.setWidth(half.width() / 2);
    for (int side = 0; side < 2; ++side, half.translate(half.width(), 0)) {
      QImage buffer = Make_Canvas(static_cast<int>(std::ceil(half.width() * dots)) + 1,
                                  static_cast<int>(std::ceil(half.height() * dots)) + 1);
      Draw_Sheet_Image(buffer, dpi, half, geometry, sheet, look);
      surface->PaintPicture(QRectF(half.topLeft() * pixelsPerMm, half.size() * pixelsPerMm), buffer,
                            QRectF(0, 0, half.width() * dots, half.height() * dots));
    }
  }
  // The labels of the net stand beyond the pictures.
  SheetLook net = look;
  net.background = net.entries = false;
  Draw_Sheet(page, paper.dpi, geometry, sheet, net);
}

class MapPrinter {
 public:
  MapPrinter(const PrintOrder& printOrder, const PrintHooks& printHooks)
      : order(printOrder), hooks(printHooks), geometry(Print_Geometry(order.settings, order.paper, order.map)) {}

  PrintEnd Run() {
    if (!geometry.valid) {
      Message_Box(print_texts::noRoom, MsgButtons::Ok, MsgIcon::Warning, print_texts::printTitle);
      return PrintEnd::Failed;
    }
    for (;;) {
      try {
        Print_Range();
        return PrintEnd::Done;
      } catch (const PrintStopped&) {
        Kill_Job();
        Message_Box(print_texts::cancelled, MsgButtons::Ok, MsgIcon::Information, print_texts::printTitle);
        return PrintEnd::Cancelled;
      } catch (const Error& error) {
        Kill_Job();
        if (error.number == errors::printer && order.path == PrintPath::Bitmap && sharpness > coarsest) {
          sharpness -= sharpnessStep;
          note = print_texts::sharpness + Format(sharpness, QStringLiteral("#.0"));
          continue;
        }
        Tell(error);
        return PrintEnd::Failed;
      }
    }
  }

 private:
  void Print_Range() {
    job = hooks.begin();
    if (!job) throw PrintStopped{};
    int sheets = 0;
    for (const PrintSheet& sheet : Sheet_Walk(geometry)) {
      if (sheet.number < order.range.from || sheet.number > order.range.to) continue;
      if (++sheets > 1) job->NewPage();
      const auto goOn = [this, number = sheet.number] { return !hooks.step || hooks.step(number, note); };
      if (!goOn()) throw PrintStopped{};
      SheetLook look;
      look.fontFactor = order.settings.fontFactor;
      look.goOn = goOn;
      look.failed = [this](const FailedEntry& entry) { return Go_On_After(entry, asked); };
      if (order.path == PrintPath::Bitmap)
        Draw_As_Bitmap(job->Painter(), order.paper, geometry, sheet, look, sharpness);
      else
        Draw_Sheet(job->Painter(), order.paper.dpi, geometry, sheet, look);
    }
    job->EndDoc();
    Tell_Done(Printed_Text(sheets, job->Target()));
    job.reset();
  }

  void Kill_Job() {
    if (!job) return;
    try {
      job->KillDoc();
    } catch (const Error&) {
      // It is gone one way or the other.
    }
    job.reset();
  }

  void Tell(const Error& error) {
    if (error.number == cancelledByDriver) return;
    if (error.number == errors::printer) {
      Message_Box(print_texts::tooLarge, MsgButtons::Ok, MsgIcon::Warning, print_texts::problemTitle);
    } else {
      Message_Box(error.text, MsgButtons::OkCancel, MsgIcon::Warning, QStringLiteral("Fehler"));
    }
  }

  const PrintOrder& order;
  const PrintHooks& hooks;
  PrintGeometry geometry;
  std::unique_ptr<PrintJob> job;
  double sharpness = sharpest;
  QSet<qint64> asked;  // entries that could not be drawn
  QString note;
};

}  // namespace

QString Printed_Text(int sheets, const QString& target) {
  const QString count = sheets == 1 ? QStringLiteral("1 Blatt") : QStringLiteral("%1 Blätter").arg(sheets);
  return QStringLiteral("Gedruckt: ") + count + (target.isEmpty() ? QString() : QStringLiteral(", ") + target);
}

PrintSettings Read_Print_Settings() {
  PrintSettings settings;
  if (!rsEntries) return settings;
  const HeaderRow header = Read_Header();
  const bool net = GridVisible && Coord.Grid != gridNone;
  const auto margin = [net](int stored) { return std::max({0, stored, net ? static_cast<int>(frameMargin) : 0}); };
  settings.left = margin(header.left);
  settings.right = margin(header.right);
  settings.top = margin(header.top);
  settings.bottom = margin(header.bottom);
  settings.factor = header.printFactor > 0 ? header.printFactor : 1.0;
  settings.orientation = header.orientation == landscape ? landscape : portrait;
  settings.fontFactor = static_cast<double>(Read_Font_Factor());
  return settings;
}

PrintedMap Map_To_Print() {
  return {{MapWidthPx, MapHeightPx}, {static_cast<double>(MapWidthMm), static_cast<double>(MapHeightMm)}};
}

void Take_Print_Settings(const PrintSettings& settings, const Paper& paper) {
  const PrintGeometry geometry = Print_Geometry(settings, paper, Map_To_Print());
  PrintFactor = static_cast<float>(geometry.factor);
  if (MapWidthPx > 0) MapPixelMm = geometry.factor * static_cast<double>(MapWidthMm) / MapWidthPx;
  if (MapHeightPx > 0) MapPixelMmY = geometry.factor * static_cast<double>(MapHeightMm) / MapHeightPx;
  events.StateChanged.Emit();
}

bool Save_Print_Settings(const PrintSettings& settings) {
  try {
    const KeepCurrentRow keep;
    HeaderRow header = Read_Header();
    header.left = settings.left;
    header.right = settings.right;
    header.top = settings.top;
    header.bottom = settings.bottom;
    header.printFactor = settings.factor;
    header.orientation = settings.orientation;
    Write_Header(header);
    Write_Font_Factor(static_cast<float>(settings.fontFactor));
    Tbl.Tag = TableTag::Dirty;
    events.TableChanged.Emit();
    return true;
  } catch (const Error& error) {
    Message_Box(
        print_texts::notSaved + QLatin1Char('\n') + QString::number(error.number) + QLatin1Char(' ') + error.text,
        MsgButtons::Ok, MsgIcon::Warning, QStringLiteral("Fehler"));
    return false;
  }
}

PrintEnd Print_Map(const PrintOrder& order, const PrintHooks& hooks) {
  const BusyPointer busy;
  return MapPrinter(order, hooks).Run();
}
