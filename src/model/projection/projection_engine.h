#ifndef KALDEX_MODEL_PROJECTION_PROJECTION_ENGINE_H
#define KALDEX_MODEL_PROJECTION_PROJECTION_ENGINE_H

#include "kaldex/model/projection.h"
#include "model/projection/proj_handles.h"

namespace kaldex {

/// The conversion that PROJ is to do for the types in metres ("+proj=tmerc +lat_0=..."); empty for other
/// types and when the datum or a parameter that the type needs is no usable number.
QByteArray projOperationText(const ProjectionParameters& parameters);

/// The false origin of a UTM zone: as given, and the customary one when nothing is given.
double utmFalseEasting(const ProjectionParameters& parameters);
double utmFalseNorthing(const ProjectionParameters& parameters);

/// True where a foreign system's longitudes and latitudes start from: `horizontal` may be derived from it.
PjPtr baseGeographic(PJ_CONTEXT* context, const PJ* horizontal);

/// Converts coordinates for one set of parameters. All of PROJ's set-up is done at construction; a set-up
/// that fails makes every conversion fail.
class ProjectionEngine {
 public:
  explicit ProjectionEngine(const ProjectionParameters& parameters);

  /// In place; what fails becomes unset.
  bool toGeographic(double& x, double& y) const;
  bool toPlane(double& x, double& y) const;

 private:
  enum class Kind { identity, degrees, projected, foreign, broken };

  void setUpProjected(const ProjectionParameters& parameters);
  void setUpForeign(const ProjectionParameters& parameters);
  bool readAngularFrame(const PJ* base);
  bool transform(PJ_DIRECTION direction, double& x, double& y) const;

  Kind kind_ = Kind::broken;
  PjContextPtr context_;
  PjPtr operation_;
  double radiansPerUnit_ = 1.0;  ///< Of the foreign system's base.
  double primeMeridian_ = 0.0;   ///< Likewise, radians east of Greenwich.
};

}  // namespace kaldex

#endif
