#include <memory>
#include <vector>

#include "base/tracer.h"
#include "kaldex/kml.h"
#include "kaldex/model/angle.h"
#include "kaldex/model/vector.h"
#include "ogckml/kml_feature.h"

inline namespace kaldex_v1 {

using KdxOgc::OgKMLDetachedPolygon;

namespace {

bool isPlane(const SProjection* projection) {
  return projection != nullptr && projection->type() != ProjectionType::none;
}

// A detached polygon has its lines and sons itself, any other one knows those of its vector.
template <class Take>
void eachLine(SPolygon& polygon, Take take) {
  if (const auto* const detached = dynamic_cast<OgKMLDetachedPolygon*>(&polygon)) {
    for (const auto& line : detached->lines) take(*line);
    return;
  }
  for (Line* line = polygon.FirstLine(); line != nullptr; line = polygon.NextLine()) take(*line);
}

template <class Take>
void eachSon(SPolygon& polygon, Take take) {
  if (const auto* const detached = dynamic_cast<OgKMLDetachedPolygon*>(&polygon)) {
    for (const auto& son : detached->sons) take(*son);
    return;
  }
  for (SPolygon* son = polygon.FirstSon(); son != nullptr; son = polygon.NextSon()) take(*son);
}

void copyAttributes(const Line& from, Line& to) {
  to.Type(from.Type());
  to.classId = from.classId;
  to.height = from.height;
  to.impedancePositive = from.impedancePositive;
  to.impedanceNegative = from.impedanceNegative;
  to.demand = from.demand;
}

}  // namespace

// The datum changes in ChangeLL, so the step before it must not carry anywhere.
bool IEKml::toDegrees(double* xy, std::size_t count) const {
  if (!isPlane(held_)) return true;
  const DestinationScope scope(held_, projection, DestinationScope::Carry::onlyInChangeLL);
  const bool good = held_->planeToGeographicAll(xy, count);
  for (double* const end = xy + 2 * count; xy != end; xy += 2) {
    if (xy[0] > kUnsetLimit && xy[1] > kUnsetLimit) continue;
    held_->ChangeLL(xy[0], xy[1]);
    xy[0] = Math_Rad_To_Deg(xy[0]);
    xy[1] = Math_Rad_To_Deg(xy[1]);
  }
  return good;
}

// The way back changes the datum in the other direction, from that of degrees to the vector's.
bool IEKml::fromDegrees(double* pairs, std::size_t count) const {
  if (!isPlane(held_)) return true;
  const DestinationScope scope(projection, held_, DestinationScope::Carry::onlyInChangeLL);
  for (std::size_t i = 0; i < count; ++i) {
    double* const pair = pairs + 2 * i;
    pair[0] = Math_Deg_To_Rad(pair[0]);
    pair[1] = Math_Deg_To_Rad(pair[1]);
    if (projection != nullptr) projection->ChangeLL(pair[0], pair[1]);
  }
  return held_->geographicToPlaneAll(pairs, count);
}

template <class Convert>
Line* IEKml::converted(const Line& line, Convert convert) const {
  const double* const points = line.coordinates();
  const int count = line.Size();
  std::vector<double> xy(points, points + 2 * static_cast<std::size_t>(count));
  convert(xy.data(), static_cast<std::size_t>(count));
  auto made = std::make_unique<Line>();
  made->assign(xy.data(), count);
  copyAttributes(line, *made);
  return made.release();
}

template <class Convert>
SPolygon* IEKml::converted(SPolygon& polygon, Convert convert) {
  auto made = std::make_unique<OgKMLDetachedPolygon>();
  made->classId = polygon.classId;
  eachLine(polygon, [&](const Line& line) { made->lines.emplace_back(converted(line, convert)); });
  if (made->lines.size() > 1) {
    const Line* const outline = polygon.CreatePoints(nullptr);
    if (outline != nullptr) made->outline.reset(converted(*outline, convert));
    polygon.DeletePoints();
  }
  made->lendOutline();
  eachSon(polygon, [&](SPolygon& son) {
    made->sons.emplace_back(static_cast<OgKMLDetachedPolygon*>(converted(son, convert)));
  });
  return made.release();
}

Point* IEKml::ToWGS84(Point* point) {
  const Tracer tracer(__FILE__, __LINE__, "IEKml::ToWGS84");
  if (point == nullptr) return nullptr;
  double xy[] = {point->x, point->y};
  toDegrees(xy, 1);
  return new Point(xy[0], xy[1]);
}

Line* IEKml::ToWGS84(Line* line) {
  const Tracer tracer(__FILE__, __LINE__, "IEKml::ToWGS84");
  if (line == nullptr) return nullptr;
  return converted(*line, [this](double* xy, std::size_t count) { toDegrees(xy, count); });
}

SPolygon* IEKml::ToWGS84(SPolygon* polygon) {
  const Tracer tracer(__FILE__, __LINE__, "IEKml::ToWGS84");
  if (polygon == nullptr) return nullptr;
  return converted(*polygon, [this](double* xy, std::size_t count) { toDegrees(xy, count); });
}

Point2d* IEKml::FromWGS84(Point2d* point) {
  const Tracer tracer(__FILE__, __LINE__, "IEKml::FromWGS84");
  if (point == nullptr) return nullptr;
  double pair[] = {point->x, point->y};
  fromDegrees(pair, 1);
  return new Point2d(pair[0], pair[1]);
}

Line* IEKml::FromWGS84(Line* line) {
  const Tracer tracer(__FILE__, __LINE__, "IEKml::FromWGS84");
  if (line == nullptr) return nullptr;
  return converted(*line, [this](double* pairs, std::size_t count) { fromDegrees(pairs, count); });
}

SPolygon* IEKml::FromWGS84(SPolygon* polygon) {
  const Tracer tracer(__FILE__, __LINE__, "IEKml::FromWGS84");
  if (polygon == nullptr) return nullptr;
  return converted(*polygon, [this](double* pairs, std::size_t count) { fromDegrees(pairs, count); });
}

}  // namespace kaldex_v1
