// The loop of a decoder process, with a stand-in for the libraries.
#include "platform/decoder/Service.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>

#include <new>

#include "platform/decoder/DescriptorMessage.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"
#include "util/DescriptorPair.h"

namespace norvo::test {
namespace {

// One request about an empty file, with the caller's end closed behind it. What is said to it waits
// in the socket.
class ServiceTest : public testing::Test {
 protected:
  ServiceTest() {
    const DecoderRequest request{.serial = 7, .box = {.width = 2, .height = 1}, .extension = {}};
    const auto path = folder_.path() / "empty";
    write_file(path, "");
    const UniqueFd file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    EXPECT_TRUE(send_with_descriptor(sockets_.first.get(), encode(request), file.get()));
    EXPECT_EQ(shutdown(sockets_.first.get(), SHUT_WR), 0);
  }

  bool serve(const Decode& decode) { return serve_requests(sockets_.second.get(), decode); }

  std::optional<DecoderAnswer> answer() {
    DecoderMessage message{};
    const ssize_t size =
        recv(sockets_.first.get(), message.data(), message.size(), MSG_DONTWAIT | MSG_WAITALL);
    if (size != static_cast<ssize_t>(message.size())) return std::nullopt;
    return decode_answer(message);
  }

  TemporaryFolder folder_;
  DescriptorPair sockets_ = make_socket_pair();
};

TEST_F(ServiceTest, AnswersUntilTheOtherEndCloses) {
  EXPECT_TRUE(serve([](const FileBytes& file, const DecoderRequest& request) {
    EXPECT_TRUE(file.bytes().empty());
    return whole(Picture{.size = request.box, .pixels = {1, 2}});
  }));
  const auto said = answer();
  ASSERT_TRUE(said);
  EXPECT_EQ(said->serial, 7U);
  EXPECT_EQ(said->size, (PictureSize{.width = 2, .height = 1}));
  EXPECT_EQ(said->verdict.completeness, Completeness::whole);
}

TEST_F(ServiceTest, LeavesAFileToAnotherProcessWhenTheMemoryIsGone) {
  EXPECT_FALSE(
      serve([](const FileBytes&, const DecoderRequest&) -> Decoded { throw std::bad_alloc(); }));
  EXPECT_FALSE(answer());
}

}  // namespace
}  // namespace norvo::test
