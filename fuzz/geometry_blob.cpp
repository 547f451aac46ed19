// Geometry of a GeoPackage that another program may have written, and our own, which must come back as it
// was.

#include "model/database/geometry_blob.h"

#include <cstdlib>
#include <cstring>

namespace {

using kaldex::Bytes;

void decodeAnything(const std::uint8_t* data, std::size_t size) {
  std::vector<double> xy;
  kaldex::decodeLine(data, size, xy);
  for (const std::size_t ring : {0, 1, 7}) kaldex::decodeRing(data, size, ring, xy);
  double x = 0, y = 0, z = 0;
  kaldex::decodePoint(data, size, x, y, z);
  Box box;
  kaldex::decodeEnvelope(data, size, box);
}

bool sameBytes(const std::vector<double>& one, const std::vector<double>& other) {
  return one.size() == other.size() &&
         (one.empty() || std::memcmp(one.data(), other.data(), one.size() * sizeof(double)) == 0);
}

void comesBack(const std::uint8_t* data, std::size_t size) {
  std::vector<double> xy(size / (2 * sizeof(double)) * 2);
  if (!xy.empty()) std::memcpy(xy.data(), data, xy.size() * sizeof(double));
  const kaldex::Ring ring{xy.data(), xy.size() / 2};
  const Box box(1, 2, 3, 4);
  Bytes blob;
  std::vector<double> read;
  kaldex::encodeLine(blob, 4326, box, ring);
  if (!kaldex::decodeLine(blob.data(), blob.size(), read) || !sameBytes(xy, read)) std::abort();
  if (kaldex::decodeLine(blob.data(), blob.size() - 1, read)) std::abort();
  kaldex::encodePolygon(blob, 4326, box, {{xy.data(), 0}, ring});
  if (!kaldex::decodeRing(blob.data(), blob.size(), 1, read) || !sameBytes(xy, read)) std::abort();
  if (kaldex::decodeRing(blob.data(), blob.size(), 2, read)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  decodeAnything(data, size);
  comesBack(data, size);
  return 0;
}
