#include "RandomTable.h"

#include <string>

namespace differential {
namespace {

using plain::Bytes;
using plain::Text;

Text decimal(std::uint64_t value) {
  Text text;
  for (const char digit : std::to_string(value)) {
    text.push_back(static_cast<char16_t>(digit));
  }
  return text;
}

struct Record {
  Text extension;
  Text maximum;
  Text header;
  Text offset;
  Text gate;
};

std::size_t random_header_length(SplitMix& random) {
  const std::uint64_t dice = random.between(0, 99);
  if (dice < 4) {
    return 0;
  }
  if (dice < 70) {
    return random.between(1, 4);
  }
  if (dice < 98) {
    return random.between(5, 20);
  }
  return random.between(490, 530);
}

Text hexadecimal(SplitMix& random, const Bytes& bytes) {
  static const Text upper = u"0123456789ABCDEF";
  static const Text lower = u"0123456789abcdef";
  const std::uint64_t style = random.between(0, 5);
  Text text;
  for (const std::uint8_t byte : bytes) {
    for (const int digit : {byte >> 4, byte & 15}) {
      const bool is_lower = style == 0 || (style == 1 && random.percent(50));
      text.push_back((is_lower ? lower : upper)[static_cast<std::size_t>(digit)]);
    }
  }
  return text;
}

// Digits that are none, letters whose low byte is the code of a digit, and half a byte too much.
void spoil_digits(SplitMix& random, Text& header) {
  static const std::vector<char16_t> strange = {u'G', u'x', u' ', u'-', u'\u0146', u'\u0431'};
  if (!header.empty() && random.percent(4)) {
    header[static_cast<std::size_t>(random.next() % header.size())] = random.one_of(strange);
  }
  if (random.percent(6)) {
    header.push_back(random.percent(50) ? u'0' : random.one_of(strange));
  }
}

Bytes random_bytes(SplitMix& random, const Alphabet& alphabet, std::size_t length) {
  Bytes bytes;
  const bool is_run = random.percent(25);
  const std::uint8_t first = random.one_of(alphabet);
  while (bytes.size() < length) {
    bytes.push_back(is_run && !random.percent(20) ? first : random.one_of(alphabet));
  }
  return bytes;
}

// The header of an earlier record, a beginning or a piece of it, or more than it.
Text related_header(SplitMix& random, const Alphabet& alphabet, const Text& other) {
  const std::uint64_t kind = random.between(0, 3);
  const std::uint64_t begin = random.between(0, other.size());
  const std::uint64_t length = 2 * random.between(1, 4);
  switch (kind) {
    case 0:
      return other;
    case 1:
      return other.substr(0, begin - begin % 2);
    case 2:
      return other.substr(begin, length);
    default:
      return other + hexadecimal(random, random_bytes(random, alphabet, random.between(1, 3)));
  }
}

Text random_offset(SplitMix& random) {
  static const std::vector<Text> strange = {u"0",   u"-1", u"-5",  u"NN",         u"nn ", u"",
                                            u"x",   u" 5", u"+3",  u"2147483647", u"1 ",  u"+1",
                                            u"3nn", u"01", u"513", u"-2147483648"};
  const std::uint64_t dice = random.between(0, 99);
  if (dice < 45) {
    return u"1";
  }
  if (dice < 68) {
    return u"nn";
  }
  if (dice < 84) {
    return decimal(random.between(2, 12));
  }
  return dice < 92 ? decimal(random.between(498, 515)) : random.one_of(strange);
}

Text random_maximum(SplitMix& random) {
  static const std::vector<Text> strange = {u"0",
                                            u"1",
                                            u"511",
                                            u"512",
                                            u"513",
                                            u"1024",
                                            u"1025",
                                            u"-1",
                                            u"-512",
                                            u"x9",
                                            u"",
                                            u" 1536",
                                            u"+2048",
                                            u"9 512",
                                            u"4294967296",
                                            u"9223372036854775807",
                                            u"-9223372036854775808",
                                            u"99999999999999999999"};
  const std::uint64_t dice = random.between(0, 99);
  if (dice < 55) {
    const std::uint64_t sectors = random.between(1, 12);
    return decimal(512 * sectors + (dice < 10 ? random.between(0, 511) : 0));
  }
  return dice < 75 ? decimal(random.between(5000, 400000)) : random.one_of(strange);
}

Text random_gate(SplitMix& random, const Alphabet& alphabet, const Text& header) {
  static const std::vector<Text> strange = {u"", u"x", u"256", u"-1", u"0", u"4294967296"};
  const std::uint64_t dice = random.between(0, 99);
  if (header.size() < 2 || dice < 5) {
    return decimal(random.one_of(alphabet));
  }
  if (dice < 8) {
    return random.one_of(strange);
  }
  unsigned value = 0;
  for (const char16_t digit : header.substr(0, 2)) {
    const unsigned low = digit & 0xFFU;
    const bool is_letter = (low >= 'A' && low <= 'F') || (low >= 'a' && low <= 'f');
    const bool is_number = low >= '0' && low <= '9';
    value = value * 16 + (is_letter ? (low & 7U) + 9 : is_number ? low - '0' : 0);
  }
  const Text text = decimal(value);
  return dice < 11 ? u" +" + text + u"." : text;
}

Text random_extension(SplitMix& random) {
  static const std::vector<Text> usual = {u"JPG", u"jpg", u"PNG", u"MOV", u"MPEG",
                                          u"A",   u"GZ",  u"MP4", u"B_1"};
  static const std::vector<Text> strange = {u"TAR.GZ", u"\u00C9T\u00C9", u"A B", u"_", u"x.JPG"};
  return random.percent(94) ? random.one_of(usual) : random.one_of(strange);
}

Record random_record(SplitMix& random, const Alphabet& alphabet,
                     const std::vector<Record>& before) {
  Record record;
  record.extension = random_extension(random);
  record.maximum = random_maximum(random);
  record.offset = random_offset(random);
  if (!before.empty() && random.percent(40)) {
    const Record& other = random.one_of(before);
    record.header = related_header(random, alphabet, other.header);
    record.offset = random.percent(60) ? other.offset : record.offset;
  } else {
    const std::size_t length = random_header_length(random);
    record.header = hexadecimal(random, random_bytes(random, alphabet, length));
  }
  spoil_digits(random, record.header);
  record.gate = random_gate(random, alphabet, record.header);
  return record;
}

// More types on one header than files may be open at once.
std::vector<Record> crowd(SplitMix& random, const Alphabet& alphabet) {
  std::vector<Record> records = {random_record(random, alphabet, {})};
  const std::uint64_t count = random.between(26, 40);
  while (records.size() < count) {
    Record record = records.front();
    record.maximum = random_maximum(random);
    record.extension = random.percent(70) ? u"T" + decimal(records.size()) : u"JPG";
    records.push_back(record);
  }
  return records;
}

// Room for files of several read blocks.
void make_roomy(SplitMix& random, std::vector<Record>& records) {
  for (Record& record : records) {
    if (random.percent(75)) {
      record.maximum = decimal(random.between(100000, 2000000));
    }
  }
}

std::size_t random_count(SplitMix& random) {
  const std::uint64_t dice = random.between(0, 99);
  if (dice < 3) {
    return 0;
  }
  return dice < 95 ? random.between(1, 8) : random.between(9, 60);
}

}  // namespace

Alphabet random_alphabet(SplitMix& random) {
  static const std::vector<Alphabet> usual = {
      {0x00, 0xFF}, {0x00, 0x41}, {0xFF, 0xD8, 0x00}, {0x41, 0x42}, {0x01, 0x02, 0x03}};
  if (random.percent(60)) {
    return random.one_of(usual);
  }
  Alphabet alphabet;
  const std::uint64_t size = random.between(1, 5);
  while (alphabet.size() < size) {
    alphabet.push_back(static_cast<std::uint8_t>(random.next()));
  }
  return alphabet;
}

std::vector<Text> random_table(SplitMix& random, const Alphabet& alphabet, int mode) {
  std::vector<Record> records;
  if (random.percent(mode == 0 ? 1 : 5)) {
    records = crowd(random, alphabet);
  } else {
    const std::size_t count = random_count(random);
    while (records.size() < count) {
      records.push_back(random_record(random, alphabet, records));
    }
  }
  if (random.percent(20)) {
    make_roomy(random, records);
  }
  std::vector<Text> table;
  for (const Record& record : records) {
    for (const Text& entry : {record.extension, record.maximum, record.header, record.offset,
                              Text(u"any"), Text(u"words"), record.gate}) {
      table.push_back(entry);
    }
  }
  if (random.percent(4)) {
    const Record last = random_record(random, alphabet, records);
    const std::vector<Text> entries = {last.extension, last.maximum, last.header, last.offset, u""};
    const auto left_over = static_cast<std::ptrdiff_t>(random.between(1, 5));
    table.insert(table.end(), entries.begin(), entries.begin() + left_over);
  }
  return table;
}

}  // namespace differential
