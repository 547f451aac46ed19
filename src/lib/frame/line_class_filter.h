#ifndef KALDEX_FRAME_LINE_CLASS_FILTER_H
#define KALDEX_FRAME_LINE_CLASS_FILTER_H

#include <vector>

#include "kaldex/model/vector.h"
#include "lib/frame/class_filter.h"

namespace kaldex {

// Which lines an export by class takes: those of a class that it wants, and the borders of polygons of one.
class LineClassFilter {
 public:
  // Both are borrowed.
  LineClassFilter(const ClassFilter& filter, Vector& vector) : filter_(filter), vector_(vector) {}

  bool passes(const Line& line);

 private:
  enum class Verdict : signed char { unknown, passes, fails };

  bool polygonPasses(int id);

  const ClassFilter& filter_;
  Vector& vector_;
  std::vector<Verdict> polygons_;  // a polygon bounds several lines, so its answer is kept
};

}  // namespace kaldex

#endif
