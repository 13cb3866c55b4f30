// The main() of the tests that need an application object.
#include <gtest/gtest.h>

#include <QApplication>

#include "platform/qt/Look.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  norvo::Look::install(application);
  return RUN_ALL_TESTS();
}
