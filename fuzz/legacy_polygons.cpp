// The polygons of the older system's vector files and the places in them. Three numbers of 16 bits tell the
// lengths of .li1, .li2 and .po1, which follow; the rest is .po2.

#include <QFile>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "fuzz/support/scratch.h"
#include "kaldex/legacy.h"

namespace {

constexpr std::array<const char*, 4> kNames = {"in.li1", "in.li2", "in.po1", "in.po2"};

void writeFiles(const kaldex::fuzz::Scratch& scratch, std::string_view data) {
  std::array<std::size_t, kNames.size()> lengths;
  lengths.back() = data.size();
  for (std::size_t i = 0; i + 1 < lengths.size(); ++i) {
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(data[2 * i + at]); };
    lengths[i] = byte(0) + 256u * byte(1);
  }
  data.remove_prefix(2 * (lengths.size() - 1));
  for (std::size_t i = 0; i < kNames.size(); ++i) {
    scratch.write(kNames[i], data.substr(0, lengths[i]));
    data.remove_prefix(std::min(lengths[i], data.size()));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const kaldex::fuzz::Scratch scratch;
  static const QByteArray name = QFile::encodeName(scratch.path("in"));
  if (size < 2 * (kNames.size() - 1)) return 0;
  writeFiles(scratch, std::string_view(reinterpret_cast<const char*>(data), size));
  SExtLabelPointList list;
  carrega_centroides(name.constData(), list, 1.0, 0.0, 0.0);
  if (list.Count() != list.Size()) kaldex::fuzz::finding("serial numbers aren't");
  for (const SExtLabelPoint* label : list) {
    const Point& place = *label->Coordinate();
    if (!std::isfinite(place.x) || !std::isfinite(place.y)) kaldex::fuzz::finding("a place that is none");
  }
  return 0;
}
