#pragma once
#include <QStringList>
#include <memory>
#include <optional>

#include "platform/file_dialog.h"
#include "platform/message_box.h"
#include "platform/progress.h"
#include "platform/shell.h"

class QDialog;
class QWidget;

// The window a dialog belongs to: the active one, else the first visible; may be nullptr.
QWidget* Dialog_Parent();
// A service's filter "Text|*.a;*.b|Text|*.c" as the lines of a file dialog: "Text (*.a *.b)". An opening dialog can
// always be switched to all files.
QStringList Dialog_Filters(const QString& filter, bool save);
// CR and CR LF as line feeds.
QString Dialog_Text(QString text);

// The dialog blocks the windows of the program but not the help, which F1 opens: the page, or the contents.
void Give_Help(QDialog& dialog, const QString& page);

// The windows behind the services; Install_Desktop_Services() puts them there.
MsgAnswer Desktop_Message(const MsgRequest& request);
std::optional<QString> Desktop_File_Dialog(const FileRequest& request);
std::optional<QString> Desktop_Input_Box(const QString& prompt, const QString& title, const QString& proposal);
std::unique_ptr<ProgressFace> Make_Desktop_Progress();
ShellFace Desktop_Shell();

// Takes the hourglass away while a dialog waits for the user.
class ArrowPointer {
 public:
  ArrowPointer();
  ~ArrowPointer();
  ArrowPointer(const ArrowPointer&) = delete;
  ArrowPointer& operator=(const ArrowPointer&) = delete;
};
