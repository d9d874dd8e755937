#pragma once
#include "maps/commands.h"
#include "maps/map_close.h"
#include "maps/map_open.h"
#include "maps/note_pads.h"
#include "platform/printer.h"
#include "platform/shell.h"
#include "support/nets.h"
#include "tools/map_tool.h"
#include "windows/window_fixture.h"

// A map on which every command is of use, and eyes for whatever a command does: windows, boxes, rows, state.
class CommandTest : public WindowTest {
 protected:
  void SetUp() override;
  void TearDown() override;

  // The map as it was in the beginning; nothing is in hand and no window is open.
  void Begin_Anew();
  // The same, if a command before has left its traces.
  void Begin_Again();
  // Where something can be typed when a command comes.
  enum class Typing { Nothing, NewText, Text, Cell, Line };
  void Type(Typing where, const QString& text);
  // Is the typed text in the table that is open, or still to be seen where it was typed?
  bool Is_There(const QString& text) const;

  // What comes of the work, in one line.
  QString Effect_Of(const std::function<void()>& work);
  void Close_Windows();

  static QString Name_Here();  // of the current row
  static QString Key_Of(const QString& name);
  static QMap<QString, EntryRow> Rows();  // by their names, without the header row
  QMap<QString, QString> State() const;
  static QString Order();

  QString map;
  QMap<QString, EntryRow> untouched;  // the rows of the beginning
  QStringList seen;
  std::function<void(QWidget&)> look;  // at a window before it is closed

 private:
  void Make_Entries();
  void Watch_Services();
  void Close_Waiting();
  void Look_At_It(QWidget& shown);
  static QStringList Changes(const QMap<QString, EntryRow>& before, const QMap<QString, EntryRow>& after);

  QTimer closer;
  int opened = 0;
  bool looking = false;
  PrinterFace printer;
};
