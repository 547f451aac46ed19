#include "lib/frame/label_search.h"

#include <QObject>

#include "kaldex/job_report.h"
#include "kaldex/model/projection.h"

namespace kaldex {

namespace {

constexpr double kLineReach = 0.0005;  // metres on the map
constexpr double kNodeReach = 0.01;    // metres on the ground

}  // namespace

LabelSearch::LabelSearch(Vector& vector, float scale) : vector_(vector) {
  const SProjection* const projection = vector.projection();
  double unitsPerMetre = 1.0;
  if (projection != nullptr && projection->type() == ProjectionType::latLong) {
    unitsPerMetre = projection->MeterToDegreeMultFactor();
    metresPerUnit_ = projection->DegreeToMeterMultFactor();
  }
  lineTolerance_ = static_cast<float>(kLineReach * static_cast<double>(scale) * unitsPerMetre);
  nodeTolerance_ = static_cast<float>(kNodeReach * unitsPerMetre);
}

Line* LabelSearch::findLine(const Point& point) const {
  int segment = 0;
  int vertex = 0;
  return vector_.FindLine(point, &segment, lineTolerance_, lineTolerance_, &vertex, nullptr, 0, 0);
}

Point2d* LabelSearch::findNode(const Point& point) const {
  return vector_.FindNode(point, nodeTolerance_);
}

void label(Line& line, const Point& point, int classId) {
  line.labelPoint = point;
  line.classId = classId;
  if (line.state != stateNew) line.state = stateChanged;
}

void label(SPolygon& polygon, const Point& point, int classId) {
  polygon.labelPoint = point;
  polygon.classId = classId;
  polygon.changed = stateChanged;
}

QString LabelTally::text() const {
  return QObject::tr("Sumário:") +
         QObject::tr("Classes/Objetos: associados=%1, não associados=%2, já estavam associados=%3")
             .arg(associated)
             .arg(notAssociated)
             .arg(alreadyAssociated);
}

void LabelTally::report(int kept) const {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  if (kept > 0) job->countWritten("labels", kept);
  if (notAssociated > 0) job->countLeftOut("not_associated", notAssociated);
}

}  // namespace kaldex
