#ifndef KALDEX_BASE_STRINGS_H
#define KALDEX_BASE_STRINGS_H

#include <QString>

#include "base/api.h"

inline namespace kaldex_v1 {

// All of these take Latin-1 text and don't depend on the locale. Blanks are the white space of the C locale
// (space, tab, line feed, vertical tab, form feed, carriage return); letters include the accented ones of
// Latin-1.

// Strip blanks at the end, at the beginning, and everywhere, in place; they return the text.
KALDEX_BASE_API char* StrClean(char* text);
KALDEX_BASE_API char* StrCleanLeft(char* text);
KALDEX_BASE_API char* RemoveBlanks(char* text);

// Whether a text has at least one character and letters only, digits only, letters and digits only.
KALDEX_BASE_API bool StrIsAlpha(const char* text);
KALDEX_BASE_API bool StrIsDigit(const char* text);
KALDEX_BASE_API bool StrIsAlphaDigit(const char* text);
// Whether a letter stands anywhere in the text.
KALDEX_BASE_API bool StrHasAlpha(const char* text);

// Compares without regard to case: below 0, 0 or above 0, as strcmp.
KALDEX_BASE_API int Sstrcasecmp(const char* left, const char* right);
// Upper case in place; returns the text.
KALDEX_BASE_API char* toUpper(char* text);

// Whether a text is a value of a column type, blanks at both ends not counting: 0 an integer of any length
// with an optional sign, 1 a real number with a decimal point and an optional exponent, within the range of a
// double, 2 a date of the calendar as yyyymmdd, dd/mm/yy or dd/mm/yyyy, 3 any text. An empty text is a value
// of type 3 only. Returns 1 or 0; a refusal puts a short translated reason into `reason` (Latin-1, at least
// kReasonCapacity bytes) unless that is null.
inline constexpr int kReasonCapacity = 128;
KALDEX_BASE_API int TestDataType(const char* text, int type, char* reason = nullptr);

// Prints a value with a printf format that has one conversion of a double ("%8.3lf", "%g") and may have other
// text, with a decimal point under every locale. Returns 1; 0 and an empty result for any other format.
KALDEX_BASE_API int sprintf_double(QString& result, const char* format, double value);

}  // namespace kaldex_v1

#endif
