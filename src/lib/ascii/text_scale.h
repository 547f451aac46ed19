#ifndef KALDEX_ASCII_TEXT_SCALE_H
#define KALDEX_ASCII_TEXT_SCALE_H

#include "kaldex/model/catalog.h"
#include "kaldex/model/projection.h"

namespace kaldex {

// Sizes of texts: in the database plane units at map scale, in files and visuals millimetres on paper.
class TextScale {
 public:
  // Both are borrowed, and may be null.
  TextScale(const InfoLayer* layer, const SProjection* projection) {
    if (layer != nullptr) {
      scale_ =
          layer->model() == IMAGEMODEL ? 2 * 1000 * layer->resolution : static_cast<double>(layer->scale);
    }
    // A layer without a scale can't be plotted: sizes stay as they are.
    if (!(scale_ > 0.0)) scale_ = 1000.0;
    if (projection != nullptr) toMetre_ = projection->DegreeToMeterMultFactor();
  }

  double toPaper(float size) const { return static_cast<double>(size) * (1000 / scale_) * toMetre_; }
  float fromPaper(double millimetres) const {
    return static_cast<float>(millimetres / (1000 / scale_) / toMetre_);
  }
  double scale() const { return scale_; }
  double toMetre() const { return toMetre_; }

 private:
  double scale_ = 1000.0;
  double toMetre_ = 1.0;
};

}  // namespace kaldex

#endif
