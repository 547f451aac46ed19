#include <QObject>
#include <algorithm>
#include <cstring>
#include <memory>
#include <string_view>

#include "base/strings.h"
#include "base/text_input.h"
#include "base/tracer.h"
#include "kaldex/extforma.h"
#include "kaldex/model/angle.h"
#include "kaldex/model/catalog.h"
#include "kaldex/model/projection.h"
#include "lib/frame/coordinate_transfer.h"
#include "lib/frame/delimited_record.h"
#include "lib/frame/lat_long_record.h"

inline namespace kaldex_v1 {

namespace {

constexpr std::size_t kLongestLine = 32767;      // positions in a line are 16-bit numbers by contract
constexpr std::size_t kLongestRecord = 28671;    // of a delimited record
constexpr std::size_t kLongestTypedRow = 40959;  // of the row that column types are found by
constexpr int kMostColumns = 256;

bool isComment(const char* text) {
  return text[0] == '/' && text[1] == '/';
}

}  // namespace

int SExtFormats::LerLinha() {
  const Tracer tracer(__FILE__, __LINE__, "SExtFormats::LerLinha");
  return readLine();
}

int SExtFormats::readLine() {
  if (file == nullptr) return 0;
  const std::size_t start = line[0] == 0 ? 0 : strnlen(line, kLineCapacity - 1);
  for (;;) {
    LineEnd end = start == 0 ? readFreshLine() : readLineBehind(start);
    lineDirty_ = std::max(lineDirty_, lineLength_ + 1);
    if (end == LineEnd::lineFeed && lineLength_ == 0) continue;
    if (end != LineEnd::fileEnd && isComment(line)) {
      if (end == LineEnd::lineFeed || kaldex::skipLine(file) != 0) continue;
      end = LineEnd::fileEnd;
    }
    line[lineLength_] = 0;
    if (end == LineEnd::lineFeed) return 1;
    if (end == LineEnd::tooLong) return refuseLongLine();
    FileClose();
    return 0;
  }
}

SExtFormats::LineEnd SExtFormats::readFreshLine() {
  std::memset(line, ' ', std::max<std::size_t>(lineDirty_, 1));
  lineDirty_ = 0;
  lineLength_ = 0;
  int c = kaldex::readCharacter(file);
  while (c == ' ' || c == '\t') c = kaldex::readCharacter(file);
  if (c == '\n') return LineEnd::lineFeed;
  if (c == EOF) return LineEnd::fileEnd;
  line[lineLength_++] = static_cast<char>(c);
  if (fgets_unlocked(line + 1, static_cast<int>(kLongestLine) + 1, file) == nullptr) return LineEnd::fileEnd;

  // The buffer was blank, so the line feed that stands in it is the line's, and the last terminator is the
  // one that was put behind it, even if the line holds terminators of its own.
  if (char* const feed = static_cast<char*>(std::memchr(line + 1, '\n', kLongestLine))) {
    feed[1] = ' ';
    lineLength_ = static_cast<std::size_t>(feed - line);
    return LineEnd::lineFeed;
  }
  const auto* const terminator = static_cast<const char*>(memrchr(line + 1, 0, kLongestLine + 1));
  lineLength_ = static_cast<std::size_t>(terminator - line);
  return feof(file) != 0 ? LineEnd::fileEnd : LineEnd::tooLong;
}

SExtFormats::LineEnd SExtFormats::readLineBehind(std::size_t start) {
  lineLength_ = start;
  int c = kaldex::readCharacter(file);
  for (; c != '\n' && c != EOF && lineLength_ < kLongestLine; c = kaldex::readCharacter(file)) {
    line[lineLength_++] = static_cast<char>(c);
  }
  if (c == EOF) return LineEnd::fileEnd;
  return c == '\n' && lineLength_ <= kLongestLine ? LineEnd::lineFeed : LineEnd::tooLong;
}

// What is beyond the longest line can't be kept, and a record that is cut in silence may pass for another
// one.
int SExtFormats::refuseLongLine() {
  inconsistent(line);
  lineRefused_ = true;
  FileClose();
  return 0;
}

bool SExtFormats::readWordIntoLine() {
  std::size_t length = 0;
  if (file == nullptr || kaldex::readWord(file, line, kLineCapacity, &length) == EOF) return false;
  lineDirty_ = std::max(lineDirty_, length + 1);
  return true;
}

void SExtFormats::setLine(const char* text) {
  const std::size_t size = std::min(std::strlen(text), kLineCapacity - 1);
  std::memmove(line, text, size);
  line[size] = 0;
  lineDirty_ = std::max(lineDirty_, size + 1);
}

int SExtFormats::LerLatLong(SProjection* target, Point& point, float& z) {
  const Tracer tracer(__FILE__, __LINE__, "SExtFormats::LerLatLong");
  return readLatLong(kaldex::CoordinateTransfer(projection, target, units), point, z);
}

int SExtFormats::readLatLong(const kaldex::CoordinateTransfer& transfer, Point& point, float& z) {
  kaldex::LatLongRecord record;
  switch (kaldex::parseLatLong(line, record)) {
    case kaldex::LatLongResult::end:
      point = Point(0.0, 0.0);
      return 0;
    case kaldex::LatLongResult::malformed:
      point = Point(-1.0, -1.0);
      return 0;
    case kaldex::LatLongResult::found:
      break;
  }
  z = record.height;
  point = Point(record.longitude, record.latitude);
  transfer.geographicToTarget(point);
  return 1;
}

void SExtFormats::TransfCoord(SProjection* target, Point* point) {
  const Tracer tracer(__FILE__, __LINE__, "SExtFormats::TransfCoord");
  kaldex::CoordinateTransfer(projection, target, units).apply(*point);
}

int SExtFormats::LerComSeparator(short* count, char* f0, char* f1, char* f2, char* f3, char* f4, char* f5) {
  const Tracer tracer(__FILE__, __LINE__, "SExtFormats::LerComSeparator");
  char* const targets[] = {f0, f1, f2, f3, f4, f5};
  *count = 0;
  for (char* target : targets) *target = 0;
  StrClean(line);
  if (std::strlen(line) > kLongestRecord) return refuseRecord();
  if (separator[0] != ',') kaldex::mendDecimalCommas(line);

  kaldex::DelimitedFields fields(line, separator);
  std::string_view field;
  while (fields.next(field)) {
    if (*count < static_cast<short>(std::size(targets))) {
      field = kaldex::stripped(field);
      if (field.size() >= kFieldCapacity) return refuseRecord();
      std::memcpy(targets[*count], field.data(), field.size());
      targets[*count][field.size()] = 0;
    }
    ++*count;
  }
  return *count > 0 ? 1 : refuseRecord();
}

int SExtFormats::refuseRecord() {
  inconsistent(line);
  FileClose();
  return 0;
}

const char* SExtFormats::GetSeparator() {
  const Tracer tracer(__FILE__, __LINE__, "SExtFormats::GetSeparator");
  if (!openFile("r")) return nullptr;
  clearLine();
  if (readLine() == 0) return nullptr;
  const char* const found = kaldex::detectSeparator(StrClean(line));
  FileClose();
  return found;
}

short* SExtFormats::LerTypes() {
  const Tracer tracer(__FILE__, __LINE__, "SExtFormats::LerTypes");
  auto types = std::make_unique<short[]>(kMostColumns);
  for (int row = 0; row < 2; ++row) {
    clearLine();
    if (readLine() == 0) return nullptr;
  }
  int count = 0;
  kaldex::DelimitedFields fields(line, separator);
  std::string_view field;
  bool good = std::strlen(line) <= kLongestTypedRow;
  while (good && fields.next(field)) {
    good = count < kMostColumns;
    if (good) types[static_cast<std::size_t>(count++)] = kaldex::columnType(field, separator[0]);
  }
  if (!good || count == 0) {
    refuseRecord();
    return nullptr;
  }
  rewind(file);
  return types.release();
}

int SExtFormats::ExpCoord(double* x, double* y, QString& longitudeText, QString& latitudeText) {
  const Tracer tracer(__FILE__, __LINE__, "SExtFormats::ExpCoord");
  if (coordFormat == 0) return 1;
  Point point(*x, *y);
  if (SProjection* const plane = project != nullptr ? project->projection() : nullptr) {
    plane->planeToGeographic(point);
  }
  if (coordFormat == 1) {
    longitudeText.clear();
    latitudeText.clear();
    Encode(point.y, kLatitudeKind, latitudeText, true);
    Encode(point.x, kLongitudeKind, longitudeText, true);
    return 1;
  }
  const double perDegree = coordFormat == 2 ? 1.0 : 3600.0;
  *x = point.x * 180 * perDegree / kPi;
  *y = point.y * 180 * perDegree / kPi;
  return 1;
}

}  // namespace kaldex_v1
