#ifndef KALDEX_FRAME_FILE_PLACE_H
#define KALDEX_FRAME_FILE_PLACE_H

#include <QByteArray>

namespace kaldex {

struct RecordPlace {
  long long line = 0;    // from 1; 0 when the file can't be read
  long long column = 0;  // from 1, in bytes
};

// Where the record stands that ends at byte `end` of a file: the line that was completed there, or, within a
// line, the word before it. Counts the lines up to there, so that nobody has to while reading.
RecordPlace placeOfRecord(const QByteArray& path, long long end);

}  // namespace kaldex

#endif
