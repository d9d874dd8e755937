#include <QGuiApplication>
#include <clocale>

#include "support/second_program.h"
#include "support/surroundings.h"

int main(int argc, char** argv) {
  ::testing::InitGoogleMock(&argc, argv);
  Set_Test_Surroundings();
  const QGuiApplication application(argc, argv);
  std::setlocale(LC_NUMERIC, "C");
  if (const auto status = Run_As_Second_Program()) return *status;
  return RUN_ALL_TESTS();
}
