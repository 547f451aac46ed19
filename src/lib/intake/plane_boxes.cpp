#include "lib/intake/plane_boxes.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "kaldex/extforma.h"
#include "kaldex/intake.h"
#include "lib/frame/coordinate_transfer.h"

namespace kaldex {

namespace {

constexpr int kSteps = 21;         // points along an edge, as the layers' geographic boxes are made
constexpr double kMargin = 0.001;  // of a side
constexpr int kRounds = 30;
constexpr double kCloseEnough = 1e-12;  // radians, some micrometres on the ground

Box geographicBoxOf(const Box& box, const SProjection& projection) {
  Box result = Box::inverted();
  for (int i = 0; i < kSteps; ++i) {
    const double part = static_cast<double>(i) / (kSteps - 1);
    const double x = box.x1 + (box.x2 - box.x1) * part;
    const double y = box.y1 + (box.y2 - box.y1) * part;
    for (Point point : {Point(x, box.y1), Point(x, box.y2), Point(box.x1, y), Point(box.x2, y)}) {
      if (projection.planeToGeographic(point) && !point.isUnset()) result.extend(point.x, point.y);
    }
  }
  return result;
}

double roundScale(double scale) {
  const double power = std::pow(10.0, std::floor(std::log10(scale)));
  for (const double step : {1.0, 2.0, 5.0}) {
    if (scale <= step * power * (1 + 1e-9)) return step * power;
  }
  return 10.0 * power;
}

}  // namespace

bool isFinite(const Box& box) {
  return std::isfinite(box.x1) && std::isfinite(box.y1) && std::isfinite(box.x2) && std::isfinite(box.y2);
}

double unitFactor(int units) {
  const auto handler = std::make_unique<SExtFormats>();
  const QString unused = QStringLiteral("-");
  handler->Init(unused, units, unused, nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr, nullptr);
  return handler->Units2Meter();
}

Box planeBoxOf(const Box& geographic, const SProjection& projection) {
  Point low(geographic.x1, geographic.y1);
  Point high(geographic.x2, geographic.y2);
  if (!projection.geographicToPlane(low) || !projection.geographicToPlane(high)) return Box::inverted();
  Box box(low.x, low.y, high.x, high.y);
  const double unitsX = (box.x2 - box.x1) / (geographic.x2 - geographic.x1);
  const double unitsY = (box.y2 - box.y1) / (geographic.y2 - geographic.y1);
  if (!std::isfinite(unitsX) || !std::isfinite(unitsY)) return box;
  // Each side of the geographic box follows the same side of the plane one, so going by what is missing there
  // comes to rest after some rounds.
  for (int round = 0; round < kRounds; ++round) {
    const Box now = geographicBoxOf(box, projection);
    if (!isFinite(now) || now.isInverted()) break;
    const Box missing(geographic.x1 - now.x1, geographic.y1 - now.y1, geographic.x2 - now.x2,
                      geographic.y2 - now.y2);
    box = Box(box.x1 + unitsX * missing.x1, box.y1 + unitsY * missing.y1, box.x2 + unitsX * missing.x2,
              box.y2 + unitsY * missing.y2);
    const double worst =
        std::max({std::abs(missing.x1), std::abs(missing.y1), std::abs(missing.x2), std::abs(missing.y2)});
    if (worst < kCloseEnough) break;
  }
  return box;
}

}  // namespace kaldex

inline namespace kaldex_v1 {

Box transferredBox(const Box& box, SProjection* source, SProjection* target, int units) {
  const double factor = kaldex::unitFactor(units);
  const Box scaled(box.x1 * factor, box.y1 * factor, box.x2 * factor, box.y2 * factor);
  const kaldex::CoordinateTransfer transfer(source, target, units);
  if (transfer.isIdentity()) return scaled;
  // The inside too: a pole in it is farther out than any border.
  constexpr int kLast = kaldex::kSteps - 1;
  Box result = Box::inverted();
  for (int row = 0; row <= kLast; ++row) {
    for (int column = 0; column <= kLast; ++column) {
      Point point(scaled.x1 + (scaled.x2 - scaled.x1) * column / kLast,
                  scaled.y1 + (scaled.y2 - scaled.y1) * row / kLast);
      if (transfer.apply(point) && !point.isUnset()) result.extend(point.x, point.y);
    }
  }
  if (result.isInverted()) return result;
  const double marginX = (result.x2 - result.x1) * kaldex::kMargin;
  const double marginY = (result.y2 - result.y1) * kaldex::kMargin;
  return {result.x1 - marginX, result.y1 - marginY, result.x2 + marginX, result.y2 + marginY};
}

double suggestedScale(const Box& box, const SProjection* projection) {
  constexpr double kSheetSide = 1.0;  // metres
  const double factor = projection != nullptr ? projection->DegreeToMeterMultFactor() : 1.0;
  const double side = std::max(box.x2 - box.x1, box.y2 - box.y1) * factor;
  return std::isfinite(side) && side > 0.0 ? kaldex::roundScale(side / kSheetSide) : 1.0;
}

}  // namespace kaldex_v1
