#ifndef KALDEX_SHAPEFILE_SHAPE_READER_H
#define KALDEX_SHAPEFILE_SHAPE_READER_H

#include <shapefil.h>

#include <QString>
#include <memory>

#include "lib/shapefile/shape_index.h"

namespace kaldex {

// Reads the records of a shapefile's main file, one at a time, and never trusts what one tells of itself.
class ShapeReader {
 public:
  enum class Record {
    shape,
    null,
    damaged,  // nothing can be made of it
  };

  // Null if the file isn't there or its head is none of a shapefile. `path` as companionFile takes it.
  static std::unique_ptr<ShapeReader> open(const QString& path);
  ShapeReader(const ShapeReader&) = delete;
  ShapeReader& operator=(const ShapeReader&) = delete;
  ~ShapeReader();

  int count() const { return count_; }
  int type() const { return type_; }
  ShapeIndex::Trouble indexTrouble() const { return indexTrouble_; }
  std::uint64_t unreadBytes() const { return unread_; }

  // Reads a record, counted from 0; it stands until the next call.
  Record read(int number);

  int vertexCount() const { return shape_->nVertices; }
  const double* x() const { return shape_->padfX; }
  const double* y() const { return shape_->padfY; }
  // Null for shapes without heights.
  const double* z() const { return shape_->padfZ; }
  int partCount() const { return shape_->nParts; }
  int partStart(int part) const { return shape_->panPartStart[part]; }
  int partEnd(int part) const {
    return part + 1 < shape_->nParts ? shape_->panPartStart[part + 1] : shape_->nVertices;
  }

 private:
  class Stream;

  ShapeReader();
  bool openFiles(const QString& path);
  bool partsAreSound() const;
  void drop();

  std::unique_ptr<FileWindow> main_;
  std::unique_ptr<FileWindow> indexFile_;
  std::unique_ptr<Stream> mainStream_;
  std::unique_ptr<Stream> indexStream_;
  SHPInfo* handle_ = nullptr;
  SHPObject* shape_ = nullptr;
  int count_ = 0;
  int type_ = 0;
  ShapeIndex::Trouble indexTrouble_ = ShapeIndex::Trouble::none;
  std::uint64_t unread_ = 0;
};

}  // namespace kaldex

#endif
