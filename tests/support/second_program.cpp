#include "support/second_program.h"

#include <gtest/gtest.h>
#include <QCoreApplication>
#include <cstdio>

#include "maps/program_start.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "support/table_fixture.h"

namespace {
const char* const folderVariable = "FLURAX_SECOND_PROGRAM";
constexpr int longestWait = 30'000;  // milliseconds

QString Texts_Of_Table() {
  if (!dbEntries) return {};
  QStringList texts;
  for (const EntryRow& row : Rows_Of(*dbEntries)) texts.append(row.Eintrag);
  return texts.mid(1).join(u' ');
}

QString Carry_Out(const QString& order, const QString& argument) {
  if (order == "oeffnen") {
    MapFile = argument;
    Map.Caption = QStringLiteral("Map: ") + Capitals(argument);
    return Load_Table(LoadMode::First) ? TableFile : QStringLiteral("nicht geladen");
  }
  if (order == "neu") {
    EntryRow row;
    row.ID = QStringLiteral("Text");
    row.Eintrag = argument;
    Append_Entry(row);
  } else if (order == "stand") {
    Undo_Point(QStringLiteral("Rückgängig: Ersetzen"));
    Table_Idle();
  } else if (order == "zurueck") {
    Undo_Last();
  } else if (order == "beginn") {
    Program_Start({});
  } else if (order == "ende") {
    Close_Table(CloseMode::CloseOnly);
    Program_End();
    return order;
  }
  return Texts_Of_Table();
}
}  // namespace

SecondProgram::SecondProgram(const QString& programFolder) {
  auto environment = QProcessEnvironment::systemEnvironment();
  environment.insert(folderVariable, programFolder);
  process.setProcessEnvironment(environment);
  process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process.start(QCoreApplication::applicationFilePath(), QStringList());
  EXPECT_TRUE(process.waitForStarted(longestWait)) << process.errorString().toStdString();
}

SecondProgram::~SecondProgram() { Kill(); }

QString SecondProgram::Do(const QString& order, const QString& argument) {
  process.write((order + u'\t' + argument + u'\n').toUtf8());
  while (!process.canReadLine() && process.waitForReadyRead(longestWait)) {
  }
  EXPECT_TRUE(process.canReadLine()) << "no answer to " << order.toStdString();
  return QString::fromUtf8(process.readLine()).chopped(1);
}

void SecondProgram::Kill() {
  process.kill();
  process.waitForFinished(longestWait);
}

void SecondProgram::End() {
  Do(QStringLiteral("ende"));
  process.closeWriteChannel();
  EXPECT_TRUE(process.waitForFinished(longestWait));
}

std::optional<int> Run_As_Second_Program() {
  if (!qEnvironmentVariableIsSet(folderVariable)) return {};
  Reset_Global_State();
  ProgramFolder = qEnvironmentVariable(folderVariable);
  MapWidthPx = 400;
  MapHeightPx = 300;
  char line[4096];
  while (std::fgets(line, sizeof line, stdin) != nullptr) {
    const QStringList words = QString::fromUtf8(line).chopped(1).split(u'\t');
    QString answer;
    try {
      answer = Carry_Out(words[0], words.value(1));
    } catch (const Error& error) {
      answer = QStringLiteral("Fehler %1 %2").arg(error.number).arg(error.text);
    }
    std::printf("%s\n", answer.toUtf8().constData());
    std::fflush(stdout);
  }
  return 0;
}
