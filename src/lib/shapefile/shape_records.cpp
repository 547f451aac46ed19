#include "base/text_output.h"
#include "kaldex/shapefile.h"
#include "lib/shapefile/record_block.h"

using kaldex::makeBlock;
using kaldex::TextOutput;

inline namespace kaldex_v1 {

namespace {

std::size_t pairs(std::int32_t count) {
  return 2 * static_cast<std::size_t>(count);
}

void printInteger(TextOutput& out, const char* label, std::int32_t value, const char* end) {
  out.append(label);
  out.appendInt(value);
  out.append(end);
}

void printReal(TextOutput& out, const char* label, double value, const char* end) {
  out.append(label);
  out.appendFixed(value, 6);
  out.append(end);
}

template <typename Record>
void printBox(TextOutput& out, const Record& record, const char* end) {
  printReal(out, "XMinimum: ", record.XMinimum, "  ");
  printReal(out, "YMinimum: ", record.YMinimum, "  ");
  printReal(out, "XMaximum: ", record.XMaximum, "  ");
  printReal(out, "YMaximum: ", record.YMaximum, end);
}

template <typename Record>
void printPoints(FILE* file, const Record& record) {
  TextOutput out(file);
  printInteger(out, "Shape type: ", record.shapeType, "\n");
  printBox(out, record, "\n");
  printInteger(out, "Number of Points: ", record.numPoints, "\n");
  out.append("Points:\n");
  for (std::size_t i = 0; i + 1 < record.points.size(); i += 2) {
    printReal(out, "", record.points[i], " ");
    printReal(out, "", record.points[i + 1], "\n");
  }
  out.flush();
}

}  // namespace

void ShapeHeader::Print(FILE* file) const {
  TextOutput out(file);
  out.append("Header information:\n");
  printInteger(out, "File code: ", FileCode, "  ");
  printInteger(out, "File length: ", FileLength, "  ");
  printInteger(out, "Version: ", Version, "  ");
  printInteger(out, "Shape Type: ", ShapeType, "\n");
  printBox(out, *this, "\n\n");
  out.flush();
}

void PointRecord::Print(FILE* file) const {
  TextOutput out(file);
  printInteger(out, "Shape type: ", shapeType, "  ");
  printReal(out, "X: ", x, "  ");
  printReal(out, "Y: ", y, "\n");
  out.flush();
}

bool MultiPointRecord::Alloc() {
  points.clear();
  return numPoints >= 1 && makeBlock(points, pairs(numPoints));
}

void MultiPointRecord::Print(FILE* file) const {
  printPoints(file, *this);
}

bool ArcRecord::Alloc() {
  parts.clear();
  points.clear();
  if (numParts < 1 || numPoints < 1) return false;
  return makeBlock(parts, static_cast<std::size_t>(numParts)) && makeBlock(points, pairs(numPoints));
}

double* ArcRecord::GetPoints(int position) {
  if (position < 0 || pairs(position) >= points.size()) return nullptr;
  return points.data() + pairs(position);
}

void ArcRecord::Print(FILE* file) const {
  printPoints(file, *this);
}

bool ArcZRecord::AllocZ() {
  z.clear();
  return numPoints >= 1 && makeBlock(z, static_cast<std::size_t>(numPoints));
}

bool ArcZRecord::AllocM() {
  m.clear();
  return numPoints >= 1 && makeBlock(m, static_cast<std::size_t>(numPoints));
}

}  // namespace kaldex_v1
