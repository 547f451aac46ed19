#ifndef KALDEX_OGCKML_COORDINATE_TEXT_H
#define KALDEX_OGCKML_COORDINATE_TEXT_H

#include <string_view>
#include <vector>

namespace kaldex {

struct CoordinateTally {
  long long bad = 0;        // tuples without a longitude and a latitude
  long long altitudes = 0;  // other than 0
};

// Appends the longitudes and latitudes of a list of tuples, "longitude,latitude[,altitude]" with blanks or
// line feeds between them. What programs write is taken as it is meant: blanks around commas, and a comma
// behind a tuple.
void parseCoordinates(std::string_view text, std::vector<double>& pairs, CoordinateTally& tally);

}  // namespace kaldex

#endif
