#ifndef KALDEX_DXF_TEXT_WALK_H
#define KALDEX_DXF_TEXT_WALK_H

#include "lib/dxf/entity_import.h"

inline namespace kaldex_v1 {

/// What the imports of texts have in common: one item for each text of a chosen layer.
class IEDXF::TextWalk : public IEDXF::EntityImport {
 protected:
  TextWalk(IEDXF& handler, SProjection* target) : EntityImport(handler, target) {}

  bool takes(Kind kind) const override { return kind == Kind::text; }
  void begin(Kind) override {
    active_ = false;
    x_ = 0.0;
  }
  void enter(bool chosen) override {
    if (chosen && !active_) beginText();
    active_ = chosen;
  }
  bool isActive() const override { return active_; }
  bool finishEntity() override {
    const bool good = !active_ || finishText();
    active_ = false;
    return good;
  }

  virtual void beginText() = 0;
  /// The text at hand is complete; false ends the import as a failure.
  virtual bool finishText() = 0;

  double x_ = 0.0;

 private:
  bool active_ = false;
};

}  // namespace kaldex_v1

#endif
