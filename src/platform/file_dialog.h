#pragma once
#include <QString>
#include <functional>
#include <optional>

struct FileRequest {
  bool save = false;
  QString title;
  QString folder;            // where the dialog starts
  QString name;              // proposed name
  QString defaultExtension;  // without point
  QString filter;            // "Text|pattern;pattern|Text|pattern"
  QString helpPage = {};     // what F1 opens
};

// The chosen path with the default extension added where none was typed; nothing if the user cancelled.
std::optional<QString> File_Dialog(const FileRequest& request);
using FileDialogHandler = std::function<std::optional<QString>(const FileRequest&)>;
FileDialogHandler Set_File_Dialog_Handler(FileDialogHandler handler);  // who shows it; returns the former one

// One line of text; nothing if the user cancelled.
std::optional<QString> Input_Box(const QString& prompt, const QString& title, const QString& proposal = {});
using InputBoxHandler =
    std::function<std::optional<QString>(const QString& prompt, const QString& title, const QString& proposal)>;
InputBoxHandler Set_Input_Box_Handler(InputBoxHandler handler);  // returns the former one
