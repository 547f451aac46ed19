#include <cmath>

#include "model/vector/vector_store.h"

// The lines of a vector: shells over the rows of its line table.

namespace kaldex {

namespace {

/// Columns of a line's row, as `selectLines` reads them.
enum LineColumn {
  lineId,
  lineTypeText,
  lineHeight,
  lineClass,
  lineLeft,
  lineRight,
  lineLabelX,
  lineLabelY,
  lineImpedancePositive,
  lineImpedanceNegative,
  lineDemand,
  lineGeometry
};

const char* const lineColumns =
    "fid, type, height, class_id, left_polygon, right_polygon, label_x, label_y, impedance_positive, "
    "impedance_negative, demand, geom";

/// How many new lines may wait, with their points in memory, for their maker to give them back.
constexpr std::size_t unreleasedLimit = 2048;

/// Box of the points; false when one of them is not a number or infinite.
bool finiteBox(const double* xy, int count, Box& box) {
  box = Box::inverted();
  double sum = 0.0;
  for (int i = 0; i < count; ++i) {
    box.extend(xy[2 * i], xy[2 * i + 1]);
    // 0 times anything finite is 0; the rest is not a number and stays so.
    sum += 0.0 * xy[2 * i] + 0.0 * xy[2 * i + 1];
  }
  return sum == 0.0;
}

}  // namespace

bool VectorStore::adopt(Line& line) {
  rethrowDeferred();
  if (line.store_ != nullptr || line.xy_.empty()) return false;
  Box box;
  if (!finiteBox(line.xy_.data(), line.Size(), box)) return false;
  ensureRegistered();
  line.box = box;
  line.id = static_cast<int>(lines_.newId());
  lines_.added(line.id, box);
  line.store_ = this;
  line.state = stateNew;
  line.hasRow_ = false;
  lineShells_.add(line);
  unreleased_.push_back(line.id);
  limitUnreleased();
  return true;
}

void VectorStore::limitUnreleased() {
  while (unreleased_.size() > unreleasedLimit) {
    Line* line = lineShells_.find(unreleased_.front());
    unreleased_.pop_front();
    if (line != nullptr && !line->hasRow_ && !keepOnMemory) giveBack(*line, true);
  }
}

Line* VectorStore::line(int id) {
  Line* line = lineShells_.find(id);
  if (line != nullptr || !lines_.exists()) return line;
  if (!selectLine_) {
    selectLine_ = connection_->prepare(std::string("SELECT ") + lineColumns + " FROM " + lines_.quoted() +
                                       " WHERE fid = ?1");
  }
  newLines_.flush();
  selectLine_.bind(1, id);
  line = selectLine_.step() ? lineFrom(selectLine_) : nullptr;
  selectLine_.reset();
  return line;
}

const Line* VectorStore::loadedLine(int id) const {
  const Line* line = lineShells_.find(id);
  return line != nullptr && line->loaded_ ? line : nullptr;
}

Line* VectorStore::firstLine() {
  flushRows();
  lineCursor_.rewind();
  return nextLine();
}

Line* VectorStore::nextLine() {
  if (!lines_.exists()) return nullptr;
  newLines_.flush();
  Statement* row = lineCursor_.next(
      *connection_, [&] { return std::string("SELECT ") + lineColumns + " FROM " + lines_.quoted(); });
  return row == nullptr ? nullptr : lineFrom(*row);
}

Line* VectorStore::lineFrom(Statement& row) {
  const int id = static_cast<int>(row.integer(lineId));
  if (Line* live = lineShells_.find(id)) return live;
  auto line = std::make_unique<Line>();
  line->id = id;
  line->type_ = row.firstCharacter(lineTypeText, static_cast<char>(linePlain));
  line->height = static_cast<float>(row.real(lineHeight));
  line->classId = static_cast<int>(row.integer(lineClass));
  line->leftPolygon = static_cast<int>(row.integer(lineLeft));
  line->rightPolygon = static_cast<int>(row.integer(lineRight));
  if (!row.isNull(lineLabelX)) line->labelPoint = Point(row.real(lineLabelX), row.real(lineLabelY));
  line->impedancePositive = static_cast<float>(row.real(lineImpedancePositive));
  line->impedanceNegative = static_cast<float>(row.real(lineImpedanceNegative));
  line->demand = static_cast<float>(row.real(lineDemand));
  std::size_t size = 0;
  const std::uint8_t* blob = row.blob(lineGeometry, size);
  if (blob != nullptr && !decodeLine(blob, size, line->xy_)) line->xy_.clear();
  if (blob == nullptr || !decodeEnvelope(blob, size, line->box)) line->UpdateBox();
  line->store_ = this;
  line->hasRow_ = true;
  lineShells_.add(*line);
  return line.release();
}

void VectorStore::loadPoints(const Line& line) {
  line.loaded_ = true;
  line.xy_.clear();
  if (!lineShells_.holds(line) || !lines_.exists()) return;
  if (!selectLineGeometry_) {
    selectLineGeometry_ = connection_->prepare("SELECT geom FROM " + lines_.quoted() + " WHERE fid = ?1");
  }
  newLines_.flush();
  selectLineGeometry_.bind(1, line.id);
  if (selectLineGeometry_.step()) {
    std::size_t size = 0;
    const std::uint8_t* blob = selectLineGeometry_.blob(0, size);
    if (blob != nullptr && !decodeLine(blob, size, line.xy_)) line.xy_.clear();
  }
  selectLineGeometry_.reset();
}

void VectorStore::giveBack(Line& line, bool dropPoints) {
  if (lineShells_.holds(line)) writeLine(line);
  if (!dropPoints || keepOnMemory || holdLines) return;
  std::vector<double>().swap(line.xy_);
  line.loaded_ = false;
}

void VectorStore::lineDies(Line& line) noexcept {
  try {
    if (lineShells_.holds(line)) writeLine(line);
  } catch (...) {
    if (deferred_ == nullptr) deferred_ = std::current_exception();
  }
  lineShells_.remove(line);
  line.store_ = nullptr;
}

void VectorStore::writeLine(Line& line) {
  if (!line.hasRow_) return insertLine(line);
  if (line.state != stateStored || line.pointsChanged_) updateLine(line);
}

template <class Row>
void VectorStore::putColumns(Row& row, const Line& line) {
  row.put(line.id);
  row.putUtf8(std::string(1, line.type_));
  row.put(static_cast<double>(line.height));
  row.put(line.classId);
  row.put(line.leftPolygon);
  row.put(line.rightPolygon);
  if (line.labelPoint.isUnset()) {
    row.putNull();
    row.putNull();
  } else {
    row.put(line.labelPoint.x);
    row.put(line.labelPoint.y);
  }
  row.put(static_cast<double>(line.impedancePositive));
  row.put(static_cast<double>(line.impedanceNegative));
  row.put(static_cast<double>(line.demand));
}

void VectorStore::insertLine(Line& line) {
  if (!newLines_) newLines_ = RowBatch(*connection_, lines_.quoted(), lineColumns);
  newLines_.beginRow();
  putColumns(newLines_, line);
  encodeLine(blob_, lines_.srsId(), line.box, {line.xy_.data(), line.xy_.size() / 2});
  newLines_.putBlob(blob_);
  line.hasRow_ = true;
  line.pointsChanged_ = false;
  line.state = stateStored;
}

void VectorStore::updateLine(Line& line) {
  newLines_.flush();
  beginChange();
  if (!updateLine_) {
    updateLine_ = connection_->prepare(
        "UPDATE " + lines_.quoted() +
        " SET type = ?2, height = ?3, class_id = ?4, left_polygon = ?5, right_polygon = ?6, label_x = ?7, "
        "label_y = ?8, "
        "impedance_positive = ?9, impedance_negative = ?10, demand = ?11 WHERE fid = ?1");
    updateLineGeometry_ = connection_->prepare("UPDATE " + lines_.quoted() + " SET geom = ?2 WHERE fid = ?1");
  }
  Parameters row(updateLine_);
  putColumns(row, line);
  updateLine_.run();
  if (line.pointsChanged_) {
    line.UpdateBox();
    lines_.moved(line.id, line.box);
    encodeLine(blob_, lines_.srsId(), line.box, {line.xy_.data(), line.xy_.size() / 2});
    updateLineGeometry_.bind(1, line.id);
    updateLineGeometry_.bindBorrowedBlob(2, blob_.data(), blob_.size());
    updateLineGeometry_.run();
    line.pointsChanged_ = false;
  }
  line.state = stateStored;
}

// Without a list nobody sees whether a line is there before it is asked for: then each is read when it is, and
// those that aren't take no memory.
void VectorStore::loadAllLines(LineList* list) {
  holdLines = true;
  if (list == nullptr) return;
  for (Line* line = firstLine(); line != nullptr; line = nextLine()) {
    line->Size();
    list->Append(line);
  }
}

void VectorStore::dropAllLines() {
  holdLines = false;
  for (Line* line : lineShells_.all()) delete line;
}

}  // namespace kaldex
