#include "base/tracer.h"
#include "kaldex/shapefile.h"
#include "lib/shapefile/field_order.h"
#include "lib/shapefile/shape_layout.h"
#include "lib/shapefile/shape_stream.h"

using kaldex::FieldOrder;
using kaldex::FieldPacker;
using kaldex::ShapeStream;
using kaldex::usable;
using kaldex::writeFields;

inline namespace kaldex_v1 {

namespace {

bool createEmpty(const char* path) {
  const auto stream = ShapeStream::open(path, false);
  return stream != nullptr && stream->close();
}

bool openStream(std::unique_ptr<ShapeStream>& stream, const char* path, const char* mode) {
  if (stream == nullptr) stream = ShapeStream::open(path, mode == nullptr);
  return stream != nullptr;
}

bool closeStream(std::unique_ptr<ShapeStream>& stream) {
  const bool whole = stream == nullptr || stream->close();
  stream.reset();
  return whole;
}

bool writeHeaderTo(ShapeStream* stream, const ShapeHeader& header, FieldOrder order) {
  if (stream == nullptr || !stream->seekStart()) return false;
  FieldPacker<kaldex::kShapeHeaderBytes> fields(order);
  fields.big(header.FileCode);
  for (int unused = 0; unused < 5; ++unused) fields.big(std::int32_t{0});
  fields.big(header.FileLength);
  fields.little(header.Version);
  fields.little(header.ShapeType);
  for (double side : {header.XMinimum, header.YMinimum, header.XMaximum, header.YMaximum})
    fields.little(side);
  // What is left, the ranges of height and measure, is zero.
  return writeFields(stream, fields);
}

bool writePairTo(ShapeStream* stream, std::int32_t first, std::int32_t second, FieldOrder order) {
  if (stream == nullptr) return false;
  FieldPacker<kaldex::kRecordHeaderBytes> fields(order);
  fields.big(first);
  fields.big(second);
  return writeFields(stream, fields);
}

}  // namespace

ShapeFile::ShapeFile() = default;
ShapeFile::~ShapeFile() = default;

bool ShapeFile::CreateFile(const char* path) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::CreateFile");
  return createEmpty(path);
}

bool ShapeFile::CreateIndexFile(const char* path) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::CreateIndexFile");
  return createEmpty(path);
}

bool ShapeFile::OpenFile(const char* path, const char* mode) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::OpenFile");
  return openStream(main_, path, mode);
}

bool ShapeFile::OpenIndexFile(const char* path, const char* mode) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::OpenIndexFile");
  return openStream(index_, path, mode);
}

bool ShapeFile::CloseFile() {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::CloseFile");
  return closeStream(main_);
}

bool ShapeFile::CloseIndexFile() {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::CloseIndexFile");
  return closeStream(index_);
}

bool ShapeFile::WriteHeader() {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::WriteHeader");
  const FieldOrder order(byteOrderMode);
  return writeHeaderTo(usable(main_, order), MainHeader, order);
}

bool ShapeFile::WriteIndexHeader() {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::WriteIndexHeader");
  const FieldOrder order(byteOrderMode);
  return writeHeaderTo(usable(index_, order), IndexHeader, order);
}

bool ShapeFile::WriteRecordHeader(const RecordHeader& header) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::WriteRecordHeader");
  const FieldOrder order(byteOrderMode);
  return writePairTo(usable(main_, order), header.RecordNumber, header.ContentLength, order);
}

bool ShapeFile::WriteIndexRecordHeader(const IndexRecordHeader& header) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::WriteIndexRecordHeader");
  const FieldOrder order(byteOrderMode);
  return writePairTo(usable(index_, order), header.Offset, header.ContentLength, order);
}

bool ShapeFile::WritePointRecord(const PointRecord& record) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::WritePointRecord");
  const FieldOrder order(byteOrderMode);
  ShapeStream* const stream = usable(main_, order);
  if (stream == nullptr) return false;
  FieldPacker<kaldex::kPointBytes> fields(order);
  fields.little(record.shapeType);
  fields.little(record.x);
  fields.little(record.y);
  return writeFields(stream, fields);
}

bool ShapeFile::WritePointZRecord(const PointZRecord& record) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::WritePointZRecord");
  if (!WritePointRecord(record)) return false;
  FieldPacker<kaldex::kPointZBytes - kaldex::kPointBytes> fields{FieldOrder(byteOrderMode)};
  fields.little(record.z);
  fields.little(record.m);
  return writeFields(main_.get(), fields);
}

bool ShapeFile::WriteArcRecord(const ArcRecord& record, short withData) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::WriteArcRecord");
  const FieldOrder order(byteOrderMode);
  ShapeStream* const stream = usable(main_, order);
  if (stream == nullptr) return false;
  FieldPacker<kaldex::kArcHeadBytes> fields(order);
  fields.little(record.shapeType);
  for (double side : {record.XMinimum, record.YMinimum, record.XMaximum, record.YMaximum})
    fields.little(side);
  fields.little(record.numParts);
  fields.little(record.numPoints);
  if (!writeFields(stream, fields)) return false;
  if (withData == 0) return true;
  // A record may say more than its blocks hold; what lies behind them is not to be written.
  if (static_cast<std::int64_t>(record.parts.size()) < record.numParts) return false;
  if (static_cast<std::int64_t>(record.points.size() / 2) < record.numPoints) return false;
  return (record.numParts == 0 || WritePartsData(record.numParts, record.parts.data())) &&
         (record.numPoints == 0 || WritePointsData(record.numPoints, record.points.data()));
}

bool ShapeFile::WritePolygonRecord(const PolygonRecord& record, short withData) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::WritePolygonRecord");
  return WriteArcRecord(record, withData);
}

bool ShapeFile::WriteArcZRecord(const ArcZRecord& record) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::WriteArcZRecord");
  if (!WriteArcRecord(record, 1)) return false;
  const FieldOrder order(byteOrderMode);
  const auto writeRange = [&](double minimum, double maximum, const std::vector<double>& values) {
    if (static_cast<std::int64_t>(values.size()) < record.numPoints) return false;
    FieldPacker<2 * sizeof(double)> range(order);
    range.little(minimum);
    range.little(maximum);
    return writeFields(main_.get(), range) &&
           main_->writeArray(values.data(), static_cast<std::size_t>(record.numPoints), order.swapLittle);
  };
  return writeRange(record.ZMinimum, record.ZMaximum, record.z) &&
         (record.m.empty() || writeRange(record.MMinimum, record.MMaximum, record.m));
}

bool ShapeFile::WritePartsData(int count, const std::int32_t* parts) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::WritePartsData");
  const FieldOrder order(byteOrderMode);
  ShapeStream* const stream = usable(main_, order);
  if (stream == nullptr || parts == nullptr || count < 0) return false;
  return stream->writeArray(parts, static_cast<std::size_t>(count), order.swapLittle);
}

bool ShapeFile::WritePointsData(int count, const double* xy) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::WritePointsData");
  const FieldOrder order(byteOrderMode);
  ShapeStream* const stream = usable(main_, order);
  if (stream == nullptr || xy == nullptr || count < 0) return false;
  return stream->writeArray(xy, 2 * static_cast<std::size_t>(count), order.swapLittle);
}

bool ShapeFile::WriteMultiPointRecord(const MultiPointRecord&) {
  return false;
}

}  // namespace kaldex_v1
