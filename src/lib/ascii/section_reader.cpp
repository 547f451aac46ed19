#include "lib/ascii/section_reader.h"

#include <cstring>

#include "base/text_input.h"
#include "lib/ascii/record_text.h"

inline namespace kaldex_v1 {

bool IEAsc::SectionReader::findSection(const char* keyword) {
  while (handler_.readWordIntoLine()) {
    if (kaldex::startsWith(handler_.line, keyword)) return true;
    kaldex::skipLine(handler_.file);
  }
  return false;
}

IEAsc::SectionReader::Word IEAsc::SectionReader::nextWord(kaldex::ProgressScope& progress,
                                                          unsigned* classColours) {
  for (;;) {
    if (!handler_.readWordIntoLine()) {
      handler_.inconsistent("END ???");
      return Word::failed;
    }
    progress.step();
    if (progress.cancelled()) return Word::failed;
    if (kaldex::startsWith(handler_.line, "//")) continue;
    if (atRecordEnd()) return Word::sectionEnd;
    if (std::strcmp(handler_.line, "INFO") != 0) return Word::record;
    const int header = handler_.InfoSection(classColours, nullptr, nullptr, nullptr, nullptr, nullptr,
                                            nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    if (header == 0) return Word::failed;
  }
}

bool IEAsc::SectionReader::nextLine(kaldex::ProgressScope& progress) {
  handler_.clearLine();
  if (handler_.readLine() == 0) {
    handler_.endOfFileInRecord();
    return false;
  }
  progress.step();
  return !progress.cancelled();
}

bool IEAsc::SectionReader::skipRestOfLine() {
  if (kaldex::skipLine(handler_.file) != 0) return true;
  handler_.inconsistent("FEOF");
  return false;
}

bool IEAsc::SectionReader::malformed() {
  handler_.inconsistent(handler_.line);
  return false;
}

bool IEAsc::SectionReader::atRecordEnd() const {
  return kaldex::startsWith(handler_.line, "END");
}

bool IEAsc::SectionReader::readPlanePairs(kaldex::ProgressScope& progress) {
  xy_.clear();
  for (;;) {
    double x = 0.0;
    double y = 0.0;
    const kaldex::PlaneResult result = kaldex::parsePlanePair(handler_.lineText(), x, y);
    if (result == kaldex::PlaneResult::noNumber && atRecordEnd()) break;
    if (result != kaldex::PlaneResult::found) return malformed();
    xy_.push_back(x * factor_);
    xy_.push_back(y * factor_);
    if (!nextLine(progress)) return false;
  }
  allPlaced_ = transfer_.apply(xy_.data(), xy_.size() / 2);
  return true;
}

bool IEAsc::SectionReader::readGeographicPairs(kaldex::ProgressScope& progress) {
  xy_.clear();
  allPlaced_ = true;
  Point point;
  float height = 0.0f;
  while (handler_.readLatLong(transfer_, point, height) != 0) {
    xy_.push_back(point.x);
    xy_.push_back(point.y);
    allPlaced_ = allPlaced_ && !point.isUnset();
    if (!nextLine(progress)) return false;
  }
  return point != Point(-1.0, -1.0) || malformed();
}

}  // namespace kaldex_v1
