#ifndef KALDEX_KML_DOCUMENT_WALK_H
#define KALDEX_KML_DOCUMENT_WALK_H

#include <cstring>
#include <deque>
#include <vector>

#include "ogckml/kml_feature.h"

namespace kaldex {

// Visits the placemarks of a document in the order of a work list: those of a container before those of the
// containers in it. Ends early when `visit(placemark)` is false.
template <class Visit>
void walkPlacemarks(const KdxOgc::OgKMLDocument& document, Visit visit) {
  std::deque<const KdxOgc::OgKMLAbstractContainer*> work{&document};
  for (; !work.empty(); work.pop_front()) {
    for (const KdxOgc::OgKMLAbstractFeature* feature : work.front()->features()) {
      const char* const type = feature->typeName();
      if (std::strcmp(type, "Document") == 0 || std::strcmp(type, "Folder") == 0) {
        work.push_back(static_cast<const KdxOgc::OgKMLAbstractContainer*>(feature));
      } else if (std::strcmp(type, "Placemark") == 0) {
        if (!visit(*static_cast<const KdxOgc::OgKMLPlacemark*>(feature))) return;
      }
    }
  }
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
