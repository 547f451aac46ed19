#ifndef KALDEX_SHAPEFILE_SHAPE_SINK_H
#define KALDEX_SHAPEFILE_SHAPE_SINK_H

#include <cstdint>
#include <string>
#include <vector>

#include "kaldex/model/geometry.h"
#include "kaldex/shapefile.h"
#include "lib/shapefile/attribute_table.h"
#include "lib/shapefile/shape_layout.h"

namespace kaldex {

// Parts and points of one arc or polygon, borrowed.
struct ShapeView {
  const std::int32_t* parts;
  int numParts;
  const double* xy;
  int numPoints;
};

// The three files of an export: shapes, their index and the attribute table, a record of each at a time. A
// write that fails is remembered, and all that follows it left undone; close() tells.
class ShapeSink {
 public:
  enum class Problem {
    none,
    io,        // a file could not be made or written
    tooLarge,  // the next record would exceed what the format can address
  };

  explicit ShapeSink(ShapeFile& file) : file_(file) {}
  ShapeSink(const ShapeSink&) = delete;
  ShapeSink& operator=(const ShapeSink&) = delete;
  // Closes what is still open, with headers that tell of no records.
  ~ShapeSink();

  // Makes the files with empty headers, and the table.
  bool open(const std::string& base, std::int32_t shapeType, const SFieldList& columns);

  // One record. Its row in the table is filled before or after, and ended by table().nextRow().
  void writePoint(double x, double y);
  void writePointZ(double x, double y, double z);
  void writeArc(const Box& box, const ShapeView& shape);
  // A line of one part at one height.
  void writeArcZ(const Box& box, const double* xy, int numPoints, double z);

  AttributeTable& table() { return table_; }
  // The number that the next record gets.
  std::int32_t recordNumber() const { return recordNumber_; }
  // Leaves that number unused.
  void skipRecordNumber() { ++recordNumber_; }
  long long records() const { return records_; }
  std::int64_t bytes() const { return offset_; }

  bool ok() const { return problem_ == Problem::none; }
  Problem problem() const { return problem_; }
  // Final headers with this box, and the end of the files; false if anything failed since open().
  bool close(const Box& box);

 private:
  bool openStreams(const std::string& base);
  void setHeaders(std::int32_t shapeType, const Box& box, std::int32_t mainWords, std::int32_t indexWords);
  bool beginRecord(std::int64_t contentBytes);
  void note(bool written);

  ShapeFile& file_;
  AttributeTable table_;
  ArcRecord arc_;
  ArcZRecord arcZ_;
  Problem problem_ = Problem::none;
  std::int32_t recordNumber_ = 1;
  std::int64_t records_ = 0;
  std::int64_t offset_ = kShapeHeaderBytes;
};

}  // namespace kaldex

#endif
