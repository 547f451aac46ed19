#include "lib/legacy/record_search.h"

#include <algorithm>

#include "base/byte_order.h"

namespace kaldex {

namespace {
constexpr int kNone = -1;
}  // namespace

RecordTable::RecordTable(FileWindow& file, const RecordLayout& layout, int limit)
    : size_(layout.record), id_(layout.id) {
  if (limit <= 0 || file.size() <= layout.header) return;
  const std::uint64_t inFile = (file.size() - layout.header) / size_;
  const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(inFile, static_cast<unsigned>(limit)));
  bytes_.resize(count * size_);
  const std::size_t got = file.read(layout.header, bytes_.data(), bytes_.size());
  bytes_.resize(got / size_ * size_);
}

const unsigned char* RecordTable::find(int index, int id, std::uint16_t endMark) {
  const std::uint32_t key = std::uint32_t{endMark} << 16 | static_cast<std::uint16_t>(id);
  const auto known = known_.find(key);
  const int place = known != known_.end() ? known->second : seek(index, id, endMark);
  if (known == known_.end()) known_.emplace(key, place);
  return place == kNone ? nullptr : at(place);
}

int RecordTable::seek(int index, int id, std::uint16_t endMark) const {
  if (index >= static_cast<int>(bytes_.size() / size_)) return kNone;
  for (; index >= 0; --index) {
    const auto found = loadLittle<std::uint16_t>(at(index) + id_);
    if (found == endMark) return kNone;
    if (id >= found) return id == found ? index : kNone;
  }
  return kNone;
}

}  // namespace kaldex
