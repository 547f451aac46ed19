#ifndef KALDEX_TESTS_SHAPEFILE_BYTE_MAKER_H
#define KALDEX_TESTS_SHAPEFILE_BYTE_MAKER_H

#include <QByteArray>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <vector>

namespace kaldex::test {

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

}  // namespace kaldex::test

#endif
