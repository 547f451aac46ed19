#include "model/database/geometry_blob.h"

#include <algorithm>
#include <cstring>

namespace kaldex {

namespace {

constexpr bool hostIsLittleEndian() {
#if __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
  return true;
#else
  return false;
#endif
}

constexpr std::size_t headerSize = 8;
constexpr std::size_t envelopeSize = 32;
constexpr std::uint32_t wkbPoint = 1, wkbLine = 2, wkbPolygon = 3, wkbPointZ = 1001;

void swapBytes(std::uint8_t* bytes, std::size_t size) {
  std::reverse(bytes, bytes + size);
}

/// Appends little-endian values to a buffer whose final size is known.
class BlobWriter {
 public:
  BlobWriter(Bytes& out, std::size_t size) {
    out.resize(size);
    place_ = out.data();
  }

  void byte(std::uint8_t value) { *place_++ = value; }
  void integer(std::uint32_t value) { put(&value, sizeof value); }
  void real(double value) { put(&value, sizeof value); }
  void reals(const double* values, std::size_t count) {
    if (hostIsLittleEndian()) {
      if (count > 0) std::memcpy(place_, values, count * sizeof(double));
      place_ += count * sizeof(double);
      return;
    }
    for (std::size_t i = 0; i < count; ++i) real(values[i]);
  }
  void header(int srsId, bool withEnvelope) {
    byte('G');
    byte('P');
    byte(0);
    byte(withEnvelope ? 0x03 : 0x01);  // little-endian, envelope of x and y or none
    integer(static_cast<std::uint32_t>(srsId));
  }
  void envelope(const Box& box) {
    real(box.x1);
    real(box.x2);
    real(box.y1);
    real(box.y2);
  }
  void geometry(std::uint32_t type) {
    byte(1);
    integer(type);
  }

 private:
  void put(const void* value, std::size_t size) {
    std::memcpy(place_, value, size);
    if (!hostIsLittleEndian()) swapBytes(place_, size);
    place_ += size;
  }

  std::uint8_t* place_;
};

/// Reads values of either byte order; every read is checked against the end.
class BlobReader {
 public:
  BlobReader(const std::uint8_t* data, std::size_t size) : place_(data), end_(data + size) {}

  std::size_t left() const { return static_cast<std::size_t>(end_ - place_); }
  bool skip(std::size_t size) {
    if (left() < size) return false;
    place_ += size;
    return true;
  }
  bool byte(std::uint8_t& value) {
    if (left() < 1) return false;
    value = *place_++;
    return true;
  }
  void order(bool littleEndian) { swap_ = littleEndian != hostIsLittleEndian(); }
  bool integer(std::uint32_t& value) { return get(&value, sizeof value); }
  bool real(double& value) { return get(&value, sizeof value); }

  /// Header of the GeoPackage binary; `envelope` is its kind (0 none, 1 xy, 2 and 3 xyz and xym, 4 xyzm).
  bool header(unsigned& envelope, bool& empty) {
    if (left() < headerSize || place_[0] != 'G' || place_[1] != 'P') return false;
    const std::uint8_t flags = place_[3];
    order((flags & 0x01) != 0);
    envelope = (flags >> 1) & 0x07;
    empty = (flags & 0x10) != 0;
    return envelope <= 4 && skip(headerSize);
  }
  bool skipEnvelope(unsigned kind) {
    static constexpr std::size_t sizes[] = {0, 32, 48, 48, 64};
    return skip(sizes[kind]);
  }
  /// Byte order and type of the WKB that follows; `stride` is the number of ordinates of a point.
  bool geometry(std::uint32_t& type, std::size_t& stride) {
    std::uint8_t littleEndian = 0;
    if (!byte(littleEndian) || littleEndian > 1) return false;
    order(littleEndian == 1);
    std::uint32_t code = 0;
    if (!integer(code)) return false;
    const bool extendedZ = (code & 0x80000000u) != 0;
    const bool extendedM = (code & 0x40000000u) != 0;
    code &= 0x0fffffffu;
    const std::uint32_t dimensions = code / 1000;
    if (dimensions > 3) return false;
    type = code % 1000;
    stride = 2 + (dimensions == 1 || dimensions == 2 || extendedZ || extendedM ? 1 : 0);
    if (dimensions == 3 || (extendedZ && extendedM)) stride = 4;
    return true;
  }
  bool points(std::size_t stride, std::vector<double>& xy) {
    std::uint32_t count = 0;
    if (!integer(count) || count > left() / (stride * sizeof(double))) return false;
    xy.resize(2 * static_cast<std::size_t>(count));
    if (stride == 2 && !swap_) {
      if (count > 0) std::memcpy(xy.data(), place_, xy.size() * sizeof(double));
      return skip(xy.size() * sizeof(double));
    }
    for (std::size_t i = 0; i < count; ++i) {
      if (!real(xy[2 * i]) || !real(xy[2 * i + 1]) || !skip((stride - 2) * sizeof(double))) return false;
    }
    return true;
  }
  bool skipPoints(std::size_t stride) {
    std::uint32_t count = 0;
    return integer(count) && count <= left() / (stride * sizeof(double)) &&
           skip(count * stride * sizeof(double));
  }

