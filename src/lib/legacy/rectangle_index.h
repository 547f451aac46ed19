#ifndef KALDEX_LEGACY_RECTANGLE_INDEX_H
#define KALDEX_LEGACY_RECTANGLE_INDEX_H

#include "lib/legacy/line_files.h"
#include "lib/legacy/polygon_files.h"

namespace kaldex {

// The one index of the rectangles and point counts of all polygons of a pair of files, in 16 bits within the
// given range. 1, or 0 when there is no memory. Polygons that can't be read have a rectangle without extent
// and no points.
int RET_cria(PolygonFiles& polygons, LineFiles& lines, double xMin, double xMax, double yMin, double yMax);
// Points and rectangle of a polygon; 0, with no points and an inverted rectangle, for one that there is not.
int RET_get(int id, int& points, double& x1, double& x2, double& y1, double& y2);
void RET_destroi();

}  // namespace kaldex

#endif
