#pragma once
#include <memory>
#include <optional>

#include "platform/file_dialog.h"
#include "platform/message_box.h"
#include "platform/progress.h"
#include "platform/shell.h"

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
