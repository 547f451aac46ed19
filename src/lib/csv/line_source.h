#ifndef KALDEX_CSV_LINE_SOURCE_H
#define KALDEX_CSV_LINE_SOURCE_H

#include <QString>
#include <string>
#include <string_view>

#include "base/companion_file.h"
#include "base/file_window.h"

namespace kaldex {

// The lines of a file whose lines end in line feeds. What is longer than a record may be comes in pieces.
class LineSource {
 public:
  static constexpr std::size_t kLongestRecord = 28671;

  explicit LineSource(const QString& path) : file_(pathBytes(path)) {}

  bool isOpen() const { return file_.isOpen(); }
  // Without its line feed, good until the next call; false at the end of the file.
  bool next(std::string_view& line);
  long long number() const { return number_; }
  // Whether the line goes on in the next piece.
  bool isCut() const { return cut_; }
  // Whether the file ended before the end that it had when it was opened.
  bool hasFailed() const { return failed_; }

 private:
  FileWindow file_;
  std::uint64_t offset_ = 0;
  long long number_ = 0;
  bool cut_ = false;
  bool failed_ = false;
};

}  // namespace kaldex

#endif
