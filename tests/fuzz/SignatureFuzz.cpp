// Any bytes as a signature file: loaded, checked, compiled and matched.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "engine/HeaderMatcher.h"
#include "fuzz/Require.h"
#include "sigdb/SignatureCheck.h"
#include "sigdb/SignatureTables.h"
#include "util/Hexadecimal.h"

namespace {

using norvo::EmptyHeader;
using norvo::HeaderMatcher;
using norvo::sector_size;
using norvo::SignatureRecord;
using norvo::SignatureTable;
using norvo::Text;
using norvo::TextView;
using norvo::fuzz::require;

constexpr std::size_t filler_sectors = 5;

std::size_t lines_with_a_colon(std::string_view bytes) {
  std::size_t count = 0;
  bool colon = false;
  for (const char c : bytes) {
    if (c == '\n') colon = false;
    if (c == ':' && !colon) ++count, colon = true;
  }
  return count;
}

// Where a record's header would have to begin.
std::size_t place_of(const SignatureRecord& record) {
  const Text& rule = record.position_rule();
  if (rule == u"nn" || rule == u"1") return 0;
  return static_cast<std::size_t>(std::clamp<std::int64_t>(record.position() - 1LL, 0, 511));
}

// Appends a sector that holds the record's header at its place. False when it does not fit.
bool append_own_sector(const SignatureRecord& record, std::vector<std::byte>& sectors) {
  const std::size_t begin = sectors.size();
  sectors.resize(begin + sector_size);
  const TextView header = record.header();
  std::size_t at = place_of(record);
  for (std::size_t k = 0; k + 1 < header.size(); k += 2, ++at) {
    if (at >= sector_size) return false;
    sectors[begin + at] = static_cast<std::byte>(norvo::hex2int(header.substr(k, 2)));
  }
  return true;
}

void check_matching(const SignatureTable& table, std::string_view bytes, EmptyHeader empty_header,
                    bool sound) {
  const HeaderMatcher matcher(table, empty_header);
  std::vector<std::byte> sectors;
  for (std::size_t i = 0; i < filler_sectors * sector_size; ++i) {
    sectors.push_back(bytes.empty() ? std::byte{}
                                    : static_cast<std::byte>(bytes[i % bytes.size()]));
  }
  const std::size_t records = norvo::whole_records(table);
  for (std::size_t r = 0; r < records; ++r) {
    const bool fits = append_own_sector(SignatureRecord(table, r), sectors);
    if (!sound || !fits) continue;
    require(matcher.match(sectors.data() + sectors.size() - sector_size) <= r,
            "a record without a fault, or one before it, is found in a sector with its header");
  }

  const std::size_t count = sectors.size() / sector_size;
  for (std::size_t from = 0; from < count;) {
    const std::size_t skipped =
        matcher.find_candidate(sectors.data() + from * sector_size, count - from);
    require(skipped <= count - from, "the candidate lies within the sectors");
    for (std::size_t i = from; i < from + skipped; ++i) {
      require(matcher.match(sectors.data() + i * sector_size) == HeaderMatcher::no_record,
              "a sector before the candidate starts no record");
    }
    if (from + skipped == count) break;
    const std::size_t found = matcher.match(sectors.data() + (from + skipped) * sector_size);
    require(found < records || found == HeaderMatcher::no_record, "the record is in the table");
    from += skipped + 1;
  }
}

void check_sound_records(const SignatureTable& table) {
  require(table.size() % SignatureRecord::stride == 0, "a file without a fault has whole records");
  for (std::size_t r = 0; r < norvo::whole_records(table); ++r) {
    const SignatureRecord record(table, r);
    require(record.maximum_size() > 0, "the maximum size is positive");
    require(record.header().size() >= 2, "there is a header");
    require(record.gate_byte() ==
                static_cast<std::int32_t>(norvo::hex2int(TextView(record.header()).substr(0, 2))),
            "the gate byte is the header's first byte");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const bool sound = norvo::check_signature_file(bytes).empty();
  const std::optional<Text> text = norvo::text_from_utf8(bytes);
  if (!text) {
    require(!sound, "a file that is not UTF-8 has a fault");
    return 0;
  }

  norvo::SignatureLoader loader;
  SignatureTable table;
  loader.append_records(*text, table);
  const std::size_t fields = lines_with_a_colon(bytes);
  require(table.size() == fields + fields / 6, "every field line is an entry, every sixth is two");
  if (sound) check_sound_records(table);
  check_matching(table, bytes, EmptyHeader::matches_gate_byte, sound);
  check_matching(table, bytes, EmptyHeader::matches_nothing, sound);

  SignatureTable next_file;
  loader.append_records(*text, next_file);
  require(next_file.size() == table.size(), "a pending header byte does not change the entries");
  return 0;
}
