#pragma once
#include <QString>
#include <array>

#include "store/fill_code.h"
#include "store/frame_word.h"

// Colours, fill, width and frame of the entry in hand or, with nothing in hand, of the next one. A change is one
// transaction and one redraw; the entry stays in hand.

enum class LookOf { Next, NewText, Text, Symbol, Picture, Line, Area, Figure, Other };
enum class ColorOf { VG, HG, RA };

struct EntryLook {
  LookOf of = LookOf::Next;
  QString name;        // what the user knows the entry by: its text, picture, or name
  QString id;          // name of a line, area or figure
  int VG = 0, HG = 0;  // 0..15
  FrameWord frame;
  FillCode fill;
  int width = 1;  // pen of line, outline or frame, map pixels
  bool operator==(const EntryLook&) const = default;

  bool Has_Color(ColorOf which) const;  // does the kind of entry show that colour?
  bool Has_Fill() const;                // areas and figures
  bool Has_Width() const;               // lines and areas: the width is no frame's
  bool Has_Frame() const;               // the frame can be switched on and off
};

// An entry that vanished counts as none.
EntryLook Look_In_Hand();
EntryLook Next_Look();

// The changes below do nothing where the entry has no such thing or the number is out of range. False if it could not
// be written; that was told.
bool Change_Color(ColorOf which, int color);  // 0..15
// Colour of the frame; whether it is shown, its width and pattern stay. Title of its error: "Error: Change_Rahmen".
bool Change_Rahmen(int color);
bool Switch_Frame(bool on);  // shows the frame or hides it; its colour stays
// All of the frame but its colour.
bool Change_Frame(const FrameWord& frame);
bool Change_Fill(FillCode fill);  // -8..8
// Pen of a line or area, map pixels, rounded: 1..widestPen.
bool Change_Width(double width);
inline constexpr int widestPen = 99, widestFrame = 8;

// Takes the 16 colours, redraws the map and writes the palette file. No row changes.
void Change_Palette(const std::array<QRgb, 16>& colors);
// The colours of the next entry, the one in hand notwithstanding.
void Set_Next_Color(ColorOf which, int color);
