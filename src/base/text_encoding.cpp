#include "base/text_encoding.h"

#include <QTextCodec>
#include <algorithm>

#include "base/character_class.h"

namespace kaldex {

namespace {

constexpr char kUtf8[] = "UTF-8";
constexpr char kWindowsLatin[] = "windows-1252";
constexpr unsigned char kMachineCodePage = 0x57;

// dBASE and ESRI language drivers and the code pages behind them, in the order of the drivers.
struct LanguageDriver {
  unsigned char driver;
  int codePage;
};

constexpr LanguageDriver kLanguageDrivers[] = {
    {0x01, 437},  {0x02, 850},   {0x03, 1252},  {0x04, 10000}, {0x08, 865},  {0x09, 437},  {0x0A, 850},
    {0x0B, 437},  {0x0D, 437},   {0x0E, 850},   {0x0F, 437},   {0x10, 850},  {0x11, 437},  {0x12, 850},
    {0x13, 932},  {0x14, 850},   {0x15, 437},   {0x16, 850},   {0x17, 865},  {0x18, 437},  {0x19, 437},
    {0x1A, 850},  {0x1B, 437},   {0x1C, 863},   {0x1D, 850},   {0x1F, 852},  {0x22, 852},  {0x23, 852},
    {0x24, 860},  {0x25, 850},   {0x26, 866},   {0x37, 850},   {0x40, 852},  {0x4D, 936},  {0x4E, 949},
    {0x4F, 950},  {0x50, 874},   {0x57, 1252},  {0x58, 1252},  {0x59, 1252}, {0x64, 852},  {0x65, 866},
    {0x66, 865},  {0x67, 861},   {0x6A, 737},   {0x6B, 857},   {0x6C, 863},  {0x78, 950},  {0x79, 949},
    {0x7A, 936},  {0x7B, 932},   {0x7C, 874},   {0x7D, 1255},  {0x7E, 1256}, {0x86, 737},  {0x87, 852},
    {0x88, 857},  {0x96, 10007}, {0x97, 10029}, {0x98, 10006}, {0xC8, 1250}, {0xC9, 1251}, {0xCA, 1254},
    {0xCB, 1253}, {0xCC, 1257},
};

// Code pages whose codec isn't called "windows-N" or "IBMN".
struct NamedCodePage {
  int codePage;
  const char* name;
};

constexpr NamedCodePage kNamedCodePages[] = {
    {932, "Shift_JIS"},
    {936, "GBK"},
    {949, "windows-949"},
    {950, "Big5"},
    {10000, "macintosh"},
    {10006, "x-mac-greek"},
    {10007, "x-mac-cyrillic"},
    {10029, "x-mac-ce"},
    {10081, "x-mac-turkish"},
    {20866, "KOI8-R"},
    {21866, "KOI8-U"},
    {51932, "EUC-JP"},
    {51949, "EUC-KR"},
    {54936, "GB18030"},
    {65001, kUtf8},
};

// A .dbf's blanks, digits and column names are ASCII, so an encoding that isn't based on it can't be meant.
QByteArray asciiBasedCodec(const QByteArray& name) {
  static const QString probe = QStringLiteral("AZaz09 .-");
  const QTextCodec* codec = name.isEmpty() ? nullptr : QTextCodec::codecForName(name);
  if (codec == nullptr || codec->toUnicode(probe.toLatin1()) != probe) return QByteArray();
  return codec->name();
}

QByteArray encodingNameOfCodePage(int codePage) {
  const auto* named = std::find_if(std::begin(kNamedCodePages), std::end(kNamedCodePages),
                                   [&](const NamedCodePage& page) { return page.codePage == codePage; });
  if (named != std::end(kNamedCodePages)) return asciiBasedCodec(named->name);
  if (codePage >= 28591 && codePage <= 28605) {
    return asciiBasedCodec("ISO-8859-" + QByteArray::number(codePage - 28590));
  }
  const QByteArray windows = asciiBasedCodec("windows-" + QByteArray::number(codePage));
  return windows.isEmpty() ? asciiBasedCodec("IBM" + QByteArray::number(codePage)) : windows;
}

QByteArray firstLine(QByteArray text) {
  if (text.startsWith("\xEF\xBB\xBF")) text.remove(0, 3);
  text = text.trimmed();
  const auto* lineEnd =
      std::find_if(text.cbegin(), text.cend(), [](char c) { return c == '\n' || c == '\r'; });
  return text.left(static_cast<int>(lineEnd - text.cbegin())).replace('"', "").trimmed();
}

// The parts of "ANSI 1251": capital letters, and the digits behind them; both empty if something follows the
// digits.
struct NumberedName {
  QByteArray letters;
  QByteArray digits;
};

NumberedName numberedName(const QByteArray& told) {
  NumberedName name;
  for (const char c : told.toUpper()) {
    const bool letter = c >= 'A' && c <= 'Z';
    if (letter && !name.digits.isEmpty()) return NumberedName();
    if (letter) name.letters.append(c);
    if (isDecimalDigit(c)) name.digits.append(c);
  }
  return name;
}

bool namesCodePage(const QByteArray& letters) {
  static constexpr const char* kPrefixes[] = {"",    "ANSI", "OEM", "CP",    "CODEPAGE", "WINDOWS",
                                              "WIN", "IBM",  "DOS", "MSDOS", "PC"};
  return std::any_of(std::begin(kPrefixes), std::end(kPrefixes),
                     [&](const char* prefix) { return letters == prefix; });
}

QByteArray nameOfNumber(const NumberedName& told) {
  if (told.letters == "UTF" && told.digits == "8") return kUtf8;
  if (told.letters == "LDID") {
    const int driver = told.digits.toInt();
    return driver > 0xFF ? QByteArray() : encodingNameOfLanguageDriver(static_cast<unsigned char>(driver));
  }
  const bool iso = told.letters.isEmpty() || told.letters == "ISO";
  if (iso && told.digits.startsWith("8859")) return asciiBasedCodec("ISO-8859-" + told.digits.mid(4));
  return namesCodePage(told.letters) ? encodingNameOfCodePage(told.digits.toInt()) : QByteArray();
}

void noteUnknown(TextEncoding& encoding, const char* sign, const QByteArray& told) {
  if (!encoding.notUnderstood.isEmpty()) encoding.notUnderstood += ", ";
  encoding.notUnderstood += QByteArray(sign) + ": " + told;
}

// Takes what a sign says; false if it says nothing that is known here.
bool take(TextEncoding& encoding, const char* sign, const QByteArray& told, const QByteArray& name) {
  if (told.isEmpty()) return false;
  if (name.isEmpty()) {
    noteUnknown(encoding, sign, told);
    return false;
  }
  encoding.name = name;
  encoding.reason = sign;
  return true;
}

}  // namespace

QByteArray encodingName(const QByteArray& told) {
  const QByteArray text = firstLine(told);
  const NumberedName numbered = numberedName(text);
  if (text.compare("ANSI", Qt::CaseInsensitive) == 0) return kWindowsLatin;
  const QByteArray name = numbered.digits.isEmpty() ? QByteArray() : nameOfNumber(numbered);
  return name.isEmpty() ? asciiBasedCodec(text) : name;
}

QByteArray encodingNameOfLanguageDriver(unsigned char driver) {
  const auto* found = std::find_if(std::begin(kLanguageDrivers), std::end(kLanguageDrivers),
                                   [&](const LanguageDriver& entry) { return entry.driver == driver; });
  return found == std::end(kLanguageDrivers) ? QByteArray() : encodingNameOfCodePage(found->codePage);
}

TextEncoding chooseEncoding(const EncodingSigns& signs) {
  TextEncoding encoding = {kWindowsLatin, kEncodingByDefault, QByteArray()};
  const QByteArray override = firstLine(signs.overrideName);
  if (take(encoding, kEncodingFromOverride, override, encodingName(override))) return encoding;
  const QByteArray cpg = firstLine(signs.cpgText);
  if (take(encoding, kEncodingFromCpg, cpg, encodingName(cpg))) return encoding;

  const bool utf8 = signs.texts.looksLikeUtf8();
  const unsigned char driver = signs.languageDriver;
  if (driver != 0 && !(driver == kMachineCodePage && utf8)) {
    const QByteArray told = "0x" + QByteArray(1, static_cast<char>(driver)).toHex();
    if (take(encoding, kEncodingFromLdid, told, encodingNameOfLanguageDriver(driver))) return encoding;
  }
  if (utf8) encoding.name = kUtf8;
  if (signs.texts.hasNonAscii()) encoding.reason = kEncodingFromBytes;
  return encoding;
}

TextDecoder::TextDecoder(const QByteArray& name)
    : codec_(QTextCodec::codecForName(name)), valid_(codec_ != nullptr) {
  if (!valid_) codec_ = QTextCodec::codecForName(kWindowsLatin);
  const QByteArray codecName = codec_->name();
  if (codecName == "ISO-8859-1") {
    kind_ = Kind::Latin1;
  } else if (codecName == kUtf8) {
    kind_ = Kind::Utf8;
  } else {
    readTable();
  }
}

// An encoding in which every byte alone is a character is read through a table, which takes a fraction of the
// codec's time.
void TextDecoder::readTable() {
  for (std::size_t byte = 0; byte < table_.size(); ++byte) {
    const QString text = codec_->toUnicode(QByteArray(1, static_cast<char>(byte)));
    if (text.size() != 1) return;
    table_[byte] = text[0].unicode();
  }
  kind_ = Kind::OneByte;
}

QString TextDecoder::decodeByTable(std::string_view bytes) const {
  QString text(static_cast<int>(bytes.size()), Qt::Uninitialized);
  std::transform(bytes.begin(), bytes.end(), text.begin(),
                 [this](char c) { return QChar(table_[static_cast<unsigned char>(c)]); });
  return text;
}

// The codec passes over a character that the end of the text cuts; a blank behind it makes it one that is
// told of.
QString TextDecoder::decodeByCodec(std::string_view bytes) const {
  QString text = codec_->toUnicode(QByteArray(bytes.data(), static_cast<int>(bytes.size())) + ' ');
  if (text.endsWith(QLatin1Char(' '))) text.chop(1);
  return text;
}

QString TextDecoder::decode(std::string_view bytes) {
  const int size = static_cast<int>(bytes.size());
  if (kind_ == Kind::Latin1 || !hasNonAscii(bytes)) return QString::fromLatin1(bytes.data(), size);
  const QString text = kind_ == Kind::OneByte ? decodeByTable(bytes)
                       : kind_ == Kind::Utf8  ? QString::fromUtf8(bytes.data(), size)
                                              : decodeByCodec(bytes);
  if (text.contains(QChar::ReplacementCharacter)) ++undecodable_;
  return text;
}

}  // namespace kaldex
