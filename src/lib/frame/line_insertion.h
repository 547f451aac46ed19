#ifndef KALDEX_FRAME_LINE_INSERTION_H
#define KALDEX_FRAME_LINE_INSERTION_H

#include <memory>
#include <vector>

#include "kaldex/model/vector.h"

namespace kaldex {

// Where the lines of an import end up: in the vector, unless they are too little to be lines. Keeps the
// account of that for the job report.
class LineInsertion {
 public:
  explicit LineInsertion(Vector& vector) : vector_(vector) {}
  LineInsertion(const LineInsertion&) = delete;
  LineInsertion& operator=(const LineInsertion&) = delete;
  // Tells the job report.
  ~LineInsertion();

  // A line that was read, and its points as pairs in the vector's plane; `placed` is false when one of them
  // has no place there. False only when the vector refused the line.
  bool take(std::unique_ptr<Line> line, const std::vector<double>& xy, bool placed);

 private:
  bool isWorthInserting(const std::vector<double>& xy, bool placed);

  Vector& vector_;
  long long read_ = 0;
  long long written_ = 0;
  long long fewPoints_ = 0;
  long long degenerate_ = 0;
  long long refused_ = 0;
  bool unplaced_ = false;
};

}  // namespace kaldex

#endif
