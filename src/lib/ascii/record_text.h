#ifndef KALDEX_ASCII_RECORD_TEXT_H
#define KALDEX_ASCII_RECORD_TEXT_H

#include <cstddef>
#include <string_view>

namespace kaldex {

// What the first characters of a record or word say about it, and the records that are more than numbers.

bool startsWith(std::string_view text, std::string_view beginning);
// A record of plane coordinates, or another one that begins with a number.
bool startsLikeNumber(const char* text);
// A letter that leads the angle of a geographic coordinate: E, N, O, S, W in either case.
bool isHemisphereLetter(char letter);
// A word that is nothing but such a letter.
bool isHemisphereWord(const char* word);
// Whether a word that follows a section's opening begins a coordinate record.
bool startsCoordinates(const char* word);

// The record in front of a network line's coordinates.
struct NetworkRecord {
  float impedancePositive = 0.0f;
  float impedanceNegative = 0.0f;
  float demand = 0.0f;
};

// False when it doesn't have an identifier and three finite values. Impedances below -1 become -1.
bool parseNetworkRecord(std::string_view text, NetworkRecord& record);

// A plane coordinate pair: of a line's record, which holds two numbers, or of a sample's, with a height as
// the third.
enum class PlaneResult {
  found,
  noNumber,  // the record is something else
  malformed  // too few or too many numbers, or one that is no value
};
PlaneResult parsePlanePair(std::string_view text, double& x, double& y);
PlaneResult parsePlaneSample(std::string_view text, double& x, double& y, float& z);

// A text that is a finite real number and nothing else: what TestDataType takes for one.
bool parseReal(std::string_view text, double& value);

// Names of classes and objects, and labels, are cut to this many characters (of Latin-1).
inline constexpr std::size_t kMostOfName = 32;
inline std::string_view nameOf(std::string_view text) {
  return text.substr(0, kMostOfName);
}

// The fields of a delimited record without blanks at their ends, empty ones included; see DelimitedFields.
// Returns how many there are; the first `capacity` go into `fields`, whose rest is emptied.
int splitRecord(std::string_view text, std::string_view separators, std::string_view* fields, int capacity);

}  // namespace kaldex

#endif
