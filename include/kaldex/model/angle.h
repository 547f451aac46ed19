#ifndef KALDEX_MODEL_ANGLE_H
#define KALDEX_MODEL_ANGLE_H

#include <QString>

#include "kaldex/model/api.h"

inline namespace kaldex_v1 {

constexpr double kPi = 3.141592653589793;

/// Degrees to radians, and back.
constexpr double Math_Deg_To_Rad(double degrees) {
  return degrees * kPi / 180.0;
}
constexpr double Math_Rad_To_Deg(double radians) {
  return radians * 180.0 / kPi;
}

/// What an angle text is about: it decides the hemisphere letters and the range.
constexpr short kLatitudeKind = 0;
constexpr short kLongitudeKind = 1;

/// Writes an angle of radians into `text` as hemisphere letter, degrees, minutes and seconds with five
/// decimals, parted by single blanks and without padding: "S 23 10 5.20000". Seconds never print as 60. The
/// letters are N and S for latitudes, E and O for longitudes; with `portugueseLetters` false the west is W.
/// Longitudes beyond 180 degrees are brought back into the circle; a latitude beyond 90 degrees and what is
/// no number give an empty text. Returns `text`.
KALDEX_MODEL_API const QString& Encode(double angle, short kind, QString& text,
                                       bool portugueseLetters = true);

/// Reads what `Encode` writes: four parts, the letter in either case (O and W are the same), any number of
/// decimals in the seconds, blanks around allowed. Returns radians, negative for S, O and W, and fills the
/// three parts (unsigned). For bad text, a letter of the other kind and values out of range it returns
/// `kUnsetValue` (3.4e37) and the parts become 0.
KALDEX_MODEL_API double Decode(const QString& text, short kind, short& degrees, short& minutes,
                               double& seconds);

}  // namespace kaldex_v1

#endif
