#include <QObject>
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string_view>

#include "base/byte_order.h"
#include "base/companion_file.h"
#include "base/file_window.h"
#include "kaldex/intake.h"
#include "lib/intake/text_survey.h"

inline namespace kaldex_v1 {

namespace {

using kaldex::FileWindow;

constexpr std::size_t kHead = 64 * 1024;
constexpr std::int32_t kShapefileCode = 9994;
constexpr std::size_t kApplicationId = 68;  // where SQLite keeps it
constexpr std::uint32_t kGeoPackage = 0x47504B47;

using Bytes = std::string_view;

struct Signature {
  std::size_t offset;
  Bytes bytes;
  const char* description;
};

const Signature kSignatures[] = {
    {0, Bytes("\x89PNG\r\n\x1a\n", 8), QT_TRANSLATE_NOOP("QObject", "imagem PNG")},
    {0, Bytes("\xFF\xD8\xFF", 3), QT_TRANSLATE_NOOP("QObject", "imagem JPEG")},
    {0, Bytes("II*\0", 4), QT_TRANSLATE_NOOP("QObject", "imagem TIFF")},
    {0, Bytes("MM\0*", 4), QT_TRANSLATE_NOOP("QObject", "imagem TIFF")},
    {0, Bytes("II+\0", 4), QT_TRANSLATE_NOOP("QObject", "imagem BigTIFF")},
    {0, Bytes("MM\0+", 4), QT_TRANSLATE_NOOP("QObject", "imagem BigTIFF")},
    {4, Bytes("jP  \r\n\x87\n", 8), QT_TRANSLATE_NOOP("QObject", "imagem JPEG 2000")},
    {0, Bytes("\xFF\x4F\xFF\x51", 4), QT_TRANSLATE_NOOP("QObject", "imagem JPEG 2000")},
    {0, Bytes("GIF8"), QT_TRANSLATE_NOOP("QObject", "imagem GIF")},
    {0, Bytes("%PDF"), QT_TRANSLATE_NOOP("QObject", "documento PDF")},
    {0, Bytes("PK\x03\x04"), QT_TRANSLATE_NOOP("QObject", "arquivo ZIP (talvez KMZ)")},
    {0, Bytes("\x1F\x8B", 2), QT_TRANSLATE_NOOP("QObject", "arquivo comprimido gzip")},
    {0, Bytes("AutoCAD Binary DXF"), QT_TRANSLATE_NOOP("QObject", "desenho DXF binário")},
    {0, Bytes("AC10"), QT_TRANSLATE_NOOP("QObject", "desenho DWG")},
    {0, Bytes("EXP "), QT_TRANSLATE_NOOP("QObject", "arquivo de intercâmbio E00")},
    {0, Bytes("DSAA"), QT_TRANSLATE_NOOP("QObject", "grade Surfer em texto")},
    {0, Bytes("DSBB"), QT_TRANSLATE_NOOP("QObject", "grade Surfer binária")},
    {0, Bytes("DSRB"), QT_TRANSLATE_NOOP("QObject", "grade Surfer binária")},
};

bool begins(Bytes text, Bytes beginning) {
  return text.substr(0, beginning.size()) == beginning;
}

// Lines of a text's beginning, without outer blanks and a carriage return.
class HeadLines {
 public:
  explicit HeadLines(Bytes text) : rest_(text) {}

  bool next(Bytes& line) {
    while (!rest_.empty()) {
      const std::size_t end = std::min(rest_.find_first_of("\r\n"), rest_.size());
      line = rest_.substr(0, end);
      rest_.remove_prefix(std::min(end + 1, rest_.size()));
      const std::size_t first = line.find_first_not_of(" \t");
      if (first == Bytes::npos) continue;
      line = line.substr(first, line.find_last_not_of(" \t") - first + 1);
      return true;
    }
    return false;
  }

 private:
  Bytes rest_;
};

constexpr Bytes kByteOrderMark("\xEF\xBB\xBF", 3);

// A drawing begins with a section, or with its first entity.
bool isDrawing(Bytes text) {
  static constexpr Bytes kFirst[] = {"SECTION", "POINT", "LINE", "POLYLINE", "ARC", "CIRCLE", "INSERT"};
  if (begins(text, kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  HeadLines lines(text);
  Bytes code, value;
  while (lines.next(code) && lines.next(value)) {
    if (code == "0") return std::find(std::begin(kFirst), std::end(kFirst), value) != std::end(kFirst);
    if (code != "999") return false;
  }
  return false;
}

bool isAsciiGrid(Bytes text) {
  return begins(text, "ncols") || begins(text, "NCOLS");
}

// The same separator equally often in the first lines.
bool isTable(Bytes text) {
  HeadLines lines(text);
  Bytes line;
  for (const char separator : {';', ',', '|', '\t'}) {
    HeadLines some(text);
    long first = -1;
    int alike = 0;
    while (alike < 5 && some.next(line)) {
      const long count = std::count(line.begin(), line.end(), separator);
      if (first < 0) first = count;
      if (count == 0 || count != first) break;
      ++alike;
    }
    if (alike >= 2) return true;
  }
  return false;
}

constexpr char kTable[] = QT_TRANSLATE_NOOP("QObject", "tabela de texto delimitado");

const char* textDescription(Bytes text) {
  if (begins(text, "<?xml") || begins(text, "<kml")) {
    return text.find("<kml") != Bytes::npos ? QT_TRANSLATE_NOOP("QObject", "documento KML")
                                            : QT_TRANSLATE_NOOP("QObject", "documento XML");
  }
  if (begins(text, "{")) return QT_TRANSLATE_NOOP("QObject", "texto JSON");
  if (isAsciiGrid(text)) return QT_TRANSLATE_NOOP("QObject", "grade em texto");
  return isTable(text) ? kTable : QT_TRANSLATE_NOOP("QObject", "texto");
}

bool isTableFile(Bytes head) {
  if (head.size() < 32) return false;
  const auto version = static_cast<unsigned char>(head[0]);
  const auto month = static_cast<unsigned char>(head[2]);
  const auto headerSize = kaldex::loadLittle<std::uint16_t>(head.data() + 8);
  return (version & 7) == 3 && month <= 12 && headerSize >= 33 && headerSize % 32 <= 8;
}

FileGuess guessBinary(const QString& path, Bytes head) {
  if (head.size() >= 100 && kaldex::loadBig<std::int32_t>(head.data()) == kShapefileCode)
    return {FileFormat::shapefile, QObject::tr("shapefile")};
  if (begins(head, Bytes("SQLite format 3\0", 16))) {
    const bool geoPackage =
        head.size() >= 100 && kaldex::loadBig<std::uint32_t>(head.data() + kApplicationId) == kGeoPackage;
    if (!geoPackage) return {FileFormat::unknown, QObject::tr("banco de dados SQLite")};
    return {FileFormat::geographicDatabase, QObject::tr("banco de dados geográfico (GeoPackage)")};
  }
  for (const Signature& signature : kSignatures) {
    if (head.size() >= signature.offset && begins(head.substr(signature.offset), signature.bytes))
      return {FileFormat::unknown, QObject::tr(signature.description)};
  }
  if (isTableFile(head)) {
    if (ShapeOutline(path).isValid()) return {FileFormat::shapefile, QObject::tr("shapefile")};
    return {FileFormat::unknown, QObject::tr("tabela dBASE")};
  }
  return {};
}

// A text with other line ends, or of two bytes a character, has to be prepared before it can be looked into.
bool hasSections(const QString& path) {
  if (!AsciiOutline(path).sections().empty()) return true;
  const TextIntake text(path, TextForm::sections);
  return text.isCopy() && !AsciiOutline(text.path()).sections().empty();
}

}  // namespace

FileGuess guessFile(const QString& path) {
  FileWindow file(kaldex::pathBytes(path));
  if (!file.isOpen()) return {FileFormat::unknown, QObject::tr("não é um arquivo legível")};
  if (file.size() == 0) return {FileFormat::unknown, QObject::tr("arquivo vazio")};
  const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(kHead, file.size()));
  const unsigned char* const view = file.view(0, count);
  if (view == nullptr) return {FileFormat::unknown, QObject::tr("não é um arquivo legível")};
  const QByteArray head(reinterpret_cast<const char*>(view), static_cast<int>(count));
  const Bytes bytes(head.constData(), count);
  const FileGuess binary = guessBinary(path, bytes);
  if (!binary.description.isEmpty()) return binary;

  // Before the sections of other texts: entities have names like theirs.
  if (isDrawing(bytes)) return {FileFormat::drawing, QObject::tr("desenho DXF")};
  if (hasSections(path)) return {FileFormat::ascii, QObject::tr("arquivo ASCII do KALDEX")};
  if (std::find(bytes.begin(), bytes.end(), '\0') != bytes.end())
    return {FileFormat::unknown, QObject::tr("dados binários")};
  const char* const description = textDescription(bytes);
  const bool table = std::strcmp(description, kTable) == 0;
  return {table ? FileFormat::delimitedTable : FileFormat::unknown, QObject::tr(description)};
}

}  // namespace kaldex_v1
