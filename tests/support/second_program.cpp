#include "support/second_program.h"

#include <QCoreApplication>
#include <cstdio>

#include "maps/program_start.h"
#include "state/step.h"
#include "store/history.h"
#include "store/transaction.h"
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

// The number of entries, and a number that is another one when any row is.
QString What_It_Holds() {
  size_t all = 0;
  for (const EntryRow& row : Rows_Of(*dbEntries)) all = qHashMulti(all, row.ID, row.Eintrag, row.Xmap, row.Typ);
  return QStringLiteral("%1:%2").arg(Entry_Count()).arg(all);
}

QString What_It_Held() {
  const int here = Step_Position();
  QStringList all;
  for (int step = 0; step <= Step_Count(); ++step) {
    if (step != Step_Position()) Go_To_Step(step);
    all += What_It_Holds();
  }
  if (here != Step_Position()) Go_To_Step(here);
  return all.join(u' ');
}

void Append_Text(const QString& text) {
  EntryRow row;
  row.ID = QStringLiteral("Text");
  row.Eintrag = text;
  Append_Entry(row);
}

void Append_Many(int count) {
  const UndoStep step(QStringLiteral("viele"));
  Undo_Point(QStringLiteral("Rückgängig: Import"));
  In_Transaction([count] {
    for (int i = 0; i < count; ++i) Append_Text(QString::number(i));
  });
}

void Delete_Last() {
  const UndoStep step(QStringLiteral("weg"));
  rsEntries->MoveLast();
  if (rsEntries->Position() > 0) rsEntries->Delete();
}

QString Carry_Out(const QString& order, const QString& argument) {
  if (order == "oeffnen") {
    MapFile = argument;
    Map.Caption = QStringLiteral("Map: ") + Capitals(argument);
    return Load_Table(LoadMode::First) ? TableFile : QStringLiteral("nicht geladen");
  }
  if (order == "lage") return u"%1 %2 %3"_s.arg(Step_Position()).arg(Step_Count()).arg(What_It_Holds());
  if (order == "alle") return What_It_Held();
  const std::map<QString, std::function<void()>> works = {
      {"neu", [&] { Append_Text(argument); }},
      {"viele", [&] { Append_Many(argument.toInt()); }},
      {"weg", Delete_Last},
      {"geh", [&] { Go_To_Step(argument.toInt()); }},
      {"stand", [] { Undo_Point(QStringLiteral("Rückgängig: Ersetzen")), Table_Idle(); }},
      {"zurueck", Undo_Last},
      {"beginn", [] { Program_Start({}); }},
      {"ende", [] { Close_Table(CloseMode::CloseOnly), Program_End(); }},
      {"texte", [] {}}};
  works.at(order)();
  return QStringList{"viele", "weg", "geh", "ende"}.contains(order) ? order : Texts_Of_Table();
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

void SecondProgram::Send(const QString& order, const QString& argument) {
  process.write((order + u'\t' + argument + u'\n').toUtf8());
  process.waitForBytesWritten(longestWait);
}

QString SecondProgram::Do(const QString& order, const QString& argument) {
  Send(order, argument);
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
