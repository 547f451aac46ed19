#include "base/tracer.h"
#include "kaldex/shapefile.h"
#include "lib/shapefile/field_order.h"
#include "lib/shapefile/record_block.h"
#include "lib/shapefile/shape_layout.h"
#include "lib/shapefile/shape_stream.h"

using kaldex::FieldOrder;
using kaldex::FieldUnpacker;
using kaldex::makeBlock;
using kaldex::readFields;
using kaldex::ShapeStream;
using kaldex::usable;

inline namespace kaldex_v1 {

namespace {

bool readHeaderFrom(ShapeStream* stream, ShapeHeader& header, FieldOrder order) {
  if (stream == nullptr || !stream->seekStart()) return false;
  FieldUnpacker<kaldex::kShapeHeaderBytes> fields(order);
  if (!readFields(stream, fields)) return false;
  fields.big(header.FileCode);
  fields.skip(5 * sizeof(std::int32_t));
  fields.big(header.FileLength);
  fields.little(header.Version);
  fields.little(header.ShapeType);
  for (double* side : {&header.XMinimum, &header.YMinimum, &header.XMaximum, &header.YMaximum})
    fields.little(*side);
  return true;
}

bool readPairFrom(ShapeStream* stream, std::int32_t& first, std::int32_t& second, FieldOrder order) {
  if (stream == nullptr) return false;
  FieldUnpacker<kaldex::kRecordHeaderBytes> fields(order);
  if (!readFields(stream, fields)) return false;
  fields.big(first);
  fields.big(second);
  return true;
}

bool readInteger(ShapeStream* stream, std::int32_t& value, FieldOrder order) {
  if (stream == nullptr) return false;
  FieldUnpacker<sizeof(std::int32_t)> fields(order);
  if (!readFields(stream, fields)) return false;
  fields.little(value);
  return true;
}

// Types of one family are ten apart: flat, with heights, with measures.
bool isOfFamily(std::int32_t type, std::int32_t flat) {
  return type == flat || type == flat + 10 || type == flat + 20;
}

template <typename Record>
bool readBox(ShapeStream* stream, Record& record, FieldOrder order) {
  FieldUnpacker<4 * sizeof(double)> fields(order);
  if (!readFields(stream, fields)) return false;
  for (double* side : {&record.XMinimum, &record.YMinimum, &record.XMaximum, &record.YMaximum})
    fields.little(*side);
  return true;
}

// Room for what a file promises: counts are believed only as far as the file reaches.
bool fitsRest(ShapeStream* stream, std::int64_t bytes) {
  return bytes <= stream->remaining();
}

template <typename T>
bool readBlock(ShapeStream* stream, std::vector<T>& block, std::int64_t count, FieldOrder order) {
  return makeBlock(block, static_cast<std::size_t>(count)) &&
         stream->readArray(block.data(), block.size(), order.swapLittle);
}

bool readArcBody(ShapeStream* stream, ArcRecord& record, FieldOrder order) {
  if (!readBox(stream, record, order)) return false;
  FieldUnpacker<2 * sizeof(std::int32_t)> counts(order);
  if (!readFields(stream, counts)) return false;
  std::int32_t parts = 0;
  std::int32_t points = 0;
  counts.little(parts);
  counts.little(points);
  if (parts < 0 || points < 0) return false;
  if (!fitsRest(stream, kaldex::arcBytes(parts, points) - kaldex::kArcHeadBytes)) return false;
  record.numParts = parts;
  record.numPoints = points;
  return readBlock(stream, record.parts, parts, order) &&
         readBlock(stream, record.points, 2 * static_cast<std::int64_t>(points), order);
}

void clear(ArcRecord& record) {
  record.XMinimum = record.YMinimum = record.XMaximum = record.YMaximum = 0.0;
  record.shapeType = ShapeKind::null;
  record.numParts = record.numPoints = 0;
  record.parts.clear();
  record.points.clear();
}

bool readArc(ShapeStream* stream, ArcRecord& record, std::int32_t family, FieldOrder order) {
  std::int32_t type = 0;
  if (!readInteger(stream, type, order)) return false;
  if (type == ShapeKind::null) {
    clear(record);
    return true;
  }
  if (!isOfFamily(type, family)) return false;
  record.shapeType = type;
  return readArcBody(stream, record, order);
}

// The range and the values of heights or measures, one value a point.
bool readRange(ShapeStream* stream, double& minimum, double& maximum, std::vector<double>& values,
               std::int32_t count, FieldOrder order) {
  FieldUnpacker<2 * sizeof(double)> range(order);
  if (!readFields(stream, range)) return false;
  range.little(minimum);
  range.little(maximum);
  if (!fitsRest(stream, 8 * static_cast<std::int64_t>(count))) return false;
  return readBlock(stream, values, count, order);
}

}  // namespace

bool ShapeFile::ReadHeader() {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::ReadHeader");
  const FieldOrder order(byteOrderMode);
  return readHeaderFrom(usable(main_, order), MainHeader, order);
}

bool ShapeFile::ReadIndexHeader() {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::ReadIndexHeader");
  const FieldOrder order(byteOrderMode);
  return readHeaderFrom(usable(index_, order), IndexHeader, order);
}

bool ShapeFile::ReadRecordHeader(RecordHeader& header) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::ReadRecordHeader");
  const FieldOrder order(byteOrderMode);
  return readPairFrom(usable(main_, order), header.RecordNumber, header.ContentLength, order);
}

