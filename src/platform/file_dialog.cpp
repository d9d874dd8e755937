#include "platform/file_dialog.h"

#include <utility>

#include "platform/files.h"

namespace {
FileDialogHandler fileHandler;
InputBoxHandler inputHandler;
}  // namespace

FileDialogHandler Set_File_Dialog_Handler(FileDialogHandler next) {
  return std::exchange(fileHandler, std::move(next));
}

std::optional<QString> File_Dialog(const FileRequest& request) {
  const FileDialogHandler shown = fileHandler;
  const std::optional<QString> chosen = shown ? shown(request) : std::nullopt;
  if (!chosen || chosen->isEmpty()) return std::nullopt;
  QString path = Clean_Path(*chosen);
  const QString name = path.mid(path.lastIndexOf(u'/') + 1);
  const bool typedWithout = !request.defaultExtension.isEmpty() && !name.contains(u'.');
  if (typedWithout && (request.save || !File_Exists(path))) path += u'.' + request.defaultExtension;
  return path;
}

InputBoxHandler Set_Input_Box_Handler(InputBoxHandler next) { return std::exchange(inputHandler, std::move(next)); }

std::optional<QString> Input_Box(const QString& prompt, const QString& title, const QString& proposal) {
  const InputBoxHandler shown = inputHandler;
  return shown ? shown(prompt, title, proposal) : std::nullopt;
}
