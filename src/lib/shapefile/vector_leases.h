#ifndef KALDEX_SHAPEFILE_VECTOR_LEASES_H
#define KALDEX_SHAPEFILE_VECTOR_LEASES_H

#include <memory>

#include "kaldex/model/vector.h"

namespace kaldex {

// What a vector handed out, given back at the scope's end so that a whole layer never stays in memory: kept
// by a vector that holds its objects in memory, and deleted otherwise.

class LineReturn {
 public:
  explicit LineReturn(Vector& vector) : vector_(&vector) {}
  void operator()(Line* line) const {
    LineSet* const set = vector_->lineSet();
    if (set != nullptr && set->keepsInMemory()) {
      line->Free(1);
    } else {
      delete line;
    }
  }

 private:
  Vector* vector_;
};
using LineLease = std::unique_ptr<Line, LineReturn>;

class PolygonReturn {
 public:
  explicit PolygonReturn(Vector& vector) : vector_(&vector) {}
  void operator()(SPolygon* polygon) const {
    if (vector_->PolygonsInMemory()) {
      polygon->Free();
    } else {
      delete polygon;
    }
  }

 private:
  Vector* vector_;
};
using PolygonLease = std::unique_ptr<SPolygon, PolygonReturn>;

// Vector::KeepFilesOpen(1) for a scope; what was set before comes back at its end.
class FilesKeptOpen {
 public:
  explicit FilesKeptOpen(Vector& vector) : vector_(vector), before_(vector.KeepsFilesOpen()) {
    vector_.KeepFilesOpen(1);
  }
  ~FilesKeptOpen() { vector_.KeepFilesOpen(before_); }
  FilesKeptOpen(const FilesKeptOpen&) = delete;
  FilesKeptOpen& operator=(const FilesKeptOpen&) = delete;

 private:
  Vector& vector_;
  short before_;
};

}  // namespace kaldex

#endif
