#include "lib/shapefile/shape_index.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "base/byte_order.h"

namespace kaldex {

namespace {

constexpr std::uint64_t kHeaderBytes = 100;
constexpr std::uint64_t kEntryBytes = 8;
constexpr std::uint64_t kRecordHeadBytes = 8;
constexpr std::int32_t kFileCode = 9994;
constexpr std::uint64_t kSampled = 64;
constexpr std::int32_t kShortestContent = 2;  // words: the shape type alone

struct Entry {
  std::uint64_t offset = 0;  // bytes, of the record's head
  std::int32_t words = 0;    // length of the content
};

struct RecordHead {
  std::int32_t number = 0;
  std::int32_t words = 0;
};

bool readHead(FileWindow& main, std::uint64_t offset, RecordHead& head) {
  const unsigned char* bytes = main.view(offset, kRecordHeadBytes);
  if (bytes == nullptr) return false;
  head.number = loadBig<std::int32_t>(bytes);
  head.words = loadBig<std::int32_t>(bytes + 4);
  const std::uint64_t room = main.size() - offset - kRecordHeadBytes;
  return head.words >= kShortestContent && 2 * static_cast<std::uint64_t>(head.words) <= room;
}

void appendEntry(std::vector<unsigned char>& bytes, const Entry& entry) {
  const std::size_t at = bytes.size();
  bytes.resize(at + kEntryBytes);
  storeBig(bytes.data() + at, static_cast<std::int32_t>(entry.offset / 2));
  storeBig(bytes.data() + at + 4, entry.words);
}

std::vector<unsigned char> indexHeader(FileWindow& main) {
  std::vector<unsigned char> header(kHeaderBytes);
  main.read(0, header.data(), header.size());
  return header;
}

void storeLength(std::vector<unsigned char>& bytes) {
  storeBig(bytes.data() + 24, static_cast<std::int32_t>(bytes.size() / 2));
}

// The index that a walk from record to record gives.
std::vector<unsigned char> walk(FileWindow& main, std::uint64_t& end) {
  std::vector<unsigned char> bytes = indexHeader(main);
  constexpr std::uint64_t kLastOffset = 2 * static_cast<std::uint64_t>(INT32_MAX);
  Entry entry;
  entry.offset = kHeaderBytes;
  RecordHead head;
  while (entry.offset <= kLastOffset && readHead(main, entry.offset, head)) {
    entry.words = head.words;
    appendEntry(bytes, entry);
    entry.offset += kRecordHeadBytes + 2 * static_cast<std::uint64_t>(head.words);
  }
  end = entry.offset;
  storeLength(bytes);
  return bytes;
}

class IndexCheck {
 public:
  IndexCheck(FileWindow& main, FileWindow& index) : main_(main), index_(index) {}

  bool hasHead() {
    const unsigned char* bytes = index_.view(0, kHeaderBytes);
    if (bytes == nullptr || loadBig<std::int32_t>(bytes) != kFileCode) return false;
    declaredBytes_ = 2 * static_cast<std::int64_t>(loadBig<std::int32_t>(bytes + 24));
    return true;
  }
  bool hasDeclaredSize() const { return declaredBytes_ == static_cast<std::int64_t>(index_.size()); }

  // Whether the entries, in their order, cover the main file from its first record to its end, and a sample
  // of them leads to records. Spares the heads of all records, which would mean to read the whole file once
  // more.
  bool covers() {
    const std::uint64_t entries = count();
    const std::uint64_t stride = std::max<std::uint64_t>(entries / kSampled, 1);
    std::uint64_t next = kHeaderBytes;
    for (std::uint64_t i = 0; i < entries; ++i) {
      const Entry entry = entryAt(i);
      if (entry.offset != next || entry.words < kShortestContent) return false;
      if (i % stride == 0 && !leadsToRecord(entry, i, 0)) return false;
      next += kRecordHeadBytes + 2 * static_cast<std::uint64_t>(entry.words);
    }
    return next == main_.size();
  }

