#include <QObject>
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string_view>

#include "base/byte_order.h"
#include "base/companion_file.h"
#include "base/file_window.h"
#include "base/number_text.h"
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
    {0, Bytes("PK\x03\x04"), QT_TRANSLATE_NOOP("QObject", "arquivo ZIP")},
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

// How many numbers a line consists of; 0 when anything else stands in it.
int numbersIn(Bytes line) {
  kaldex::TextScan scan(line);
  double value = 0.0;
  int count = 0;
  while (scan.read(value)) ++count;
  return scan.atEnd() ? count : 0;
}

bool isIdentifier(Bytes word) {
  return !word.empty() && word.find_first_not_of("0123456789") == Bytes::npos;
}

// Lines: an identifier by itself, then pairs or triples. Points: an identifier in front of each. `tail` is the
// end of the file, which is an "END".
bool isUngenerate(Bytes text, Bytes tail) {
  const std::size_t last = tail.find_last_not_of(" \t\r\n");
  if (last == Bytes::npos || last < 3 || tail.substr(last - 2, 3) != "END") return false;
  if (tail[last - 3] != '\n' && tail[last - 3] != '\r') return false;
  HeadLines lines(text);
  Bytes first, second;
  if (!lines.next(first) || !lines.next(second)) return false;
  if (!isIdentifier(first.substr(0, first.find_first_of(" \t")))) return false;
  const int ahead = numbersIn(first);
  const int numbers = numbersIn(second);
  const bool line = numbers == 2 || numbers == 3;
  if (ahead == 1) return line;
  // Three: a point, or a line with the place of its label.
  return (ahead == 3 || ahead == 4) && (second == "END" || numbers == ahead || (ahead == 3 && line));
}

// The first entry of the archive is a document, as these files have it.
bool isKmz(const QString& path, Bytes head) {
  constexpr std::size_t nameLength = 26;
  constexpr std::size_t name = 30;
  if (path.endsWith(QLatin1String(".kmz"), Qt::CaseInsensitive)) return true;
  if (head.size() < name) return false;
  const Bytes entry = head.substr(name, kaldex::loadLittle<std::uint16_t>(head.data() + nameLength));
  return entry.size() > 4 && entry.substr(entry.size() - 4) == ".kml";
}

Bytes withoutMark(Bytes text) {
  if (begins(text, "\xEF\xBB\xBF")) text.remove_prefix(3);
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  return first != Bytes::npos ? text.substr(first) : Bytes();
}

// The root's name may have a prefix, and some programs write no more than what stands in it.
bool isKml(Bytes text) {
  text = withoutMark(text);
  if (!begins(text, "<")) return false;
  return text.find("<kml") != Bytes::npos || text.find(":kml") != Bytes::npos ||
         text.find("<Placemark") != Bytes::npos;
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
  if (begins(withoutMark(text), "<?xml")) return QT_TRANSLATE_NOOP("QObject", "documento XML");
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
  if (begins(head, "PK\x03\x04") && isKmz(path, head))
    return {FileFormat::kml, QObject::tr("documento KML comprimido (KMZ)")};
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

// The last bytes, as far as they say how a text ends; valid until the file is looked at again.
Bytes tailOf(FileWindow& file) {
  const std::uint64_t count = std::min<std::uint64_t>(64, file.size());
  const unsigned char* const view = file.view(file.size() - count, static_cast<std::size_t>(count));
  return view != nullptr ? Bytes(reinterpret_cast<const char*>(view), static_cast<std::size_t>(count))
                         : Bytes();
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

  if (isKml(bytes)) return {FileFormat::kml, QObject::tr("documento KML")};
  // Before the sections of other texts: entities have names like theirs.
  if (isDrawing(bytes)) return {FileFormat::drawing, QObject::tr("desenho DXF")};
  if (hasSections(path)) return {FileFormat::ascii, QObject::tr("arquivo ASCII do KALDEX")};
  if (std::find(bytes.begin(), bytes.end(), '\0') != bytes.end())
    return {FileFormat::unknown, QObject::tr("dados binários")};
  if (isUngenerate(bytes, tailOf(file)))
    return {FileFormat::ungenerate, QObject::tr("linhas ou pontos do ArcInfo (ungenerate)")};
  const char* const description = textDescription(bytes);
  const bool table = std::strcmp(description, kTable) == 0;
  return {table ? FileFormat::delimitedTable : FileFormat::unknown, QObject::tr(description)};
}

}  // namespace kaldex_v1
