#include "lib/frame/lat_long_record.h"

#include <QString>
#include <cstring>

#include "base/character_class.h"
#include "base/number_text.h"
#include "kaldex/model/angle.h"
#include "kaldex/model/geometry.h"

namespace kaldex {

namespace {

// One angle's text, led by a blank and with single blanks inside. Longer than any angle is malformed.
class GroupText {
 public:
  bool append(char character) {
    if (character == ' ' && text_[length_ - 1] == ' ') return true;
    if (length_ == static_cast<int>(sizeof text_)) return false;
    text_[length_++] = character;
    return true;
  }
  int taken() const { return length_ - 1; }
  double decode(short kind) const {
    short degrees = 0;
    short minutes = 0;
    double seconds = 0.0;
    return Decode(QString::fromLatin1(text_, length_), kind, degrees, minutes, seconds);
  }

 private:
  char text_[128] = {' '};
  int length_ = 1;
};

bool isAngleCharacter(char c) {
  return c == ' ' || c == '.' || isDecimalDigit(c);
}

bool isOneOf(char c, const char* letters) {
  return c != 0 && std::strchr(letters, c) != nullptr;
}

char characterAt(char* at) {
  if (*at == '\t') *at = ' ';
  return *at;
}

// Scans up to the letter that begins the other group; null when there is none. The first two characters are
// taken whatever they are: the letter, and a blank or the first digit.
char* scanFirstGroup(char* at, GroupText& group) {
  for (;; ++at) {
    const char c = characterAt(at);
    if (c == 0) return nullptr;
    if (group.taken() >= 2 && !isAngleCharacter(c)) return isOneOf(c, "EOWeowNnSs") ? at : nullptr;
    if (!group.append(c)) return nullptr;
  }
}

bool scanSecondGroup(char* at, GroupText& group, float& height) {
  height = static_cast<float>(kUnsetValue);
  group.append(*at++);
  for (;; ++at) {
    const char c = characterAt(at);
    if (c == 0) return true;
    if (isOneOf(c, "Zz")) {
      height = static_cast<float>(textToReal(at + 1));
      return true;
    }
    if (!isAngleCharacter(c) || !group.append(c)) return false;
  }
}

}  // namespace

LatLongResult parseLatLong(char* text, LatLongRecord& record) {
  if (std::strncmp(text, "END", 3) == 0) return LatLongResult::end;
  GroupText first;
  GroupText second;
  char* const letter = scanFirstGroup(text, first);
  if (letter == nullptr || !scanSecondGroup(letter, second, record.height)) return LatLongResult::malformed;

  const bool latitudeLast = isOneOf(*letter, "NnSs");
  record.latitude = (latitudeLast ? second : first).decode(kLatitudeKind);
  record.longitude = (latitudeLast ? first : second).decode(kLongitudeKind);
  const bool bad = record.latitude > kUnsetLimit || record.longitude > kUnsetLimit;
  return bad ? LatLongResult::malformed : LatLongResult::found;
}

}  // namespace kaldex
