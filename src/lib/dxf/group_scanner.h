#ifndef KALDEX_DXF_GROUP_SCANNER_H
#define KALDEX_DXF_GROUP_SCANNER_H

#include <cstddef>
#include <cstdio>
#include <string_view>

namespace kaldex {

// Reads a drawing's group pairs, each of which is a line with a code and a line with a value. The text of a
// code isn't tested: a line that holds no number gives the code 0. Comments (code 999) are passed over.
class GroupScanner {
 public:
  // In this section blank lines stand between pairs anywhere, and mean nothing.
  enum class Blanks { areValues, arePassedOver };

  // The next pair; false at the end of the file, also within a pair.
  bool next(FILE* file, Blanks blanks);
  int code() const { return code_; }
  // Without blanks at its ends; good until the next pair.
  std::string_view value() const { return value_; }

  // The number of the line at hand since `restart`; at the end of the file, of the one that is missing.
  long lines() const { return lines_; }
  // How many of them were longer than the buffer; what did not fit was passed over.
  long cutLines() const { return cutLines_; }
  // How many values were blank where that means nothing, so that the next line was taken for them, and where
  // the first of them stood.
  long blankValues() const { return blankValues_; }
  long firstBlankValue() const { return firstBlankValue_; }
  void restart();

 private:
  static constexpr std::size_t kCapacity = 1023;

  bool readLine(FILE* file);
  bool readPair(FILE* file, Blanks blanks);
  void countBlankValue();

  char buffer_[kCapacity] = {};
  std::string_view value_;
  int code_ = 0;
  long lines_ = 0;
  long cutLines_ = 0;
  long blankValues_ = 0;
  long firstBlankValue_ = 0;
};

// The codes that the reader knows. What a number means depends on the entity; these are their usual meanings.
struct GroupCode {
  enum : int {
    start = 0,  // of an entity, a table, a section
    text = 1,
    name = 2,
    layer = 8,
    variable = 9,  // its name in the header
    x = 10,
    endX = 11,
    y = 20,
    endY = 21,
    height = 30,
    endHeight = 31,
    elevation = 38,
    size = 40,  // radius, height of a text
    expansion = 41,
    bulge = 42,
    startAngle = 50,
    endAngle = 51,
    color = 62,
    paperSpace = 67,
    flags = 70,
    corner1 = 71,  // of a face, as a number in the list of vertices
    corner2 = 72,
    corner3 = 73,
    corner4 = 74,
    normalZ = 230,  // of the plane that the coordinates lie in
    comment = 999,
    extendedText = 1000,
  };
};

}  // namespace kaldex

#endif
