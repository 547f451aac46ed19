#include "model/database/box_tree.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kaldex {

namespace {

float roundedDown(double value) {
  const float rounded = static_cast<float>(value);
  return rounded > value ? std::nextafter(rounded, -std::numeric_limits<float>::infinity()) : rounded;
}

float roundedUp(double value) {
  const float rounded = static_cast<float>(value);
  return rounded < value ? std::nextafter(rounded, std::numeric_limits<float>::infinity()) : rounded;
}

std::size_t divideUp(std::size_t a, std::size_t b) {
  return (a + b - 1) / b;
}

bool byX(const BoxEntry& a, const BoxEntry& b) {
  return a.box.x1 + a.box.x2 < b.box.x1 + b.box.x2;
}
bool byY(const BoxEntry& a, const BoxEntry& b) {
  return a.box.y1 + a.box.y2 < b.box.y1 + b.box.y2;
}

}  // namespace

FloatBox FloatBox::around(const Box& box) {
  return {roundedDown(box.x1), roundedUp(box.x2), roundedDown(box.y1), roundedUp(box.y2)};
}

void FloatBox::extend(const FloatBox& other) {
  x1 = std::min(x1, other.x1);
  x2 = std::max(x2, other.x2);
  y1 = std::min(y1, other.y1);
  y2 = std::max(y2, other.y2);
}

void sortTileRecursive(std::vector<BoxEntry>& entries, std::size_t capacity) {
  const std::size_t leaves = divideUp(entries.size(), capacity);
  const std::size_t slices = static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(leaves))));
  if (slices == 0) return;
  const std::size_t sliceSize = divideUp(leaves, slices) * capacity;
  std::sort(entries.begin(), entries.end(), byX);
  for (std::size_t start = 0; start < entries.size(); start += sliceSize) {
    const std::size_t end = std::min(start + sliceSize, entries.size());
    std::sort(entries.begin() + static_cast<std::ptrdiff_t>(start),
              entries.begin() + static_cast<std::ptrdiff_t>(end), byY);
  }
}

std::size_t BoxTree::size() const {
  std::size_t size = latest_.size();
  for (const Packed& tree : packed_) size += tree.entries.size();
  return size;
}

void BoxTree::clear() {
  latest_.clear();
  packed_.clear();
}

std::vector<BoxEntry> BoxTree::take() {
  std::vector<BoxEntry> entries;
  if (!packed_.empty()) entries = std::move(packed_.front().entries);
  for (std::size_t i = 1; i < packed_.size(); ++i) {
    entries.insert(entries.end(), packed_[i].entries.begin(), packed_[i].entries.end());
  }
  if (entries.empty()) {
    entries.swap(latest_);
  } else {
    entries.insert(entries.end(), latest_.begin(), latest_.end());
  }
  clear();
  return entries;
}

BoxTree::Packed::Packed(std::vector<BoxEntry> all) : entries(std::move(all)) {
  sortTileRecursive(entries, capacity);
  std::vector<FloatBox> boxes;
  boxes.reserve(entries.size());
  for (const BoxEntry& entry : entries) boxes.push_back(entry.box);
  do {
    std::vector<FloatBox> nodes;
    nodes.reserve(divideUp(boxes.size(), capacity));
    for (std::size_t i = 0; i < boxes.size(); ++i) {
      if (i % capacity == 0) nodes.push_back(boxes[i]);
      nodes.back().extend(boxes[i]);
    }
    levels.push_back(nodes);
    boxes.swap(nodes);
  } while (boxes.size() > 1);
}

void BoxTree::Packed::search(std::size_t level, std::size_t node, const FloatBox& box,
                             std::vector<std::int64_t>& ids) const {
  if (!levels[level][node].meets(box)) return;
  const std::size_t first = node * capacity;
  if (level == 0) {
    const std::size_t end = std::min(first + capacity, entries.size());
    for (std::size_t i = first; i < end; ++i) {
      if (entries[i].box.meets(box)) ids.push_back(entries[i].id);
    }
    return;
  }
  const std::size_t end = std::min(first + capacity, levels[level - 1].size());
  for (std::size_t child = first; child < end; ++child) search(level - 1, child, box, ids);
}

void BoxTree::pack() {
  std::vector<BoxEntry> entries;
  entries.swap(latest_);
  while (!packed_.empty() && packed_.back().entries.size() < 2 * entries.size()) {
    const std::vector<BoxEntry>& smaller = packed_.back().entries;
    entries.insert(entries.end(), smaller.begin(), smaller.end());
    packed_.pop_back();
  }
  packed_.emplace_back(std::move(entries));
}

void BoxTree::find(const Box& box, std::vector<std::int64_t>& ids) {
  if (latest_.size() > patience) pack();
  const FloatBox wanted = FloatBox::around(box);
  for (const Packed& tree : packed_) tree.search(tree.levels.size() - 1, 0, wanted, ids);
  for (const BoxEntry& entry : latest_) {
    if (entry.box.meets(wanted)) ids.push_back(entry.id);
  }
}

}  // namespace kaldex
