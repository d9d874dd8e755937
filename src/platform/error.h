#pragma once
#include <QString>

// The one failure of the program. Numbers below 1000 and 3000..3999 are those of the platform (files, database),
// 5000..6020 are raised by the program itself.
struct Error {
  int number = 0;
  QString text;
};

namespace errors {
inline constexpr int overflow = 6, outOfMemory = 7, divisionByZero = 11, typeMismatch = 13, fileNotFound = 53,
                     fileExists = 58, diskFull = 61, noPermission = 70, pathNotFound = 76, invalidNull = 94,
                     badPicture = 481, printer = 482;
inline constexpr int noCurrentRecord = 3021, databaseNotFound = 3024, databaseAccess = 3051, fieldNotFound = 3265,
                     tableNotFound = 3078, sqlSyntax = 3075, workStopped = 3059, databaseBusy = 3218,
                     recordDeleted = 3167, fileInUse = 3196, databaseExists = 3204, databaseDamaged = 3343,
                     databaseInUse = 3356, textTooLong = 3163;
}  // namespace errors

// The system's German text of an error number; "Anwendungs- oder objektdefinierter Fehler" for all others.
QString Error_Text(int number);

// What to say of an error: its own text, else that of its number.
QString Error_Text(const Error& error);

// Throws Error{number, text}; without a text the system's text of the number.
[[noreturn]] void Raise(int number, QString text = {});
