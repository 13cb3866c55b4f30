#include "platform/terminal/TerminalSession.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "support/FakeDevice.h"
#include "support/TemporaryFolder.h"

namespace norvo {
namespace {

TEST(TerminalSession, WritesNoProgressAfterItsSearch) {
  const test::TemporaryFolder folder;
  test::FakeMedium medium;
  medium.bytes.assign(4 * sector_size, 0);
  test::FakeOpener opener(medium);
  for (const bool rewrites_line : {true, false}) {
    std::ostringstream out;
    std::ostringstream err;
    TerminalSession session({.out = out, .err = err, .rewrites_line = rewrites_line});
    MyTableController controller(u"Norvo Birch", opener, session, session);
    ScanRequest request;
    request.device_path = "/dev/any";
    request.sectors_val = 4;
    request.destination = folder.path() / "destination";
    request.Rec_Folder_Name = u"Results";
    EXPECT_EQ(session.run(controller, request), SearchOutcome::completed);
    const std::string written = err.str();
    EXPECT_NE(written.find('%'), std::string::npos) << written;
    session.perform(operation::SetSectorLabel{u"Sectors 1 of 4 (25%)"});
    EXPECT_EQ(err.str(), written);
  }
}

}  // namespace
}  // namespace norvo
