// The compiled table against the literal search, on seeded random tables and sectors.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "../differential/SplitMix.h"
#include "LiteralMatcher.h"
#include "engine/HeaderMatcher.h"

namespace norvo::test {
namespace {

using differential::SplitMix;

// What a family of tables is like. With few byte values partial matches, runs of gate bytes and
// records that hide each other are frequent; with all of them most sectors are dismissed.
struct Family {
  std::vector<std::uint64_t> byte_values;  // empty: all 256
  std::uint64_t most_records;
  std::uint64_t most_header_bytes;
  unsigned percent_planted;  // sectors that receive some record's header
};

const Family few_values{{0x00, 0x41, 0x42}, 6, 5, 40};
const Family all_values{{}, 60, 8, 25};

class RandomCase {
 public:
  RandomCase(const Family& family, std::uint64_t seed) : family_(family), random_(seed) {
    const std::uint64_t records = random_.between(0, family.most_records);
    for (std::uint64_t r = 0; r < records; ++r) add_record();
    if (random_.percent(10)) table.emplace_back(u"CUT");
    const std::uint64_t sectors = random_.between(1, 40);
    for (std::uint64_t s = 0; s < sectors; ++s) add_sector();
  }

  std::size_t count() const { return bytes.size() / sector_size; }
  const std::byte* sector(std::size_t number) const { return bytes.data() + number * sector_size; }

  SignatureTable table;
  std::vector<std::byte> bytes;

 private:
  std::uint64_t byte_value() {
    return family_.byte_values.empty() ? random_.between(0, 255)
                                       : random_.one_of(family_.byte_values);
  }

  Text header() {
    std::uint64_t length = random_.between(0, family_.most_header_bytes);
    if (random_.percent(2)) length = random_.between(505, 514);
    Text digits;
    for (std::uint64_t i = 0; i < length; ++i) {
      const std::uint64_t value = length > 500 ? 0x41 : byte_value();
      digits += u"0123456789ABCDEF"[value / 16];
      digits += u"0123456789abcdef"[value % 16];
    }
    if (random_.percent(4)) digits += u'4';
    if (random_.percent(4) && !digits.empty()) digits[random_.next() % digits.size()] = u'G';
    return digits;
  }

  Text position() {
    static const std::vector<Text> odd{u"0",   u"-2",  u"",    u"2",   u"3",   u"5",     u"9",
                                       u"01",  u"256", u"502", u"505", u"506", u"507",   u"508",
                                       u"509", u"511", u"512", u"513", u"600", u"30000", u"NN"};
    if (random_.percent(35)) return u"1";
    return random_.percent(50) ? Text(u"nn") : random_.one_of(odd);
  }

  Text gate(const Text& header_digits) {
    static const std::vector<Text> odd{u"", u"0", u"65", u"66", u"321", u"-191", u" 65", u"65x"};
    if (random_.percent(15) || header_digits.size() < 2) return random_.one_of(odd);
    std::string pair(header_digits.begin(), header_digits.begin() + 2);
    std::replace(pair.begin(), pair.end(), 'G', '0');
    const std::string value = std::to_string(std::stoi(pair, nullptr, 16));
    return Text(value.begin(), value.end());
  }

  void add_record() {
    const Text digits = header();
    for (const Text& entry : {Text(u"TYP"), Text(u"0"), digits, position(), Text(u"?"),
                              Text(u"a type"), gate(digits)}) {
      table.push_back(entry);
    }
  }

  void add_sector() {
    bytes.resize(bytes.size() + sector_size);
    std::byte* sector = bytes.data() + bytes.size() - sector_size;
    const bool same = random_.percent(30);
    const std::uint64_t value = byte_value();
    for (std::size_t i = 0; i < sector_size; ++i) {
      sector[i] = static_cast<std::byte>(same ? value : byte_value());
    }
    if (table.size() >= 7 && random_.percent(family_.percent_planted)) plant_in(sector);
  }

