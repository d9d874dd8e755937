#pragma once
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>

extern QString ProgramFolder;  // without a separator at the end

// Paths: "\" and "/" both separate folders; "/" is stored and shown.
QString Clean_Path(const QString& path);

// Splits at the last separator. `folder` receives the part including it, `path` keeps the name. Without a separator
// `folder` becomes the program folder and a separator.
void Split_Path(QString& path, QString& folder);
// The path that exists, found ignoring case (exact match first); empty if there is none.
QString Find_File(const QString& path);
bool File_Exists(const QString& path);  // ignoring case
// Files of a folder that match a name pattern with "*" and "?", ignoring case, sorted; full paths.
QStringList Find_Files(const QString& folder, const QString& pattern);

// Why nothing can lie at that path, or be made there: the path or a name in it has too many bytes. A German text with
// the path in it; empty if nothing speaks against it.
inline constexpr int longestPath = 4095;      // of the system
inline constexpr int longestTablePath = 480;  // the database takes 512 bytes, with all endings of its files
inline constexpr int longestName = 255;
inline constexpr int longestTableName = 247;  // the database puts "-journal" behind it
QString Path_Flaw(const QString& path, int longest = longestPath, int longestOfName = longestName);
// Why what lies there must not be opened as a file: it is a folder, a pipe, a device. A German half sentence; empty for
// a file, and if nothing is there.
QString Strange_File(const QString& path);

// Texts in Windows-1252 with CR LF. Reading takes UTF-8 when the bytes are valid UTF-8 (with or without mark), else
// Windows-1252; CR, LF and CR LF end a line. Errors 53, 70, 61, 76; 7 if a file is larger than can be read as a whole.
QString From_1252(const QByteArray& bytes);
QString Decode_Text(const QByteArray& bytes);  // as reading takes it
QByteArray To_1252(const QString& text);       // what cannot be written becomes "?"
QStringList Read_Lines(const QString& path);
void Write_Lines(const QString& path, const QStringList& lines);  // written aside and renamed

QByteArray Read_Bytes(const QString& path);  // the whole file; errors 53, 70
// Writes aside, flushes to the disk and renames: afterwards the file holds the old content or the new one whole.
void Replace_File(const QString& path, const QByteArray& content);
// Overwrites bytes in place (for the resolution fields of a bitmap). Error 53 or 70.
void Write_At(const QString& path, qint64 position, const QByteArray& bytes);

// Copy (target replaced as a whole: aside, flush, rename), rename, delete. Errors 53, 70, 61, 76; renaming onto another
// file is error 58. `Kill` of a missing file is error 53. Files are found ignoring case, also the target that is
// replaced; renaming a file to its own name in other case works. A copy can always be written by its owner.
void File_Copy(const QString& source, const QString& target);
void File_Rename(const QString& source, const QString& target);
void Kill(const QString& path);
bool Kill_Quietly(const QString& path);  // true if the file is gone afterwards

// A free name in the folder of the target for what is to take its place when it is whole.
QString Aside_Name(const QString& target);
// Takes away what programs that no longer run have left under such names. Not while this one is writing.
void Clear_Stale_Asides(const QString& folder);

// For tests of full disks and failing media: called with the bytes about to be written by any of the above; returns
// the error number to fail with, or 0.
extern std::function<int(const QString& path, qint64 bytes)> File_Write_Fault;
