#pragma once
#include <QDirIterator>
#include <QRegularExpression>
#include <map>
#include <vector>

#include "platform/files.h"

// Path below src ("store/entry.h") -> content.
using SourceTree = std::map<QString, QString>;

inline const SourceTree& House_Tree() {
  static const SourceTree tree = [] {
    SourceTree files;
    const QDir source(QStringLiteral(FLURAX_SOURCE_DIR "/src"));
    QDirIterator walk(source.path(), {"*.h", "*.cpp"}, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
      const QString path = walk.next();
      files[source.relativeFilePath(path)] = QString::fromUtf8(Read_Bytes(path));
    }
    return files;
  }();
  return tree;
}

// "windows/objects"; "." for the programs.
inline QString Folder_Of(const QString& path) {
  return path.contains('/') ? path.left(path.lastIndexOf('/')) : QStringLiteral(".");
}

// How many more braces the line opens than it closes, those in quotes and comments left aside.
inline int Balance_Of(QString line) {
  static const QRegularExpression quoted(uR"("(?:\\.|[^"\\])*"|'(?:\\.|[^'\\])'|//.*)"_s);
  line.remove(quoted);
  return static_cast<int>(line.count('{') - line.count('}'));
}

// The lines of the block ```name of docs/architecture.md as words.
inline std::vector<QStringList> Block_Of_Document(const QString& name) {
  const QString text = QString::fromUtf8(Read_Bytes(QStringLiteral(FLURAX_SOURCE_DIR "/docs/architecture.md")));
  std::vector<QStringList> lines;
  for (const QString& line : text.section("```" + name + '\n', 1).section("```", 0, 0).split('\n', Qt::SkipEmptyParts))
    lines.push_back(line.simplified().split(' '));
  return lines;
}
