#pragma once
#include "fuzz/mutator.h"
#include "support/prelude.h"

// One reader of the program under damaged inputs.
struct FuzzTarget {
  const char* name = "";
  QByteArrayList seeds;  // sound inputs
  QByteArrayList words;  // of the format
  // True: the reader took it, false: it refused it as it should. Anything that escapes is a find.
  std::function<bool(const QByteArray& input)> run;
  // For every second input, knowing the format: puts checksums right so that a damage behind them is reached, or makes
  // damages of its own.
  std::function<void(QByteArray& input, Mutator& dice)> shape;
};

// Each target program has one; made after the application object.
FuzzTarget Make_Target();

// A folder for the files of the run, in memory where the machine has one; it vanishes with the program. Writing outside
// of it is a find.
QString Work_Folder();
// Puts the bytes into a file of the work folder and gives its path.
QString Put_File(const QString& name, const QByteArray& bytes);
// Fresh state of the program with the template of tables, and message boxes answered by the dice.
void Fresh_Program();
