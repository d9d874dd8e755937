#pragma once
#include <QString>
#include <functional>

#include "platform/error.h"

enum class MsgButtons { Ok, OkCancel, YesNo, YesNoCancel, YesNoAll };  // YesNoAll: for this one or for all
enum class MsgIcon { None, Information, Question, Warning, Critical };
enum class MsgAnswer { Ok = 1, Cancel = 2, Yes = 6, No = 7, YesAll = 8, NoAll = 9, Other = 10 };
enum class MsgDefault { First, Second, Third };

extern MsgAnswer MsgResult;  // the last answer; not valid across a call

struct MsgRequest {
  QString text;
  MsgButtons buttons = MsgButtons::Ok;
  MsgIcon icon = MsgIcon::None;
  QString title;
  MsgDefault defaultButton = MsgDefault::First;
  QString helpPage = {};  // the box then has a help button that opens it
  QString other = {};     // caption of one more button in front of the others: MsgAnswer::Other
};

// Asks the user. Stores the answer in MsgResult as well. Texts hold CR or LF as line breaks.
MsgAnswer Message_Box(const QString& text, MsgButtons buttons = MsgButtons::Ok, MsgIcon icon = MsgIcon::None,
                      const QString& title = {}, MsgDefault defaultButton = MsgDefault::First);
MsgAnswer Message_Box(const MsgRequest& request);

// Who shows the box. The program sets a window, tests a script. Without one the text goes to the standard error output
// and the careful answer is given: Cancel where there is one, then No (for all), then Ok.
using MsgHandler = std::function<MsgAnswer(const MsgRequest&)>;
MsgHandler Set_Message_Handler(MsgHandler handler);  // returns the former one

enum class Step { Done, Skipped, Stopped };

// Runs one step. An Error shows "Error: " + number + text + "Prozedur beenden?" with Yes and No under the title
// ("Fehler" if empty): Yes gives Stopped, No gives Skipped.
Step Guarded(const QString& title, const std::function<void()>& step);
// "Error: " number text, blank line, "Prozedur beenden?".
QString Error_Message(const Error& error, const QString& question = QStringLiteral("Prozedur beenden?"));
