#include "base/tracer.h"
#include "kaldex/model/catalog.h"
#include "lib/dxf/geometry_import.h"

inline namespace kaldex_v1 {

namespace {

bool isNumeric(const InfoLayer* layer) {
  return layer != nullptr && layer->model() == DIGITALMODEL;
}

}  // namespace

/// Lines and points into a vector; into the samples of a numeric layer break lines.
class IEDXF::LineImport : public IEDXF::GeometryImport {
 public:
  LineImport(IEDXF& handler, Vector& vector, SProjection* target)
      : GeometryImport(handler, vector, target,
                       {representationFor(handler), isNumeric(handler.infoLayer) ? lineBreak : linePlain,
                        "lines", "points"}) {}

  /// Whether the vector can take lines in a layer of this model; tells the user if not.
  static bool accepts(const IEDXF& handler, const Vector& vector) {
    if (vector.representation() == representationFor(handler)) return true;
    logicRestriction(isNumeric(handler.infoLayer) ? "Not a SAMPLE Vector" : "Not a LINE Vector");
    return false;
  }

 private:
  static short representationFor(const IEDXF& handler) {
    return isNumeric(handler.infoLayer) ? vectorSamples : vectorLines;
  }

  Step takePoint(int code) override;
  Step takeLine(int code) override;
  bool usesHeights() const override { return false; }
};

IEDXF::EntityImport::Step IEDXF::LineImport::takePoint(int code) {
  if (!takeCoordinates(code) || code != kaldex::GroupCode::y) return Step::goOn;
  Point place;
  if (!placePoint(place)) return Step::goOn;
  Point2d point(place.x, place.y);
  point.flag = 1;
  return inserted(vector_.Insert(point));
}

IEDXF::EntityImport::Step IEDXF::LineImport::takeLine(int code) {
  takeCoordinates(code);
  return code == kaldex::GroupCode::endY ? insertLineOfTwo() : Step::goOn;
}

int IEDXF::ImportLines(Vector* vec, SProjection* target) {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::ImportLines");
  return guardedImport(vec, [&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (!LineImport::accepts(*this, *vec) || !openDrawing()) return 0;
    return LineImport(*this, *vec, target).run();
  });
}

}  // namespace kaldex_v1