 private:
  bool get(void* value, std::size_t size) {
    if (left() < size) return false;
    std::memcpy(value, place_, size);
    if (swap_) swapBytes(static_cast<std::uint8_t*>(value), size);
    place_ += size;
    return true;
  }

  const std::uint8_t* place_;
  const std::uint8_t* end_;
  bool swap_ = false;
};

/// Opens a blob up to its WKB's content.
bool openGeometry(BlobReader& reader, std::uint32_t& type, std::size_t& stride) {
  unsigned envelope = 0;
  bool empty = false;
  return reader.header(envelope, empty) && reader.skipEnvelope(envelope) && reader.geometry(type, stride);
}

void encodePointAs(Bytes& out, int srsId, std::uint32_t type, const double* ordinates, std::size_t count) {
  BlobWriter writer(out, headerSize + 5 + count * sizeof(double));
  writer.header(srsId, false);
  writer.geometry(type);
  writer.reals(ordinates, count);
}

}  // namespace

void encodeLine(Bytes& out, int srsId, const Box& box, Ring points) {
  BlobWriter writer(out, headerSize + envelopeSize + 9 + points.count * 2 * sizeof(double));
  writer.header(srsId, true);
  writer.envelope(box);
  writer.geometry(wkbLine);
  writer.integer(static_cast<std::uint32_t>(points.count));
  writer.reals(points.xy, 2 * points.count);
}

void encodePolygon(Bytes& out, int srsId, const Box& box, const std::vector<Ring>& rings) {
  std::size_t size = headerSize + envelopeSize + 9;
  for (const Ring& ring : rings) size += 4 + ring.count * 2 * sizeof(double);
  BlobWriter writer(out, size);
  writer.header(srsId, true);
  writer.envelope(box);
  writer.geometry(wkbPolygon);
  writer.integer(static_cast<std::uint32_t>(rings.size()));
  for (const Ring& ring : rings) {
    writer.integer(static_cast<std::uint32_t>(ring.count));
    writer.reals(ring.xy, 2 * ring.count);
  }
}

void encodePoint(Bytes& out, int srsId, double x, double y) {
  const double ordinates[] = {x, y};
  encodePointAs(out, srsId, wkbPoint, ordinates, 2);
}

void encodePointZ(Bytes& out, int srsId, double x, double y, double z) {
  const double ordinates[] = {x, y, z};
  encodePointAs(out, srsId, wkbPointZ, ordinates, 3);
}

bool decodeLine(const std::uint8_t* blob, std::size_t size, std::vector<double>& xy) {
  BlobReader reader(blob, size);
  std::uint32_t type = 0;
  std::size_t stride = 0;
  return openGeometry(reader, type, stride) && type == wkbLine && reader.points(stride, xy);
}

bool decodeRing(const std::uint8_t* blob, std::size_t size, std::size_t ring, std::vector<double>& xy) {
  BlobReader reader(blob, size);
  std::uint32_t type = 0;
  std::uint32_t rings = 0;
  std::size_t stride = 0;
  if (!openGeometry(reader, type, stride) || type != wkbPolygon || !reader.integer(rings)) return false;
  if (ring >= rings) return false;
  for (std::size_t i = 0; i < ring; ++i) {
    if (!reader.skipPoints(stride)) return false;
  }
  return reader.points(stride, xy);
}

bool decodePoint(const std::uint8_t* blob, std::size_t size, double& x, double& y, double& z) {
  BlobReader reader(blob, size);
  std::uint32_t type = 0;
  std::size_t stride = 0;
  z = kUnsetValue;
  if (!openGeometry(reader, type, stride) || type != wkbPoint) return false;
  if (!reader.real(x) || !reader.real(y)) return false;
  return stride == 2 || reader.real(z);
}

bool decodeEnvelope(const std::uint8_t* blob, std::size_t size, Box& box) {
  BlobReader reader(blob, size);
  unsigned envelope = 0;
  bool empty = false;
  if (!reader.header(envelope, empty) || empty) return false;
  if (envelope != 0) {
    return reader.real(box.x1) && reader.real(box.x2) && reader.real(box.y1) && reader.real(box.y2);
  }
  std::vector<double> xy;
  double x = 0, y = 0, z = 0;
  if (decodePoint(blob, size, x, y, z)) {
    box = Box(x, y, x, y);
    return true;
  }
  if (!decodeLine(blob, size, xy) && !decodeRing(blob, size, 0, xy)) return false;
  box = boxOf(xy.data(), xy.size() / 2);
  return !box.isInverted();
}

Box boxOf(const double* xy, std::size_t count) {
  Box box = Box::inverted();
  for (std::size_t i = 0; i < count; ++i) box.extend(xy[2 * i], xy[2 * i + 1]);
  return box;
}

}  // namespace kaldex
