// Which record of a signature table a sector starts.
//
// The answer is exactly that of trying the records in table order, the first whose header is found
// winning. A record's header is looked for at one byte position, or, for the rule "nn", along a
// run of tries that each begin on a byte equal to the gate byte. A table is compiled once per
// pass, so that most sectors are dismissed after a look at a few bytes.
//
// Immutable after construction: any thread may ask.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "engine/Device.h"
#include "sigdb/SignatureRecord.h"

namespace norvo {

// What a record with an empty header and the rule "nn" matches. The two kinds of search differ.
enum class EmptyHeader { matches_gate_byte, matches_nothing };

class HeaderMatcher {
 public:
  static constexpr std::size_t no_record = static_cast<std::size_t>(-1);

  // Compiles the whole records of `table`; an incomplete last record is left out.
  HeaderMatcher(const SignatureTable& table, EmptyHeader empty_header);
  HeaderMatcher(const HeaderMatcher&) = delete;
  HeaderMatcher& operator=(const HeaderMatcher&) = delete;

  // The index of the first record that `sector` (512 bytes) starts, or no_record.
  std::size_t match(const std::byte* sector) const;

  // Sets the bits of `count` consecutive sectors (sector 64 x w + b is bit b of word w): 1 for one
  // that may start a record and is to be asked with match(). `bits` has room for all; the bits
  // behind the last sector become 0.
  void mark_candidates(const std::byte* sectors, std::size_t count,
                       std::span<std::uint64_t> bits) const;

  // The first of `count` consecutive sectors that may start a record, or `count`. Sectors before
  // it certainly start none; the one found is to be asked with match().
  std::size_t find_candidate(const std::byte* sectors, std::size_t count) const;

 private:
  // A record that some sector can start.
  struct CompiledRecord {
    std::size_t index = 0;
    bool narrow_search = false;  // the rule "nn"
    std::size_t position = 0;
    std::byte gate{};
    std::vector<std::byte> header;

    bool found_in(const std::byte* sector) const;
    // Two neighbouring bytes of every sector that the record can match, if it has such.
    std::optional<std::uint16_t> pair_at(std::size_t byte) const;
  };

  // Sectors are dismissed by two neighbouring bytes at a few positions. Positions are chosen so
  // that few of them serve all records and empty sectors are dismissed, too.
  struct Probe {
    static constexpr unsigned index_bits = 12;

    std::size_t position = 0;
    // Approximate, 1 for a pair that is wanted: one that a record wants always is, another one
    // seldom. Small, so that the tables of all probes stay in the processor's first-level cache
    // together; bytes, as taking single bits out costs more than the larger table.
    std::array<std::uint8_t, 1U << index_bits> approximate{};
    // Exact: pair and record, in ascending order.
    std::vector<std::pair<std::uint16_t, const CompiledRecord*>> exact;

    void add(std::uint16_t pair, const CompiledRecord& record);
    bool wants(const std::byte* sector) const;
  };

  static std::vector<CompiledRecord> compile(const SignatureTable& table, EmptyHeader empty_header);
  std::vector<std::size_t> choose_positions() const;
  void add_to_probes(const CompiledRecord& record);
  Probe& probe_at(std::size_t position);
  unsigned accepted_of_eight(const std::byte* sectors) const;
  bool may_match(const std::byte* sector) const;

  std::vector<CompiledRecord> records_;
  std::vector<Probe> probes_;
};

}  // namespace norvo
