#ifndef KALDEX_ARCINFO_UNGENERATE_WRITER_H
#define KALDEX_ARCINFO_UNGENERATE_WRITER_H

#include <vector>

#include "base/latin1.h"
#include "base/text_output.h"
#include "kaldex/arcinfo.h"
#include "kaldex/model/line.h"
#include "lib/ascii/coordinate_writer.h"

inline namespace kaldex_v1 {

/// Writes the records of one ungenerate file. The handler's file must be open; write failures stick and are
/// told at the end.
class IEArcInfo::Writer {
 public:
  explicit Writer(IEArcInfo& handler);

  bool ok() const { return out_.ok(); }
  /// For walks, which end when a write has failed.
  const kaldex::TextOutput& out() const { return out_; }
  /// A whole record. `height`, unless null, stands behind each vertex.
  void record(const Line& line, const float* height = nullptr);
  /// A line of a file of points, or of label points. What stands in front of the place is written as it is.
  void sample(std::string_view before, const Point& place, float height);
  void label(std::string_view before, const Point& place);
  /// An identifier that is a text of the database, in the file's encoding.
  QByteArray text(const QString& text);
  /// End the file and close it: 1, or 0 without an end, or after the user was told of a write that failed.
  int finish(bool complete);

 private:
  void place(std::string_view before, const Point& place);
  void pair(const double* xy);
  void heightBehind(float height);
  void report() const;

  IEArcInfo& handler_;
  kaldex::TextOutput out_;
  kaldex::CoordinateWriter coordinates_;
  kaldex::Latin1Loss loss_;
  std::vector<double> xy_;
};

}  // namespace kaldex_v1

#endif
