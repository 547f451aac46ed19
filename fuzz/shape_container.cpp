#include "fuzz/shape_container.h"

#include <algorithm>
#include <random>

// The fuzzer's own mutations.
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t limit);

namespace kaldex::fuzz {

namespace {

constexpr std::size_t kFileHead = 100;
constexpr std::size_t kRecordHead = 8;
constexpr std::size_t kLengthInHead = 24;
constexpr std::size_t kLongest = 0xffff;

void putWords(std::string& file, std::size_t at, std::size_t bytes) {
  const auto words = static_cast<std::uint32_t>(bytes / 2);
  for (std::size_t i = 0; i < 4; ++i) file[at + i] = static_cast<char>(words >> (24 - 8 * i));
}

std::uint32_t wordsAt(const std::string& file, std::size_t at) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) value = value << 8 | static_cast<unsigned char>(file[at + i]);
  return value;
}

void mendLastRecord(std::string& main) {
  std::size_t at = kFileHead;
  while (at + kRecordHead < main.size()) {
    const std::uint64_t next = at + kRecordHead + 2 * std::uint64_t{wordsAt(main, at + 4)};
    if (next + kRecordHead >= main.size()) {
      putWords(main, at + 4, main.size() - at - kRecordHead);
      return;
    }
    at = static_cast<std::size_t>(next);
  }
}

// Which file a mutation touches: mostly those with the most to get wrong.
ShapeContainer::File touched(std::minstd_rand& random) {
  static constexpr ShapeContainer::File kShares[] = {
      ShapeContainer::shp, ShapeContainer::shp, ShapeContainer::shp, ShapeContainer::shp, ShapeContainer::shp,
      ShapeContainer::shp, ShapeContainer::dbf, ShapeContainer::dbf, ShapeContainer::dbf, ShapeContainer::dbf,
      ShapeContainer::dbf, ShapeContainer::shx, ShapeContainer::shx, ShapeContainer::cpg};
  return kShares[random() % (sizeof kShares / sizeof *kShares)];
}

void mutateFile(std::string& file, std::size_t limit) {
  std::string room = file;
  room.resize(std::max(limit, file.size()));
  auto* bytes = reinterpret_cast<std::uint8_t*>(&room[0]);
  room.resize(LLVMFuzzerMutate(bytes, file.size(), room.size()));
  file = room;
}

std::size_t store(const ShapeContainer& container, std::uint8_t* data, std::size_t limit) {
  const std::vector<std::uint8_t> packed = container.pack(limit);
  std::copy(packed.begin(), packed.end(), data);
  return packed.size();
}

// Makes the lengths that the heads of .shp, .shx and of the .shp's last record tell fit the files, so that a
// reader gets beyond them.
void mendLengths(ShapeContainer& container) {
  for (const auto which : {ShapeContainer::shp, ShapeContainer::shx}) {
    std::string& file = container.file[which];
    if (file.size() >= kFileHead) putWords(file, kLengthInHead, file.size());
  }
  mendLastRecord(container.file[ShapeContainer::shp]);
}

}  // namespace

ShapeContainer ShapeContainer::unpack(const std::uint8_t* data, std::size_t size) {
  ShapeContainer result;
  const auto byteAt = [&](std::size_t at) { return at < size ? data[at] : std::uint8_t{0}; };
  result.job = byteAt(0);
  result.settings = byteAt(1);
  result.answers = byteAt(2);
  std::size_t at = std::min(kHead, size);
  for (std::size_t i = 0; i < files; ++i) {
    const std::size_t told = byteAt(3 + 2 * i) + std::size_t{256} * byteAt(4 + 2 * i);
    const std::size_t length = std::min(told, size - at);
    result.file[i].assign(reinterpret_cast<const char*>(data) + at, length);
    at += length;
  }
  return result;
}

std::vector<std::uint8_t> ShapeContainer::pack(std::size_t limit) const {
  std::vector<std::uint8_t> result{job, settings, answers};
  for (const std::string& one : file) {
    if (one.size() > kLongest) return {};
    result.push_back(static_cast<std::uint8_t>(one.size()));
    result.push_back(static_cast<std::uint8_t>(one.size() >> 8));
  }
  for (const std::string& one : file) result.insert(result.end(), one.begin(), one.end());
  if (result.size() > limit) return {};
  return result;
}

std::size_t mutateShapefile(std::uint8_t* data, std::size_t size, std::size_t limit, unsigned seed) {
  std::minstd_rand random(seed);
  ShapeContainer container = ShapeContainer::unpack(data, size);
  for (std::uint8_t* choice : {&container.job, &container.settings, &container.answers}) {
    if (random() % 16 == 0) *choice = static_cast<std::uint8_t>(random());
  }
  const std::size_t used = container.pack(SIZE_MAX).size();
  std::string& file = container.file[touched(random)];
  const std::size_t room = limit > used ? limit - used : 0;
  mutateFile(file, std::min(file.size() + room, kLongest));
  if (random() % 2 == 0) mendLengths(container);
  const std::size_t stored = store(container, data, limit);
  return stored != 0 ? stored : LLVMFuzzerMutate(data, size, limit);
}

}  // namespace kaldex::fuzz
