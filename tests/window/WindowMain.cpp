// The tests of the window need an application object around them.
#include <gtest/gtest.h>

#include <QApplication>

#include "platform/qt/Look.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  norvo::Look::install(application);
  return RUN_ALL_TESTS();
}
