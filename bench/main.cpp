#include <benchmark/benchmark.h>

#include "platform/error.h"

#ifdef BENCH_WINDOWS
#include <QApplication>
using BenchApplication = QApplication;
#else
#include <QGuiApplication>
using BenchApplication = QGuiApplication;
#endif

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const BenchApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  try {
    benchmark::RunSpecifiedBenchmarks();
  } catch (const Error& error) {
    qCritical("%d %s", error.number, qUtf8Printable(error.text));
    return 1;
  }
  return 0;
}
