#include "platform/SystemLog.h"

#include <syslog.h>
#include <unistd.h>

#include <iostream>
#include <utility>

namespace norvo {

SystemLog::Name::Name(std::string name) : text_(std::move(name)) {
  openlog(text_.c_str(), LOG_PID, LOG_USER);
}

SystemLog::Name::~Name() {
  closelog();
}

void SystemLog::write_line(const std::string& line) {
  // What is less than a notice is not kept everywhere.
  syslog(LOG_NOTICE, "%s", line.c_str());
  if (isatty(STDERR_FILENO) == 1) std::clog << line << '\n' << std::flush;
}

}  // namespace norvo
