#include <algorithm>
#include <charconv>

#include "model/vector/vector_store.h"

// The polygons of a vector. A polygon's row holds its outline and, as inner rings, those of its sons, so that
// other programs see the area that is really its own; lines, father and sons stand beside it by identifier.

namespace kaldex {

namespace {

enum PolygonColumn {
  polygonId,
  polygonParent,
  polygonClass,
  polygonLabelX,
  polygonLabelY,
  polygonArea,
  polygonPerimeter,
  polygonLines,
  polygonSons,
  polygonGeometry
};

const char* const polygonColumns =
    "fid, parent, class_id, label_x, label_y, area, perimeter, lines, sons, geom";

bool isClosedRing(const std::vector<double>& xy) {
  return xy.size() >= 8 && xy[0] == xy[xy.size() - 2] && xy[1] == xy.back();
}

/// A chain of lines, taken forward or backward so that each begins where the one before ended.
class Chain {
 public:
  explicit Chain(std::vector<double>& xy) : xy_(xy) { xy_.clear(); }

  bool add(const double* line, std::size_t count) {
    if (count == 0) return true;
    const double* last = line + 2 * (count - 1);
    if (xy_.empty()) {
      append(line, count, false);
      return true;
    }
    if (endsAt(line)) {
      append(line + 2, count - 1, false);
    } else if (endsAt(last)) {
      append(line, count - 1, true);
    } else if (pieces_ == 1 && (startsAt(line) || startsAt(last))) {
      // Only the second line tells which way the first one runs.
      reverse();
      return add(line, count);
    } else {
      return false;
    }
    return true;
  }

 private:
  bool endsAt(const double* point) const { return xy_[xy_.size() - 2] == point[0] && xy_.back() == point[1]; }
  bool startsAt(const double* point) const { return xy_[0] == point[0] && xy_[1] == point[1]; }
  void append(const double* line, std::size_t count, bool backward) {
    ++pieces_;
    if (!backward) {
      xy_.insert(xy_.end(), line, line + 2 * count);
      return;
    }
    for (std::size_t i = count; i-- > 0;) {
      xy_.push_back(line[2 * i]);
      xy_.push_back(line[2 * i + 1]);
    }
  }
  void reverse() {
    for (std::size_t i = 0, j = xy_.size() - 2; i < j; i += 2, j -= 2) {
      std::swap(xy_[i], xy_[j]);
      std::swap(xy_[i + 1], xy_[j + 1]);
    }
  }

