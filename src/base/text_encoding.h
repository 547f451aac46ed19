#ifndef KALDEX_BASE_TEXT_ENCODING_H
#define KALDEX_BASE_TEXT_ENCODING_H

#include <QByteArray>
#include <QString>
#include <array>
#include <string_view>

#include "base/api.h"
#include "base/latin1.h"

class QTextCodec;

namespace kaldex {

// Keys that say why an encoding was taken.
inline constexpr char kEncodingFromOverride[] = "override";  // the caller named it
inline constexpr char kEncodingFromCpg[] = "cpg";            // the .cpg file names it
inline constexpr char kEncodingFromLdid[] = "ldid";          // the language driver byte of the .dbf
inline constexpr char kEncodingFromBytes[] = "bytes";        // what the texts themselves look like
inline constexpr char kEncodingByDefault[] =
    "default";  // nothing tells, and no accent is known to stand there

// What is known about the encoding of an attribute file's texts.
struct EncodingSigns {
  QByteArray overrideName;  // empty if the caller leaves the choice to us
  QByteArray cpgText;       // content of the .cpg file, empty if there is none
  unsigned char languageDriver = 0;
  Utf8Evidence texts;
};

struct TextEncoding {
  QByteArray name;     // as TextDecoder takes it
  const char* reason;  // one of the keys above
  QByteArray
      notUnderstood;  // signs that name no encoding known here, as they stand ("cpg: klingon"), or empty
};

// The first sign that can be understood: override, .cpg, language driver, bytes. A driver byte of 0x57 says
// no more than "the code page of the writer's machine" and is written without thought, so texts that look
// like UTF-8 win over it.
KALDEX_BASE_API TextEncoding chooseEncoding(const EncodingSigns& signs);

// The name by which an encoding is known here, empty for an unknown one. Takes the forms that .cpg files
// hold: "UTF8", "1252", "ANSI 1251", "OEM 850", "ISO-8859-1", "88591", "LDID/87", and the usual names.
KALDEX_BASE_API QByteArray encodingName(const QByteArray& told);
// That of a dBASE language driver byte.
KALDEX_BASE_API QByteArray encodingNameOfLanguageDriver(unsigned char driver);

// Turns the bytes of an encoding into text. Used by one thread at a time.
class KALDEX_BASE_API TextDecoder {
 public:
  // A name as encodingName gives it; an unknown one leaves the decoder with windows-1252 and isValid() false.
  explicit TextDecoder(const QByteArray& name);

  bool isValid() const { return valid_; }
  QString decode(std::string_view bytes);
  // Texts so far that held bytes which mean nothing in the encoding; U+FFFD stands in their place.
  int undecodable() const { return undecodable_; }

 private:
  enum class Kind { Latin1, OneByte, Utf8, Other };

  void readTable();
  QString decodeByTable(std::string_view bytes) const;
  QString decodeByCodec(std::string_view bytes) const;

  QTextCodec* codec_;
  bool valid_;
  Kind kind_ = Kind::Other;
  std::array<ushort, 256> table_ = {};
  int undecodable_ = 0;
};

}  // namespace kaldex

#endif
