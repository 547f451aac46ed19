#ifndef KALDEX_FRAME_FILE_PLACE_H
#define KALDEX_FRAME_FILE_PLACE_H

#include <QByteArray>

namespace kaldex {

struct RecordPlace {
  long long line = 0;    // from 1; 0 when the file can't be read
  long long column = 0;  // from 1, in bytes
};

// Follows line and column through the bytes of a file.
class PlaceCounter {
 public:
  void take(char c);
  // Of the line that was completed last, or, within a line, of the word before.
  RecordPlace place() const { return {line_, lineEnded_ ? lineStart_ : wordStart_}; }

 private:
  long long line_ = 1;
  long long column_ = 0;
  long long lineStart_ = 1;  // first character of the line that isn't blank
  long long wordStart_ = 1;
  bool lineEnded_ = false;
  bool indented_ = true;
  bool afterBlank_ = true;
};

// Tells where the records of one file stand. Counts the lines up to there, so that nobody has to while
// reading; and goes on from the last place, as a user may be asked about each record of a long file.
class PlaceFinder {
 public:
  // Of the record that ends at byte `end`.
  RecordPlace find(const QByteArray& path, long long end);

 private:
  PlaceCounter counter_;
  long long at_ = 0;
};

// The same for a single record.
inline RecordPlace placeOfRecord(const QByteArray& path, long long end) {
  return PlaceFinder().find(path, end);
}

}  // namespace kaldex

#endif
