// Reference systems told as text: EPSG codes, PROJ strings, WKT. What is understood must be told again
// without harm.

#include "kaldex/model/projection_text.h"

#include <cmath>

#include "fuzz/support/input.h"

namespace {

void use(const SProjection& projection) {
  Point point(-0.78, -0.4);
  if (projection.geographicToPlane(point)) projection.planeToGeographic(point);
  for (const WktVariant variant : {WktVariant::gdal1, WktVariant::esri1, WktVariant::wkt2}) {
    projectionToWkt(projection, variant);
  }
  projectionToProj4(projection);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = kaldex::fuzz::expandRuns(kaldex::fuzz::Input(data, size).rest());
  QString error;
  const auto projection =
      projectionFromText(QString::fromUtf8(text.data(), static_cast<int>(text.size())), &error);
  if (projection != nullptr) use(*projection);
  return 0;
}
