#ifndef KALDEX_CLI_MAP_VIEW_H
#define KALDEX_CLI_MAP_VIEW_H

#include <QPolygonF>
#include <QRectF>

#include "kaldex/model/geometry.h"
#include "kaldex/model/projection.h"

namespace kaldex::cli {

/// The way from a plane to the picture: the same scale both ways, but that degrees of longitude are drawn as
/// long as they are on the ground in the middle of the map.
class MapView {
 public:
  MapView(const Box& data, const SProjection* projection, const QRectF& frame);

  QPointF place(double x, double y) const {
    return {frame_.center().x() + (x - centerX_) * scaleX_, frame_.center().y() - (y - centerY_) * scaleY_};
  }
  /// The vertices of x, y pairs, without those that fall on the one before.
  void trace(const double* xy, int count, QPolygonF& path) const;
  const QRectF& frame() const { return frame_; }
  /// Metres in the middle of the map (or plane units without a projection) for each point of the picture.
  double metresPerPoint() const { return metresPerPoint_; }

 private:
  QRectF frame_;
  double centerX_;
  double centerY_;
  double scaleX_;
  double scaleY_;
  double metresPerPoint_;
};

}  // namespace kaldex::cli

#endif