bool ShapeFile::ReadIndexRecordHeader(IndexRecordHeader& header) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::ReadIndexRecordHeader");
  const FieldOrder order(byteOrderMode);
  return readPairFrom(usable(index_, order), header.Offset, header.ContentLength, order);
}

bool ShapeFile::ReadPointRecord(PointRecord& record) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::ReadPointRecord");
  const FieldOrder order(byteOrderMode);
  ShapeStream* const stream = usable(main_, order);
  std::int32_t type = 0;
  if (!readInteger(stream, type, order)) return false;
  if (type == ShapeKind::null) {
    record.shapeType = type;
    record.x = record.y = 0.0;
    return true;
  }
  FieldUnpacker<2 * sizeof(double)> fields(order);
  if (!isOfFamily(type, ShapeKind::point) || !readFields(stream, fields)) return false;
  record.shapeType = type;
  fields.little(record.x);
  fields.little(record.y);
  return true;
}

bool ShapeFile::ReadPointZRecord(PointZRecord& record) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::ReadPointZRecord");
  if (!ReadPointRecord(record)) return false;
  record.z = record.m = 0.0;
  if (record.shapeType == ShapeKind::null) return true;
  FieldUnpacker<2 * sizeof(double)> fields{FieldOrder(byteOrderMode)};
  if (record.shapeType != ShapeKind::pointZ || !readFields(main_.get(), fields)) return false;
  fields.little(record.z);
  fields.little(record.m);
  return true;
}

bool ShapeFile::ReadMultiPointRecord(MultiPointRecord& record) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::ReadMultiPointRecord");
  const FieldOrder order(byteOrderMode);
  ShapeStream* const stream = usable(main_, order);
  std::int32_t type = 0;
  if (!readInteger(stream, type, order)) return false;
  if (type == ShapeKind::null) {
    record = MultiPointRecord();
    record.shapeType = type;
    return true;
  }
  if (!isOfFamily(type, ShapeKind::multiPoint) || !readBox(stream, record, order)) return false;
  std::int32_t count = 0;
  if (!readInteger(stream, count, order) || count < 0) return false;
  if (!fitsRest(stream, 16 * static_cast<std::int64_t>(count))) return false;
  record.shapeType = type;
  record.numPoints = count;
  return readBlock(stream, record.points, 2 * static_cast<std::int64_t>(count), order);
}

bool ShapeFile::ReadArcRecord(ArcRecord& record) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::ReadArcRecord");
  const FieldOrder order(byteOrderMode);
  return readArc(usable(main_, order), record, ShapeKind::arc, order);
}

bool ShapeFile::ReadPolygonRecord(PolygonRecord& record) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::ReadPolygonRecord");
  const FieldOrder order(byteOrderMode);
  return readArc(usable(main_, order), record, ShapeKind::polygon, order);
}

bool ShapeFile::ReadArcZRecord(ArcZRecord& record, int contentLength) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::ReadArcZRecord");
  if (!ReadArcRecord(record)) return false;
  record.ZMinimum = record.ZMaximum = record.MMinimum = record.MMaximum = 0.0;
  record.z.clear();
  record.m.clear();
  if (record.shapeType == ShapeKind::null) return true;
  if (record.shapeType != ShapeKind::arcZ) return false;
  const FieldOrder order(byteOrderMode);
  const std::int32_t count = record.numPoints;
  if (!readRange(main_.get(), record.ZMinimum, record.ZMaximum, record.z, count, order)) return false;
  if (contentLength < kaldex::arcZMBytes(record.numParts, count) / 2) return true;
  return readRange(main_.get(), record.MMinimum, record.MMaximum, record.m, count, order);
}

}  // namespace kaldex_v1