  std::vector<double>& xy_;
  int pieces_ = 0;
};

}  // namespace

std::string idsToText(const std::vector<int>& ids) {
  std::string text;
  char digits[16];
  for (int id : ids) {
    if (!text.empty()) text += ' ';
    text.append(digits, std::to_chars(digits, digits + sizeof digits, id).ptr);
  }
  return text;
}

std::vector<int> idsFromText(std::string_view list) {
  std::vector<int> ids;
  const char* text = list.data();
  const char* const end = text + list.size();
  while (text != end) {
    int id = 0;
    const auto result = std::from_chars(text, end, id);
    if (result.ec == std::errc()) ids.push_back(id);
    text = std::find(result.ptr, end, ' ');
    if (text != end) ++text;
  }
  return ids;
}

bool VectorStore::chainLines(const std::vector<int>& lines, std::vector<double>& xy) {
  Chain chain(xy);
  for (int id : lines) {
    const bool wasLive = lineShells_.find(id) != nullptr;
    Line* piece = line(id);
    if (piece == nullptr) return false;
    const bool fits = chain.add(piece->coordinates(), static_cast<std::size_t>(piece->Size()));
    if (!wasLive) delete piece;
    if (!fits) return false;
  }
  return true;
}

bool VectorStore::adopt(SPolygon& polygon) {
  rethrowDeferred();
  if (polygon.registered_ || (polygon.store_ != nullptr && polygon.store_ != this)) return false;
  const Line* outline = polygon.Points();
  if (outline == nullptr && polygon.lines_.size() == 1) outline = loadedLine(polygon.lines_.front());
  if (outline != nullptr) {
    if (outline->Size() < 4 || !outline->isClosed()) return false;
    polygon.box = boxOf(outline->coordinates(), static_cast<std::size_t>(outline->Size()));
  } else {
    if (!chainLines(polygon.lines_, scratch_) || !isClosedRing(scratch_)) return false;
    polygon.box = boxOf(scratch_.data(), scratch_.size() / 2);
  }
  ensureRegistered();
  polygon.id = static_cast<int>(polygons_.newId());
  polygons_.added(polygon.id, polygon.box);
  polygon.store_ = this;
  polygon.registered_ = true;
  polygon.hasRow_ = false;
  polygon.changed = stateNew;
  polygonShells_.add(polygon);
  return true;
}

SPolygon* VectorStore::polygon(int id) {
  SPolygon* polygon = polygonShells_.find(id);
  if (polygon != nullptr || !polygons_.exists()) return polygon;
  if (!selectPolygon_) {
    selectPolygon_ = connection_->prepare(std::string("SELECT ") + polygonColumns + " FROM " +
                                          polygons_.quoted() + " WHERE fid = ?1");
  }
  newPolygons_.flush();
  selectPolygon_.bind(1, id);
  polygon = selectPolygon_.step() ? polygonFrom(selectPolygon_) : nullptr;
  selectPolygon_.reset();
  return polygon;
}

SPolygon* VectorStore::polygonAt(int id) {
  SPolygon* found = polygon(id);
  if (found != nullptr) polygonCursor_.placeAt(id);
  return found;
}

SPolygon* VectorStore::polygonCopy(int id) {
  SPolygon* live = polygonShells_.find(id);
  if (live != nullptr) writePolygon(*live);
  if (!polygons_.exists()) return nullptr;
  newPolygons_.flush();
  Statement select = connection_->prepare(std::string("SELECT ") + polygonColumns + " FROM " +
                                          polygons_.quoted() + " WHERE fid = ?1");
  select.bind(1, id);
  if (!select.step()) return nullptr;
  auto copy = std::make_unique<SPolygon>();
  fill(*copy, select);
  return copy.release();
}

SPolygon* VectorStore::firstPolygon() {
  flushRows();
  polygonCursor_.rewind();
  return nextPolygon();
}

SPolygon* VectorStore::nextPolygon() {
  if (!polygons_.exists()) return nullptr;
  newPolygons_.flush();
  Statement* row = polygonCursor_.next(
      *connection_, [&] { return std::string("SELECT ") + polygonColumns + " FROM " + polygons_.quoted(); });
  return row == nullptr ? nullptr : polygonFrom(*row);
}

void VectorStore::fill(SPolygon& polygon, Statement& row) {
  polygon.id = static_cast<int>(row.integer(polygonId));
  polygon.parentId = static_cast<int>(row.integer(polygonParent));
  polygon.classId = static_cast<int>(row.integer(polygonClass));
  if (!row.isNull(polygonLabelX))
    polygon.labelPoint = Point(row.real(polygonLabelX), row.real(polygonLabelY));
  polygon.area = row.real(polygonArea);
  polygon.perimeter = row.real(polygonPerimeter);
  polygon.lines_ = idsFromText(row.view(polygonLines));
  polygon.sons_ = idsFromText(row.view(polygonSons));
  std::size_t size = 0;
  const std::uint8_t* blob = row.blob(polygonGeometry, size);
  if (blob != nullptr) {
    decodeEnvelope(blob, size, polygon.box);
    // The row is at hand: who walks polygons wants their outline.
    auto outline = std::make_unique<Line>();
    if (decodeRing(blob, size, 0, outline->xy_)) {
      outline->box = polygon.box;
      polygon.outline_ = std::move(outline);
    }
  }
  polygon.store_ = this;
  polygon.hasRow_ = true;
}

SPolygon* VectorStore::polygonFrom(Statement& row) {
  if (SPolygon* live = polygonShells_.find(static_cast<int>(row.integer(polygonId)))) return live;
  auto polygon = std::make_unique<SPolygon>();
  fill(*polygon, row);
  polygon->registered_ = true;
  polygonShells_.add(*polygon);
  return polygon.release();
}

bool VectorStore::loadOutline(int id, std::vector<double>& xy) {
  if (!polygons_.exists()) return false;
  if (!selectPolygonGeometry_) {
    selectPolygonGeometry_ =
        connection_->prepare("SELECT geom FROM " + polygons_.quoted() + " WHERE fid = ?1");
  }
  newPolygons_.flush();
  selectPolygonGeometry_.bind(1, id);
  bool found = false;
  if (selectPolygonGeometry_.step()) {
    std::size_t size = 0;
    const std::uint8_t* blob = selectPolygonGeometry_.blob(0, size);
    found = blob != nullptr && decodeRing(blob, size, 0, xy);
  }
  selectPolygonGeometry_.reset();
  return found;
}

void VectorStore::giveBack(SPolygon& polygon) {
  if (polygonShells_.holds(polygon)) writePolygon(polygon);
}

void VectorStore::polygonDies(SPolygon& polygon) noexcept {
  try {
    giveBack(polygon);
  } catch (...) {
    if (deferred_ == nullptr) deferred_ = std::current_exception();
  }
  polygonShells_.remove(polygon);
  polygon.store_ = nullptr;
}

void VectorStore::encodeWithSons(SPolygon& polygon) {
  const bool had = polygon.outline_ != nullptr;
  const Line* outline = polygon.outlineForUse();
  std::vector<Ring> rings;
  if (outline != nullptr)
    rings.push_back({outline->coordinates(), static_cast<std::size_t>(outline->Size())});
  std::deque<std::vector<double>> holes;
  for (int son : polygon.sons_) {
    holes.emplace_back();
    if (polygon.sonOutline(son, holes.back()))
      rings.push_back({holes.back().data(), holes.back().size() / 2});
  }
  encodePolygon(blob_, polygons_.srsId(), polygon.box, rings);
  if (!had) polygon.doneWithOutline();
}

template <class Row>
void VectorStore::putColumns(Row& row, const SPolygon& polygon) {
  row.put(polygon.id);
  row.put(polygon.parentId);
  row.put(polygon.classId);
  if (polygon.labelPoint.isUnset()) {
    row.putNull();
    row.putNull();
  } else {
    row.put(polygon.labelPoint.x);
    row.put(polygon.labelPoint.y);
  }
  row.put(polygon.area);
  row.put(polygon.perimeter);
  row.putUtf8(idsToText(polygon.lines_));
  row.putUtf8(idsToText(polygon.sons_));
}

void VectorStore::writePolygon(SPolygon& polygon) {
  const bool wantsGeometry = !polygon.hasRow_ || polygon.geometryChanged_;
  if (!wantsGeometry && polygon.changed == stateStored) return;
  // The outline comes first: reading it may use the buffers and statements of the row.
  if (wantsGeometry) encodeWithSons(polygon);
  if (polygon.hasRow_) {
    updatePolygon(polygon, wantsGeometry);
  } else {
    insertPolygon(polygon);
  }
  polygon.hasRow_ = true;
  polygon.geometryChanged_ = false;
  polygon.changed = stateStored;
}

void VectorStore::insertPolygon(const SPolygon& polygon) {
  if (!newPolygons_) newPolygons_ = RowBatch(*connection_, polygons_.quoted(), polygonColumns);
  newPolygons_.beginRow();
  putColumns(newPolygons_, polygon);
  newPolygons_.putBlob(blob_);
}

void VectorStore::updatePolygon(const SPolygon& polygon, bool withGeometry) {
  newPolygons_.flush();
  beginChange();
  if (!updatePolygon_) {
    const std::string update =
        "UPDATE " + polygons_.quoted() +
        " SET parent = ?2, class_id = ?3, label_x = ?4, label_y = ?5, area = ?6, perimeter = "
        "?7, lines = ?8, sons = ?9";
    updatePolygon_ = connection_->prepare(update + " WHERE fid = ?1");
    updatePolygonGeometry_ = connection_->prepare(update + ", geom = ?10 WHERE fid = ?1");
  }
  Statement& statement = withGeometry ? updatePolygonGeometry_ : updatePolygon_;
  Parameters row(statement);
  putColumns(row, polygon);
  if (withGeometry) row.putBlob(blob_);
  statement.run();
}

}  // namespace kaldex
