#ifndef KALDEX_SHAPEFILE_DIGITAL_EXPORT_H
#define KALDEX_SHAPEFILE_DIGITAL_EXPORT_H

#include "lib/shapefile/shape_export.h"

namespace kaldex {

// Where the height of a sample or contour goes.
enum class HeightForm {
  shape,   // into the shape, and into a column
  column,  // into a column alone; the shape is flat
};

// Exports the samples or contours of a numeric vector. `refused` for another geometry (told), and, without a
// word or a file, for a vector that has no store of that kind. May throw.
ExportOutcome exportDigital(const ExportRequest& request, short geometry, HeightForm form);

}  // namespace kaldex

#endif
