#include "lib/arcinfo/ungenerate_record.h"

#include <cmath>

#include "base/character_class.h"
#include "base/number_text.h"
#include "lib/frame/delimited_record.h"

namespace kaldex {

bool isEndLine(std::string_view text) {
  return stripped(text) == "END";
}

bool isLineIdentifier(std::string_view word) {
  return !word.empty() && isDecimalDigit(word.front()) && word.find('.') == std::string_view::npos;
}

SampleForm sampleForm(std::string_view text) {
  TextScan scan(text);
  std::string_view word;
  double value = 0.0;
  if (!scan.read(word)) return SampleForm::neither;
  return scan.read(value) ? SampleForm::points : SampleForm::lines;
}

PointResult parsePointRecord(std::string_view text, int values, PointRecord& record) {
  TextScan scan(text);
  const int count = scan.readAll(record.identifier, record.x, record.y, record.z);
  if (count == 1 && record.identifier == "END") return PointResult::end;
  const bool finite =
      std::isfinite(record.x) && std::isfinite(record.y) && (values < 3 || std::isfinite(record.z));
  return count == values + 1 && finite ? PointResult::found : PointResult::malformed;
}

}  // namespace kaldex
