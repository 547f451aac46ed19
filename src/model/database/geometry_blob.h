#ifndef KALDEX_MODEL_GEOMETRY_BLOB_H
#define KALDEX_MODEL_GEOMETRY_BLOB_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "kaldex/model/geometry.h"

// GeoPackage geometry binary (OGC 12-128r18, 2.1.3): a header with the envelope, then WKB. Written
// little-endian; read in either byte order, with or without Z and M, with any envelope, since other programs
// may have edited the file.

namespace kaldex {

using Bytes = std::vector<std::uint8_t>;

struct Ring {
  const double* xy;
  std::size_t count;
};

/// Each replaces the content of `out`. `box` is the envelope, as SQLite's index and other programs will see
/// it.
void encodeLine(Bytes& out, int srsId, const Box& box, Ring points);
void encodePolygon(Bytes& out, int srsId, const Box& box, const std::vector<Ring>& rings);
void encodePoint(Bytes& out, int srsId, double x, double y);
void encodePointZ(Bytes& out, int srsId, double x, double y, double z);

/// Each returns false for bytes that are not such a geometry, or claim more than there is. Z and M are passed
/// over but for decodePoint, which gives z (kUnsetValue without one).
bool decodeLine(const std::uint8_t* blob, std::size_t size, std::vector<double>& xy);
/// One ring of a polygon, counted from 0, the outer one first.
bool decodeRing(const std::uint8_t* blob, std::size_t size, std::size_t ring, std::vector<double>& xy);
bool decodePoint(const std::uint8_t* blob, std::size_t size, double& x, double& y, double& z);
/// The envelope: from the header, or from the points of a geometry without one. False for an empty geometry.
bool decodeEnvelope(const std::uint8_t* blob, std::size_t size, Box& box);

/// Box of `count` x, y pairs; inverted for none.
Box boxOf(const double* xy, std::size_t count);

}  // namespace kaldex

#endif
