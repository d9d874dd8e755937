#pragma once
// A second program: the test program once more, in a process of its own on the same program folder. It carries out
// orders instead of tests:
//   oeffnen PFAD    the table of that map     neu TEXT    appends an entry        stand       an undo point
//   zurueck         the last undo             texte       the texts of the table  beginn      the start of the program
//   viele ZAHL      that many at one go       weg         deletes the last one    geh STUFE   to that step of the
//   history lage            step, steps and what the table holds    alle    what it holds at each step, from the first
//   on
class SecondProgram {
 public:
  explicit SecondProgram(const QString& programFolder);
  ~SecondProgram();
  // Carries out the order and waits for it. Its answer; a failure of the test where none comes.
  QString Do(const QString& order, const QString& argument = {});
  void Send(const QString& order, const QString& argument = {});  // waits for nothing
  void Kill();                                                    // at once, in the middle of whatever it holds
  void End();                                                     // as a program ends

 private:
  QProcess process;
};

// For main: runs this process as a second program if it was started as one. Its exit status.
std::optional<int> Run_As_Second_Program();
