#include <sys/resource.h>

#include <QCoreApplication>
#include <QFile>
#include <cstdio>

#include "old_table_write.h"
#include "platform/error.h"

// flurax-alttabelle ALT.mdb NEU.mdb: reads a table file of the old database engine into a new one of the program. Its
// standard output tells what came: "tabelle", the name and the number of rows, or "hinweis" and a sentence, with tabs
// between, a line each. Status 1 with a German sentence on the standard error output if nothing could be read.

namespace {

// Damaged files make the library ask for any amount of memory, or go round for ever.
void Bound_Work() {
  constexpr rlim_t mostMemory = rlim_t{2} << 30, mostSeconds = 120;
  const rlimit memory{mostMemory, mostMemory}, seconds{mostSeconds, mostSeconds}, none{0, 0};
#ifdef __SANITIZE_ADDRESS__
  static_cast<void>(memory);  // the sanitizer lays its shadow over the whole room of addresses
#else
  setrlimit(RLIMIT_AS, &memory);
#endif
  setrlimit(RLIMIT_CPU, &seconds);
  setrlimit(RLIMIT_CORE, &none);
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const QStringList words = QCoreApplication::arguments();
  if (words.size() != 3) {
    std::fputs("flurax-alttabelle ALT.mdb NEU.mdb\n", stderr);
    return 2;
  }
  Bound_Work();
  try {
    for (const QString& line : Write_Old_Table(words[1], words[2])) std::printf("%s\n", qUtf8Printable(line));
    return 0;
  } catch (const Error& error) {
    std::fprintf(stderr, "%s\n", qUtf8Printable(Error_Text(error)));
    return 1;
  }
}
