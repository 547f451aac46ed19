#include "model/projection/crs_reader.h"

#include <proj_experimental.h>

#include <cmath>

#include "kaldex/model/angle.h"
#include "model/projection/epsg_registry.h"
#include "model/projection/projection_engine.h"
#include "model/projection/projection_methods.h"

namespace kaldex {
namespace {

bool isGeographic(PJ_TYPE type) {
  return type == PJ_TYPE_GEOGRAPHIC_2D_CRS || type == PJ_TYPE_GEOGRAPHIC_3D_CRS;
}

/// True when every axis of the first two has that unit (metres or radians a unit).
bool axesAreIn(PJ_CONTEXT* context, const PJ* crs, double unit) {
  const PjPtr system(proj_crs_get_coordinate_system(context, crs));
  if (!system) return false;
  for (int axis = 0; axis < 2; ++axis) {
    double factor = 0.0;
    if (!proj_cs_get_axis_info(context, system.get(), axis, nullptr, nullptr, nullptr, &factor, nullptr,
                               nullptr, nullptr) ||
        std::fabs(factor - unit) > 1e-12 * unit) {
      return false;
    }
  }
  return true;
}

bool startsAtGreenwich(PJ_CONTEXT* context, const PJ* base) {
  const PjPtr meridian(proj_get_prime_meridian(context, base));
  double longitude = 0.0;
  return meridian &&
         proj_prime_meridian_get_parameters(context, meridian.get(), &longitude, nullptr, nullptr) &&
         longitude == 0.0;
}

/// In radians, metres or as a ratio; nothing when the conversion has no such parameter.
std::optional<double> parameterOf(PJ_CONTEXT* context, const PJ* conversion, const MethodParameter& wanted) {
  const int count = proj_coordoperation_get_param_count(context, conversion);
  for (int i = 0; i < count; ++i) {
    const char* name = nullptr;
    const char* code = nullptr;
    double value = 0.0, unit = 1.0;
    proj_coordoperation_get_param(context, conversion, i, &name, nullptr, &code, &value, nullptr, &unit,
                                  nullptr, nullptr, nullptr, nullptr);
    const bool same = code != nullptr && *code != '\0' ? QByteArray(code).toInt() == wanted.code
                                                       : qstrcmp(name, wanted.name) == 0;
    if (!same) continue;
    // Degrees go the way back that writing goes, so that the parameter stays the same double.
    const bool degrees = wanted.quantity == Quantity::angle && std::fabs(unit - kPi / 180.0) < 1e-15;
    return degrees ? Math_Deg_To_Rad(value) : value * unit;
  }
  return std::nullopt;
}

QString definitionOf(PJ_CONTEXT* context, const PJ* crs) {
  const char* const options[] = {"MULTILINE=NO", nullptr};
  return QString::fromUtf8(proj_as_wkt(context, crs, PJ_WKT2_2019, options));
}

}  // namespace

PjPtr createCrs(PJ_CONTEXT* context, const QString& text) {
  QByteArray bytes = text.trimmed().toUtf8();
  const bool operation = bytes.startsWith("+") || bytes.startsWith("proj=") || bytes.startsWith("init=");
  if (operation && !bytes.contains("type=crs")) bytes += " +type=crs";
  // PROJ takes and writes Miller's projection with this flag in mind, but when told it doesn't know the
  // method.
  if (operation && bytes.contains("proj=mill")) bytes.replace("+R_A", "");
  return PjPtr(proj_create(context, bytes.constData()));
}

CrsReader::CrsReader(PJ_CONTEXT* context, PjPtr crs) : context_(context), crs_(std::move(crs)) {}

std::optional<ProjectionParameters> CrsReader::read() {
  if (!unwrap() || !readFrame()) return std::nullopt;
  const bool mapped = isGeographic(proj_get_type(crs_.get())) ? mapGeographic() : mapProjected();
  if (mapped) {
    parameters_.name = projectionTypeName(parameters_.type);
  } else {
    makeForeign();
  }
  parameters_.epsg = confirmedCode();
  return parameters_;
}

/// Comes down to the plain two-dimensional system.
bool CrsReader::unwrap() {
  // A text can nest them; none that makes sense goes this deep.
  for (int depth = 0; depth < 4 && crs_; ++depth) {
    const PJ_TYPE type = proj_get_type(crs_.get());
    if (type == PJ_TYPE_BOUND_CRS) {
      unwrapBound();
    } else if (type == PJ_TYPE_COMPOUND_CRS) {
      crs_.reset(proj_crs_get_sub_crs(context_, crs_.get(), 0));
    } else if (type == PJ_TYPE_PROJECTED_CRS || isGeographic(type)) {
      PjPtr flat(proj_crs_demote_to_2D(context_, nullptr, crs_.get()));
      if (flat) crs_ = std::move(flat);
      return true;
    } else {
      return false;
    }
  }
  return false;
}

void CrsReader::unwrapBound() {
  if (!stated_) stated_ = statedShift(context_, crs_.get());
  crs_.reset(proj_get_source_crs(context_, crs_.get()));
}

bool CrsReader::readFrame() {
  base_ = baseGeographic(context_, crs_.get());
  if (!base_ || !isGeographic(proj_get_type(base_.get()))) return false;
  parameters_.datum = readDatum(context_, base_.get(), stated_);
  definition_ = definitionOf(context_, crs_.get());
  return !definition_.isEmpty();
}

bool CrsReader::mapGeographic() {
  parameters_.type = ProjectionType::latLong;
  return !proj_crs_is_derived(context_, crs_.get()) && startsAtGreenwich(context_, base_.get()) &&
         axesAreIn(context_, base_.get(), kPi / 180.0);
}

bool CrsReader::mapProjected() {
  if (!axesAreIn(context_, crs_.get(), 1.0) || !startsAtGreenwich(context_, base_.get())) return false;
  const PjPtr conversion(proj_crs_get_coordoperation(context_, crs_.get()));
  return conversion && readMethodParameters(conversion.get()) && agreesWithDefinition();
}

bool CrsReader::readMethodParameters(const PJ* conversion) {
  const char* name = nullptr;
  const char* code = nullptr;
  if (!proj_coordoperation_get_method_info(context_, conversion, &name, nullptr, &code)) return false;
  const ProjectionMethod* method = findMethod(QByteArray(code).toInt(), QString::fromUtf8(name));
  if (method == nullptr) return false;
  parameters_.type = method->type;
  for (const MethodParameter& parameter : method->parameters) {
    const std::optional<double> value = parameterOf(context_, conversion, parameter);
    if (value) parameters_.*parameter.member = *value;
  }
  return adaptParameters(*method, parameters_);
}

/// Compares with PROJ's own reading of the system at places round the central meridian.
bool CrsReader::agreesWithDefinition() const {
  ProjectionParameters foreign;
  foreign.type = ProjectionType::foreign;
  foreign.definition = definition_;
  const ProjectionEngine theirs(foreign), ours(parameters_);
  int compared = 0;
  for (const double latitude : {-70.0, -35.0, -5.0, 5.0, 35.0, 70.0}) {
    for (const double offset : {-2.5, 0.0, 2.5}) {
      double x1 = parameters_.centralMeridian + Math_Deg_To_Rad(offset), y1 = Math_Deg_To_Rad(latitude);
      double x2 = x1, y2 = y1;
      const bool first = theirs.toPlane(x1, y1), second = ours.toPlane(x2, y2);
      if (first != second) return false;
      if (!first) continue;
      if (!(std::fabs(x1 - x2) < 1e-6 && std::fabs(y1 - y2) < 1e-6)) return false;
      ++compared;
    }
  }
  return compared >= 4;
}

void CrsReader::makeForeign() {
  // The registry's own text, where there is one, makes the same system equal whatever file it came from.
  PjPtr registered = registeredFor(context_, crs_.get());
  if (registered) crs_ = std::move(registered);
  const Datum datum = parameters_.datum;
  parameters_ = ProjectionParameters();
  parameters_.type = ProjectionType::foreign;
  parameters_.datum = datum;
  parameters_.name = QString::fromUtf8(proj_get_name(crs_.get()));
  parameters_.definition = definitionOf(context_, crs_.get());
}

int CrsReader::confirmedCode() const {
  const int code = epsgCodeOf(crs_.get());
  if (code == 0) return 0;
  const PjPtr registered = registeredCrs(context_, code);
  return registered && isSameCrs(context_, crs_.get(), registered.get()) ? code : 0;
}

}  // namespace kaldex
