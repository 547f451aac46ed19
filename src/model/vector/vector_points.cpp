#include <algorithm>
#include <cmath>

#include "model/vector/representation.h"
#include "model/vector/vector_store.h"

// The points, samples and anchors of a vector.

namespace kaldex {

namespace {

/// How many of the 2D points handed out stay valid.
constexpr std::size_t handedOutLimit = 512;

const char* const pointColumns = "fid, class_id, flag, geom";

enum AnchorColumn {
  anchorId,
  anchorVisual,
  anchorX1,
  anchorY1,
  anchorX2,
  anchorY2,
  anchorArea,
  anchorPerimeter,
  anchorImpedance,
  anchorDemand,
  anchorPoints,
  anchorLines,
  anchorPolygons
};

const char* const anchorColumns =
    "fid, visual_id, min_x, min_y, max_x, max_y, area, perimeter, impedance, demand, points, lines, polygons";

bool isFinite(const Point& point) {
  return std::isfinite(point.x) && std::isfinite(point.y);
}

Box boxAt(const Point& point) {
  return {point.x, point.y, point.x, point.y};
}

}  // namespace

bool VectorStore::insert(Point2d& point) {
  rethrowDeferred();
  if (!isFinite(point)) return false;
  // A node that is stored already is the same point again.
  if (point.id > 0 && this->point(point.id) != nullptr) return true;
  ensureRegistered();
  if (point.id > 0) {
    points_.reserveId(point.id);
  } else {
    point.id = newPointId();
  }
  points_.added(point.id, boxAt(point));
  if (!newPoints_) newPoints_ = RowBatch(*connection_, points_.quoted(), pointColumns);
  newPoints_.beginRow();
  newPoints_.put(point.id);
  newPoints_.put(point.classId);
  newPoints_.put(static_cast<int>(point.flag));
  encodePoint(blob_, points_.srsId(), point.x, point.y);
  newPoints_.putBlob(blob_);
  return true;
}

Point2d* VectorStore::handOut(const Point2d& point) {
  if (handedOut_.size() >= handedOutLimit) {
    // The oldest is used again: walking a layer makes no objects.
    handedOut_.push_back(std::move(handedOut_.front()));
    handedOut_.pop_front();
    *handedOut_.back() = point;
  } else {
    handedOut_.push_back(std::make_unique<Point2d>(point));
  }
  return handedOut_.back().get();
}

Point2d* VectorStore::pointFrom(Statement& row) {
  Point2d point;
  point.id = static_cast<int>(row.integer(0));
  point.classId = static_cast<int>(row.integer(1));
  point.flag = static_cast<short>(row.integer(2));
  std::size_t size = 0;
  double z = 0;
  const std::uint8_t* blob = row.blob(3, size);
  if (blob == nullptr || !decodePoint(blob, size, point.x, point.y, z)) point.x = point.y = kUnsetValue;
  return handOut(point);
}

Point2d* VectorStore::point(int id) {
  if (!points_.exists()) return nullptr;
  if (!selectPoint_) {
    selectPoint_ = connection_->prepare(std::string("SELECT ") + pointColumns + " FROM " + points_.quoted() +
                                        " WHERE fid = ?1");
  }
  newPoints_.flush();
  selectPoint_.bind(1, id);
  Point2d* found = selectPoint_.step() ? pointFrom(selectPoint_) : nullptr;
  selectPoint_.reset();
  return found;
}

Point2d* VectorStore::firstPoint() {
  pointCursor_.rewind();
  return nextPoint();
}

Point2d* VectorStore::nextPoint() {
  if (!points_.exists()) return nullptr;
  newPoints_.flush();
  Statement* row = pointCursor_.next(
      *connection_, [&] { return std::string("SELECT ") + pointColumns + " FROM " + points_.quoted(); });
  return row == nullptr ? nullptr : pointFrom(*row);
}

bool VectorStore::insert(Point3d& point) {
  rethrowDeferred();
  if (!isFinite(point)) return false;
  ensureRegistered();
  point.id = static_cast<int>(samples_.newId());
  samples_.added(point.id, boxAt(point));
  if (!newSamples_) newSamples_ = RowBatch(*connection_, samples_.quoted(), "fid, geom");
  newSamples_.beginRow();
  newSamples_.put(point.id);
  encodePointZ(blob_, samples_.srsId(), point.x, point.y, static_cast<double>(point.z));
  newSamples_.putBlob(blob_);
  return true;
}

Point3d* VectorStore::firstSample() {
  sampleCursor_.rewind();
  return nextSample();
}

Point3d* VectorStore::nextSample() {
  if (!samples_.exists()) return nullptr;
  newSamples_.flush();
  Statement* row =
      sampleCursor_.next(*connection_, [&] { return "SELECT fid, geom FROM " + samples_.quoted(); });
  if (row == nullptr) return nullptr;
  auto sample = std::make_unique<Point3d>();
  sample->id = static_cast<int>(row->integer(0));
  std::size_t size = 0;
  double z = 0;
  const std::uint8_t* blob = row->blob(1, size);
  if (blob == nullptr || !decodePoint(blob, size, sample->x, sample->y, z))
    sample->x = sample->y = z = kUnsetValue;
  sample->z = static_cast<float>(z);
  return sample.release();
}

bool VectorStore::anchorTableExists() {
  if (anchorTableKnown_ < 0) anchorTableKnown_ = connection_->tableExists(anchorTable_) ? 1 : 0;
  return anchorTableKnown_ == 1;
}

void VectorStore::ensureAnchorTable() {
  ensureRegistered();
  if (anchorTableExists()) return;
  connection_->execSchema("CREATE TABLE " + quotedName(anchorTable_) +
                          " (fid INTEGER PRIMARY KEY NOT NULL, " + columnsOf(FeatureKind::anchors) + ")");
  registerAttributeTable(*connection_, anchorTable_, QString::fromStdString(anchorTable_),
                         info_.title + QStringLiteral(": objects' places"));
  anchorTableKnown_ = 1;
}

bool VectorStore::insert(Anchor& anchor) {
  rethrowDeferred();
  settleAnchor();
  ensureAnchorTable();
  if (lastAnchorId_ < 0)
    lastAnchorId_ = connection_->scalar("SELECT max(fid) FROM " + quotedName(anchorTable_));
  anchor.id = static_cast<int>(++lastAnchorId_);
  // An anchor often grows right after it was inserted: it is written when the next one comes, or is asked
  // for.
  pendingAnchor_ = std::make_unique<Anchor>(anchor);
  pendingAnchorIsNew_ = true;
  if (anchorTree_ != nullptr && !anchor.box.isInverted()) anchorTree_->add(anchor.id, anchor.box);
  return true;
}

bool VectorStore::update(const Anchor& anchor) {
  rethrowDeferred();
  if (pendingAnchor_ == nullptr || pendingAnchor_->id != anchor.id) {
    flushAnchors();
    if (!anchorTableExists()) return false;
    const std::unique_ptr<Anchor> stored(this->anchor(anchor.id));
    if (stored == nullptr) return false;
    pendingAnchorIsNew_ = false;
  }
  pendingAnchor_ = std::make_unique<Anchor>(anchor);
  anchorTree_.reset();
  return true;
}

template <class Row>
void VectorStore::putColumns(Row& row, const Anchor& anchor) {
  row.put(anchor.id);
  row.put(anchor.visualId);
  for (double corner : {anchor.box.x1, anchor.box.y1, anchor.box.x2, anchor.box.y2}) {
    if (anchor.box.isInverted()) {
      row.putNull();
    } else {
      row.put(corner);
    }
  }
  row.put(anchor.area);
  row.put(anchor.perimeter);
  row.put(anchor.impedance);
  row.put(anchor.demand);
  row.putUtf8(idsToText(anchor.points));
  row.putUtf8(idsToText(anchor.lines));
  row.putUtf8(idsToText(anchor.polygons));
}

void VectorStore::settleAnchor() {
  if (pendingAnchor_ == nullptr) return;
  const std::unique_ptr<Anchor> anchor = std::move(pendingAnchor_);
  if (pendingAnchorIsNew_) {
    if (!newAnchors_) newAnchors_ = RowBatch(*connection_, quotedName(anchorTable_), anchorColumns);
    newAnchors_.beginRow();
    putColumns(newAnchors_, *anchor);
    return;
  }
  newAnchors_.flush();
  beginChange();
  if (!updateAnchor_) {
    updateAnchor_ =
        connection_->prepare("UPDATE " + quotedName(anchorTable_) +
                             " SET visual_id = ?2, min_x = ?3, min_y = ?4, max_x = ?5, max_y = ?6, area = "
                             "?7, perimeter = ?8, impedance = "
                             "?9, demand = ?10, points = ?11, lines = ?12, polygons = ?13 WHERE fid = ?1");
  }
  Parameters row(updateAnchor_);
  putColumns(row, *anchor);
  updateAnchor_.run();
}

void VectorStore::flushAnchors() {
  settleAnchor();
  newAnchors_.flush();
}

Anchor* VectorStore::anchorFrom(Statement& row) {
  auto anchor = std::make_unique<Anchor>();
  anchor->id = static_cast<int>(row.integer(anchorId));
  anchor->visualId = static_cast<int>(row.integer(anchorVisual));
  if (!row.isNull(anchorX1)) {
    anchor->box = Box(row.real(anchorX1), row.real(anchorY1), row.real(anchorX2), row.real(anchorY2));
  }
  anchor->area = row.real(anchorArea);
  anchor->perimeter = row.real(anchorPerimeter);
  anchor->impedance = row.real(anchorImpedance);
  anchor->demand = row.real(anchorDemand);
  anchor->points = idsFromText(row.view(anchorPoints));
  anchor->lines = idsFromText(row.view(anchorLines));
  anchor->polygons = idsFromText(row.view(anchorPolygons));
  return anchor.release();
}

Anchor* VectorStore::anchor(int id) {
  if (pendingAnchor_ != nullptr && pendingAnchor_->id == id) return new Anchor(*pendingAnchor_);
  if (!anchorTableExists()) return nullptr;
  if (!selectAnchor_) {
    selectAnchor_ = connection_->prepare(std::string("SELECT ") + anchorColumns + " FROM " +
                                         quotedName(anchorTable_) + " WHERE fid = ?1");
  }
  newAnchors_.flush();
  selectAnchor_.bind(1, id);
  Anchor* found = selectAnchor_.step() ? anchorFrom(selectAnchor_) : nullptr;
  selectAnchor_.reset();
  return found;
}

Anchor* VectorStore::firstAnchor() {
  flushAnchors();
  anchorCursor_.rewind();
  return nextAnchor();
}

Anchor* VectorStore::nextAnchor() {
  if (!anchorTableExists()) return nullptr;
  flushAnchors();
  Statement* row = anchorCursor_.next(*connection_, [&] {
    return std::string("SELECT ") + anchorColumns + " FROM " + quotedName(anchorTable_);
  });
  return row == nullptr ? nullptr : anchorFrom(*row);
}

std::vector<std::int64_t> VectorStore::anchorCandidates(const Box& box) {
  std::vector<std::int64_t> ids;
  flushAnchors();
  if (!anchorTableExists()) return ids;
  if (anchorTree_ == nullptr) {
    anchorTree_ = std::make_unique<BoxTree>();
    Statement all = connection_->prepare("SELECT fid, min_x, min_y, max_x, max_y FROM " +
                                         quotedName(anchorTable_) + " WHERE min_x IS NOT NULL");
    while (all.step())
      anchorTree_->add(all.integer(0), Box(all.real(1), all.real(2), all.real(3), all.real(4)));
  }
  anchorTree_->find(box, ids);
  std::sort(ids.begin(), ids.end());
  return ids;
}

}  // namespace kaldex
