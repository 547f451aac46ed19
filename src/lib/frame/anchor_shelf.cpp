#include "lib/frame/anchor_shelf.h"

namespace kaldex {

namespace {

// In pieces, an anchor counting for as many as it takes the room of: some 20 MB.
constexpr std::size_t kMost = 400000;
constexpr std::size_t kAnchorSize = 16;

}  // namespace

AnchorShelf::Held* AnchorShelf::find(int anchorId) {
  const auto found = held_.find(anchorId);
  return found != held_.end() ? &found->second : nullptr;
}

AnchorShelf::Held& AnchorShelf::put(std::unique_ptr<Anchor> anchor, int objectId) {
  const Anchor& put = *anchor;
  const std::size_t size = kAnchorSize + put.points.size() + put.lines.size() + put.polygons.size();
  if (size_ + size > kMost) storeAll();
  Held& held = held_[put.id];
  held.objectId = objectId;
  held.anchor = std::move(anchor);
  for (const int id : put.points) held.pieces.insert(key(Kind::point, id));
  for (const int id : put.lines) held.pieces.insert(key(Kind::line, id));
  for (const int id : put.polygons) held.pieces.insert(key(Kind::polygon, id));
  size_ += size;
  return held;
}

bool AnchorShelf::take(Held& held, Kind kind, int pieceId) {
  if (!held.pieces.insert(key(kind, pieceId)).second) return false;
  ++size_;
  return true;
}

void AnchorShelf::storeAll() {
  for (const auto& [id, held] : held_) {
    if (held.changed) store_(*held.anchor, held.objectId);
  }
  held_.clear();
  size_ = 0;
}

}  // namespace kaldex
