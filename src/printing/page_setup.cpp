#include "printing/page_setup.h"

#include <algorithm>
#include <cmath>

#include "platform/message_box.h"
#include "platform/text.h"
#include "printing/print_texts.h"
#include "state/events.h"
#include "state/mdi_state.h"
#include "store/header_row.h"

namespace {

constexpr double factorStep = 0.05;
constexpr int wrongFontFactor = 5000;
constexpr double tolerance = 1e-9;

const QString factorPattern = QStringLiteral("0.000"), cmPattern = QStringLiteral("0.0"),
              fontPattern = QStringLiteral("0.00");

QString Cm(double mm) { return Format(mm / 10, cmPattern); }

// What a typed factor comes to: nothing and less than nothing is true size.
double Sound_Factor(double factor) {
  if (!(factor > 0)) return 1.0;
  return std::clamp(factor, smallestPrintFactor, largestPrintFactor);
}

int Clip(double unprintable) { return To_Int16(unprintable); }

}  // namespace

PageSetup Load_Page_Setup() {
  PageSetup setup;
  setup.settings = Read_Print_Settings();
  setup.paper = The_Printer().paper(setup.settings.orientation);
  setup.map = Map_To_Print();
  setup.txtFtSize = Format(setup.settings.fontFactor, fontPattern);
  Fill_Page_Choices(setup);
  Set_Anzeige(setup);
  return setup;
}

void Set_Anzeige(PageSetup& setup) {
  const double factor = setup.settings.factor;
  setup.waiting = factor;
  setup.txtFaktor = Format(factor, factorPattern);
  setup.txtBreite = Cm(setup.map.mm.width() * factor);
  setup.txtHoehe = Cm(setup.map.mm.height() * factor);
  setup.Eingabe = PageInput::Ok;
}

void Fill_Page_Choices(PageSetup& setup) {
  setup.PageChoices.clear();
  try {
    setup.PageChoices = Calc_Pages(setup.settings, setup.paper, setup.map);
  } catch (const Error& error) {
    Message_Box(QStringLiteral("Fehler:    %1 %2\nAnzahl der Druckseiten:").arg(error.number).arg(error.text),
                MsgButtons::Ok, MsgIcon::Warning, QStringLiteral("Programmfehler 156"));
  }
}

void Type_Factor(PageSetup& setup, const QString& text) {
  setup.txtFaktor = text;
  setup.waiting = Val_Comma(text);
  setup.txtBreite = Cm(setup.map.mm.width() * std::max(0.0, setup.waiting));
  setup.txtHoehe = Cm(setup.map.mm.height() * std::max(0.0, setup.waiting));
  setup.Eingabe = PageInput::Factor;
}

void Type_Width(PageSetup& setup, const QString& text) {
  setup.txtBreite = text;
  setup.waiting = std::max(0.0, Val_Comma(text)) / (setup.map.mm.width() / 10);
  setup.txtFaktor = Format(setup.waiting, factorPattern);
  setup.txtHoehe = Cm(setup.map.mm.height() * setup.waiting);
  setup.Eingabe = PageInput::None;
}

void Type_Height(PageSetup& setup, const QString& text) {
  setup.txtHoehe = text;
  setup.waiting = std::max(0.0, Val_Comma(text)) / (setup.map.mm.height() / 10);
  setup.txtFaktor = Format(setup.waiting, factorPattern);
  setup.txtBreite = Cm(setup.map.mm.width() * setup.waiting);
  setup.Eingabe = PageInput::None;
}

void Take_Typed(PageSetup& setup) {
  if (setup.Eingabe == PageInput::Factor || setup.Eingabe == PageInput::None)
    setup.settings.factor = Sound_Factor(setup.waiting);
  Set_Anzeige(setup);
}

void Step_Factor(PageSetup& setup, int steps) {
  // On the next multiple of the step, so that up and down meet.
  const double from = std::max(0.0, setup.waiting) / factorStep;
  const double to = steps > 0 ? std::floor(from + tolerance) + steps : std::ceil(from - tolerance) + steps;
  setup.settings.factor = std::clamp(to * factorStep, smallestPrintFactor, largestPrintFactor);
  Set_Anzeige(setup);
}

void Choose_Pages(PageSetup& setup, int index) {
  if (index < 0 || index >= static_cast<int>(setup.PageChoices.size())) return;
  setup.settings.factor = setup.PageChoices[static_cast<size_t>(index)].factor;
  Set_Anzeige(setup);
  setup.Eingabe = PageInput::Pages;
}

double Get_FontFactor(const QString& text) {
  const double factor = Val_Comma(text.trimmed());
  if (factor < smallestFontFactor - tolerance || factor > largestFontFactor + tolerance)
    Raise(wrongFontFactor, print_texts::wrongFontFactor);
  return factor;
}

void Take_Font_Factor(PageSetup& setup) {
  setup.settings.fontFactor = Get_FontFactor(setup.txtFtSize);
  setup.txtFtSize = Format(setup.settings.fontFactor, fontPattern);
}

void Take_Margins(PageSetup& setup) {
  const PrintSettings kept = Read_Print_Settings();
  setup.settings.left = kept.left;
  setup.settings.right = kept.right;
  setup.settings.top = kept.top;
  setup.settings.bottom = kept.bottom;
  Fill_Page_Choices(setup);
}

bool Settings_Changed(const PageSetup& setup) {
  PrintSettings kept = Read_Print_Settings(), now = setup.settings;
  // The table keeps thousandths and the numbers of a smaller kind.
  const auto same = [](double a, double b) { return std::abs(a - b) < 0.0005; };
  if (!same(kept.factor, now.factor) || !same(kept.fontFactor, now.fontFactor)) return true;
  kept.factor = now.factor;
  kept.fontFactor = now.fontFactor;
  return kept != now;
}

