#include <QObject>
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "base/byte_order.h"
#include "base/companion_file.h"
#include "base/file_window.h"
#include "kaldex/intake.h"

inline namespace kaldex_v1 {

namespace {

using kaldex::FileWindow;

constexpr std::size_t kHeaderSize = 100;
constexpr std::size_t kRecordHeaderSize = 8;
constexpr std::int32_t kFileCode = 9994;

// The box of a record whose content this is; false for a null shape and what is no box.
bool recordBox(const unsigned char* content, std::size_t size, Box& box) {
  using kaldex::loadLittle;
  if (size < 20) return false;
  const auto type = loadLittle<std::int32_t>(content);
  const bool point = type % 10 == 1;
  if (type == 0 || (!point && size < 36)) return false;
  const double x = loadLittle<double>(content + 4);
  const double y = loadLittle<double>(content + 12);
  box =
      point ? Box(x, y, x, y) : Box(x, y, loadLittle<double>(content + 20), loadLittle<double>(content + 28));
  return std::isfinite(box.x1) && std::isfinite(box.y1) && std::isfinite(box.x2) && std::isfinite(box.y2) &&
         !box.isInverted();
}

}  // namespace

ShapeOutline::ShapeOutline(const QString& path) : path_(kaldex::companionFile(path, "shp")) {
  using kaldex::loadLittle;
  if (path_.isEmpty()) return;
  FileWindow file(path_);
  unsigned char header[kHeaderSize];
  if (!file.isOpen() || file.read(0, header, kHeaderSize) != kHeaderSize) return;
  valid_ = kaldex::loadBig<std::int32_t>(header) == kFileCode;
  type_ = loadLittle<std::int32_t>(header + 32);
  box_ = Box(loadLittle<double>(header + 36), loadLittle<double>(header + 44),
             loadLittle<double>(header + 52), loadLittle<double>(header + 60));
}

Box ShapeOutline::extent(long long* count) const {
  Box box = Box::inverted();
  long long records = 0;
  FileWindow file(path_);
  std::uint64_t offset = kHeaderSize;
  while (file.isOpen() && offset + kRecordHeaderSize <= file.size()) {
    unsigned char bytes[kRecordHeaderSize + 36];
    const std::size_t got = file.read(offset, bytes, sizeof bytes);
    if (got < kRecordHeaderSize + 4) break;
    const auto words = kaldex::loadBig<std::int32_t>(bytes + 4);
    if (words < 2) break;
    const std::uint64_t size = 2 * static_cast<std::uint64_t>(words);
    if (size > file.size() - offset - kRecordHeaderSize) break;
    ++records;
    Box one;
    const auto known = static_cast<std::size_t>(std::min<std::uint64_t>(size, got - kRecordHeaderSize));
    if (recordBox(bytes + kRecordHeaderSize, known, one)) box.extend(one);
    offset += kRecordHeaderSize + size;
  }
  if (count != nullptr) *count = records;
  return box;
}

QString ShapeOutline::typeName() const {
  QString name;
  switch (type_ % 10) {
    case 0:
      name = QObject::tr("vazio");
      break;
    case 1:
      name = type_ == 31 ? QObject::tr("superfícies") : QObject::tr("pontos");
      break;
    case 3:
      name = QObject::tr("linhas");
      break;
    case 5:
      name = QObject::tr("polígonos");
      break;
    case 8:
      name = QObject::tr("multipontos");
      break;
    default:
      return QObject::tr("desconhecido");
  }
  if (type_ > 10 && type_ < 20) return name + QStringLiteral(" Z");
  return type_ > 20 && type_ < 30 ? name + QStringLiteral(" M") : name;
}

}  // namespace kaldex_v1
