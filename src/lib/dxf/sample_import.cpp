#include <QFile>
#include <cmath>

#include "base/tracer.h"
#include "lib/dxf/geometry_import.h"

inline namespace kaldex_v1 {

namespace {
constexpr short kSampleBits = 7;  // a vector whose kind has one of these bits takes samples
}

/// Points with heights, and lines of one height.
class IEDXF::SampleImport : public IEDXF::GeometryImport {
 public:
  SampleImport(IEDXF& handler, Vector& vector, SProjection* target)
      : GeometryImport(handler, vector, target, {vectorSamples, linePlain, "contours", "samples"}) {}

 private:
  void begin(Kind kind) override;
  Step takePoint(int code) override;
  Step takeLine(int code) override;
  bool usesHeights() const override { return true; }
  void finishSet() override;

  Step insertSample();

  bool hasPlace_ = false;
  bool hasHeight_ = false;
  float sampleHeight_ = 0.0f;
};

void IEDXF::SampleImport::begin(Kind kind) {
  GeometryImport::begin(kind);
  hasPlace_ = hasHeight_ = false;
}

// The height is behind the place, but for an elevation, which older drawings tell first.
IEDXF::EntityImport::Step IEDXF::SampleImport::takePoint(int code) {
  if (takeCoordinates(code)) {
    hasPlace_ = hasPlace_ || code == kaldex::GroupCode::y;
  } else if (code == kaldex::GroupCode::height || code == kaldex::GroupCode::elevation) {
    hasHeight_ = true;
    sampleHeight_ = static_cast<float>(real());
  } else {
    return Step::goOn;
  }
  return hasPlace_ && hasHeight_ ? insertSample() : Step::goOn;
}

IEDXF::EntityImport::Step IEDXF::SampleImport::insertSample() {
  Point place;
  if (!placePoint(place)) return Step::goOn;
  if (!std::isfinite(sampleHeight_)) return withoutHeight();
  Point3d sample(place.x, place.y, sampleHeight_);
  return inserted(vector_.Insert(sample, 0));
}

IEDXF::EntityImport::Step IEDXF::SampleImport::takeLine(int code) {
  if (takeCoordinates(code) || code != kaldex::GroupCode::endHeight) return Step::goOn;
  setHeight(static_cast<float>(real()));
  return insertLineOfTwo();
}

void IEDXF::SampleImport::finishSet() {
  Point3dSet* const points = vector_.point3dSet();
  if (points == nullptr) return;
  points->KeepFilesOpen(0);
  // Older stores kept points in a file beside the layer, which would be out of date now.
  QFile::remove(QStringLiteral("%1/%2.kdt").arg(vector_.directory(), vector_.name()));
}

int IEDXF::ImportSamples(Vector* vec, SProjection* target) {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::ImportSamples");
  return guardedImport(vec, [&] {
    if (vec == nullptr) return invalidArgument("vec");
    if ((vec->representation() & kSampleBits) == 0) return logicRestriction("No SAMPLES in Vector");
    return openDrawing() ? SampleImport(*this, *vec, target).run() : 0;
  });
}

}  // namespace kaldex_v1
