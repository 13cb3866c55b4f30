#include "platform/Start.h"

#include <memory>

#include "app/Bundle.h"
#include "app/EntryPoint.h"
#include "platform/ImmediateEnd.h"
#include "platform/System.h"
#include "platform/macos/SecurityAuthorization.h"
#include "util/ChildProcess.h"
#include "util/StandardStreams.h"

namespace norvo {

int start_program(int argc, char** argv, const Application& application) {
  const bool has_streams = complete_standard_streams();
  keep_ended_children();
  SecurityAuthorization authorization;
  ImmediateEnd process_end;
  return entry_point(argc, argv,
                     {.authorization = authorization,
                      .process_end = process_end,
                      .bundle_path = [] { return main_bundle_path(executable_folder().native()); },
                      .run_application =
                          [&application, has_streams](int count, char** vector) {
                            if (!has_streams) return 1;
                            const std::unique_ptr<DeviceOpener> opener =
                                make_system_device_opener();
                            return application(count, vector, *opener);
                          }});
}

}  // namespace norvo
