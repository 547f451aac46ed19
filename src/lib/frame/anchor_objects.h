#ifndef KALDEX_FRAME_ANCHOR_OBJECTS_H
#define KALDEX_FRAME_ANCHOR_OBJECTS_H

#include <unordered_map>

#include "kaldex/model/anchor.h"
#include "kaldex/model/catalog.h"
#include "kaldex/model/database.h"

namespace kaldex {

// Which object each anchor of a layer shows, by the layer's association table, read once.
class AnchorObjects {
 public:
  // Both are borrowed; without one of them no anchor has an object.
  AnchorObjects(DataBase* dataBase, InfoLayer* layer);

  // False for an anchor that the table doesn't have, or whose object is gone.
  bool find(const Anchor& anchor, KaldexObject& object) const;

 private:
  struct Key {
    int object;
    int category;
  };
  DataBase* dataBase_;
  std::unordered_map<int, Key> keys_;
};

}  // namespace kaldex

#endif