bool Ok_Butt_Click(PageSetup& setup) {
  if (setup.Eingabe != PageInput::Ok) Take_Typed(setup);
  Take_Font_Factor(setup);
  if (!Save_Print_Settings(setup.settings)) return false;
  Take_Print_Settings(setup.settings, setup.paper);
  if (frmMDI.sheetFrame) events.RedrawWanted.Emit();
  Message_Box(Settings_Report(setup), MsgButtons::Ok, MsgIcon::Information, print_texts::setupTitle);
  return true;
}

QString Settings_Report(const PageSetup& setup) {
  const PrintSettings& s = setup.settings;
  const double width = setup.map.mm.width(), height = setup.map.mm.height();
  QString report = QStringLiteral("Folgende Druckeinstellungen\nwurden übernommen und gespeichert: \n\n");
  const auto line = [&report](const QString& name, const QString& value) {
    report += name + QLatin1Char('\t') + value + QLatin1Char('\n');
  };
  const auto cm = [&](const QString& name, double mm) { line(name, Cm(mm) + QStringLiteral(" cm")); };
  report += QStringLiteral("Ursprüngliche Größe der Karte:\n");
  cm(QStringLiteral("Höhe                "), height);
  cm(QStringLiteral("Breite              "), width);
  line(QStringLiteral("Vergrößerung:       "), Format(s.factor, factorPattern) + QStringLiteral("fach"));
  report += QStringLiteral("ergibt:             \n");
  cm(QStringLiteral("Druckhöhe           "), height * s.factor);
  cm(QStringLiteral("DruckBreite         "), width * s.factor);
  report += QStringLiteral("\nSeitenränder:\n");
  cm(QStringLiteral("Links:              "), s.left + setup.paper.unprintableX);
  cm(QStringLiteral("Rechts:             "), s.right + setup.paper.unprintableX);
  cm(QStringLiteral("Oben:               "), s.top + setup.paper.unprintableY);
  cm(QStringLiteral("Unten:              "), s.bottom + setup.paper.unprintableY);
  report += QLatin1Char('\n');
  line(QStringLiteral("Druckformat:        "),
       s.orientation == landscape ? QStringLiteral("quer") : QStringLiteral("hoch"));
  line(QStringLiteral("Druckschrift vergößern:"), QStringLiteral("* ") + Format(s.fontFactor, fontPattern));
  return report;
}

void Offer_Settings(PageSetup& setup) {
  if (setup.Eingabe == PageInput::Ok && !Settings_Changed(setup)) return;
  if (Message_Box(print_texts::keepSettings, MsgButtons::YesNo, MsgIcon::Question, print_texts::keepSettingsTitle) ==
      MsgAnswer::Yes)
    Ok_Butt_Click(setup);
}

SheetMargins Margins_To_Show(const PrintSettings& settings, const Paper& paper) {
  const int x = Clip(paper.unprintableX), y = Clip(paper.unprintableY);
  return {settings.left + x, settings.right + x, settings.top + y, settings.bottom + y};
}

PrintSettings With_Margins(PrintSettings settings, const SheetMargins& shown, const Paper& paper) {
  const int x = Clip(paper.unprintableX), y = Clip(paper.unprintableY);
  settings.left = std::max(0, shown.left - x);
  settings.right = std::max(0, shown.right - x);
  settings.top = std::max(0, shown.top - y);
  settings.bottom = std::max(0, shown.bottom - y);
  return settings;
}

QString Print_Margin_Text(QChar side, int mm) {
  const QString name = side == QLatin1Char('L')   ? QStringLiteral("links")
                       : side == QLatin1Char('R') ? QStringLiteral("rechts")
                       : side == QLatin1Char('O') ? QStringLiteral("oben")
                                                  : QStringLiteral("unten");
  return QStringLiteral("%1  %2 mm").arg(name).arg(mm);
}

bool Take_Sheet_Margins(const SheetMargins& shown) {
  const PrintSettings kept = Read_Print_Settings();
  const Paper paper = The_Printer().paper(kept.orientation);
  const PrintSettings wanted = With_Margins(kept, shown, paper);
  if (!Print_Geometry(wanted, paper, Map_To_Print()).valid) {
    Message_Box(print_texts::noRoom, MsgButtons::Ok, MsgIcon::Warning, print_texts::marginsTitle);
    return false;
  }
  if (!Save_Print_Settings(wanted)) return false;
  if (frmMDI.sheetFrame) events.RedrawWanted.Emit();
  return true;
}

std::optional<PrintOrder> Ask_Print_Order() {
  PrintOrder order;
  order.settings = Read_Print_Settings();
  order.map = Map_To_Print();
  order.path = frmMDI.printAsBitmap ? PrintPath::Bitmap : PrintPath::Direct;
  order.paper = The_Printer().paper(order.settings.orientation);
  const PrintGeometry planned = Print_Geometry(order.settings, order.paper, order.map);
  if (!planned.valid) {
    Message_Box(print_texts::noRoom, MsgButtons::Ok, MsgIcon::Warning, print_texts::printTitle);
    return std::nullopt;
  }
  const auto range = The_Printer().ask(print_texts::printTitle, planned.Pages(), order.settings.orientation);
  if (!range) return std::nullopt;
  order.range = *range;
  // Another printer or another paper was chosen in the dialog: all sheets are all of the new ones.
  order.paper = The_Printer().paper(order.settings.orientation);
  const int pages = Print_Geometry(order.settings, order.paper, order.map).Pages();
  if (range->from <= 1 && range->to >= planned.Pages()) order.range = {1, pages};
  return order;
}
