#include <QDir>
#include <QFile>
#include <QObject>

#include "lib/shapefile/shape_import.h"

inline namespace kaldex_v1 {

void IEShp::PointImport::run() {
  const Box box = vector_.BoundingBox();
  while (shapes_.next()) {
    for (int vertex = 0; vertex < shapes_.vertexCount(); ++vertex) {
      ++tally_.read;
      if (box.Contains(shapes_.point(vertex))) {
        takeVertex(vertex);
      } else {
        countOutside(vertex);
      }
    }
  }
}

void IEShp::PointImport::takeVertex(int vertex) {
  beginObject();
  Point place = shapes_.point(vertex);
  Point2d point;
  point.SetPoint(&place);
  if (vector_.Insert(point) == 0) throw kaldex::ImportStopped{};
  ++tally_.points;
  if (objects != nullptr) objects->take(point);
  endObject();
}

void IEShp::PointImport::tell() {
  QString ignored = QObject::tr("%ld pontos ignorados ");
  ignored.replace(QStringLiteral("%ld"), QString::number(tally_.outside));
  tellOutside(tally_.points > 0, ignored);
}

void IEShp::Import::countOutside(int vertex) {
  ++(shapes_.isNullCoordinate(vertex) ? tally_.nullCoordinates : tally_.outside);
}

void IEShp::HeightImport::tell() {
  tellOutside(tally_.lines + tally_.points > 0, QObject::tr("%1 pontos ignorados ").arg(tally_.outside));
}

void IEShp::ContourImport::run() {
  const Box box = vector_.BoundingBox();
  while (shapes_.next()) {
    for (int part = 0; part < shapes_.partCount(); ++part) takePart(part, box);
  }
}

void IEShp::ContourImport::takePart(int part, const Box& box) {
  ++tally_.read;
  inside_.clear();
  float height = 0.0f;
  const int start = shapes_.partStart(part);
  for (int vertex = start; vertex < start + shapes_.partSize(part); ++vertex) {
    const Point point = shapes_.point(vertex);
    if (!box.Contains(point)) {
      countOutside(vertex);
      continue;
    }
    inside_.push_back(point.x);
    inside_.push_back(point.y);
    height = shapes_.z(vertex);
  }
  const int count = static_cast<int>(inside_.size() / 2);
  if (lineIsDegenerate(inside_.data(), count)) return;
  std::unique_ptr<Line> made = newLine(inside_.data(), count);
  made->height = height;
  if (Line* line = insert(std::move(made))) IEShp::giveBack(vector_, line);
}

void IEShp::SampleImport::run() {
  const Box box = vector_.BoundingBox();
  while (shapes_.next()) {
    for (int vertex = 0; vertex < shapes_.vertexCount(); ++vertex) {
      ++tally_.read;
      const Point place = shapes_.point(vertex);
      if (!box.Contains(place)) {
        countOutside(vertex);
        continue;
      }
      Point3d point(place.x, place.y, shapes_.z(vertex));
      ++(vector_.Insert(point, 0) == 0 ? tally_.refused : tally_.points);
    }
  }
  dropPointFile();
}

// Stores of an older kind kept the points sorted in a file of their own, which new points make wrong.
void IEShp::SampleImport::dropPointFile() {
  Point3dSet* set = vector_.point3dSet();
  if (set == nullptr) return;
  set->KeepFilesOpen(0);
  if (!vector_.directory().isEmpty()) {
    QFile::remove(QStringLiteral("%1/%2.kdt").arg(vector_.directory(), vector_.name()));
  }
}

}  // namespace kaldex_v1
