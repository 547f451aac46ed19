#ifndef KALDEX_TESTS_SHAPEFILE_BYTE_MAKER_H
#define KALDEX_TESTS_SHAPEFILE_BYTE_MAKER_H

#include <QByteArray>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <vector>

namespace kaldex::test {

/// A square from (x, y) with sides of `side`, closed; counter-clockwise unless told.
inline std::vector<double> square(double x, double y, double side, bool clockwise = false) {
  if (clockwise) return {x, y, x, y + side, x + side, y + side, x + side, y, x, y};
  return {x, y, x + side, y, x + side, y + side, x, y + side, x, y};
}

/// Builds the bytes that a shapefile should have by the format's description, apart from the code under test.
class ByteMaker {
 public:
  ByteMaker& big(std::initializer_list<std::int32_t> values) {
    for (std::int32_t value : values) {
      for (int shift = 24; shift >= 0; shift -= 8) put(static_cast<std::uint32_t>(value) >> shift);
    }
    return *this;
  }
  ByteMaker& little(std::initializer_list<std::int32_t> values) {
    for (std::int32_t value : values) {
      for (int shift = 0; shift <= 24; shift += 8) put(static_cast<std::uint32_t>(value) >> shift);
    }
    return *this;
  }
  ByteMaker& reals(const std::vector<double>& values) {
    for (double value : values) {
      std::uint64_t bits;
      std::memcpy(&bits, &value, sizeof bits);
      for (int shift = 0; shift <= 56; shift += 8) put(static_cast<std::uint32_t>(bits >> shift));
    }
    return *this;
  }
  /// A file header: length in words, shape type and box.
  ByteMaker& header(std::int32_t words, std::int32_t type, const std::vector<double>& box) {
    return big({9994, 0, 0, 0, 0, 0, words}).little({1000, type}).reals(box).reals({0, 0, 0, 0});
  }
  operator QByteArray() const { return bytes_; }

 private:
  void put(std::uint32_t bits) { bytes_.append(static_cast<char>(bits & 0xff)); }

  QByteArray bytes_;
};

/// Content bytes of an arc or polygon record.
inline QByteArray arcContent(std::int32_t type, const std::vector<double>& box,
                             const std::vector<std::int32_t>& starts, const std::vector<double>& xy) {
  ByteMaker maker;
  maker.little({type}).reals(box).little(
      {static_cast<std::int32_t>(starts.size()), static_cast<std::int32_t>(xy.size() / 2)});
  for (std::int32_t start : starts) maker.little({start});
  return maker.reals(xy);
}

/// The .shp and .shx files that hold these contents; a content that is null leaves a gap in the record
/// numbers.
struct ExpectedShapes {
  ExpectedShapes(std::int32_t type, const std::vector<double>& box, const std::vector<QByteArray>& contents) {
    QByteArray body;
    ByteMaker entries;
    std::int32_t number = 0;
    std::int32_t written = 0;
    for (const QByteArray& content : contents) {
      ++number;
      if (content.isNull()) continue;
      ++written;
      const std::int32_t words = content.size() / 2;
      entries.big({50 + body.size() / 2, words});
      body += QByteArray(ByteMaker().big({number, words})) + content;
    }
    shp = QByteArray(ByteMaker().header(50 + body.size() / 2, type, box)) + body;
    shx = QByteArray(ByteMaker().header(50 + 4 * written, type, box)) + QByteArray(entries);
  }

  QByteArray shp;
  QByteArray shx;
};

}  // namespace kaldex::test

#endif
