#include "engine/HeaderMatcher.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <span>

#include "sigdb/SignatureFormat.h"
#include "util/Hexadecimal.h"

namespace norvo {
namespace {

constexpr TextView start_rule = u"1";
constexpr TextView narrow_rule = u"nn";

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

std::uint16_t pair_of(const std::byte* at) {
  std::uint16_t pair = 0;
  std::memcpy(&pair, at, sizeof pair);
  return pair;
}

std::uint16_t pair_of(std::byte first, std::byte second) {
  const std::array<std::byte, 2> bytes{first, second};
  return pair_of(bytes.data());
}

// A multiplication spreads the pairs over the table, as many headers begin alike.
unsigned table_index(std::uint16_t pair, unsigned index_bits) {
  return (pair * 0x9E3779B1U) >> (32 - index_bits);
}

}  // namespace

bool HeaderMatcher::CompiledRecord::found_in(const std::byte* sector) const {
  const std::byte* at = sector + position;
  if (*at != gate) return false;
  return narrow_search ? found_along_gate_run(sector, gate, header)
                       : std::memcmp(at, header.data(), header.size()) == 0;
}

std::optional<std::uint16_t> HeaderMatcher::CompiledRecord::pair_at(std::size_t byte) const {
  if (narrow_search || byte < position || byte + 2 > position + header.size()) return std::nullopt;
  return pair_of(header.data() + (byte - position));
}

void HeaderMatcher::Probe::add(std::uint16_t pair, const CompiledRecord& record) {
  approximate[table_index(pair, index_bits)] = 1;
  exact.emplace_back(pair, &record);
}

bool HeaderMatcher::Probe::wants(const std::byte* sector) const {
  const std::uint16_t pair = pair_of(sector + position);
  if (approximate[table_index(pair, index_bits)] == 0) return false;
  auto entry = std::lower_bound(exact.begin(), exact.end(), pair,
                                [](const auto& e, std::uint16_t p) { return e.first < p; });
  for (; entry != exact.end() && entry->first == pair; ++entry) {
    if (entry->second->found_in(sector)) return true;
  }
  return false;
}

HeaderMatcher::HeaderMatcher(const SignatureTable& table, EmptyHeader empty_header)
    : records_(compile(table, empty_header)) {
  for (const std::size_t position : choose_positions()) {
    probes_.push_back({.position = position, .approximate = {}, .exact = {}});
  }
  for (const CompiledRecord& record : records_) add_to_probes(record);
  for (Probe& probe : probes_) {
    std::sort(probe.exact.begin(), probe.exact.end(),
              [](const auto& a, const auto& b) { return a.first < b.first; });
  }
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
    const bool reachable = position >= 0 && (!numeric || position < last_header_position) &&
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

// Greedy: the position at which most of the remaining records have a pair, until none remains.
// Pairs of zeros do not count, as empty sectors are the most frequent ones; a record with nothing
// else, and one whose header is not simply at its position, is probed at its own position.
std::vector<std::size_t> HeaderMatcher::choose_positions() const {
  std::vector<std::size_t> positions;
  std::vector<const CompiledRecord*> remaining;
  const auto covers = [](std::size_t byte, const CompiledRecord& record) {
    return record.pair_at(byte).value_or(0) != 0;
  };
  for (const CompiledRecord& record : records_) remaining.push_back(&record);
  while (!remaining.empty()) {
    std::size_t best = remaining.front()->position;
    std::ptrdiff_t most = 0;
    for (std::size_t byte = 0; byte + 2 <= sector_size; ++byte) {
      const auto count = std::count_if(remaining.begin(), remaining.end(),
                                       [&](const auto* record) { return covers(byte, *record); });
      if (count > most) most = count, best = byte;
    }
    positions.push_back(best);
    std::erase_if(remaining, [&](const CompiledRecord* record) {
      return covers(best, *record) || record->position == best;
    });
  }
  return positions;
}

// A record is probed at the first chosen position that serves it.
void HeaderMatcher::add_to_probes(const CompiledRecord& record) {
  for (Probe& probe : probes_) {
    if (const auto pair = record.pair_at(probe.position); pair.value_or(0) != 0) {
      probe.add(*pair, record);
      return;
    }
  }
  Probe& probe = probe_at(record.position);
  if (record.header.size() >= 2) {
    probe.add(pair_of(record.header[0], record.header[1]), record);
    // The narrow search goes on after one matching byte when the next one equals the gate.
    if (record.narrow_search) probe.add(pair_of(record.gate, record.gate), record);
    return;
  }
  for (unsigned second = 0; second < 256; ++second) {
    probe.add(pair_of(record.gate, static_cast<std::byte>(second)), record);
  }
}

HeaderMatcher::Probe& HeaderMatcher::probe_at(std::size_t position) {
  return *std::find_if(probes_.begin(), probes_.end(),
                       [&](const Probe& probe) { return probe.position == position; });
}

// One bit for each of eight sectors that some probe accepts. The sectors are looked at beside each
// other so that the processor waits for their memory once, not eight times.
unsigned HeaderMatcher::accepted_of_eight(const std::byte* sectors) const {
  unsigned accepted = 0;
  for (const Probe& probe : probes_) {
    const std::byte* at = sectors + probe.position;
    for (unsigned i = 0; i < 8; ++i) {
      const unsigned index = table_index(pair_of(at + i * sector_size), Probe::index_bits);
      accepted |= unsigned{probe.approximate[index]} << i;
    }
  }
  return accepted;
}

bool HeaderMatcher::may_match(const std::byte* sector) const {
  return std::any_of(probes_.begin(), probes_.end(),
                     [sector](const Probe& probe) { return probe.wants(sector); });
}

void HeaderMatcher::mark_candidates(const std::byte* sectors, std::size_t count,
                                    std::span<std::uint64_t> bits) const {
  std::fill(bits.begin(), bits.end(), std::uint64_t{0});
  for (std::size_t i = find_candidate(sectors, count); i < count;) {
    bits[i / 64] |= std::uint64_t{1} << (i % 64);
    ++i;
    i += find_candidate(sectors + i * sector_size, count - i);
  }
}

std::size_t HeaderMatcher::find_candidate(const std::byte* sectors, std::size_t count) const {
  std::size_t i = 0;
  for (; i + 8 <= count; i += 8) {
    const std::byte* eight = sectors + i * sector_size;
    for (unsigned accepted = accepted_of_eight(eight); accepted != 0; accepted &= accepted - 1) {
      const auto at = static_cast<std::size_t>(std::countr_zero(accepted));
      if (may_match(eight + at * sector_size)) return i + at;
    }
  }
  for (; i < count; ++i) {
    if (may_match(sectors + i * sector_size)) return i;
  }
  return count;
}

std::size_t HeaderMatcher::match(const std::byte* sector) const {
  for (const CompiledRecord& record : records_) {
    if (record.found_in(sector)) return record.index;
  }
  return no_record;
}

}  // namespace norvo
