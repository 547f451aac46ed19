#ifndef KALDEX_MODEL_PROJECTION_PROJECTION_METHODS_H
#define KALDEX_MODEL_PROJECTION_PROJECTION_METHODS_H

#include <QString>
#include <vector>

#include "kaldex/model/projection.h"

namespace kaldex {

enum class Quantity { angle, length, ratio };

/// One parameter of a projection method in the EPSG registry, and the member that holds it.
struct MethodParameter {
  int code;
  const char* name;
  Quantity quantity;
  double ProjectionParameters::*member;
};

/// A projection method as reference systems name it, and the type that it maps to.
struct ProjectionMethod {
  short type;
  int code;  ///< In the EPSG registry; 0 for methods known by name only.
  const char* name;
  std::vector<MethodParameter> parameters;
};

/// EPSG codes of the methods that need more than copying their parameters.
struct MethodCode {
  enum : int {
    lambertOneParallel = 9801,
    mercatorByScale = 9804,
    transverseMercator = 9807,
    polarStereographicByScale = 9810,
    polarStereographicByParallel = 9829,
  };
};

/// Null when none of the types does it.
const ProjectionMethod* findMethod(int code, const QString& name);
/// The method that a projection in metres is written as; null for the others.
const ProjectionMethod* methodFor(const ProjectionParameters& parameters);

/// Turns parameters just read by `method` into those that its type goes by; false when the type can't express
/// them.
bool adaptParameters(const ProjectionMethod& method, ProjectionParameters& parameters);
/// The other way: fills in what the type implies (UTM's scale, the pole) for writing.
ProjectionParameters writableParameters(const ProjectionParameters& parameters);

}  // namespace kaldex

#endif
