#include "cli/map_view.h"

#include <algorithm>
#include <cmath>

#include "kaldex/model/angle.h"

namespace kaldex::cli {

namespace {

constexpr double kMargin = 1.04;  // of the data's size
constexpr double kSmallestCosine = 0.1;
constexpr double kNearly = 0.4;  // points of the picture
// Beyond this a coordinate is clipped; the painter loses its way with very large ones.
constexpr double kFarthest = 1e6;

}  // namespace

MapView::MapView(const Box& data, const SProjection* projection, const QRectF& frame)
    : frame_(frame), centerX_((data.x1 + data.x2) / 2), centerY_((data.y1 + data.y2) / 2) {
  const bool degrees = projection != nullptr && projection->isLatLong();
  const double squeeze = degrees ? std::max(kSmallestCosine, std::cos(Math_Deg_To_Rad(centerY_))) : 1.0;
  double width = (data.x2 - data.x1) * squeeze * kMargin;
  double height = (data.y2 - data.y1) * kMargin;
  if (width <= 0.0 && height <= 0.0) width = height = 1.0;
  const double byWidth = width > 0.0 ? frame.width() / width : HUGE_VAL;
  const double byHeight = height > 0.0 ? frame.height() / height : HUGE_VAL;
  scaleY_ = std::min(byWidth, byHeight);
  scaleX_ = scaleY_ * squeeze;
  metresPerPoint_ = (projection != nullptr ? projection->DegreeToMeterMultFactor() : 1.0) / scaleY_;
}

void MapView::trace(const double* xy, int count, QPolygonF& path) const {
  path.clear();
  for (int i = 0; i < count; ++i) {
    const QPointF raw = place(xy[2 * i], xy[2 * i + 1]);
    const QPointF point(std::clamp(raw.x(), -kFarthest, kFarthest),
                        std::clamp(raw.y(), -kFarthest, kFarthest));
    const bool last = i == count - 1;
    if (!path.isEmpty() && !last) {
      const QPointF step = point - path.last();
      if (std::abs(step.x()) < kNearly && std::abs(step.y()) < kNearly) continue;
    }
    path.append(point);
  }
}

}  // namespace kaldex::cli
