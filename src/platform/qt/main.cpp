#include "platform/Start.h"
#include "platform/qt/WindowApplication.h"

int main(int argc, char** argv) {
  return norvo::start_program(argc, argv, norvo::run_window_application);
}
