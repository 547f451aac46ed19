#ifndef KALDEX_BASE_LATIN1_H
#define KALDEX_BASE_LATIN1_H

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <string_view>

#include "base/api.h"

namespace kaldex {

// What Latin-1 could not hold, gathered over any number of texts.
class KALDEX_BASE_API Latin1Loss {
 public:
  static constexpr int kListed = 64;

  // Characters that were replaced, and the first kListed different ones among them in the order of their
  // appearance.
  int count() const { return count_; }
  const QStringList& characters() const { return characters_; }

  void add(const QString& character);

 private:
  int count_ = 0;
  QStringList characters_;
};

// The text in Latin-1, one byte a character. An accent that stands behind its letter is joined with it first.
// A character that Latin-1 doesn't have becomes "?" and is added to `loss` unless that is null.
KALDEX_BASE_API QByteArray toLatin1(const QString& text, Latin1Loss* loss = nullptr);

// Whether a byte above 0x7F stands in the text.
KALDEX_BASE_API bool hasNonAscii(std::string_view bytes);
// Whether the bytes are UTF-8 throughout: no stray, overlong or cut sequence, no surrogate, nothing above
// U+10FFFF.
KALDEX_BASE_API bool isValidUtf8(std::string_view bytes);

// Counts what speaks for UTF-8 and against it in the texts given, ASCII apart.
class KALDEX_BASE_API Utf8Evidence {
 public:
  void add(std::string_view bytes);

  bool hasNonAscii() const { return sequences_ != 0 || broken_ != 0; }
  // True if UTF-8 sequences clearly outnumber other bytes: fields of a fixed width cut a character here and
  // there, while accents of a one-byte encoding hardly ever form a sequence.
  bool looksLikeUtf8() const { return sequences_ != 0 && broken_ * 2 <= sequences_; }

 private:
  long long sequences_ = 0;
  long long broken_ = 0;
};

}  // namespace kaldex

#endif
