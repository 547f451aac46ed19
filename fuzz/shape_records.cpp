// The readers of shapefiles without a database below them, some ten times as fast as the importer: the
// records that the importer takes them from, the byte-level reader of programs, and what a dialog shows of a
// file. Inputs are those of the target shapefile; its three choosing bytes have no meaning here.

#include "fuzz/shape_container.h"
#include "fuzz/support/scratch.h"
#include "kaldex/intake.h"
#include "kaldex/shapefile.h"
#include "lib/shapefile/shape_reader.h"

namespace {

using kaldex::fuzz::ShapeContainer;

constexpr const char* kNames[ShapeContainer::files] = {"in.shp", "in.shx", "in.dbf", "in.cpg"};

// Everything that a record offers is touched.
double sumOf(const kaldex::ShapeReader& shapes) {
  double sum = 0.0;
  for (int part = 0; part < shapes.partCount(); ++part) {
    for (int i = shapes.partStart(part); i < shapes.partEnd(part); ++i) {
      sum += shapes.x()[i] + shapes.y()[i] + (shapes.z() == nullptr ? 0.0 : shapes.z()[i]);
    }
  }
  return sum;
}

void readAsImporter(const QString& path, std::size_t size) {
  const auto shapes = kaldex::ShapeReader::open(path);
  if (shapes == nullptr) return;
  // An index may lead to one record many times, but each of its entries stands in the file.
  const int count = std::min(shapes->count(), static_cast<int>(size / 8));
  volatile double sum = 0.0;
  for (int i = 0; i < count; ++i) {
    if (shapes->read(i) == kaldex::ShapeReader::Record::shape) sum = sum + sumOf(*shapes);
  }
}

bool readRecord(ShapeFile& file, const RecordHeader& head) {
  switch (file.MainHeader.ShapeType) {
    case ShapeKind::point: {
      PointRecord record;
      return file.ReadPointRecord(record);
    }
    case ShapeKind::pointZ: {
      PointZRecord record;
      return file.ReadPointZRecord(record);
    }
    case ShapeKind::multiPoint: {
      MultiPointRecord record;
      return file.ReadMultiPointRecord(record);
    }
    case ShapeKind::polygon: {
      PolygonRecord record;
      return file.ReadPolygonRecord(record);
    }
    case ShapeKind::arcZ: {
      ArcZRecord record;
      return file.ReadArcZRecord(record, head.ContentLength);
    }
    default: {
      ArcRecord record;
      return file.ReadArcRecord(record);
    }
  }
}

void readAsProgram(const QByteArray& mainFile, const QByteArray& indexFile) {
  ShapeFile file;
  if (!file.OpenFile(mainFile.constData(), nullptr) || !file.ReadHeader()) return;
  RecordHeader head;
  while (file.ReadRecordHeader(head) && readRecord(file, head)) {
  }
  if (!file.OpenIndexFile(indexFile.constData(), nullptr) || !file.ReadIndexHeader()) return;
  IndexRecordHeader entry;
  while (file.ReadIndexRecordHeader(entry)) {
  }
}

void readAsDialog(const QString& path) {
  const ShapeOutline outline(path);
  long long count = 0;
  if (outline.isValid()) outline.extent(&count);
  guessFile(path);
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t limit,
                                               unsigned seed) {
  return kaldex::fuzz::mutateShapefile(data, size, limit, seed);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const kaldex::fuzz::Scratch scratch;
  const ShapeContainer container = ShapeContainer::unpack(data, size);
  for (std::size_t i = 0; i < ShapeContainer::files; ++i) scratch.write(kNames[i], container.file[i]);
  const QString mainFile = scratch.path(kNames[ShapeContainer::shp]);
  readAsImporter(mainFile, size);
  readAsProgram(mainFile.toLocal8Bit(), scratch.path(kNames[ShapeContainer::shx]).toLocal8Bit());
  readAsDialog(mainFile);
  return 0;
}
