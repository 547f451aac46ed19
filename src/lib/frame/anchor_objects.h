#ifndef KALDEX_FRAME_ANCHOR_OBJECTS_H
#define KALDEX_FRAME_ANCHOR_OBJECTS_H

#include <unordered_map>

#include "kaldex/model/database.h"

namespace kaldex {

// Says which object of the database an anchor of a layer stands for, by the layer's association table.
class AnchorObjects {
 public:
  // Both are borrowed and may be null: then nothing is known.
  AnchorObjects(DataBase* dataBase, InfoLayer* layer);

  bool isEmpty() const { return objects_.empty(); }
  // False when the anchor has none, or none that still exists. Name and label come without blanks around them.
  // `category`, unless null, gets the object's.
  bool find(int anchor, KaldexObject& object, Category** category = nullptr) const;

 private:
  struct Key {
    int object;
    int category;
  };

  DataBase* dataBase_;
  std::unordered_map<int, Key> objects_;  // by anchor
};

}  // namespace kaldex

#endif
