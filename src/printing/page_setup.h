#pragma once
#include <QString>
#include <optional>
#include <vector>

#include "printing/page_geometry.h"
#include "printing/print_map.h"

// What the windows of the page setup hold and work out, without the windows.

// Where the factor that waits in the preview window came from: from centimetres, typed as a factor, chosen as a number
// of sheets; Ok: it is the one shown.
enum class PageInput { None, Ok, Factor, Pages };

struct PageSetup {
  PrintSettings settings;  // as shown
  Paper paper;
  PrintedMap map;
  PageInput Eingabe = PageInput::None;
  QString txtFaktor, txtBreite, txtHoehe, txtFtSize;
  std::vector<PageChoice> PageChoices;
  double waiting = 1;  // the factor typed last
  PrintGeometry Geometry() const { return Print_Geometry(settings, paper, map); }
};

PageSetup Load_Page_Setup();               // of the open map and the chosen printer
void Set_Anzeige(PageSetup& setup);        // texts from the settings; Eingabe becomes Ok
void Fill_Page_Choices(PageSetup& setup);  // PageChoices for margins and paper as they are now
// What is typed waits; the centimetres work backward to a factor and to the other box.
void Type_Factor(PageSetup& setup, const QString& text);
void Type_Width(PageSetup& setup, const QString& text);   // centimetres on paper
void Type_Height(PageSetup& setup, const QString& text);  // centimetres on paper
void Take_Typed(PageSetup& setup);                        // what waits becomes the setting
void Step_Factor(PageSetup& setup, int steps);            // of 0.05, not below 0.05
void Choose_Pages(PageSetup& setup, int index);           // takes the factor of PageChoices[index]
// Number in the text; error 5000 below 0.3 and above 3.0.
double Get_FontFactor(const QString& text);
void Take_Font_Factor(PageSetup& setup);  // the typed one; error 5000 as above
void Take_Margins(PageSetup& setup);      // those of the map, which another window has changed

bool Settings_Changed(const PageSetup& setup);  // not as kept with the map
// Takes what waits, keeps the settings with the map and reports them in a box. False if they could not be kept.
bool Ok_Butt_Click(PageSetup& setup);
// What the box says of the settings: sizes and margins in cm, the unprintable border counted in.
QString Settings_Report(const PageSetup& setup);
// Asks whether changed settings shall be kept, and keeps them.
void Offer_Settings(PageSetup& setup);

// Margins as the window of the margins shows them: from the edge of the sheet, what the printer cannot reach included.
struct SheetMargins {
  int left = 0, right = 0, top = 0, bottom = 0;
  bool operator==(const SheetMargins&) const = default;
};
inline constexpr int largestMargin = 100;                                         // mm, of a scroll bar
SheetMargins Margins_To_Show(const PrintSettings& settings, const Paper& paper);  // millimetres
// The way back; what lies in the unprintable border becomes 0.
PrintSettings With_Margins(PrintSettings settings, const SheetMargins& shown, const Paper& paper);
QString Print_Margin_Text(QChar side, int mm);  // "L", "R", "O", "U"
// Keeps the margins with the map; a message and false if they leave no room.
bool Take_Sheet_Margins(const SheetMargins& shown);

// Asks for the sheets to be printed; nothing if the user cancelled or the map finds no room on the sheet.
std::optional<PrintOrder> Ask_Print_Order();
