#include "RandomSearch.h"

#include <algorithm>
#include <sstream>

#include "../plain/PlainText.h"
#include "RandomDevice.h"
#include "RandomTable.h"
#include "SplitMix.h"

namespace differential {
namespace {

using plain::Search;
using plain::Text;

bool holds(const std::vector<Text>& texts, const Text& wanted) {
  return std::find(texts.begin(), texts.end(), wanted) != texts.end();
}

// One row per type as a check list would give them, now and then one missing or double.
void add_rows(SplitMix& random, Search& search) {
  for (const std::vector<Text>* table : {&search.general, &search.thorough_table}) {
    for (std::size_t record = 0; record + 7 <= table->size(); record += 7) {
      const Text& type = (*table)[record];
      if (!holds(search.row_types, type) && !random.percent(4)) {
        search.row_types.push_back(type);
      }
    }
  }
  std::sort(search.row_types.begin(), search.row_types.end());
  if (!search.row_types.empty() && random.percent(4)) {
    search.row_types.push_back(random.one_of(search.row_types));
  }
}

void choose_range(SplitMix& random, Search& search) {
  const std::uint64_t sectors = search.device.bytes.size() / 512;
  search.sectors_val = sectors;
  if (random.percent(15)) {
    search.sectors_val += random.between(1, 20);
  }
  search.entire_disk = random.percent(65);
  search.range_start = random.next() % (search.sectors_val + 1);
  search.range_end = search.range_start + random.between(1, search.sectors_val + 4);
  if (random.percent(5)) {
    search.range_start += random.between(1, 30);
    search.range_end = search.range_start + random.between(0, 30);
  }
}

// Things that lie in the way, or under a name that the search is going to use.
void add_existing(SplitMix& random, Search& search) {
  static const std::vector<std::string> modes = {"Photo Search", "Video Search", "File Search",
                                                 "Audio File Search"};
  const std::string root = search.destination + "/" + plain::to_utf8(search.results_folder);
  const std::string mode = root + "/" + modes[static_cast<std::size_t>(search.mode)];
  const bool thorough = random.percent(30);
  const std::string pass =
      mode + (thorough ? "/Omitted (recovered by Thorough Scan)" : "/General Recovery Results");
  const std::vector<Text>& table = thorough ? search.thorough_table : search.general;
  const std::size_t records = (table.size() + 6) / 7;
  const Text type = records == 0 ? Text(u"JPG") : table[7 * (random.next() % records)];
  const std::string extension = plain::to_utf8(type);
  const std::string prefix = search.mode == 0 ? (thorough ? "THD" : "GND") : extension;
  const std::string number = std::to_string(random.between(1, 3));
  const std::string folder = pass + "/" + extension;
  const std::string name = folder + "/" + prefix + "0000" + number + "." + extension;
  const std::vector<std::string> obstacles = {root, mode, pass, folder};
  const std::uint64_t dice = random.between(0, 9);
  if (dice < 5) {
    search.existing_files[name] = plain::Bytes(random.between(0, 5000), 0x5A);
  } else if (dice < 7) {
    search.existing_folders.insert(name);
  } else {
    search.existing_files[random.one_of(obstacles)] = plain::Bytes(3, 0x5A);
  }
}

void describe_table(std::ostringstream& out, const char* name, const std::vector<Text>& table) {
  out << name << " (" << table.size() << " entries):\n";
  for (std::size_t entry = 0; entry < table.size(); ++entry) {
    std::string text = plain::to_utf8(table[entry]);
    if (text.size() > 60) {
      text = text.substr(0, 60) + "... (" + std::to_string(text.size()) + ")";
    }
    out << (entry % 7 == 0 ? "  " : "") << '"' << text << '"'
        << (entry % 7 == 6 || entry + 1 == table.size() ? "\n" : " ");
  }
}

void describe_device(std::ostringstream& out, const plain::Device& device) {
  out << "device: " << device.bytes.size() / 512 << " sectors + " << device.bytes.size() % 512
      << " bytes" << (device.seek_past_end_fails ? ", seeking past the end fails" : "");
  if (!device.openable) {
    out << ", does not open (" << device.open_errno << ")";
  }
  if (device.gone_after_sector) {
    out << ", gone from sector " << *device.gone_after_sector;
  }
  if (!device.unreadable.empty()) {
    out << ", unreadable:";
    for (const std::uint64_t sector : device.unreadable) {
      out << ' ' << sector;
    }
  }
  out << '\n';
}

}  // namespace

Search random_search(std::uint64_t seed) {
  SplitMix random(seed);
  Search search;
  search.mode = seed % 2 == 0 ? 0 : 1 + static_cast<int>(seed / 2 % 3);
  search.thorough = random.percent(60);
  const Alphabet alphabet = random_alphabet(random);
  search.general = random_table(random, alphabet, search.mode);
  search.thorough_table =
      random.percent(15) ? search.general : random_table(random, alphabet, search.mode);
  search.device = random_device(random, alphabet, {&search.general, &search.thorough_table});
  choose_range(random, search);
  if (search.mode != 0) {
    add_rows(random, search);
  }
  if (random.percent(20)) {
    search.stop_after_reports = random.between(1, 6);
  }
  if (random.percent(8)) {
    search.initial_shown_item_count = random.between(1990, 2001);
  }
  if (random.percent(8)) {
    add_existing(random, search);
  }
  return search;
}

std::string describe(const Search& search) {
  std::ostringstream out;
  out << "mode " << search.mode << (search.thorough ? ", thorough" : ", General only")
      << ", sectors ";
  if (search.entire_disk) {
    out << "0 to " << search.sectors_val;
  } else {
    out << search.range_start << " to " << search.range_end;
  }
  if (search.stop_after_reports) {
    out << ", stop in report " << *search.stop_after_reports;
  }
  out << ", shown items " << search.initial_shown_item_count << '\n';
  describe_device(out, search.device);
  describe_table(out, "general", search.general);
  describe_table(out, "thorough", search.thorough_table);
  out << "rows:";
  for (const Text& type : search.row_types) {
    out << ' ' << plain::to_utf8(type);
  }
  out << '\n';
  for (const auto& [path, bytes] : search.existing_files) {
    out << "there already: " << path << " (" << bytes.size() << " bytes)\n";
  }
  for (const std::string& path : search.existing_folders) {
    out << "there already: " << path << "/\n";
  }
  return out.str();
}

}  // namespace differential
