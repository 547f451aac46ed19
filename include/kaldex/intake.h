#ifndef KALDEX_INTAKE_H
#define KALDEX_INTAKE_H

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

#include "kaldex/api.h"
#include "kaldex/model/field.h"
#include "kaldex/model/geometry.h"
#include "kaldex/model/projection.h"

// What a program that starts an import does with a file before a handler sees it: bring a text into the form
// that handlers take, and learn what the file tells of itself.

inline namespace kaldex_v1 {

/// What a text is to be read as.
enum class TextForm {
  sections,        ///< ends with a line end
  delimitedTable,  ///< ends without one: it would make an empty row
  drawing,         ///< as sections; its bytes stay, since it says itself what they mean
};

/// A text file in the form that handlers take: lines that end in a line feed, Latin-1, no byte-order mark, an
/// end as its TextForm says. A file that is so already is used as it stands; else a temporary copy is mended,
/// which goes when this object does. What was mended, and characters that Latin-1 can't hold, are told to the
/// current JobReport.
class KALDEX_API TextIntake {
 public:
  /// `encoding` overrides what the bytes tell; empty leaves it to them. With `strict` the file is left as it
  /// is, whatever it is.
  TextIntake(const QString& path, TextForm form, bool strict = false, const QString& encoding = QString());
  TextIntake(const TextIntake&) = delete;
  TextIntake& operator=(const TextIntake&) = delete;
  ~TextIntake();

  /// False when the file can't be read or the copy can't be made; `error` says why.
  bool isReady() const;
  QString error() const;
  /// What the handler is to read: the file itself or its copy, which has the same name in another folder.
  QString path() const;
  bool isCopy() const;

 private:
  struct Copy;
  std::unique_ptr<Copy> copy_;
};

/// The formats that are known by their content.
enum class FileFormat {
  unknown,
  ascii,
  shapefile,
  geographicDatabase,
  delimitedTable,
  drawing,
  kml,
  ungenerate
};

/// What a file is, by its content. The description is for people.
struct FileGuess {
  FileFormat format = FileFormat::unknown;
  QString description;
};
KALDEX_API FileGuess guessFile(const QString& path);

/// A column that an ASCII table declares, under the file's name for it.
struct AsciiColumn {
  QString name;
  short type;  ///< a FieldType
  short size;
  short decimals;
};

/// What the header of an ASCII section tells.
struct KALDEX_API AsciiHeader {
  std::unique_ptr<SProjection> projection;  ///< null when it isn't told
  bool hasBox = false;
  /// The box in plane units of `projection`, or of the file when there is none: a box of degrees is turned
  /// into the plane box that has it as its geographic box.
  Box box;
  /// How numbers of the section are to be scaled, as for SExtFormats::Units2Meter: 0, or 4 and 5 for
  /// coordinates written as degrees or seconds.
  int units = 0;
  double scale = 0.0;                ///< 0 when it isn't told
  QString separator;                 ///< of fields; empty when it isn't told
  QString category;                  ///< whose table follows
  bool spatial = true;               ///< whether that category is one of objects
  std::vector<AsciiColumn> columns;  ///< of the table, without key and name
  QStringList classes;
};

struct AsciiSection {
  QString keyword;
  long long line = 0;    ///< of the keyword, from 1
  long long offset = 0;  ///< of the keyword, in bytes
};

/// The sections of an ASCII file, in their order. Of a file of nothing but keywords the first 100,000.
class KALDEX_API AsciiOutline {
 public:
  /// Reads the file once; its line ends must be those that handlers take.
  explicit AsciiOutline(const QString& path);

  const std::vector<AsciiSection>& sections() const { return sections_; }
  /// The section that an import of that keyword takes, or null; importers compare no more than the keyword's
  /// length.
  const AsciiSection* find(const QString& keyword) const;
  int count(const QString& keyword) const;
  AsciiHeader header(const AsciiSection& section) const;
  /// The box of the section's coordinates in the target's plane, for files whose header has none; inverted
  /// when there are none, as in tables. `source` and `target` may be null.
  Box extent(const AsciiSection& section, SProjection* source, SProjection* target, int units) const;

 private:
  QByteArray headerText(const AsciiSection& section) const;
  long long endOf(const AsciiSection& section) const;

  QByteArray path_;
  std::vector<AsciiSection> sections_;
};

/// What the main file of a shapefile and the table beside it tell.
class KALDEX_API ShapeOutline {
 public:
  /// `path` names any file of the shapefile.
  explicit ShapeOutline(const QString& path);

  bool isValid() const { return valid_; }
  int type() const { return type_; }
  bool isPoints() const { return type_ % 10 == 1; }
  bool isLines() const { return type_ % 10 == 3; }
  bool isPolygons() const { return type_ % 10 == 5; }
  bool hasHeights() const { return type_ > 10 && type_ < 20; }
  QString typeName() const;
  /// As the header has it.
  const Box& box() const { return box_; }
  /// Of all records, walked one by one; inverted when none has a geometry. `count` gets the number of
  /// records.
  Box extent(long long* count = nullptr) const;

 private:
  QByteArray path_;
  bool valid_ = false;
  int type_ = 0;
  Box box_;
};

/// The box that holds a box of source coordinates, scaled by `units`, in the target's plane. What is not just
/// copied gets a margin, since borders that are straight in one plane are curves in the other.
KALDEX_API Box transferredBox(const Box& box, SProjection* source, SProjection* target, int units);

/// A map scale at which a box fills a sheet: 1, 2 or 5 times a power of ten.
KALDEX_API double suggestedScale(const Box& box, const SProjection* projection);

}  // namespace kaldex_v1

#endif
