#ifndef KALDEX_SHAPEFILE_COORDINATE_OUTPUT_H
#define KALDEX_SHAPEFILE_COORDINATE_OUTPUT_H

#include <vector>

#include "kaldex/model/geometry.h"
#include "kaldex/model/projection.h"

namespace kaldex {

// The coordinates of an export: what ExpCoordShp does to a place, for many at once.
class CoordinateOutput {
 public:
  // The projection is borrowed; null leaves all coordinates as they are.
  CoordinateOutput(const SProjection* projection, short mode);

  // Whether coordinates change at all, and to which unit.
  bool changes() const { return factor_ != 0.0; }
  bool isDegrees() const { return mode_ == 2 && changes(); }

  // In place, `count` pairs x, y.
  void apply(double* xy, int count);
  void apply(double& x, double& y);
  Box apply(const Box& box);
  // The pairs themselves where nothing changes, else a changed copy that lives until the next call.
  const double* applied(const double* xy, int count);

  // Whether a place had no geographic coordinates.
  bool hasFailed() const { return failed_; }

 private:
  const SProjection* projection_;
  short mode_;
  double factor_ = 0.0;
  bool failed_ = false;
  std::vector<double> copy_;
};

}  // namespace kaldex

#endif
