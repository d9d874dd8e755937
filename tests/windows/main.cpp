#include "support/surroundings.h"
#include "windows/desktop/application.h"

// Tests of windows need the application of the windows; it takes the place of the plain one.
int main(int argc, char** argv) {
  ::testing::InitGoogleMock(&argc, argv);
  Set_Test_Surroundings();
  Application application(argc, argv);
  Prepare_Application(application);
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
