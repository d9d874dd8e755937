#include <gmock/gmock.h>
#include <QGuiApplication>
#include <clocale>

#include "support/surroundings.h"

int main(int argc, char** argv) {
  ::testing::InitGoogleMock(&argc, argv);
  Set_Test_Surroundings();
  const QGuiApplication application(argc, argv);
  std::setlocale(LC_NUMERIC, "C");
  return RUN_ALL_TESTS();
}
