// Small devices and tables for the tests of the plain search.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "PlainSearch.h"

namespace plain {

using Numbers = std::initializer_list<int>;

// A sector filled with `fill` whose bytes from `position` on are `bytes`.
inline Bytes sector_with(Numbers bytes, int fill = 0, std::size_t position = 0) {
  Bytes sector(512, static_cast<std::uint8_t>(fill));
  for (const int byte : bytes) {
    sector.at(position++) = static_cast<std::uint8_t>(byte);
  }
  return sector;
}

inline Bytes zero_sector() {
  return Bytes(512, 0);
}

// What begins a file for the records of these tests, and what does not.
inline const Bytes kHeader = sector_with({0xAA, 0xBB}, 0x22);
inline const Bytes kOther = sector_with({}, 0x33);
inline const Bytes kThird = sector_with({}, 0x44);

inline Bytes joined(const std::vector<Bytes>& pieces) {
  Bytes all;
  for (const Bytes& piece : pieces) {
    all.insert(all.end(), piece.begin(), piece.end());
  }
  return all;
}

inline void add_record(std::vector<Text>& table, const Text& extension, const Text& maximum,
                       const Text& header, const Text& offset, const Text& gate) {
  for (const Text& entry : {extension, maximum, header, offset, Text(), Text(), gate}) {
    table.push_back(entry);
  }
}

// A search of the whole of `sectors`, General pass only.
inline Search search_of(int mode, const std::vector<Bytes>& sectors) {
  Search search;
  search.mode = mode;
  search.thorough = false;
  search.destination = "/d";
  search.results_folder = u"R";
  search.device.bytes = joined(sectors);
  search.sectors_val = sectors.size();
  return search;
}

// A search for photos that begin as kHeader does.
inline Search photo_search(const std::vector<Bytes>& sectors, const Text& maximum = u"100000") {
  Search search = search_of(0, sectors);
  add_record(search.general, u"JPG", maximum, u"AABB", u"1", u"170");
  return search;
}

// Whether a search of `mode` takes `sector` for the beginning of a file by one record.
inline bool starts_file(int mode, const Bytes& sector, const Text& header, const Text& offset,
                        const Text& gate) {
  Search search = search_of(mode, {sector});
  add_record(search.general, u"A", u"512", header, offset, gate);
  return !run(search).files.empty();
}

// The content of a file; nothing when there is no such file.
inline Bytes file_of(const Outcome& outcome, const std::string& path) {
  const auto found = outcome.files.find(path);
  return found == outcome.files.end() ? Bytes() : found->second;
}

inline std::vector<Event> events_of(const Outcome& outcome, EventKind kind) {
  std::vector<Event> found;
  for (const Event& event : outcome.events) {
    if (event.kind == kind) {
      found.push_back(event);
    }
  }
  return found;
}

// The names of the reported files, in their order.
inline std::vector<std::string> reported_names(const Outcome& outcome) {
  std::vector<std::string> names;
  for (const Event& event : events_of(outcome, EventKind::kReport)) {
    names.push_back(event.name);
  }
  return names;
}

inline std::vector<EventKind> kinds_of(const Outcome& outcome) {
  std::vector<EventKind> kinds;
  for (const Event& event : outcome.events) {
    kinds.push_back(event.kind);
  }
  return kinds;
}

}  // namespace plain
