#include "model/vector/feature_table.h"

#include <algorithm>

namespace kaldex {

Statement* RowCursor::step() {
  if (!open_) {
    statement_.bind(1, last_);
    open_ = true;
  }
  if (!statement_.step()) {
    release();
    last_ = std::numeric_limits<std::int64_t>::max();
    return nullptr;
  }
  last_ = statement_.integer(0);
  return &statement_;
}

FeatureTable::FeatureTable(SqliteConnection& connection, Definition definition)
    : connection_(connection),
      definition_(std::move(definition)),
      index_(connection, definition_.registration.name) {}

bool FeatureTable::exists() {
  if (known_ < 0) known_ = connection_.tableExists(name()) ? 1 : 0;
  return known_ == 1;
}

int FeatureTable::srsId() {
  if (!srsKnown_) definition_.registration.srsId = definition_.spatialReference();
  srsKnown_ = true;
  return definition_.registration.srsId;
}

void FeatureTable::ensure() {
  if (exists()) return;
  srsId();
  connection_.execSchema("CREATE TABLE " + quoted() + " (fid INTEGER PRIMARY KEY NOT NULL, " +
                         definition_.columns + " geom " + definition_.registration.geometryType + ")");
  registerFeatureTable(connection_, definition_.registration);
  known_ = 1;
}

std::int64_t FeatureTable::newId() {
  if (lastId_ < 0) lastId_ = exists() ? connection_.scalar("SELECT max(fid) FROM " + quoted()) : 0;
  return ++lastId_;
}

void FeatureTable::reserveId(std::int64_t id) {
  if (lastId_ < 0) newId();
  lastId_ = std::max(lastId_, id);
}

long long FeatureTable::count() {
  return exists() ? connection_.scalar("SELECT count(*) FROM " + quoted()) : 0;
}

Box FeatureTable::extent() {
  Box box = extent_;
  if (!exists()) return box;
  Statement stored =
      connection_.prepare("SELECT min_x, min_y, max_x, max_y FROM gpkg_contents WHERE table_name = ?1");
  stored.bind(1, name());
  if (stored.step() && !stored.isNull(0)) {
    box.extend(Box(stored.real(0), stored.real(1), stored.real(2), stored.real(3)));
  }
  return box;
}

void FeatureTable::added(std::int64_t id, const Box& box) {
  ensure();
  index_.add(id, box);
  extent_.extend(box);
}

void FeatureTable::moved(std::int64_t id, const Box& box) {
  index_.move(id, box);
  extent_.extend(box);
}

std::vector<std::int64_t> FeatureTable::candidates(const Box& box) {
  std::vector<std::int64_t> ids;
  if (!exists()) return ids;
  index_.find(box, ids);
  std::sort(ids.begin(), ids.end());
  ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
  return ids;
}

void FeatureTable::finish() {
  if (!index_.hasPending()) return;
  ensure();
  index_.store();
  if (extent_.isInverted()) return;
  const Box whole = extent();
  updateContents(connection_, name(), &whole);
  extent_ = Box::inverted();
}

void FeatureTable::forget() {
  index_.forget();
  extent_ = Box::inverted();
  lastId_ = -1;
  known_ = -1;
  srsKnown_ = false;
}

}  // namespace kaldex
