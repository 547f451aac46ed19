#ifndef KALDEX_INTAKE_ASCII_SCAN_H
#define KALDEX_INTAKE_ASCII_SCAN_H

#include <QByteArray>
#include <functional>
#include <string_view>

namespace kaldex {

struct ScannedLine {
  std::string_view text;  // without its line feed; long lines are cut
  long long number;       // from 1
  long long offset;       // in bytes
};

// Hands out the lines of a file that have a letter from F on in capitals, or any small letter: keywords have
// one, while the bulk of a file, coordinates, has none and is passed over at the speed of memory.
// Stops when `take` returns false; false if the file can't be read.
bool scanWordLines(const QByteArray& path, const std::function<bool(const ScannedLine&)>& take);

// Hands out all lines from a place on.
bool scanLines(const QByteArray& path, long long offset, const std::function<bool(const ScannedLine&)>& take);

}  // namespace kaldex

#endif
