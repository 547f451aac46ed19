#include "lib/frame/file_place.h"

#include <cstdio>
#include <memory>

#include "base/character_class.h"

namespace kaldex {

namespace {

struct FileCloser {
  void operator()(FILE* file) const { std::fclose(file); }
};

}  // namespace

void PlaceCounter::take(char c) {
  if (lineEnded_) {
    ++line_;
    column_ = 0;
    indented_ = true;
    afterBlank_ = true;
    lineStart_ = 1;
  }
  lineEnded_ = c == '\n';
  ++column_;
  if (isBlankCharacter(static_cast<unsigned char>(c))) {
    afterBlank_ = true;
    return;
  }
  if (indented_) lineStart_ = column_;
  if (afterBlank_) wordStart_ = column_;
  indented_ = false;
  afterBlank_ = false;
}

RecordPlace PlaceFinder::find(const QByteArray& path, long long end) {
  if (end < 0) return {};  // a pipe has no places, and opening it again would wait for a writer
  const std::unique_ptr<FILE, FileCloser> file(std::fopen(path.constData(), "r"));
  if (file == nullptr) return {};
  if (end < at_) *this = PlaceFinder();
  if (fseeko(file.get(), at_, SEEK_SET) != 0) return {};
  for (; at_ < end; ++at_) {
    const int c = getc_unlocked(file.get());
    if (c == EOF) break;
    counter_.take(static_cast<char>(c));
  }
  return counter_.place();
}

}  // namespace kaldex
