#ifndef KALDEX_ARCINFO_UNGENERATE_RECORD_H
#define KALDEX_ARCINFO_UNGENERATE_RECORD_H

#include <string_view>

namespace kaldex {

// Records of ungenerate files. All of these take a line without its line feed.

// The line that ends a record or the file, blanks around not counting.
bool isEndLine(std::string_view text);

// A word that identifies a line: it begins with a digit and holds no point.
bool isLineIdentifier(std::string_view word);

// What the first line of a file of samples says of the others.
enum class SampleForm { lines, points, neither };
SampleForm sampleForm(std::string_view text);

// A point, in front of it an identifier, which is borrowed from the text.
struct PointRecord {
  std::string_view identifier;
  double x = 0.0;
  double y = 0.0;
  float z = 0.0f;
};

enum class PointResult { found, end, malformed };
// `values` is how many numbers stand behind the identifier, 2 or 3. Numbers that are no values are malformed.
PointResult parsePointRecord(std::string_view text, int values, PointRecord& record);

}  // namespace kaldex

#endif
