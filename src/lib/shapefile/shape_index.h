#ifndef KALDEX_SHAPEFILE_SHAPE_INDEX_H
#define KALDEX_SHAPEFILE_SHAPE_INDEX_H

#include <vector>

#include "base/file_window.h"

namespace kaldex {

// The index (.shx) of a main file: as it stands, or made up in memory where it doesn't fit.
struct ShapeIndex {
  enum class Trouble {
    none,
    missing,       // there is no .shx
    short_,        // shorter or longer than its head says, or no index at all
    inconsistent,  // leads to places where no record of that length begins
  };

  // What was wrong with the file; `bytes` takes its place then.
  Trouble trouble = Trouble::none;
  // In the form of a .shx; empty if the file is good as it stands.
  std::vector<unsigned char> bytes;
  // Bytes at the end of the main file, as long as it is or says it is, that no record was found in while it
  // was walked.
  std::uint64_t unread = 0;
};

// `index` may be null.
ShapeIndex checkShapeIndex(FileWindow& main, FileWindow* index);

}  // namespace kaldex

#endif
