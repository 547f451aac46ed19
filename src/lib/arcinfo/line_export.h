#ifndef KALDEX_ARCINFO_LINE_EXPORT_H
#define KALDEX_ARCINFO_LINE_EXPORT_H

#include "kaldex/model/vector.h"
#include "lib/arcinfo/ungenerate_writer.h"
#include "lib/frame/line_class_filter.h"
#include "lib/frame/progress_scope.h"

inline namespace kaldex_v1 {

/// Writes the lines of a vector as their export wants them: all lines, contours, or polygon outlines with the
/// lines that bound none. One export an object; the handler's file must be open.
class IEArcInfo::LineExport {
 public:
  LineExport(IEArcInfo& handler, Vector& vector, bool onlyUsedClasses);
  ~LineExport();

  int exportLines();
  int exportContours();
  int exportPolygons();

 private:
  /// Visit each line of two points or more; false when the user has cancelled.
  template <class Take>
  bool eachLine(Take take);
  bool wantsMore() const { return writer_.ok() && !progress_.cancelled(); }
  void write(const Line& line, const float* height = nullptr);
  bool writePolygons();
  void writeOutline(SPolygon& polygon);
  void writeSonsOfOtherClasses(SPolygon& polygon);

  Vector& vector_;
  kaldex::ClassFilter filter_;
  kaldex::LineClassFilter lineFilter_;
  Writer writer_;
  kaldex::ProgressScope progress_;
  long long linesRead_ = 0;
  long long linesWritten_ = 0;
  long long polygonsRead_ = 0;
  long long polygonsWritten_ = 0;
  long long fewPoints_ = 0;
  long long filtered_ = 0;
  long long withoutOutline_ = 0;
};

}  // namespace kaldex_v1

#endif
