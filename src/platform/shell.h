#pragma once
#include <QString>
#include <QStringList>
#include <functional>

// Starts other programs and opens files with the desktop's program, never through a shell interpreter.
struct ShellFace {
  // Starts a program; `ended` is called when it ends. False if it cannot be started.
  std::function<bool(const QString& program, const QStringList& arguments, std::function<void()> ended)> start;
  std::function<bool(const QString& path)> open;
};
ShellFace Set_Shell(ShellFace face);  // returns the former one
// Starts it and returns at once. False if it cannot be started.
bool Start_Program(const QString& program, const QStringList& arguments, std::function<void()> ended = {});
// False if the desktop has no program for the file.
bool Open_With_Desktop(const QString& path);
// Program of that name (with or without ".exe") in the program folder, then beside the running program, then on PATH;
// empty if there is none.
QString Find_Program(const QString& name, const QString& programFolder);
