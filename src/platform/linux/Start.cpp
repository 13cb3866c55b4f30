#include "platform/Start.h"

#include <unistd.h>

#include "app/Bundle.h"
#include "app/EntryPoint.h"
#include "platform/ImmediateEnd.h"
#include "platform/System.h"
#include "platform/linux/ElevatedStart.h"
#include "platform/linux/PkexecAuthorization.h"
#include "util/ChildProcess.h"
#include "util/StandardStreams.h"

namespace norvo {

int start_program(int argc, char** argv, const Application& application) {
  const bool has_streams = complete_standard_streams();
  keep_ended_children();
  PkexecAuthorization authorization("/usr/bin/pkexec", geteuid() == 0);
  ImmediateEnd process_end;
  return entry_point(argc, argv,
                     {.authorization = authorization,
                      .process_end = process_end,
                      .bundle_path = [] { return main_bundle_path(executable_folder().native()); },
                      .run_application =
                          [&application, has_streams](int count, char** vector) {
                            if (!has_streams) return 1;
                            return run_with_reading_right(count, vector, application);
                          }});
}

}  // namespace norvo
