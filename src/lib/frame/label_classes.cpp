#include "base/tracer.h"
#include "kaldex/extforma.h"
#include "kaldex/model/catalog.h"
#include "lib/frame/label_search.h"
#include "lib/frame/progress_scope.h"

inline namespace kaldex_v1 {

/// Gives lines and polygons the classes of label points.
class SExtFormats::ClassTransfer {
 public:
  ClassTransfer(Vector& vector, float scale) : vector_(vector), search_(vector, scale) {}

  int run(SExtLabelPointList& labelPoints);

 private:
  bool classify(const SExtLabelPoint& labelPoint);
  bool classifyLine(const SExtLabelPoint& labelPoint);
  bool classifyPolygon(const SExtLabelPoint& labelPoint);

  Vector& vector_;
  kaldex::LabelSearch search_;
  kaldex::LabelTally tally_;
};

int SExtFormats::ClassTransfer::run(SExtLabelPointList& labelPoints) {
  kaldex::ProgressScope progress(labelPoints.Size());
  for (SExtLabelPoint* labelPoint : labelPoints) {
    progress.step();
    if (progress.cancelled()) return 0;
    if (labelPoint->Iclass == 0 || labelPoint->Coordinate() == nullptr || !classify(*labelPoint)) {
      ++tally_.notAssociated;
      continue;
    }
    ++tally_.associated;
    labelPoint->Iclass = 0;
  }
  show(tally_.text());
  tally_.report(tally_.associated);
  return 1;
}

bool SExtFormats::ClassTransfer::classify(const SExtLabelPoint& labelPoint) {
  return classifyLine(labelPoint) || classifyPolygon(labelPoint);
}

// A label on a boundary is meant for the polygon that it lies in, never for the boundary.
bool SExtFormats::ClassTransfer::classifyLine(const SExtLabelPoint& labelPoint) {
  const Point& place = *labelPoint.Coordinate();
  Line* const line = search_.findLine(place);
  if (line == nullptr) return false;
  const bool isFree = !kaldex::LabelSearch::isBoundary(*line);
  if (isFree) {
    if (line->classId != 0) ++tally_.alreadyAssociated;
    kaldex::label(*line, place, labelPoint.Iclass);
  }
  giveBack(vector_, line);
  return isFree;
}

bool SExtFormats::ClassTransfer::classifyPolygon(const SExtLabelPoint& labelPoint) {
  const Point& place = *labelPoint.Coordinate();
  SPolygon* const polygon = search_.findPolygon(place);
  if (polygon == nullptr) return false;
  if (polygon->classId != 0) ++tally_.alreadyAssociated;
  kaldex::label(*polygon, place, labelPoint.Iclass);
  delete polygon;
  return true;
}

int SExtFormats::Classify(Vector* vec) {
  const Tracer tracer(__FILE__, __LINE__, "SExtFormats::Classify");
  return guardedImport(vec, [&] {
    if (vec == nullptr) return 0;
    const InfoLayer* const layer = infoLayer != nullptr ? infoLayer : vec->infoLayer();
    return ClassTransfer(*vec, layer != nullptr ? layer->scale : 1.0f).run(labelPoints);
  });
}

}  // namespace kaldex_v1