  // Counts the entries that lead to a record; the others are set to no length in `mended`.
  void run() {
    mended_.resize(kHeaderBytes);
    index_.read(0, mended_.data(), kHeaderBytes);
    std::uint64_t previous = 0;
    const std::uint64_t entries = count();
    for (std::uint64_t i = 0; i < entries; ++i) {
      Entry entry = entryAt(i);
      if (leadsToRecord(entry, i, previous)) {
        ++good_;
        previous = entry.offset;
      } else {
        ++bad_;
        entry = {kHeaderBytes, 0};
      }
      appendEntry(mended_, entry);
    }
    storeLength(mended_);
  }
  std::uint64_t good() const { return good_; }
  std::uint64_t bad() const { return bad_; }
  std::vector<unsigned char> takeMended() { return std::move(mended_); }

 private:
  std::uint64_t count() const { return (index_.size() - kHeaderBytes) / kEntryBytes; }
  Entry entryAt(std::uint64_t number) {
    Entry entry;
    const unsigned char* bytes = index_.view(kHeaderBytes + number * kEntryBytes, kEntryBytes);
    if (bytes == nullptr) return entry;
    const auto offset = loadBig<std::int32_t>(bytes);
    if (offset >= 0) entry.offset = 2 * static_cast<std::uint64_t>(offset);
    entry.words = loadBig<std::int32_t>(bytes + 4);
    return entry;
  }
  // A record's number isn't always written as it should be, so it only counts where the order doesn't speak
  // for it.
  bool leadsToRecord(const Entry& entry, std::uint64_t number, std::uint64_t previous) {
    RecordHead head;
    if (entry.offset < kHeaderBytes || !readHead(main_, entry.offset, head) || head.words != entry.words)
      return false;
    return entry.offset > previous || static_cast<std::uint64_t>(head.number) == number + 1;
  }

  FileWindow& main_;
  FileWindow& index_;
  std::int64_t declaredBytes_ = 0;
  std::uint64_t good_ = 0;
  std::uint64_t bad_ = 0;
  std::vector<unsigned char> mended_;
};

void takeWalk(ShapeIndex& result, FileWindow& main) {
  std::uint64_t end = 0;
  result.bytes = walk(main, end);
  // A copy that broke off between two records shows in the header only.
  const std::int32_t words = loadBig<std::int32_t>(indexHeader(main).data() + 24);
  const std::uint64_t size = std::max(main.size(), 2 * static_cast<std::uint64_t>(std::max(words, 0)));
  result.unread = size - std::min(size, end);
}

std::uint64_t entryCount(const std::vector<unsigned char>& bytes) {
  return (bytes.size() - kHeaderBytes) / kEntryBytes;
}

}  // namespace

ShapeIndex checkShapeIndex(FileWindow& main, FileWindow* index) {
  ShapeIndex result;
  if (main.size() < kHeaderBytes) return result;
  if (index == nullptr) {
    result.trouble = ShapeIndex::Trouble::missing;
    takeWalk(result, main);
    return result;
  }
  IndexCheck check(main, *index);
  if (!check.hasHead()) {
    result.trouble = ShapeIndex::Trouble::short_;
    takeWalk(result, main);
    return result;
  }
  if (check.hasDeclaredSize() && check.covers()) return result;
  check.run();
  if (check.bad() == 0 && check.hasDeclaredSize()) return result;
  result.trouble = check.bad() == 0 ? ShapeIndex::Trouble::short_ : ShapeIndex::Trouble::inconsistent;
  takeWalk(result, main);
  // A walk ends at the first damaged head, behind which an index may still know good records.
  if (entryCount(result.bytes) < check.good()) {
    result.bytes = check.takeMended();
    result.unread = 0;
  }
  return result;
}

}  // namespace kaldex
