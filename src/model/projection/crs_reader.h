#ifndef KALDEX_MODEL_PROJECTION_CRS_READER_H
#define KALDEX_MODEL_PROJECTION_CRS_READER_H

#include <optional>

#include "kaldex/model/projection.h"
#include "model/projection/crs_datum.h"
#include "model/projection/proj_handles.h"

namespace kaldex {

/// A reference system of any form that PROJ reads ("+proj=..." needs no "+type=crs"); null when it reads
/// none.
PjPtr createCrs(PJ_CONTEXT* context, const QString& text);

/// Reads the parameters of one reference system.
class CrsReader {
 public:
  CrsReader(PJ_CONTEXT* context, PjPtr crs);
  /// Nothing when the system has no longitudes and latitudes to go back to.
  std::optional<ProjectionParameters> read();

 private:
  bool unwrap();
  void unwrapBound();
  bool readFrame();
  bool mapGeographic();
  bool mapProjected();
  bool readMethodParameters(const PJ* conversion);
  bool agreesWithDefinition() const;
  void makeForeign();
  int confirmedCode() const;

  PJ_CONTEXT* context_;
  PjPtr crs_;
  PjPtr base_;
  std::optional<DatumShift> stated_;
  QString definition_;
  ProjectionParameters parameters_;
};

}  // namespace kaldex

#endif
