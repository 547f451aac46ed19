#ifndef KALDEX_FRAME_ANCHOR_SHELF_H
#define KALDEX_FRAME_ANCHOR_SHELF_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <unordered_set>

#include "kaldex/model/anchor.h"

namespace kaldex {

// Anchors that pieces are being added to, in whatever order. Fetching and storing an anchor for each of its
// pieces would take time with the square of their number; here it is done once, unless more is held than
// memory should go into.
class AnchorShelf {
 public:
  enum class Kind { point, line, polygon };

  struct Held {
    std::unique_ptr<Anchor> anchor;
    int objectId = 0;
    bool changed = false;  // is to be stored

   private:
    friend class AnchorShelf;
    std::unordered_set<std::int64_t> pieces;
  };
  using Store = std::function<void(const Anchor& anchor, int objectId)>;

  explicit AnchorShelf(Store store) : store_(std::move(store)) {}

  // Null when the anchor is not held.
  Held* find(int anchorId);
  // What was held before may be stored and dropped.
  Held& put(std::unique_ptr<Anchor> anchor, int objectId);
  // Note that the anchor has a piece; false when it had it already. The caller puts it into the anchor.
  bool take(Held& held, Kind kind, int pieceId);
  // Stores what is changed and drops all.
  void storeAll();

 private:
  static std::int64_t key(Kind kind, int id) {
    return (static_cast<std::int64_t>(kind) << 32) | static_cast<std::uint32_t>(id);
  }

  Store store_;
  std::map<int, Held> held_;
  std::size_t size_ = 0;
};

}  // namespace kaldex

#endif
