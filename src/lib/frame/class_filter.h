#ifndef KALDEX_FRAME_CLASS_FILTER_H
#define KALDEX_FRAME_CLASS_FILTER_H

#include <unordered_set>

#include "kaldex/model/database.h"

namespace kaldex {

// Which classes an export takes: all, or those that the database reports in use in the layer.
class ClassFilter {
 public:
  ClassFilter(bool onlyUsed, DataBase* dataBase, InfoLayer* layer);

  bool takesAll() const { return takesAll_; }
  bool passes(int classId) const { return takesAll_ || used_.count(classId) != 0; }

 private:
  bool takesAll_;
  std::unordered_set<int> used_;
};

}  // namespace kaldex

#endif
