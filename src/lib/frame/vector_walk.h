#ifndef KALDEX_FRAME_VECTOR_WALK_H
#define KALDEX_FRAME_VECTOR_WALK_H

#include <functional>
#include <memory>

#include "base/text_output.h"
#include "kaldex/model/vector.h"
#include "lib/frame/line_class_filter.h"
#include "lib/frame/progress_scope.h"

namespace kaldex {

// The walks of text exports over a vector: which of its lines, polygons and points are written, in which
// order, and the account of it for the job report. How a record is written is the format's. A walk steps the
// progress report, and ends early when the user has cancelled or a write has failed.
class VectorWalk {
 public:
  // Lines are lent for the length of a call.
  using LineWriter = std::function<void(const Line&)>;

  // False when the user has cancelled.
  bool complete() const { return !progress_.cancelled(); }

 protected:
  // The vector is borrowed. `records` are those that step the progress report.
  VectorWalk(Vector& vector, long long records) : vector_(vector), progress_(progressSteps(records)) {}
  ~VectorWalk() = default;

  static bool isLong(const Line& line) { return line.Size() >= 2; }
  bool goesOn(const TextOutput& out) const { return out.ok() && complete(); }
  void eachLine(const TextOutput& out, const LineWriter& visit);

  Vector& vector_;
  ProgressScope progress_;
};

// For exports of lines, contours or polygon outlines: one walk an object.
class LineWalk : public VectorWalk {
 public:
  // All are borrowed. The database says which classes are in use in the layer.
  LineWalk(Vector& vector, bool onlyUsedClasses, DataBase* dataBase, InfoLayer* layer, const TextOutput& out);
  // Tells the job report.
  ~LineWalk();

  using Wanted = std::function<bool(const Line&)>;

  // Each line of two points or more that is wanted; false when the user has cancelled.
  bool lines(const Wanted& wanted, const LineWriter& write);
  // Whether the line is of a wanted class, or borders a polygon of one. One that isn't counts as left out.
  bool wantsClass(const Line& line) { return counted(lineFilter_.passes(line)); }

  // Outlines of polygons of wanted classes, then lines of such that bound none, the only ones that count as
  // read; false when the user has cancelled.
  bool polygons(const LineWriter& write);

 private:
  bool counted(bool wanted);
  void take(const Line& line, const Wanted& wanted, const LineWriter& write);
  bool outlines(const LineWriter& write);
  void outline(SPolygon& polygon, const LineWriter& write);
  void outlinesOfOtherSons(SPolygon& polygon, const LineWriter& write);

  ClassFilter filter_;
  LineClassFilter lineFilter_;
  const TextOutput& out_;
  long long linesRead_ = 0;
  long long linesWritten_ = 0;
  long long polygonsRead_ = 0;
  long long polygonsWritten_ = 0;
  long long fewPoints_ = 0;
  long long filtered_ = 0;
  long long withoutOutline_ = 0;
};

// For exports of samples, which write points, lines with a height and break lines apart. Each of its walks
// may have an output of its own.
class SampleWalk : public VectorWalk {
 public:
  explicit SampleWalk(Vector& vector) : VectorWalk(vector, vector.point3dCount() + vector.lineCount()) {}
  // Tells the job report.
  ~SampleWalk();

  template <class Write>
  void points(const TextOutput& out, Write write) {
    std::unique_ptr<Point3d> point(vector_.FirstPoint3d());
    for (; point != nullptr && goesOn(out); point.reset(vector_.NextPoint3d())) {
      ++points_;
      progress_.step();
      write(*point);
    }
  }
  // Lines of two points or more that are no break lines.
  void heightLines(const TextOutput& out, const LineWriter& write);
  // Known after that walk.
  bool hasBreakLines() const { return hasBreakLines_; }
  void breakLines(const TextOutput& out, const LineWriter& write);

 private:
  bool hasBreakLines_ = false;
  long long points_ = 0;
  long long linesRead_ = 0;
  long long linesWritten_ = 0;
  long long fewPoints_ = 0;
};

}  // namespace kaldex

#endif
