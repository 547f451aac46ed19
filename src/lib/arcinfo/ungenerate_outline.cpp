#include <vector>

#include "base/companion_file.h"
#include "base/number_text.h"
#include "kaldex/arcinfo.h"
#include "kaldex/model/projection.h"
#include "lib/arcinfo/ungenerate_record.h"
#include "lib/frame/coordinate_transfer.h"
#include "lib/frame/delimited_record.h"
#include "lib/intake/ascii_scan.h"
#include "lib/intake/plane_boxes.h"

inline namespace kaldex_v1 {

namespace {

using kaldex::ScannedLine;
using Form = UngenerateOutline::Form;

Form pointForm(std::string_view line) {
  kaldex::PointRecord record;
  if (kaldex::parsePointRecord(line, 3, record) == kaldex::PointResult::found) return Form::pointsWithHeights;
  if (kaldex::parsePointRecord(line, 2, record) == kaldex::PointResult::found) return Form::labelPoints;
  return Form::unknown;
}

Form lineForm(std::string_view firstVertex) {
  double x = 0.0;
  double y = 0.0;
  float z = 0.0f;
  const int count = kaldex::scanReals(firstVertex, &x, &y, &z);
  return count == 3 ? Form::linesWithHeights : count == 2 ? Form::lines : Form::unknown;
}

// What a line says; nothing if readers pass over it.
std::string_view recordOf(const ScannedLine& line) {
  const std::string_view text = kaldex::stripped(line.text);
  return text.substr(0, 2) == "//" ? std::string_view() : text;
}

// Gathers coordinates and carries many of them to the target at once.
class ExtentReader {
 public:
  ExtentReader(Form form, SProjection* source, SProjection* target, int units)
      : ofPoints_(form == Form::pointsWithHeights || form == Form::labelPoints),
        transfer_(source, target, units),
        factor_(kaldex::unitFactor(units)) {}

  // False at the line that closes the file.
  bool take(std::string_view line) {
    const bool end = kaldex::isEndLine(line);
    if (end && !inRecord_) return false;
    if (ofPoints_) {
      takePoint(line);
      return true;
    }
    double x = 0.0;
    double y = 0.0;
    const bool vertex = inRecord_ && kaldex::scanReals(line, &x, &y) == 2;
    if (vertex) add(x, y);
    // Behind an "END" stands the next identifier.
    inRecord_ = !end;
    return true;
  }

  Box box() {
    flush();
    return box_;
  }

 private:
  static constexpr std::size_t kAtOnce = 8192;

  void takePoint(std::string_view line) {
    kaldex::PointRecord record;
    const auto result = kaldex::parsePointRecord(line, 2, record);
    const bool withHeight = result == kaldex::PointResult::malformed &&
                            kaldex::parsePointRecord(line, 3, record) == kaldex::PointResult::found;
    if (withHeight || result == kaldex::PointResult::found) add(record.x, record.y);
  }
  void add(double x, double y) {
    xy_.push_back(x * factor_);
    xy_.push_back(y * factor_);
    if (xy_.size() >= kAtOnce) flush();
  }
  void flush() {
    transfer_.apply(xy_.data(), xy_.size() / 2);
    for (std::size_t i = 0; i < xy_.size(); i += 2) {
      if (!Point(xy_[i], xy_[i + 1]).isUnset()) box_.extend(xy_[i], xy_[i + 1]);
    }
    xy_.clear();
  }

  bool ofPoints_;
  kaldex::CoordinateTransfer transfer_;
  double factor_;
  bool inRecord_ = false;
  std::vector<double> xy_;
  Box box_ = Box::inverted();
};

}  // namespace

UngenerateOutline::UngenerateOutline(const QString& path) : path_(kaldex::pathBytes(path)) {
  bool first = true;
  kaldex::scanLines(path_, 0, [&](const ScannedLine& line) {
    const std::string_view text = recordOf(line);
    if (text.empty()) return true;
    if (first) {
      first = false;
      form_ = pointForm(text);
      return !kaldex::isEndLine(text);
    }
    // A line of polygons may have the place of its label behind the identifier, and looks like a point then.
    const Form second = lineForm(text);
    if (form_ == Form::unknown || second == Form::lines) form_ = second;
    return false;
  });
}

Box UngenerateOutline::extent(SProjection* source, SProjection* target, int units) const {
  ExtentReader reader(form_, source, target, units);
  kaldex::scanLines(path_, 0, [&](const ScannedLine& line) {
    const std::string_view text = recordOf(line);
    return text.empty() || reader.take(text);
  });
  return reader.box();
}

}  // namespace kaldex_v1
