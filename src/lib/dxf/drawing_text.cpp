#include "lib/dxf/drawing_text.h"

#include <QLatin1String>

#include "base/latin1.h"

namespace kaldex {

namespace {

const QLatin1String kUnicode("\\U+");
const QLatin1String kMultiByte("\\M+");
constexpr int kDigits = 4;
constexpr ushort kDegree = 0xB0;
constexpr ushort kPlusMinus = 0xB1;
constexpr ushort kDiameter = 0x2300;
constexpr ushort kFirstPrintable = 0x20;

// The code pages that "\M+" counts from 1.
const char* const kPages[] = {"Shift_JIS", "Big5", "windows-949", "johab", "GBK"};

bool hexadecimal(const QString& text, int at, int count, uint& value) {
  bool good = at + count <= text.size();
  value = good ? text.midRef(at, count).toUInt(&good, 16) : 0;
  return good;
}

bool startsAt(const QString& text, int at, QLatin1String word) {
  return text.midRef(at, word.size()).compare(word, Qt::CaseInsensitive) == 0;
}

QString ofPage(uint page, uint code) {
  if (page < 1 || page > sizeof kPages / sizeof *kPages) return QString();
  TextDecoder decoder(encodingName(kPages[page - 1]));
  if (!decoder.isValid()) return QString();
  const char bytes[] = {static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)};
  const QString text = decoder.decode({bytes, sizeof bytes});
  return decoder.undecodable() == 0 ? text : QString();
}

// The character of an escape at a place, and its length; 0 when there is none.
int escapeAt(const QString& text, int at, QString& character) {
  uint code = 0;
  if (startsAt(text, at, kUnicode) && hexadecimal(text, at + 3, kDigits, code) && code >= kFirstPrintable) {
    character = QChar(static_cast<ushort>(code));
    return kUnicode.size() + kDigits;
  }
  uint page = 0;
  if (startsAt(text, at, kMultiByte) && hexadecimal(text, at + 3, 1, page) &&
      hexadecimal(text, at + 4, kDigits, code)) {
    character = ofPage(page, code);
    return character.isEmpty() ? 0 : kMultiByte.size() + 1 + kDigits;
  }
  return 0;
}

// The same for a control, which begins with two percent signs; its character may be none.
int controlAt(const QString& text, int at, QString& character) {
  character.clear();
  if (at + 2 >= text.size() || text[at + 1] != QLatin1Char('%')) return 0;
  bool number = false;
  const uint code = at + 5 <= text.size() ? text.midRef(at + 2, 3).toUInt(&number, 10) : 0;
  if (number && code >= kFirstPrintable && code <= 0xFF) {
    character = QChar(static_cast<ushort>(code));
    return 5;
  }
  switch (text[at + 2].toLower().unicode()) {
    case 'd':
      character = QChar(kDegree);
      return 3;
    case 'p':
      character = QChar(kPlusMinus);
      return 3;
    case 'c':
      character = QChar(kDiameter);
      return 3;
    case '%':
      character = QLatin1Char('%');
      return 3;
    case 'o':
    case 'u':
    case 'k':
      return 3;
    default:
      return 0;
  }
}

QString replaced(const QString& text, QLatin1Char first, int (*codeAt)(const QString&, int, QString&)) {
  int at = text.indexOf(first);
  if (at < 0) return text;
  QString result = text.left(at);
  QString character;
  while (at < text.size()) {
    const int length = text[at] == first ? codeAt(text, at, character) : 0;
    if (length > 0) {
      result += character;
      at += length;
    } else {
      result += text[at++];
    }
  }
  return result;
}

// A byte 0 in a name or text ends it for whoever stores it.
std::string_view upToZero(std::string_view bytes) {
  return bytes.substr(0, bytes.find('\0'));
}

}  // namespace

DrawingText::DrawingText(const QByteArray& override, const QByteArray& codePage) {
  QByteArray name = encodingName(override);
  fixed_ = !name.isEmpty();
  reason_ = QString::fromLatin1(kEncodingFromOverride);
  if (!fixed_) {
    // "ANSI_1252": the dictionary of names knows it without the line.
    name = encodingName(QByteArray(codePage).replace('_', ' ').trimmed());
    if (name.isEmpty()) unknownPage_ = QString::fromLatin1(codePage);
    // ASCII has no letters with accents: where there are any, it says nothing.
    if (name == "US-ASCII") name.clear();
    reason_ = name.isEmpty() ? QString::fromLatin1(kEncodingByDefault) : QStringLiteral("header");
  }
  if (name.isEmpty()) name = "ISO-8859-1";
  encoding_ = QString::fromLatin1(name);
  decoder_ = std::make_unique<TextDecoder>(name);
}

QString DrawingText::decoded(std::string_view bytes) {
  bytes = upToZero(bytes);
  if (!hasNonAscii(bytes)) return QString::fromLatin1(bytes.data(), static_cast<int>(bytes.size()));
  if (!fixed_ && isValidUtf8(bytes)) {
    sawUtf8_ = true;
    return QString::fromUtf8(bytes.data(), static_cast<int>(bytes.size()));
  }
  sawOther_ = true;
  return decoder_->decode(bytes);
}

QString DrawingText::name(std::string_view bytes) {
  return withEscapes(decoded(bytes));
}

QString DrawingText::text(std::string_view bytes) {
  return withControls(withEscapes(decoded(bytes)));
}

QString withEscapes(const QString& text) {
  return replaced(text, QLatin1Char('\\'), escapeAt);
}

QString withControls(const QString& text) {
  return replaced(text, QLatin1Char('%'), controlAt);
}

QByteArray drawingBytes(const QString& text) {
  QByteArray bytes;
  bytes.reserve(text.size());
  for (const QChar character : text.normalized(QString::NormalizationForm_C)) {
    const ushort code = character.unicode();
    if (code == '\n' || code == '\r' || code == 0) {
      bytes += ' ';
    } else if (code <= 0xFF) {
      bytes += static_cast<char>(code);
    } else {
      bytes += "\\U+" + QByteArray::number(code, 16).toUpper().rightJustified(kDigits, '0');
    }
  }
  return bytes;
}

}  // namespace kaldex
