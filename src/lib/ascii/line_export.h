#ifndef KALDEX_ASCII_LINE_EXPORT_H
#define KALDEX_ASCII_LINE_EXPORT_H

#include "kaldex/model/vector.h"
#include "lib/ascii/section_writer.h"
#include "lib/frame/line_class_filter.h"
#include "lib/frame/progress_scope.h"

inline namespace kaldex_v1 {

/// Writes the lines of a vector as one section, as their export wants them: all lines, contours, or polygon
/// outlines with the lines that bound none. One export an object; the handler's file must be open.
class IEAsc::LineExport {
 public:
  LineExport(IEAsc& handler, Vector& vector, bool onlyUsedClasses);
  ~LineExport();

  int exportLines();
  int exportContours();
  int exportPolygons();

 private:
  /// Write each line of two points or more that `begin(line)` takes; `begin` writes what stands before its
  /// coordinates. False when the user has cancelled.
  template <class Begin>
  bool writeLines(Begin begin);
  bool wantsMore() const;
  int finish(bool complete) { return writer_.finish(complete); }

  void writeNetworkComments();
  void writeNetworkRecord(const Line& line);

  bool writePolygons();
  void writeOutline(SPolygon& polygon);
  void writeSonsOfOtherClasses(SPolygon& polygon);
  bool isLoose(const Line& line) const;

  IEAsc& handler_;
  Vector& vector_;
  kaldex::ClassFilter filter_;
  kaldex::LineClassFilter lineFilter_;
  SectionWriter writer_;
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
