#ifndef KALDEX_MODEL_BOX_TREE_H
#define KALDEX_MODEL_BOX_TREE_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "kaldex/model/geometry.h"

namespace kaldex {

/// A box in single precision, rounded outwards, as SQLite's R*Tree holds it.
struct FloatBox {
  float x1, x2, y1, y2;

  static FloatBox around(const Box& box);
  void extend(const FloatBox& other);
  bool meets(const FloatBox& other) const {
    return x1 <= other.x2 && other.x1 <= x2 && y1 <= other.y2 && other.y1 <= y2;
  }
};

struct BoxEntry {
  std::int64_t id;
  FloatBox box;
};

/// Entries of a tree in sort-tile-recursive order (Leutenegger, Lopez and Edgington 1997): sorted by the
/// centre's x, cut into vertical slices, each slice sorted by the centre's y. Every `capacity` consecutive
/// entries make a leaf.
void sortTileRecursive(std::vector<BoxEntry>& entries, std::size_t capacity);

/// A set of boxes in memory that can be asked while it grows: packed trees of falling size (a log-structured
/// merge, O'Neil and others 1996), and a few latest entries that are searched one by one. Nothing is packed
/// before it is first asked.
class BoxTree {
 public:
  void add(std::int64_t id, const Box& box) { latest_.push_back({id, FloatBox::around(box)}); }
  /// Append the identifiers of the boxes that meet `box`, in no order; one that was added twice may come
  /// twice.
  void find(const Box& box, std::vector<std::int64_t>& ids);
  std::size_t size() const;
  void clear();
  /// All entries, for the caller to keep; the tree is empty afterwards.
  std::vector<BoxEntry> take();

 private:
  struct Packed {
    explicit Packed(std::vector<BoxEntry> all);
    void search(std::size_t level, std::size_t node, const FloatBox& box,
                std::vector<std::int64_t>& ids) const;

    std::vector<BoxEntry> entries;
    std::vector<std::vector<FloatBox>> levels;  ///< boxes of the nodes, the leaves' first
  };
  void pack();

  static constexpr std::size_t capacity = 16;
  static constexpr std::size_t patience = 128;  ///< latest entries that are still searched one by one

  std::vector<BoxEntry> latest_;
  std::vector<Packed> packed_;  ///< each less than half as large as the one before
};

}  // namespace kaldex

#endif
