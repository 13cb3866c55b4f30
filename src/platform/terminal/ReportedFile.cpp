#include "platform/terminal/ReportedFile.h"

#include <algorithm>

#include "util/Text.h"

namespace norvo {
namespace {

bool may_occur(char16_t c) {
  return (c >= u' ' || c == u'\t' || c == u'\n') && c != u'\uFFFE' && c != u'\uFFFF';
}

}  // namespace

std::vector<ByteRun> byte_runs(const std::vector<SourceRun>& runs) {
  std::vector<ByteRun> bytes;
  std::uint64_t offset = 0;
  for (const SourceRun& run : runs) {
    ByteRun& added =
        bytes.emplace_back(ByteRun{.offset = offset, .length = run.sectors << sector_shift});
    const std::uint64_t place = run.origin.sector << sector_shift;
    if (run.origin.kind == SectorOrigin::Kind::read) added.img_offset = place;
    if (run.origin.kind == SectorOrigin::Kind::repeated) added.repeats = place;
    offset += added.length;
  }
  return bytes;
}

std::string pass_name(Pass pass) {
  return pass == Pass::general ? "General" : "Thorough";
}

std::string reportable(std::string_view bytes) {
  Text text = text_from_utf8_lossy(bytes);
  std::replace_if(
      text.begin(), text.end(), [](char16_t c) { return !may_occur(c); }, u'\uFFFD');
  return utf8_from_text(text);
}

}  // namespace norvo