  // The header of some record at its place, after a run of its first byte where it is searched.
  void plant_in(std::byte* sector) {
    const std::size_t record = random_.next() % (table.size() / 7) * 7;
    const Text& digits = table[record + 2];
    const Text& rule = table[record + 3];
    const std::size_t length = digits.size() / 2;
    std::size_t at = 0;
    if (rule == u"nn") {
      at = random_.between(0, 3);
    } else if (rule.size() == 3 && rule[0] == u'5') {
      at = static_cast<std::size_t>(std::stoi(std::string(rule.begin(), rule.end())) - 1);
    }
    for (std::size_t i = 0; i < at + length && i < sector_size; ++i) {
      if (rule != u"nn" && i < at) continue;
      const std::size_t k = i < at ? 0 : i - at;
      if (2 * k + 1 >= digits.size()) break;
      std::string pair(digits.begin() + static_cast<std::ptrdiff_t>(2 * k),
                       digits.begin() + static_cast<std::ptrdiff_t>(2 * k + 2));
      std::replace(pair.begin(), pair.end(), 'G', '0');
      sector[i] = static_cast<std::byte>(std::stoi(pair, nullptr, 16));
    }
  }

  const Family& family_;
  SplitMix random_;
};

struct Tally {
  std::size_t sectors = 0;
  std::size_t matches = 0;
  std::size_t later_records = 0;  // matches that are not the table's first record
  std::size_t dismissed = 0;      // sectors that no candidate was
};

// Every sector asked one by one, and every candidate of the block walked to.
void compare(const RandomCase& random, EmptyHeader empty_header, Tally& tally) {
  const HeaderMatcher matcher(random.table, empty_header);
  std::vector<bool> starts(random.count());
  for (std::size_t s = 0; s < random.count(); ++s) {
    const std::size_t wanted = literal_match(random.table, random.sector(s), empty_header);
    ASSERT_EQ(matcher.match(random.sector(s)), wanted) << "sector " << s;
    starts[s] = wanted != HeaderMatcher::no_record;
    ++tally.sectors;
    tally.matches += starts[s];
    tally.later_records += starts[s] && wanted > 0;
  }
  for (std::size_t from = 0; from < random.count();) {
    const std::size_t left = random.count() - from;
    const std::size_t skipped = matcher.find_candidate(random.sector(from), left);
    ASSERT_LE(skipped, left);
    for (std::size_t s = from; s < from + skipped; ++s) {
      ASSERT_FALSE(starts[s]) << "sector " << s << " was skipped from " << from;
    }
    tally.dismissed += skipped;
    from += skipped + 1;
  }
}

Tally compare_all(const Family& family, EmptyHeader empty_header, std::uint64_t tables) {
  Tally tally;
  for (std::uint64_t seed = 1; seed <= tables; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    compare(RandomCase(family, seed), empty_header, tally);
    if (testing::Test::HasFatalFailure()) break;
  }
  return tally;
}

class HeaderMatcherRandom : public testing::TestWithParam<EmptyHeader> {};

TEST_P(HeaderMatcherRandom, AgreesWithTheLiteralSearchWhereFewByteValuesOccur) {
  const Tally tally = compare_all(few_values, GetParam(), 2000);
  EXPECT_GT(tally.matches, tally.sectors / 5);
  EXPECT_GT(tally.later_records, tally.matches / 5);
  EXPECT_GT(tally.dismissed, tally.sectors / 10);
}

TEST_P(HeaderMatcherRandom, AgreesWithTheLiteralSearchWhereMostSectorsAreDismissed) {
  const Tally tally = compare_all(all_values, GetParam(), 600);
  EXPECT_GT(tally.matches, tally.sectors / 20);
  EXPECT_GT(tally.later_records, tally.matches / 2);
  EXPECT_GT(tally.dismissed, tally.sectors / 3);
}

INSTANTIATE_TEST_SUITE_P(EmptyHeaders, HeaderMatcherRandom,
                         testing::Values(EmptyHeader::matches_gate_byte,
                                         EmptyHeader::matches_nothing));

// Marks of a block are the candidates of its sectors, one by one.
TEST(HeaderMatcher, MarksExactlyTheSectorsThatItFindsAsCandidates) {
  for (std::uint64_t seed = 1; seed <= 500; ++seed) {
    const RandomCase random(few_values, seed);
    const HeaderMatcher matcher(random.table, EmptyHeader::matches_gate_byte);
    std::vector<std::uint64_t> bits(2, ~std::uint64_t{0});
    matcher.mark_candidates(random.sector(0), random.count(), bits);
    for (std::size_t s = 0; s < 128; ++s) {
      const bool marked = ((bits[s / 64] >> (s % 64)) & 1U) != 0;
      const bool candidate = s < random.count() && matcher.find_candidate(random.sector(s), 1) == 0;
      ASSERT_EQ(marked, candidate) << "seed " << seed << ", sector " << s;
    }
  }
}

}  // namespace
}  // namespace norvo::test
