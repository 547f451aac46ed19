#include "lib/shapefile/shape_sink.h"

#include <algorithm>

namespace kaldex {

namespace {

template <typename Record>
void setBox(Record& record, const Box& box) {
  record.XMinimum = box.x1;
  record.YMinimum = box.y1;
  record.XMaximum = box.x2;
  record.YMaximum = box.y2;
}

}  // namespace

ShapeSink::~ShapeSink() {
  file_.CloseFile();
  file_.CloseIndexFile();
}

bool ShapeSink::open(const std::string& base, std::int32_t shapeType, const SFieldList& columns) {
  setHeaders(shapeType, Box(), 0, 0);
  arc_.shapeType = shapeType;
  note(openStreams(base) && file_.WriteHeader() && file_.WriteIndexHeader() && table_.open(base, columns));
  return ok();
}

bool ShapeSink::openStreams(const std::string& base) {
  const std::string shapes = base + ".shp";
  const std::string index = base + ".shx";
  // A stream that the caller left open is another file's.
  file_.CloseFile();
  file_.CloseIndexFile();
  return file_.CreateFile(shapes.c_str()) && file_.CreateIndexFile(index.c_str()) &&
         file_.OpenFile(shapes.c_str(), "w") && file_.OpenIndexFile(index.c_str(), "w");
}

void ShapeSink::setHeaders(std::int32_t shapeType, const Box& box, std::int32_t mainWords,
                           std::int32_t indexWords) {
  file_.MainHeader = ShapeHeader();
  file_.MainHeader.ShapeType = shapeType;
  setBox(file_.MainHeader, box);
  file_.IndexHeader = file_.MainHeader;
  file_.MainHeader.FileLength = mainWords;
  file_.IndexHeader.FileLength = indexWords;
}

void ShapeSink::note(bool written) {
  if (!written && ok()) problem_ = Problem::io;
}

bool ShapeSink::beginRecord(std::int64_t contentBytes) {
  if (!ok()) return false;
  if (!fitsShapeFile(offset_, contentBytes) || table_.isFull()) {
    problem_ = Problem::tooLarge;
    return false;
  }
  const std::int32_t words = toWords(contentBytes);
  note(table_.ok() && file_.WriteRecordHeader({recordNumber_, words}) &&
       file_.WriteIndexRecordHeader({toWords(offset_), words}));
  ++recordNumber_;
  ++records_;
  offset_ += kRecordHeaderBytes + contentBytes;
  return ok();
}

void ShapeSink::writePoint(double x, double y) {
  PointRecord record;
  record.x = x;
  record.y = y;
  if (beginRecord(kPointBytes)) note(file_.WritePointRecord(record));
}

void ShapeSink::writePointZ(double x, double y, double z) {
  PointZRecord record;
  record.x = x;
  record.y = y;
  record.z = z;
  if (beginRecord(kPointZBytes)) note(file_.WritePointZRecord(record));
}

void ShapeSink::writeArc(const Box& box, const ShapeView& shape) {
  setBox(arc_, box);
  arc_.numParts = shape.numParts;
  arc_.numPoints = shape.numPoints;
  if (!beginRecord(arcBytes(shape.numParts, shape.numPoints))) return;
  // The points go out from where they are; only the head is gathered in the record.
  note(file_.WriteArcRecord(arc_, 0));
  if (shape.numParts > 0) note(file_.WritePartsData(shape.numParts, shape.parts));
  if (shape.numPoints > 0) note(file_.WritePointsData(shape.numPoints, shape.xy));
}

void ShapeSink::writeArcZ(const Box& box, const double* xy, int numPoints, double z) {
  const auto count = static_cast<std::size_t>(numPoints);
  setBox(arcZ_, box);
  arcZ_.numParts = 1;
  arcZ_.numPoints = numPoints;
  arcZ_.parts.assign(1, 0);
  arcZ_.points.assign(xy, xy + 2 * count);
  arcZ_.z.assign(count, z);
  if (beginRecord(arcZBytes(1, numPoints))) note(file_.WriteArcZRecord(arcZ_));
}

bool ShapeSink::close(const Box& box) {
  setHeaders(file_.MainHeader.ShapeType, box, toWords(offset_),
             static_cast<std::int32_t>(kShapeHeaderBytes / 2 + 4 * records_));
  note(table_.close());
  note(file_.WriteHeader() && file_.WriteIndexHeader());
  // Both are closed whatever became of the first.
  const bool shapesWhole = file_.CloseFile();
  const bool indexWhole = file_.CloseIndexFile();
  note(shapesWhole && indexWhole);
  return ok();
}

}  // namespace kaldex
