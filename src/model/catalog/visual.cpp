#include "kaldex/model/visual.h"

inline namespace kaldex_v1 {

void Color::Init(const QString& name, int index, int red, int green, int blue) {
  this->name = name;
  this->index = index;
  this->red = static_cast<short>(red);
  this->green = static_cast<short>(green);
  this->blue = static_cast<short>(blue);
}

int GeneralVisual::Init(const GeneralVisual* source) {
  if (source == nullptr) return 0;
  point = source->point;
  line = source->line;
  polygon = source->polygon;
  text = source->text;
  return 1;
}

}  // namespace kaldex_v1
