#include "engine/HeaderMatcher.h"

#include <algorithm>
#include <cstring>

#include "util/Hexadecimal.h"

namespace norvo {
namespace {

constexpr TextView start_rule = u"1";
constexpr TextView narrow_rule = u"nn";

// A numeric position at or beyond this byte is never tried.
constexpr std::int64_t numeric_position_limit = 507;

std::vector<std::byte> header_bytes(TextView hexadecimal) {
  std::vector<std::byte> bytes;
  for (std::size_t k = 0; k + 1 < hexadecimal.size(); k += 2) {
    bytes.push_back(static_cast<std::byte>(hex2int(hexadecimal.substr(k, 2))));
  }
  return bytes;
}

// The narrow search moves on only while every candidate byte equals the gate; a try that matched m
// bytes moves the next one m bytes on, one that matched none moves it by one.
bool found_along_gate_run(const std::byte* sector, std::byte gate,
                          std::span<const std::byte> header) {
  for (std::size_t p = 0; p < sector_size && sector[p] == gate;) {
    std::size_t matched = 0;
    while (matched < header.size() && p + matched < sector_size &&
           sector[p + matched] == header[matched]) {
      ++matched;
    }
    if (matched == header.size()) return true;
    p += std::max<std::size_t>(matched, 1);
  }
  return false;
}

std::uint64_t eight_bytes(const std::byte* at) {
  std::uint64_t value = 0;
  std::memcpy(&value, at, sizeof value);
  return value;
}

}  // namespace

void HeaderMatcher::Probe::want(unsigned first, unsigned second) {
  std::array<std::byte, 2> pair{static_cast<std::byte>(first), static_cast<std::byte>(second)};
  std::uint16_t word = 0;
  std::memcpy(&word, pair.data(), sizeof word);
  wanted[word / 64U] |= std::uint64_t{1} << (word % 64U);
}

void HeaderMatcher::Probe::want_any_second(unsigned first) {
  for (unsigned second = 0; second < 256; ++second) want(first, second);
}

bool HeaderMatcher::Probe::accepts(const std::byte* at) const {
  std::uint16_t word = 0;
  std::memcpy(&word, at, sizeof word);
  return ((wanted[word / 64U] >> (word % 64U)) & 1U) != 0;
}

HeaderMatcher::HeaderMatcher(const SignatureTable& table, EmptyHeader empty_header)
    : records_(compile(table, empty_header)) {
  for (const CompiledRecord& record : records_) add_to_probe(record);
}

// Records that no sector can start are left out: a gate that no byte equals or that is not the
// header's first byte, a header beyond byte 511, a numeric position that is never tried.
std::vector<HeaderMatcher::CompiledRecord> HeaderMatcher::compile(const SignatureTable& table,
                                                                  EmptyHeader empty_header) {
  std::vector<CompiledRecord> records;
  for (std::size_t r = 0; r < whole_records(table); ++r) {
    const SignatureRecord source(table, r);
    CompiledRecord record{.index = r,
                          .narrow_search = source.position_rule() == narrow_rule,
                          .header = header_bytes(source.header())};
    const bool numeric = !record.narrow_search && source.position_rule() != start_rule;
    const std::int64_t position = numeric ? std::int64_t{source.position()} - 1 : 0;
    const std::int32_t gate = source.gate_byte();
    const bool reachable =
        position >= 0 && (!numeric || position < numeric_position_limit) &&
        static_cast<std::size_t>(position) + record.header.size() <= sector_size;
    if (!reachable || gate < 0 || gate > 255) continue;
    record.position = static_cast<std::size_t>(position);
    record.gate = static_cast<std::byte>(gate);
    if (record.header.empty()) {
      if (!record.narrow_search || empty_header == EmptyHeader::matches_nothing) continue;
    } else if (record.header.front() != record.gate) {
      continue;
    }
    records.push_back(std::move(record));
  }
  return records;
}

HeaderMatcher::Probe& HeaderMatcher::probe_at(std::size_t position) {
  for (const auto& probe : probes_) {
    if (probe->position == position) return *probe;
  }
  probes_.push_back(std::make_unique<Probe>());
  probes_.back()->position = position;
  return *probes_.back();
}

void HeaderMatcher::add_to_probe(const CompiledRecord& record) {
  // Two bytes are looked at; a one-byte header at the last byte has no second one to look at, but
  // numeric positions end well before it.
  Probe& probe = probe_at(record.position);
  const auto gate = std::to_integer<unsigned>(record.gate);
  if (record.header.size() < 2) {
    probe.want_any_second(gate);
  } else {
    probe.want(gate, std::to_integer<unsigned>(record.header[1]));
    // The narrow search goes on after one matching byte when the next one equals the gate.
    if (record.narrow_search) probe.want(gate, gate);
  }
  const std::size_t looked_at = std::min<std::size_t>(record.header.size(), 8);
  probe.wants_zeros |= std::all_of(record.header.begin(),
                                   record.header.begin() + static_cast<std::ptrdiff_t>(looked_at),
                                   [](std::byte b) { return b == std::byte{0}; });
  probe.wants_zeros |= record.narrow_search && gate == 0;
}

bool HeaderMatcher::may_match(const std::byte* sector) const {
  for (const auto& probe : probes_) {
    const std::byte* at = sector + probe->position;
    if (!probe->accepts(at)) continue;
    // Empty sectors are the most frequent ones; many headers begin with a zero byte or two.
    const bool eight_fit = probe->position + 8 <= sector_size;
    if (eight_fit && !probe->wants_zeros && eight_bytes(at) == 0) continue;
    return true;
  }
  return false;
}

std::size_t HeaderMatcher::find_candidate(const std::byte* sectors, std::size_t count) const {
  for (std::size_t i = 0; i < count; ++i) {
    if (may_match(sectors + i * sector_size)) return i;
  }
  return count;
}

std::size_t HeaderMatcher::match(const std::byte* sector) const {
  for (const CompiledRecord& record : records_) {
    const std::byte* at = sector + record.position;
    if (*at != record.gate) continue;
    const bool found =
        record.narrow_search
            ? found_along_gate_run(sector, record.gate, record.header)
            : std::memcmp(at, record.header.data(), record.header.size()) == 0;
    if (found) return record.index;
  }
  return no_record;
}

}  // namespace norvo
