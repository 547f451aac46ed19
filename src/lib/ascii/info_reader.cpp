#include "lib/ascii/info_reader.h"

#include <QObject>
#include <cstring>
#include <string_view>

#include "base/number_text.h"
#include "base/strings.h"
#include "base/text_input.h"
#include "base/tracer.h"
#include "kaldex/model/projection.h"
#include "lib/ascii/class_block.h"
#include "lib/ascii/column_block.h"
#include "lib/ascii/record_text.h"
#include "lib/frame/coordinate_transfer.h"

inline namespace kaldex_v1 {

int IEAsc::InfoReader::run() {
  const bool opens = handler_.file == nullptr;
  if (opens && !openAtGrid()) return 0;
  Outcome outcome = Outcome::goOn;
  if (kaldex::skipLine(handler_.file) == 0) {
    handler_.inconsistent("FEOF");
    outcome = Outcome::failed;
  }
  while (outcome == Outcome::goOn) outcome = nextLine(handler_) ? readKeyword() : Outcome::failed;
  if (opens) handler_.FileClose();
  return outcome == Outcome::done ? 1 : 0;
}

bool IEAsc::InfoReader::openAtGrid() {
  if (!handler_.openFile("r")) return false;
  handler_.clearLine();
  while (handler_.readWordIntoLine()) {
    if (std::strcmp(handler_.line, "GRIDREG") == 0) return true;
  }
  handler_.FileClose();
  handler_.inconsistent(handler_.line);
  return false;
}

bool IEAsc::InfoReader::nextLine(IEAsc& handler) {
  handler.clearLine();
  if (handler.readLine() != 0) return true;
  handler.inconsistentAs(
      QObject::tr("Arquivo INCONSISTENTE. Falta de informação ou erro nos parâmetros da seção INFO!") +
      "INFO_END ???");
  return false;
}

bool IEAsc::InfoReader::lineStarts(const char* keyword) const {
  return kaldex::startsWith(handler_.line, keyword);
}

bool IEAsc::InfoReader::malformed() {
  handler_.inconsistent(handler_.line);
  return false;
}

IEAsc::InfoReader::Outcome IEAsc::InfoReader::readKeyword() {
  if (lineStarts("INFO_END")) return Outcome::done;
  if (lineStarts("SEPARATOR") && !readSeparator()) return Outcome::failed;
  if (lineStarts("FORMATED") && targets_.formatted != nullptr) *targets_.formatted = 1;
  if (lineStarts("GRIDDEF") && targets_.linesOrMode != nullptr && !readGrid()) return Outcome::failed;
  return readBlock();
}

// Blocks of lines of their own, which end the header.
IEAsc::InfoReader::Outcome IEAsc::InfoReader::readBlock() {
  bool done = false;
  if (lineStarts("GRIDCLASS")) {
    done = countClasses();
  } else if (lineStarts("CATEGORY_OBJ") && targets_.category != nullptr) {
    done = ColumnBlock(handler_, targets_).run() != 0;
  } else if (lineStarts("THEMACLASS") && targets_.linesOrMode != nullptr) {
    done = ClassBlock(handler_, *targets_.linesOrMode).run() != 0;
  } else {
    return Outcome::goOn;
  }
  return done ? Outcome::done : Outcome::failed;
}

bool IEAsc::InfoReader::readSeparator() {
  std::string_view keyword;
  std::string_view separator;
  if (kaldex::TextScan(handler_.line).readAll(keyword, separator) < 2 || separator.size() != 1) {
    return malformed();
  }
  const char text[] = {separator[0], 0};
  handler_.SetSeparator(text);
  return true;
}

bool IEAsc::InfoReader::readGrid() {
  kaldex::GridDefinition grid;
  if (!kaldex::parseGridDefinition(handler_.line, grid)) return malformed();
  if (!grid.geographic) {
    carryPlaneCorner(grid);
  } else if (!readGeographicCorner(grid)) {
    return false;
  }
  storeGrid(grid);
  return true;
}

void IEAsc::InfoReader::carryPlaneCorner(kaldex::GridDefinition& grid) const {
  SProjection* const projection = handler_.projection;
  if (projection != nullptr && projection->type() == ProjectionType::latLong) return;
  Point corner(grid.x * handler_.Units2Meter(), grid.y * handler_.Units2Meter());
  const bool angles = handler_.units == 4 || handler_.units == 5;
  if (angles && projection != nullptr) projection->geographicToPlane(corner);
  grid.x = corner.x;
  grid.y = corner.y;
}

bool IEAsc::InfoReader::readGeographicCorner(kaldex::GridDefinition& grid) {
  qstrncpy(handler_.line2, handler_.line, sizeof handler_.line2);
  handler_.setLine(grid.corner.c_str());
  Point corner;
  float height = 0.0f;
  const bool found = handler_.LerLatLong(handler_.projection, corner, height) != 0;
  handler_.setLine(handler_.line2);
  if (!found) return malformed();
  grid.x = corner.x;
  grid.y = corner.y;
  return true;
}

void IEAsc::InfoReader::storeGrid(const kaldex::GridDefinition& grid) const {
  const auto store = [](auto* target, auto value) {
    if (target != nullptr) *target = value;
  };
  store(targets_.columns, static_cast<unsigned>(grid.columns));
  store(targets_.linesOrMode, static_cast<unsigned>(grid.lines));
  store(targets_.noData, grid.noData);
  store(targets_.x, grid.x);
  store(targets_.y, grid.y);
  store(targets_.resX, grid.resX);
  store(targets_.resY, grid.resY);
}

bool IEAsc::InfoReader::countClasses() {
  double count = 0.0;
  for (;; ++count) {
    handler_.clearLine();
    if (handler_.readLine() == 0) return false;
    if (lineStarts("INFO_END")) break;
  }
  if (targets_.classCount != nullptr) *targets_.classCount = count;
  return true;
}

int IEAsc::InfoSection(unsigned* linesOrMode, unsigned* columns, double* noData, Category* category,
                       short* formatted, SFieldList* fields, short* keyColumn, short* nameColumn, double* x,
                       double* y, float* resX, float* resY, double* classCount) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::InfoSection");
  const InfoReader::Targets targets{linesOrMode, columns, noData, category, formatted, fields,    keyColumn,
                                    nameColumn,  x,       y,      resX,     resY,      classCount};
  return guardedImport(nullptr, [&] { return InfoReader(*this, targets).run(); });
}

}  // namespace kaldex_v1
