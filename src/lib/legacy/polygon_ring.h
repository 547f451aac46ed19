#ifndef KALDEX_LEGACY_POLYGON_RING_H
#define KALDEX_LEGACY_POLYGON_RING_H

#include <vector>

#include "lib/legacy/line_files.h"

namespace kaldex {

// Join the `count` lines into one ring: 1, or 0 when a line can't be read or has more than 1004 points, or
// the ring gets more than 65535 (which the older system counted in 16 bits). Lines are taken in their order,
// each in the direction that lets it begin where the one before ended; a single line is taken backwards.
int monta_poligono(LineFiles& files, LineRecord& record, int count, std::vector<float>& x,
                   std::vector<float>& y, const std::int16_t* ids);

// Where the ring of `count` points, the last equal to the first, crosses the horizontal line at `y`, in
// ascending x. A vertex that only touches the line is no crossing; an edge on the line is one where the ring
// passes through. 1.
int corta_poli(double y, std::vector<double>& xs, int count, const float* px, const float* py);

}  // namespace kaldex

#endif
