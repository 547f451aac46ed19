#ifndef KALDEX_SHAPEFILE_SIDECARS_H
#define KALDEX_SHAPEFILE_SIDECARS_H

#include <QString>
#include <string>

#include "kaldex/model/projection.h"
#include "lib/shapefile/coordinate_output.h"

namespace kaldex {

// The small files beside a shapefile that tell how to read it. Both return false if a file can't be written.

// "BASE.cpg": the encoding of the table's texts.
bool writeEncodingFile(const std::string& base);

// "BASE.prj": the reference system of the coordinates, as they were written. Where it can't be told (seconds
// of arc, no projection) an older export's file is taken away, since it would tell a wrong one; `written`
// says which it was.
bool writeProjectionFile(const std::string& base, const SProjection* projection,
                         const CoordinateOutput& coordinates, bool& written);

}  // namespace kaldex

#endif
