#include "fuzz/shape_container.h"

#include <algorithm>

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

void mendLengths(ShapeContainer& container) {
  for (const auto which : {ShapeContainer::shp, ShapeContainer::shx}) {
    std::string& file = container.file[which];
    if (file.size() >= kFileHead) putWords(file, kLengthInHead, file.size());
  }
  mendLastRecord(container.file[ShapeContainer::shp]);
}

}  // namespace kaldex::fuzz
