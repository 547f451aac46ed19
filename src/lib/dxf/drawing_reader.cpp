#include "lib/dxf/drawing_reader.h"

#include <algorithm>
#include <iterator>

#include "base/number_text.h"

namespace kaldex {

namespace {

struct SectionName {
  std::string_view name;
  DrawingReader::Section section;
};
constexpr SectionName kSections[] = {{"HEADER", DrawingReader::header},
                                     {"TABLES", DrawingReader::tables},
                                     {"BLOCKS", DrawingReader::blocks},
                                     {"ENTITIES", DrawingReader::entities}};

constexpr std::string_view kBareEntities[] = {"POINT", "LINE", "POLYLINE", "ARC", "CIRCLE", "INSERT"};

QByteArray bytes(std::string_view text) {
  return {text.data(), static_cast<int>(text.size())};
}

}  // namespace

bool isBareEntity(std::string_view name) {
  return std::find(std::begin(kBareEntities), std::end(kBareEntities), name) != std::end(kBareEntities);
}

void DrawingReader::restart() {
  *this = DrawingReader();
}

bool DrawingReader::next(FILE* file) {
  const auto blanks =
      section_ == entities ? GroupScanner::Blanks::arePassedOver : GroupScanner::Blanks::areValues;
  ended_ = file == nullptr || !scanner_.next(file, blanks);
  return !ended_;
}

bool DrawingReader::nextSection(FILE* file) {
  for (;;) {
    if (!next(file)) return false;
    section_ = other;
    if (takePair()) return true;
  }
}

bool DrawingReader::nextOutsideBlocks(FILE* file) {
  do {
    if (!next(file)) return false;
    if (is(GroupCode::start, "ENDSEC") || is(GroupCode::start, "SECTION")) section_ = other;
    takePair();
  } while (inBlocks_);
  return true;
}

bool DrawingReader::takePair() {
  const bool afterOpening = afterOpening_;
  afterOpening_ = false;
  if (code() == GroupCode::start) {
    if (value() == "EOF") {
      section_ = fileEnd;
      return true;
    }
    afterOpening_ = value() == "SECTION";
    if (afterOpening_ || value() == "ENDSEC") opened_ = inBlocks_ = bare_ = false;
    if (inBlocks_ || !isBareEntity(value())) return false;
    bare_ = bare_ || !opened_;
    return true;
  }
  if (code() == GroupCode::name && (afterOpening || !opened_)) {
    if (takeName()) {
      opened_ = afterOpening;
      inBlocks_ = section_ == blocks;
      return true;
    }
    opened_ = afterOpening;
    return false;
  }
  takeVariable();
  return false;
}

bool DrawingReader::takeName() {
  for (const SectionName& known : kSections) {
    if (value() != known.name) continue;
    section_ = known.section;
    sawSection_ = true;
    return true;
  }
  return false;
}

void DrawingReader::takeVariable() {
  if (code() == GroupCode::variable) {
    variable_ = bytes(value());
    return;
  }
  if (variable_.isEmpty()) return;
  if (variable_ == "$DWGCODEPAGE") codePage_ = bytes(value());
  if (variable_ == "$ACADVER") version_ = bytes(value());
  if (variable_ == "$INSUNITS") unitsCode_ = static_cast<int>(textToInteger(value()));
  variable_.clear();
}

bool DrawingReader::searchSection(FILE* file, Section wanted) {
  while (nextSection(file)) {
    if (section_ == wanted) return true;
    if (section_ == entities || section_ == fileEnd || section_ == other) return false;
  }
  return false;
}

}  // namespace kaldex
