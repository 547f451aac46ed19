#include "lib/frame/file_place.h"

#include <cstdio>
#include <memory>

#include "base/character_class.h"

namespace kaldex {

namespace {

// Follows line and column through the bytes of a file.
class PlaceCounter {
 public:
  void take(char c) {
    const bool blank = isBlankCharacter(static_cast<unsigned char>(c));
    if (lineEnded_) {
      ++place_.line;
      column_ = 0;
      indented_ = true;
      afterBlank_ = true;
      lineStart_ = 1;
    }
    lineEnded_ = c == '\n';
    ++column_;
    if (blank) {
      afterBlank_ = true;
      return;
    }
    if (indented_) lineStart_ = column_;
    if (afterBlank_) wordStart_ = column_;
    indented_ = false;
    afterBlank_ = false;
  }

  RecordPlace place() {
    place_.column = lineEnded_ ? lineStart_ : wordStart_;
    return place_;
  }

 private:
  RecordPlace place_{1, 1};
  long long column_ = 0;
  long long lineStart_ = 1;  // first character of the line that isn't blank
  long long wordStart_ = 1;
  bool lineEnded_ = false;
  bool indented_ = true;
  bool afterBlank_ = true;
};

struct FileCloser {
  void operator()(FILE* file) const { std::fclose(file); }
};

}  // namespace

RecordPlace placeOfRecord(const QByteArray& path, long long end) {
  if (end < 0) return {};  // a pipe has no places, and opening it again would wait for a writer
  const std::unique_ptr<FILE, FileCloser> file(std::fopen(path.constData(), "r"));
  if (file == nullptr) return {};
  PlaceCounter counter;
  for (long long i = 0; i < end; ++i) {
    const int c = getc_unlocked(file.get());
    if (c == EOF) break;
    counter.take(static_cast<char>(c));
  }
  return counter.place();
}

}  // namespace kaldex
