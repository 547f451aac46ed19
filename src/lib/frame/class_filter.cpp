#include "lib/frame/class_filter.h"

namespace kaldex {

ClassFilter::ClassFilter(bool onlyUsed, DataBase* dataBase, InfoLayer* layer) : takesAll_(!onlyUsed) {
  if (takesAll_ || dataBase == nullptr || layer == nullptr || layer->category() == nullptr) return;
  for (const GeoClass* geoClass : layer->category()->classes) {
    if (dataBase->classInLayer(*layer, geoClass->id, 0)) used_.insert(geoClass->id);
  }
}

}  // namespace kaldex
