#include "RandomDevice.h"

#include <algorithm>
#include <string>

namespace differential {
namespace {

using plain::Bytes;
using plain::Device;
using plain::Text;

constexpr std::size_t kSector = 512;

// A header to be planted: its bytes, and where its record looks for it.
struct Plant {
  Bytes bytes;
  bool anywhere = false;
  long position = 0;
};

unsigned digit_value(char16_t digit) {
  const unsigned low = digit & 0xFFU;
  if (low >= '0' && low <= '9') {
    return low - '0';
  }
  const bool is_letter = (low >= 'A' && low <= 'F') || (low >= 'a' && low <= 'f');
  return is_letter ? (low & 7U) + 9 : 0;
}

Plant plant_of(const std::vector<Text>& table, std::size_t record) {
  Plant plant;
  const Text& header = table[record + 2];
  for (std::size_t i = 0; i + 1 < header.size(); i += 2) {
    plant.bytes.push_back(
        static_cast<std::uint8_t>(digit_value(header[i]) * 16 + digit_value(header[i + 1])));
  }
  const Text& offset = table[record + 3];
  plant.anywhere = offset == u"nn";
  const std::string digits(offset.begin(), offset.end());
  plant.position = plant.anywhere ? 0 : std::strtol(digits.c_str(), nullptr, 10) - 1;
  return plant;
}

std::vector<Plant> plants_of(const std::vector<const std::vector<Text>*>& tables) {
  std::vector<Plant> plants;
  for (const std::vector<Text>* table : tables) {
    for (std::size_t record = 0; record + 7 <= table->size(); record += 7) {
      plants.push_back(plant_of(*table, record));
    }
  }
  return plants;
}

class SectorMaker {
 public:
  SectorMaker(SplitMix& random, const Alphabet& alphabet, std::vector<Plant> plants)
      : random_(random), alphabet_(alphabet), plants_(std::move(plants)) {}

  Bytes make(const Bytes& previous) {
    const std::uint64_t dice = random_.between(0, 99);
    if (dice < 18) {
      return Bytes(kSector, 0);
    }
    if (dice < 28) {
      return previous;
    }
    Bytes sector = background();
    if (dice < 65 && !plants_.empty()) {
      plant_header(sector);
    }
    return sector;
  }

 private:
  Bytes background() {
    const std::uint64_t dice = random_.between(0, 3);
    const auto filler = static_cast<std::uint8_t>(dice == 0 ? random_.one_of(alphabet_)
                                                            : random_.between(0xE0, 0xEF));
    Bytes sector(kSector, filler);
    const std::uint64_t random_bytes = dice == 1 ? kSector : dice == 2 ? random_.between(1, 24) : 0;
    for (std::uint64_t i = 0; i < random_bytes; ++i) {
      sector[i] = random_.one_of(alphabet_);
    }
    return sector;
  }

  void plant_header(Bytes& sector) {
    const Plant& plant = random_.one_of(plants_);
    long position = plant.position;
    if (plant.anywhere && !plant.bytes.empty() && random_.percent(60)) {
      const std::uint64_t run = random_.between(1, random_.percent(10) ? 515 : 9);
      position = static_cast<long>(run);
      for (long i = 0; i < std::min<long>(position, kSector); ++i) {
        sector[static_cast<std::size_t>(i)] = plant.bytes.front();
      }
    }
    if (random_.percent(5)) {
      position += static_cast<long>(random_.between(0, 2)) - 1;
    }
    const std::size_t cut = random_.percent(8) ? random_.next() % (plant.bytes.size() + 1) : 0;
    for (std::size_t i = 0; i + cut < plant.bytes.size(); ++i) {
      const long at = position + static_cast<long>(i);
      if (at >= 0 && at < static_cast<long>(kSector)) {
        sector[static_cast<std::size_t>(at)] = plant.bytes[i];
      }
    }
  }

  SplitMix& random_;
  const Alphabet& alphabet_;
  std::vector<Plant> plants_;
};

std::size_t random_sector_count(SplitMix& random) {
  const std::uint64_t dice = random.between(0, 99);
  if (dice < 70) {
    return random.between(1, 40);
  }
  if (dice < 90) {
    return random.between(41, 200);
  }
  return dice < 95 ? random.between(201, 600) : random.between(601, 1700);
}

// Sectors in runs: a long drive would otherwise hold no file longer than a few sectors.
Bytes random_sectors(SplitMix& random, SectorMaker& maker, std::size_t count) {
  Bytes bytes;
  Bytes previous(kSector, 0);
  while (bytes.size() < count * kSector) {
    previous = maker.make(previous);
    std::uint64_t run = 1;
    if (random.percent(count > 500 ? 15 : 6)) {
      run = random.between(2, count > 500 ? 900 : 20);
    }
    for (; run > 0 && bytes.size() < count * kSector; --run) {
      bytes.insert(bytes.end(), previous.begin(), previous.end());
    }
  }
  return bytes;
}

void add_unreadable(SplitMix& random, std::uint64_t count, Device& device) {
  const std::uint64_t spots = random.between(1, 3);
  for (std::uint64_t i = 0; i < spots; ++i) {
    const std::vector<std::uint64_t> places = {0, count - 1, random.next() % count,
                                               random.next() % count, random.between(505, 520)};
    const std::uint64_t first = random.one_of(places);
    const std::uint64_t run = random.percent(60) ? 1 : random.between(2, 12);
    for (std::uint64_t sector = first; sector < first + run; ++sector) {
      device.unreadable.insert(sector);
    }
  }
}

void spoil(SplitMix& random, std::uint64_t count, Device& device) {
  device.seek_past_end_fails = random.percent(50);
  if (random.percent(25)) {
    add_unreadable(random, count, device);
  }
  if (random.percent(12)) {
    device.bytes.resize(device.bytes.size() - random.between(1, 511));
  }
  if (random.percent(3)) {
    device.gone_after_sector = random.next() % (count + 2);
  }
  if (random.percent(2)) {
    static const std::vector<int> errors = {1, 13, 2, 5, 16, 19};
    device.openable = false;
    device.open_errno = random.one_of(errors);
  }
}

}  // namespace

Device random_device(SplitMix& random, const Alphabet& alphabet,
                     const std::vector<const std::vector<Text>*>& tables) {
  SectorMaker maker(random, alphabet, plants_of(tables));
  const std::size_t count = random_sector_count(random);
  Device device;
  device.bytes = random_sectors(random, maker, count);
  spoil(random, count, device);
  return device;
}

}  // namespace differential
