#include "support/Card.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>

namespace norvo::test {
namespace {

constexpr std::byte filler{0x5A};
constexpr std::size_t number_at = 100;

void begin_with(std::span<std::byte> sector, std::initializer_list<unsigned> header) {
  std::transform(header.begin(), header.end(), sector.begin(),
                 [](unsigned byte) { return static_cast<std::byte>(byte); });
}

void draw(std::span<std::byte> sector, char letter, std::uint64_t number) {
  std::fill(sector.begin(), sector.end(), filler);
  std::memcpy(sector.data() + number_at, &number, sizeof number);
  if (letter == 'J') begin_with(sector, {0xFF, 0xD8, 0xFF, 0xE0});
  if (letter == 'P') begin_with(sector, {0x89, 0x50, 0x4E, 0x47});
  if (letter == 'G') begin_with(sector, {0x47, 0x49, 0x46, 0x38});
  if (letter == 'z') std::fill(sector.begin(), sector.end(), std::byte{0});
}

}  // namespace

Card::Card(const std::string& drawing) {
  for (const char letter : drawing) {
    if (letter == 'x') unreadable_.push_back(sectors_.size());
    std::vector<std::byte> sector(sector_size);
    draw(sector, letter, sectors_.size());
    sectors_.push_back(std::move(sector));
  }
}

void Card::put_on(FakeMedium& medium, std::uint64_t start, std::uint64_t behind) const {
  medium.made_sectors = start + size() + behind;
  medium.sector = [this, start](std::uint64_t number, std::span<std::byte> sector) {
    if (number >= start && number - start < size()) {
      std::copy(sectors_[number - start].begin(), sectors_[number - start].end(), sector.begin());
    } else {
      draw(sector, 'J', ~number);
    }
  };
  for (const std::size_t number : unreadable_) medium.unreadable.insert(start + number);
}

std::string Card::describe(std::span<const std::byte> bytes) const {
  std::string names;
  for (std::size_t at = 0; at < bytes.size(); at += sector_size) {
    if (at != 0) names += ' ';
    names += name_of(bytes.subspan(at, std::min(sector_size, bytes.size() - at)));
  }
  return names;
}

std::string Card::name_of(std::span<const std::byte> sector) const {
  const auto is_zero = [](std::byte byte) { return byte == std::byte{0}; };
  if (sector.size() == sector_size && std::all_of(sector.begin(), sector.end(), is_zero)) {
    return "z";
  }
  const auto at = std::find_if(sectors_.begin(), sectors_.end(), [sector](const auto& own) {
    return std::equal(own.begin(), own.end(), sector.begin(), sector.end());
  });
  return at == sectors_.end() ? "?" : std::to_string(at - sectors_.begin());
}

}  // namespace norvo::test
