#ifndef KALDEX_KML_DOCUMENT_WALK_H
#define KALDEX_KML_DOCUMENT_WALK_H

#include <cstring>
#include <deque>
#include <vector>

#include "ogckml/kml_feature.h"

namespace kaldex {

enum class WalkStep { goOn, drop, stop };

// Visits the placemarks of a document in the order of a work list: those of a container before those of the
// containers in it. `visit(placemark)` says how to go on; one that is dropped is gone from the document.
template <class Visit>
void consumePlacemarks(KdxOgc::OgKMLDocument& document, Visit visit) {
  std::deque<KdxOgc::OgKMLAbstractContainer*> work{&document};
  for (; !work.empty(); work.pop_front()) {
    KdxOgc::OgKMLAbstractContainer& container = *work.front();
    for (std::size_t i = 0; i < container.features().size(); ++i) {
      KdxOgc::OgKMLAbstractFeature* const feature = container.features()[i];
      if (feature == nullptr) continue;
      const char* const type = feature->typeName();
      if (std::strcmp(type, "Document") == 0 || std::strcmp(type, "Folder") == 0) {
        work.push_back(static_cast<KdxOgc::OgKMLAbstractContainer*>(feature));
      } else if (std::strcmp(type, "Placemark") == 0) {
        const WalkStep step = visit(*static_cast<const KdxOgc::OgKMLPlacemark*>(feature));
        if (step == WalkStep::stop) return;
        if (step == WalkStep::drop) container.dropFeature(i);
      }
    }
  }
}

// The same without dropping any; ends early when `visit(placemark)` is false.
template <class Visit>
void walkPlacemarks(KdxOgc::OgKMLDocument& document, Visit visit) {
  consumePlacemarks(document, [&](const KdxOgc::OgKMLPlacemark& placemark) {
    return visit(placemark) ? WalkStep::goOn : WalkStep::stop;
  });
}

// Visits the geometries of a placemark, those of a MultiGeometry one by one to any depth.
template <class Visit>
void walkGeometries(const KdxOgc::OgKMLPlacemark& placemark, Visit visit) {
  if (placemark.getAbstractGeometry() == nullptr) return;
  std::vector<const KdxOgc::OgKMLAbstractGeometry*> work{placemark.getAbstractGeometry()};
  while (!work.empty()) {
    const KdxOgc::OgKMLAbstractGeometry* const geometry = work.back();
    work.pop_back();
    if (std::strcmp(geometry->typeName(), "MultiGeometry") != 0) {
      visit(*geometry);
      continue;
    }
    const auto& children = static_cast<const KdxOgc::OgKMLMultiGeometry*>(geometry)->children;
    for (auto child = children.rbegin(); child != children.rend(); ++child) work.push_back(child->get());
  }
}

}  // namespace kaldex

#endif
