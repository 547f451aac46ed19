#include <QStringList>
#include <QTemporaryFile>
#include <algorithm>
#include <cstring>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

#include "base/companion_file.h"
#include "base/number_text.h"
#include "kaldex/ascii.h"
#include "kaldex/intake.h"
#include "lib/ascii/class_text.h"
#include "lib/ascii/column_text.h"
#include "lib/frame/coordinate_transfer.h"
#include "lib/frame/lat_long_record.h"
#include "lib/intake/ascii_scan.h"
#include "lib/intake/plane_boxes.h"

inline namespace kaldex_v1 {

namespace {

using kaldex::ScannedLine;

constexpr int kLongestHeader = 1024 * 1024;
constexpr std::size_t kMostSections = 100000;

struct Keyword {
  const char* word;
  // A section whose blocks this keyword also begins; there it is no section.
  const char* blockOf[2];
};

// Longer keywords stand before those that they begin with.
constexpr Keyword kKeywords[] = {
    {"CONTOURLINES", {}},
    {"NETWORK_OBJECTS", {}},
    {"NETWORK", {}},
    {"LINES", {"POINTS", "NETWORK_OBJECTS"}},
    {"POLYGONS", {}},
    {"SAMPLE", {}},
    {"POINT3D", {"SAMPLE", "CONTOURLINES"}},
    {"POINT2D", {}},
    {"POINTS", {}},
    {"GRIDREG", {}},
    {"NODES", {"POINTS", "NETWORK_OBJECTS"}},
    {"CENTER", {}},
    {"TABLE", {}},
    {"TEXT", {}},
    {"TIN3D", {}},
    {"TIN", {}},
    {"TURNS", {}},
};

std::string_view trimmed(std::string_view text) {
  constexpr const char* kBlanks = " \t\r\v\f";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool begins(std::string_view text, std::string_view beginning) {
  return text.substr(0, beginning.size()) == beginning;
}

// Follows a file's word lines and tells which of them begin a section.
class SectionFinder {
 public:
  // The keyword of the section that begins here, or null.
  const Keyword* take(std::string_view line) {
    const std::string_view text = trimmed(line);
    if (inHeader_) {
      inHeader_ = !begins(text, "INFO_END");
      return nullptr;
    }
    if (text == "INFO") {
      inHeader_ = true;
      return nullptr;
    }
    // The blocks of label points have no ends, their section has.
    if (text == "END" && current_ != nullptr &&
        (std::strcmp(current_, "POINTS") == 0 || std::strcmp(current_, "NETWORK_OBJECTS") == 0))
      current_ = nullptr;
    const auto* const known = std::find_if(std::begin(kKeywords), std::end(kKeywords),
                                           [&](const Keyword& keyword) { return text == keyword.word; });
    if (known == std::end(kKeywords) || isBlock(*known)) return nullptr;
    current_ = known->word;
    return known;
  }

 private:
  bool isBlock(const Keyword& keyword) const {
    return std::any_of(std::begin(keyword.blockOf), std::end(keyword.blockOf), [&](const char* section) {
      return section != nullptr && current_ != nullptr && std::strcmp(section, current_) == 0;
    });
  }

  bool inHeader_ = false;
  const char* current_ = nullptr;
};

// Sections whose records have no end of their own.
const QStringList kFlatSections = {QStringLiteral("POINT2D"),         QStringLiteral("POINTS"),
                                   QStringLiteral("NETWORK_OBJECTS"), QStringLiteral("NODES"),
                                   QStringLiteral("CENTER"),          QStringLiteral("TEXT")};

// Sections whose numbers are no coordinates, or more of them than a pair a line.
const QStringList kPlacelessSections = {QStringLiteral("TABLE"), QStringLiteral("GRIDREG"),
                                        QStringLiteral("TURNS")};

// Numbers after the first section's keyword that are coordinates: pairs, and triples with a height.
class ExtentReader {
 public:
  ExtentReader(const QString& keyword, SProjection* source, SProjection* target, int units)
      : network_(keyword == QLatin1String("NETWORK")),
        flat_(kFlatSections.contains(keyword)),
        separator_(keyword == QLatin1String("TEXT") ? ';' : char{0}),
        transfer_(source, target, units),
        factor_(kaldex::unitFactor(units)) {}

  // False behind the end of the section.
  bool take(std::string_view line) {
    const std::string_view text = trimmed(line);
    if (text.empty() || begins(text, "//")) return true;
    if (inHeader_) {
      inHeader_ = !begins(text, "INFO_END");
      if (begins(text, "SEPARATOR")) separator_ = text.back();
      return true;
    }
    if (text == "INFO") {
      inHeader_ = true;
      return true;
    }
    if (begins(text, "END")) {
      // The end of a record, or behind that one the end of the section.
      const bool last = ended_ || flat_;
      ended_ = true;
      return !last;
    }
    ended_ = false;
    if (separator_ == 0) {
      takeRecord(text);
    } else {
      takeRecord(coordinatesOf(text));
    }
    return true;
  }
  Box box() {
    flush();
    return box_;
  }

 private:
  static constexpr std::size_t kPairs = 4096;

  // The first two fields of a delimited record.
  std::string_view coordinatesOf(std::string_view text) {
    const std::size_t first = text.find(separator_);
    if (first == std::string_view::npos) return text;
    fields_ = text.substr(0, text.find(separator_, first + 1));
    fields_[first] = ' ';
    return fields_;
  }
  void takeRecord(std::string_view text) {
    double x = 0.0, y = 0.0;
    float z = 0.0f;
    const int count = kaldex::scanReals(text, &x, &y, &z);
    if (count >= 2) {
      if (network_ && count == 3) return;
      xy_.push_back(x * factor_);
      xy_.push_back(y * factor_);
      if (xy_.size() >= 2 * kPairs) flush();
    } else if (count == 0 && text.size() > 1 && (text[1] == ' ' || text[1] == '\t')) {
      takeAngles(text);
    }
  }
  void takeAngles(std::string_view text) {
    std::vector<char> copy(text.begin(), text.end());
    copy.push_back(0);
    kaldex::LatLongRecord record;
    if (kaldex::parseLatLong(copy.data(), record) != kaldex::LatLongResult::found) return;
    Point point(record.longitude, record.latitude);
    if (transfer_.geographicToTarget(point) && !point.isUnset()) box_.extend(point.x, point.y);
  }
  void flush() {
    transfer_.apply(xy_.data(), xy_.size() / 2);
    for (std::size_t i = 0; i < xy_.size(); i += 2) {
      const Point point(xy_[i], xy_[i + 1]);
      if (!point.isUnset()) box_.extend(point.x, point.y);
    }
    xy_.clear();
  }

  bool network_;
  bool flat_;
  char separator_;  // of the records' fields; 0 for blanks
  std::string fields_;
  kaldex::CoordinateTransfer transfer_;
  double factor_;
  bool inHeader_ = false;
  bool ended_ = false;
  std::vector<double> xy_;
  Box box_ = Box::inverted();
};

double scaleOf(const QByteArray& header) {
  const int at = header.indexOf("\nSCALE");
  if (at < 0) return 0.0;
  const int begin = at + 6;
  const double scale =
      kaldex::textToReal({header.constData() + begin, static_cast<std::size_t>(header.size() - begin)});
  return scale > 0.0 ? scale : 0.0;
}

// The unit that geographic boxes are told in, as the reader of boxes tells them apart.
int unitsOf(const QByteArray& header) {
  const int at = header.indexOf("UNITS");
  if (at < 0 || !header.contains("BOX\tX1")) return 0;
  const QByteArray line = header.mid(at, header.indexOf('\n', at) - at);
  return line.contains("DEG") ? 4 : line.contains("SEG") ? 5 : 0;
}

bool isEmptyBox(const Box& box) {
  return box == Box();
}

// Reads what a header says of a table's columns and of classes.
class HeaderFacts {
 public:
  HeaderFacts(AsciiHeader& header, const QString& keyword)
      : header_(header), colours_(keyword == QLatin1String("POINT2D") ? 1 : 2) {}

  void read(const QByteArray& text) {
    for (const QByteArray& line : text.split('\n')) {
      const std::string_view words = trimmed({line.constData(), static_cast<std::size_t>(line.size())});
      if (begins(words, "INFO_END")) return;
      if (!words.empty() && !begins(words, "//")) take(words);
    }
  }

 private:
  enum class Block { none, columns, classes };

  void take(std::string_view line) {
    if (block_ == Block::classes) {
      kaldex::ClassLine one;
      if (kaldex::parseClassLine(line, colours_, one)) header_.classes << latin1(one.name);
    } else if (begins(line, "SEPARATOR")) {
      header_.separator = latin1(trimmed(line.substr(kSeparatorSize)).substr(0, 1));
    } else if (begins(line, "THEMACLASS")) {
      block_ = Block::classes;
    } else if (begins(line, "CATEGORY_OBJ") || begins(line, "CATEGORY_NOSPATIAL")) {
      header_.spatial = begins(line, "CATEGORY_OBJ");
      header_.category = latin1(trimmed(line.substr(std::min(line.find_first_of(" \t"), line.size()))));
      block_ = Block::columns;
    } else if (block_ == Block::columns) {
      takeColumn(line);
    }
  }
  void takeColumn(std::string_view line) {
    const char separator = header_.separator.isEmpty() ? ',' : header_.separator.at(0).toLatin1();
    const std::string spaced = kaldex::spacedDeclaration(line, separator);
    const kaldex::ColumnDeclaration declaration = kaldex::parseDeclaration(spaced);
    kaldex::ColumnShape shape;
    if (kaldex::declaresKey(spaced) || kaldex::declaresName(spaced) ||
        !kaldex::columnShape(declaration, shape))
      return;
    header_.columns.push_back({latin1(declaration.name), shape.type, shape.size, shape.decimals});
  }
  static QString latin1(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<int>(text.size()));
  }

  static constexpr std::size_t kSeparatorSize = 9;

  AsciiHeader& header_;
  int colours_;
  Block block_ = Block::none;
};

}  // namespace

AsciiOutline::AsciiOutline(const QString& path) : path_(kaldex::pathBytes(path)) {
  SectionFinder finder;
  kaldex::scanWordLines(path_, [&](const ScannedLine& line) {
    const Keyword* const keyword = finder.take(line.text);
    if (keyword != nullptr)
      sections_.push_back({QString::fromLatin1(keyword->word), line.number, line.offset});
    return sections_.size() < kMostSections;
  });
}

const AsciiSection* AsciiOutline::find(const QString& keyword) const {
  const auto found = std::find_if(sections_.begin(), sections_.end(), [&](const AsciiSection& section) {
    return section.keyword.startsWith(keyword);
  });
  return found == sections_.end() ? nullptr : &*found;
}

int AsciiOutline::count(const QString& keyword) const {
  return static_cast<int>(std::count_if(sections_.begin(), sections_.end(), [&](const AsciiSection& section) {
    return section.keyword == keyword;
  }));
}

// What has no end of its own ends where the next section begins.
long long AsciiOutline::endOf(const AsciiSection& section) const {
  const auto next =
      std::upper_bound(sections_.begin(), sections_.end(), section.offset,
                       [](long long offset, const AsciiSection& other) { return offset < other.offset; });
  return next != sections_.end() ? next->offset : std::numeric_limits<long long>::max();
}

QByteArray AsciiOutline::headerText(const AsciiSection& section) const {
  QByteArray text;
  bool keywordPassed = false;
  const long long end = endOf(section);
  // Lines come cut to a length: one without an end isn't taken into memory.
  kaldex::scanLines(path_, section.offset, [&](const ScannedLine& line) {
    if (!keywordPassed) {
      keywordPassed = true;
      return true;
    }
    if (line.offset >= end) return false;
    const QByteArray bytes(line.text.data(), static_cast<int>(line.text.size()));
    const QByteArray word = bytes.trimmed();
    if (text.isEmpty() && !word.isEmpty() && word != "INFO" && !word.startsWith("//")) return false;
    text += bytes + '\n';
    return text.size() < kLongestHeader && !word.startsWith("INFO_END");
  });
  return text;
}

AsciiHeader AsciiOutline::header(const AsciiSection& section) const {
  AsciiHeader header;
  const QByteArray text = headerText(section);
  HeaderFacts(header, section.keyword).read(text);
  if (!text.contains("PROJECTION") && !text.contains("BOX")) {
    header.scale = scaleOf(text);
    return header;
  }
  // The readers of boxes and projections take a file with one header, and read all of it.
  QTemporaryFile single;
  if (text.isEmpty() || !single.open() || single.write(text) != text.size() || !single.flush()) return header;
  header.projection.reset(IEAsc::GetProjection(single.fileName()));
  header.scale = scaleOf(text);
  header.units = unitsOf(text);
  bool planar = true;
  const Box told = IEAsc::GetBox(single.fileName(), planar);
  if (isEmptyBox(told) || !kaldex::isFinite(told)) return header;
  const bool radians = text.contains("BOX\tX1");
  if (radians && header.projection == nullptr) return header;
  header.box = radians ? kaldex::planeBoxOf(told, *header.projection) : told;
  header.hasBox = kaldex::isFinite(header.box) && !header.box.isInverted();
  return header;
}

Box AsciiOutline::extent(const AsciiSection& section, SProjection* source, SProjection* target,
                         int units) const {
  if (kPlacelessSections.contains(section.keyword)) return Box::inverted();
  ExtentReader reader(section.keyword, source, target, units);
  bool keywordPassed = false;
  const long long end = endOf(section);
  kaldex::scanLines(path_, section.offset, [&](const ScannedLine& line) {
    if (keywordPassed) return line.offset < end && reader.take(line.text);
    keywordPassed = true;
    return true;
  });
  return reader.box();
}

}  // namespace kaldex_v1
