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
#include <memory>
#include <span>
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

  // The index of the first record that `sector` (512 bytes) starts, or no_record.
  std::size_t match(const std::byte* sector) const;

  // The first of `count` consecutive sectors that may start a record, or `count`. Sectors before
  // it certainly start none; the one found is to be asked with match().
  std::size_t find_candidate(const std::byte* sectors, std::size_t count) const;

 private:
  struct CompiledRecord {
    std::size_t index = 0;
    bool narrow_search = false;  // the rule "nn"
    std::size_t position = 0;
    std::byte gate{};
    std::vector<std::byte> header;
  };

  // The two bytes at one position that some record wants there.
  struct Probe {
    std::size_t position = 0;
    bool wants_zeros = false;  // a record may begin with eight zero bytes here
    std::array<std::uint64_t, 65536 / 64> wanted{};

    void want(unsigned first, unsigned second);
    void want_any_second(unsigned first);
    bool accepts(const std::byte* at) const;
  };

  static std::vector<CompiledRecord> compile(const SignatureTable& table, EmptyHeader empty_header);
  Probe& probe_at(std::size_t position);
  void add_to_probe(const CompiledRecord& record);
  bool may_match(const std::byte* sector) const;

  std::vector<CompiledRecord> records_;
  std::vector<std::unique_ptr<Probe>> probes_;
};

}  // namespace norvo
