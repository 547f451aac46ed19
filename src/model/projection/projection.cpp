#include "kaldex/model/projection.h"

#include <cmath>
#include <iterator>

#include "kaldex/model/angle.h"
#include "model/projection/datum_shift.h"
#include "model/projection/projection_engine.h"

inline namespace kaldex_v1 {
namespace {

constexpr const char* kTypeNames[] = {
    "NONE",        "UTM",           "MERCATOR", "GAUSS - TM", "LAMBERT MILLION", "LAMBERT",   "POLYCONIC",
    "CYLINDRICAL", "STEREOGRAPHIC", "BIPOLAR",  "ALBERS",     "MILLER",          "LATLONG 2", "",
    "LATLONG",     "SINUSOIDAL"};

bool isType(short type) {
  return type >= 0 && type < static_cast<int>(std::size(kTypeNames));
}

bool within(double a, double b, double tolerance) {
  return std::fabs(a - b) <= tolerance;
}

bool sameNumbers(const ProjectionParameters& a, const ProjectionParameters& b) {
  constexpr double kAngle = 1e-9, kLength = 1e-3, kScale = 1e-6;
  return a.hemisphere == b.hemisphere && within(a.originLatitude, b.originLatitude, kAngle) &&
         within(a.centralMeridian, b.centralMeridian, kAngle) &&
         within(a.firstParallel, b.firstParallel, kAngle) &&
         within(a.secondParallel, b.secondParallel, kAngle) &&
         within(a.falseEasting, b.falseEasting, kLength) &&
         within(a.falseNorthing, b.falseNorthing, kLength) && within(a.scale, b.scale, kScale);
}

}  // namespace

QString projectionTypeName(short type) {
  return isType(type) ? QString::fromLatin1(kTypeNames[type]) : QString();
}

SProjection::SProjection(short type) {
  parameters_.type = isType(type) ? type : static_cast<short>(ProjectionType::none);
  parameters_.name = projectionTypeName(parameters_.type);
}

SProjection::SProjection(const SProjection& other)
    : SObject(other), parameters_(other.parameters_), identifier_(other.identifier_) {}

SProjection& SProjection::operator=(const SProjection& other) {
  if (this == &other) return *this;
  setParameters(other.parameters_);
  identifier_ = other.identifier_;
  return *this;
}

SProjection::~SProjection() = default;

std::unique_ptr<SProjection> SProjection::clone() const {
  return std::make_unique<SProjection>(*this);
}

void SProjection::setParameters(const ProjectionParameters& parameters) {
  parameters_ = parameters;
  engine_.reset();
}

void SProjection::Init(short type, const QString& name, const Datum& datum) {
  ProjectionParameters parameters = parameters_;
  parameters.type = type;
  parameters.name = name;
  parameters.datum = datum;
  parameters.epsg = 0;
  setParameters(parameters);
}

void SProjection::DatumName(const QString& name) {
  if (name == parameters_.datum.name()) return;
  parameters_.datum.setName(name);
  parameters_.epsg = 0;
}

kaldex::ProjectionEngine& SProjection::engine() const {
  if (!engine_) engine_ = std::make_unique<kaldex::ProjectionEngine>(parameters_);
  return *engine_;
}

bool SProjection::carries() const {
  return carryInPlaneToGeographic_ && destination_ != nullptr;
}

bool SProjection::planeToGeographic(Point& point) const {
  const bool done = engine().toGeographic(point.x, point.y);
  if (done && carries()) ChangeLL(point.x, point.y);
  return done;
}

bool SProjection::geographicToPlane(Point& point) const {
  return engine().toPlane(point.x, point.y);
}

bool SProjection::planeToGeographicAll(double* xy, std::size_t count) const {
  const kaldex::ProjectionEngine& converter = engine();
  const bool carry = carries();
  bool all = true;
  for (double* end = xy + 2 * count; xy != end; xy += 2) {
    const bool done = converter.toGeographic(xy[0], xy[1]);
    if (done && carry) ChangeLL(xy[0], xy[1]);
    all = all && done;
  }
  return all;
}

bool SProjection::geographicToPlaneAll(double* xy, std::size_t count) const {
  const kaldex::ProjectionEngine& converter = engine();
  bool all = true;
  for (double* end = xy + 2 * count; xy != end; xy += 2) all = converter.toPlane(xy[0], xy[1]) && all;
  return all;
}

void SProjection::ChangeLL(double& longitude, double& latitude) const {
  // What NONE calls geographic are plane coordinates.
  if (destination_ == nullptr || type() == ProjectionType::none ||
      destination_->type() == ProjectionType::none) {
    return;
  }
  kaldex::carryToDatum(datum(), destination_->datum(), longitude, latitude);
}

double SProjection::DegreeToMeterMultFactor() const {
  const bool usable = isLatLong() && std::isfinite(radius()) && radius() > 0.0;
  return usable ? Math_Deg_To_Rad(radius()) : 1.0;
}

double SProjection::MeterToDegreeMultFactor() const {
  return 1.0 / DegreeToMeterMultFactor();
}

bool SProjection::operator==(const SProjection& other) const {
  if (this == &other) return true;
  if (type() != other.type() || !(datum() == other.datum())) return false;
  if (isLatLong()) return true;
  if (type() == ProjectionType::foreign) return definition() == other.definition();
  return sameNumbers(parameters_, other.parameters_);
}

GeneralProjection::~GeneralProjection() = default;

std::unique_ptr<SProjection> GeneralProjection::clone() const {
  return std::make_unique<GeneralProjection>(*this);
}

void GeneralProjection::Init(const Datum* datum, short hemisphere, double originLatitude,
                             double centralMeridian, double firstParallel, double secondParallel,
                             double falseEasting, double falseNorthing, double scale) {
  ProjectionParameters parameters = toParameters();
  if (datum != nullptr) parameters.datum = *datum;
  parameters.hemisphere = hemisphere;
  parameters.originLatitude = originLatitude;
  parameters.centralMeridian = centralMeridian;
  parameters.firstParallel = firstParallel;
  parameters.secondParallel = secondParallel;
  parameters.falseEasting = falseEasting;
  parameters.falseNorthing = falseNorthing;
  parameters.scale = scale;
  parameters.epsg = 0;
  setParameters(parameters);
}

DestinationScope::DestinationScope(SProjection* projection, const SProjection* destination, Carry carry)
    : projection_(projection) {
  if (projection_ == nullptr) return;
  previousDestination_ = projection_->destination_;
  previousCarry_ = projection_->carryInPlaneToGeographic_;
  projection_->destination_ = destination;
  projection_->carryInPlaneToGeographic_ = carry == Carry::everywhere;
}

DestinationScope::~DestinationScope() {
  if (projection_ == nullptr) return;
  projection_->destination_ = previousDestination_;
  projection_->carryInPlaneToGeographic_ = previousCarry_;
}

SProjection* GetNewInstance(short type) {
  if (type == ProjectionType::latLong2) return new SProjection(type);
  return new GeneralProjection(type);
}

std::unique_ptr<SProjection> projectionFromParameters(const ProjectionParameters& parameters) {
  std::unique_ptr<SProjection> projection(GetNewInstance(parameters.type));
  projection->setParameters(parameters);
  return projection;
}

SProjectionList::SProjectionList() : TypedList<SProjection>(Ownership::owns) {
  for (short type = ProjectionType::none; isType(type); ++type) {
    // Type 12 can't be told from 14 by a user, and a foreign projection comes from a definition only.
    if (type != ProjectionType::latLong2 && type != ProjectionType::foreign) Append(GetNewInstance(type));
  }
}

SProjectionList::~SProjectionList() = default;

SProjection* SProjectionList::GetAnInstance(short type) {
  instances_.emplace_back(GetNewInstance(type));
  return instances_.back().get();
}

}  // namespace kaldex_v1
