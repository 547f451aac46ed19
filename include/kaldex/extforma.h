#ifndef KALDEX_EXTFORMA_H
#define KALDEX_EXTFORMA_H

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <bitset>
#include <cstddef>
#include <cstdio>
#include <functional>
#include <memory>
#include <string_view>

#include "kaldex/api.h"
#include "kaldex/model/field.h"
#include "kaldex/model/forward.h"
#include "kaldex/model/geometry.h"
#include "kaldex/model/list.h"

namespace kaldex {
class CoordinateTransfer;
class PlaceFinder;
}  // namespace kaldex

inline namespace kaldex_v1 {

class Image;

/// The name of one layer of a layered file, to choose which ones an import takes.
class KALDEX_API SDataLayer : public SObject {
 public:
  SDataLayer() = default;
  explicit SDataLayer(const QString& label) : label(label) {}
  /// A copy carries the name only; the flags start anew.
  SDataLayer(const SDataLayer& other);
  SDataLayer& operator=(const SDataLayer& other);
  ~SDataLayer() override;

  const QString& Label() const { return label; }
  void Label(const QString& name) { label = name; }

  unsigned char flag1 = 0;  ///< colour number of a drawing's layer
  unsigned char flag2 = 0;

 private:
  QString label = QStringLiteral("NOLABEL");
};

class KALDEX_API SDataLayerList : public TypedList<SDataLayer> {
 public:
  SDataLayerList() : TypedList<SDataLayer>(Ownership::owns) {}
  ~SDataLayerList() override;
};

/// A place with a class name, or with an object's label, name and category, collected by an import and
/// consumed by a classification.
class KALDEX_API SExtLabelPoint : public SObject {
 public:
  SExtLabelPoint() = default;
  ~SExtLabelPoint() override;

  const QString& Label() const { return label_; }
  void Label(const QString& label) { label_ = label; }
  /// Name of the object, or the class name of a thematic label.
  const QString& Name() const { return name_; }
  void Name(const QString& name) { name_ = name; }
  /// Name of the object's category.
  const QString& Nclass() const { return category_; }
  void Nclass(const QString& category) { category_ = category; }
  /// The place in the vector's system; takes the point over.
  void Coordinate(Point* point) { point_.reset(point); }
  Point* Coordinate() const { return point_.get(); }

  short Nodes =
      0;  ///< 1 addresses a network node, any other value lines and polygons; set it before insertion
  short Iclass = 0;  ///< -999 object label, 0 none or consumed, else a class identifier

 private:
  QString label_;
  QString name_;
  QString category_;
  std::unique_ptr<Point> point_;
};

/// Owns its label points and counts how many different `Nodes` values it holds.
class KALDEX_API SExtLabelPointList : public TypedList<SExtLabelPoint> {
 public:
  SExtLabelPointList() : TypedList<SExtLabelPoint>(Ownership::owns) {}
  ~SExtLabelPointList() override;

  /// Append a label point, which the list then owns: 1. A null one is told to the user: 0.
  int InsertLabel(SExtLabelPoint* labelPoint);
  /// The number of different `Nodes` values; 0 only for an empty list.
  short Count() const { return Size() == 0 ? short(0) : count_; }

 private:
  void count(const SExtLabelPoint& labelPoint);
  void countAnew();

  short count_ = 0;
  int counted_ = 0;  ///< the list's size when count_ was last right
  std::bitset<65536> seen_;
};

/// Base of the handlers of all vector and table formats: what they are set up with, their file, the readers
/// of text records, and one slot for every import and export that a format could offer. A slot that a format
/// doesn't offer does nothing and returns 0.
///
/// Life: construct, Init, any number of operations (each opens and closes the file itself), destroy.
/// Operations return 1, or 0 after they have told the user why. No exception leaves one. What Init gets is
/// borrowed. One thread at a time; too large for a stack.
class KALDEX_API SExtFormats {
 public:
  SExtFormats();
  SExtFormats(const SExtFormats&) = delete;
  SExtFormats& operator=(const SExtFormats&) = delete;

  // The order of the virtual operations is part of the interface.

  /// Open dataHome/dataFile into `file` and leave it at its start. A file with a carriage return in its first
  /// line is refused (and stays open, as the only failure).
  virtual int FileOpen(const char* mode);
  /// Harmless when nothing is open; 1.
  virtual int FileClose();
  virtual ~SExtFormats();
  virtual int LerCabGrade(unsigned* columns, unsigned* rows, double* xMin, double* xMax, double* yMin,
                          double* yMax, float* zMin, float* zMax, double* extra);
  virtual int ImportLines(Vector* vec, SProjection* target);
  virtual int ImportLabelPoints(SProjection* target, SProjection* source, char*, short*, char*, char*, char*,
                                char*);
  virtual int ImportPoint2d(Vector* vec, SProjection* target);
  virtual int ImportSamples(Vector* vec, SProjection* target);
  virtual int ImportContourout(Vector* vec, SProjection* target);
  virtual int ImportGridReg(Image* image, SProjection* target);
  virtual int ImportImageThm(Image* image);
  virtual int ImportAttributes(Category* category);
  virtual int ImportText(EntitieList* texts, SProjection* target, GeneralVisual* visual);
  virtual int ExportLines(Vector* vec, short onlyUsedClasses);
  virtual int ExportLabelPoints(Vector* vec, Category* category, short onlyUsedClasses);
  virtual int ExportLabelPointsAuto(Vector* vec, Category* category);
  virtual int ExportLabelPointsSem(Vector* vec, Category* category);
  virtual int ExportLabelPointsMais(Vector* vec, Category* category);
  virtual int ExportLabelPointsTroca(Vector* vec, Category* category, short mode);
  virtual int ExportPoints(Vector* vec, Category* category, short mode);
  virtual int ExportPointsAuto(Vector* vec, Category* category);
  virtual int ExportSample(Vector* vec);
  virtual int ExportGridReg(Image* image);
  virtual int ExportGridReg(Image* image, short onlyUsedClasses);
  virtual int ExportTable(Category* category);
  virtual int ExportContourout(Vector* vec);
  virtual int ExportText(EntitieList* texts);
  virtual int ExportPolygons(Vector* vec, short onlyUsedClasses);
  virtual int ExportTIN(Vector* vec);
  virtual int ExportTIN3D(Vector* vec);

  /// `coordFormat` 0 plane, 1 degrees, minutes and seconds, 2 decimal degrees, any other decimal seconds;
  /// `units` as for Units2Meter. Separator, box and layers may be null: no separator, the box as it was, the
  /// layers as they were.
  int Init(const QString& dataHome, int units, const QString& dataFile, Project* project,
           InfoLayer* infoLayer, DataBase* dataBase, SProjection* projection, short coordFormat,
           const char* separator, const Box* box, SDataLayerList* layers);
  /// Point the handler at a further file of the same directory; an empty name is told to the user.
  void DataFile(const QString& dataFile);
  void DataHome(const QString& dataHome);
  /// What a length of the file is multiplied by to get metres, an angle to get radians.
  double Units2Meter() const;
  /// At most four characters are taken; null is ignored.
  void SetSeparator(const char* separator);
  /// Replace the handler's layers by copies of the list's.
  void SetLayerList(SDataLayerList* list);
  /// Append copies of the handler's layers to the list.
  void GetLayerList(SDataLayerList* list);

  // Readers of text records, on `file`, `line` and `line2`.

  /// Append the next line of the file to `line`, or begin afresh when that is empty: leading blanks, blank
  /// lines and comments are passed over then. 0 at the end of the file, which is closed; an unfinished last
  /// line stands in `line`. A line of 32768 characters or more is told to the user and treated as the end of
  /// the file.
  int LerLinha();
  /// The column types of a delimited file (an array of 256, to be freed with delete[]), by its second line.
  /// The file must be open at its start, and is so afterwards; null after a failure.
  short* LerTypes();
  /// Parse `line` as latitude and longitude in degrees, minutes and seconds with an optional height. 1, or 0
  /// with the point (0, 0) at "END" and (-1, -1) at anything else. Without a height `z` is above 3.4e35.
  int LerLatLong(SProjection* target, Point& point, float& z);
  /// Carry a point that was scaled by Units2Meter from the file's projection to the target's plane.
  void TransfCoord(SProjection* target, Point* point);
  /// Split `line` at the separator: the number of fields, and the first six. Each field has room for 4096
  /// characters; a longer one is told to the user. 0 when there is none (the file is closed then).
  int LerComSeparator(short* count, char* f0, char* f1, char* f2, char* f3, char* f4, char* f5);
  /// The separator of a delimited file (",", ";" or "|") by its first line, or null.
  const char* GetSeparator();
  /// Turn a plane coordinate pair into what `coordFormat` wants printed: the two numbers, or the two
  /// texts. 1.
  int ExpCoord(double* x, double* y, QString& longitudeText, QString& latitudeText);

  // Delimited tables (CSV): the handler's file, unless said otherwise, its first line being the header.
  // Fields have no quotes; a comma between two digits is a decimal comma unless the comma is the separator.

  /// Propose a column (text, size 17) for each name of the header, cut to eight characters and numbered if it
  /// is one of the system's own. The file stays open behind the header.
  int GetAttTab(SFieldList* list);
  /// Rewrite the table as a TABLE section of the ASCII format, beside the file as *_TAB.kdx, which the
  /// handler has from then on. `fields` are the columns in file order. Rows get their number as key when
  /// `key` is 0, else the value of that column, counted from 1; a first column T_KEY is the key whatever
  /// `key` says. Commas, semicolons and bars all part fields. A line feed at the file's end makes one more,
  /// empty row.
  int ConvertCsvToAscii(Category* cat, SFieldList fields, short key);
  /// The same; 1 whatever becomes of it.
  int Import_CSV_TABCREATE(Category* cat, SFieldList fields, short key);
  /// Add the columns of `file` to the handler's converted table, whose columns are `existing` in the
  /// category's table, row by row: both must have the same order. Nothing of the database is changed.
  int UpdateCsvTable(Category* cat, SFieldList existing, SFieldList add, SFieldList alt, QString file);
  /// Add those of `fields` that the category's table lacks to it, then UpdateCsvTable.
  int Import_CSV_TABUPDATE(Category* cat, SFieldList fields, QString file);
  /// Update the rows of objects, whose identifiers stand in the first column. Columns that the category's
  /// table lacks are added as texts.
  int Import_CSV_TAB_UPDATE(Category* cat);
  /// The same for a file with commas; columns are added as real numbers.
  int Import_SPACESTAT_TAB(Category* cat);
  /// Make the table of a category that has none, and fill it: all or nothing.
  int Import_CSV_TAB_NOTSPACIAL(Category* cat);

  // Classification, by the label points that an import has collected in `labelPoints`.

  /// Find the class of each label point in a thematic category: by `Iclass` with `byIdentifier` 1, else by
  /// `Name`, and make the classes that are missing if the user agrees. They go into the category's list,
  /// which the caller stores. `addAll` is the caller's lasting answer to that question, 1 for yes. 0 only
  /// when the user wants no classes in a category that has none.
  int CategorizeLabelPoints(Category* category, int byIdentifier, short* addAll);
  /// Give the lines and polygons of the vector the classes of the label points that lie on or in them: a line
  /// that bounds no polygon first, else the polygon around. The later label wins. Used label points have an
  /// `Iclass` of 0 afterwards.
  int Classify(Vector* vec);
  /// Make the nodes, lines and polygons of the vector the places of the objects that the label points name:
  /// objects, their categories (after a question), anchors and rows of the association table are made as
  /// needed. Polygons take part in cadastral layers only. What was made before a failure stays, unless the
  /// caller's transaction block takes it back.
  int ClassifyObj(Vector* vec);

 protected:
  static constexpr std::size_t kLineCapacity = 409600;
  static constexpr std::size_t kFieldCapacity = 4096;

  // Messages. Each shows its text and returns 0, so that `return invalidArgument("vec");` ends an operation.

  static int show(const QString& text);
  /// A Yes and No question.
  static bool ask(const QString& text);
  static int invalidArgument(const char* argument);
  static int outOfMemory(const char* expression = "");
  static int ioError();
  static int logicRestriction(const QString& detail);
  /// "Arquivo INCONSISTENTE!" and the detail (the head of a long one). Before it is shown, the current job
  /// report gets the place in the file: the line that was read last. Silent when LerLinha has already refused
  /// the record.
  int inconsistent(const QString& detail);
  int inconsistent(const char* latin1Detail);
  /// As much of a record as a message should show.
  static QString headOf(const char* latin1);
  /// The file ended inside a record.
  int endOfFileInRecord();
  /// As inconsistent, for a message with a text of its own.
  int inconsistentAs(const QString& text);
  void notePlace();
  /// The user has asked to stop: the operation ends with 0 and no message.
  static bool cancelled();

  // The public edge of an operation: runs it, lets no exception through (the storage's are told to the user),
  // and closes the file that it opened on every way out. Calls may nest; the outermost does all this.

  int guarded(const std::function<int()>& operation);
  /// The same for what has no handler; false after an exception.
  static bool shielded(const std::function<void()>& action);
  /// For operations that change the database: what they stored stays, also after a failure, unless the
  /// caller has a transaction block open, which then decides.
  int guardedImport(Vector* target, const std::function<int()>& operation);

  // The file.

  /// FileOpen, which leaves nothing open when it fails.
  bool openFile(const char* mode);
  /// Size in bytes of the open file; 0 when that is not known.
  long long fileSize() const;
  /// The maximum of a progress report with a step a record: the file's size by the usual size of a record.
  int progressMaximum(int bytesPerRecord) const;
  /// Close after writing; false if the last bytes did not reach the file. To be called after the output was
  /// flushed.
  bool closeWritten();
  /// The name under which the file was last opened, in bytes.
  const QByteArray& openedPath() const { return openedPath_; }

  /// The next word of the file into `line`; false at the end of the file (`line` is untouched then).
  bool readWordIntoLine();
  /// Empty `line`, so that LerLinha begins afresh.
  void clearLine() { line[0] = 0; }
  /// Put a text into `line` (cut at its capacity).
  void setLine(const char* text);
  /// LerLinha and LerLatLong for hot loops: without a trace, and with a comparison of projections made
  /// before.
  int readLine();
  /// What readLine left in `line`; good until that is changed.
  std::string_view lineText() const { return {line, lineLength_}; }
  int readLatLong(const kaldex::CoordinateTransfer& transfer, Point& point, float& z);

  /// Give a line or polygon back to the vector that handed it out or took it in.
  static void giveBack(Vector& vector, Line* line);
  static void giveBack(Vector& vector, SPolygon* polygon);

  /// Store a list of categories; tells the user when that fails.
  static bool storeCategories(DataBase& base, CategoryList& list);
  /// Ask whether an object category of that name is to be made, and make it. False when the user refused;
  /// `category` is null after any failure.
  bool offerToMakeCategory(const QString& name, Category*& category);

  int units = 0;
  SExtLabelPointList labelPoints;
  SDataLayerList layerList;
  QString dataHome;
  QString dataFile;
  FILE* file = nullptr;
  /// Write to it by setLine, clearLine and the readers only: LerLinha promises blanks behind its terminator
  /// and keeps account of what isn't blank.
  char line[kLineCapacity];
  char line2[kLineCapacity];
  Project* project = nullptr;
  InfoLayer* infoLayer = nullptr;
  DataBase* dataBase = nullptr;
  SProjection* projection = nullptr;
  short coordFormat = 0;
  char separator[5] = {};
  Box box;

  /// Tell the user which columns had to change their names, `gap` behind each pair; nothing if none had.
  static void tellRenamed(const QStringList& names, const QStringList& replacements, const char* gap);

 private:
  class CsvReader;
  class CsvConversion;
  class CsvMerge;
  class CsvUpdate;
  class CsvNonSpatial;

  bool openStream(const char* mode);
  bool firstLineIsDos();
  enum class LineEnd { lineFeed, fileEnd, tooLong };
  LineEnd readFreshLine();
  LineEnd readLineBehind(std::size_t start);
  int refuseLongLine();
  int refuseRecord();
  class ClassResolution;
  class ClassTransfer;
  class ObjectBinding;

  DataBase* dataBaseOf(Vector* target) const;
  static void store(Vector* target, DataBase* base);

  std::size_t lineLength_ = 0;             ///< of what readLine left in `line`
  std::size_t lineDirty_ = kLineCapacity;  ///< bytes of `line` that may not be blank
  std::unique_ptr<char[]> streamBuffer_;
  QByteArray openedPath_;
  std::unique_ptr<kaldex::PlaceFinder> places_;  ///< of the file that was opened last
  int openings_ = 0;
  long long closedAt_ = 0;  ///< where the stream stood when it was closed
  bool closedWell_ = true;
  bool lineRefused_ = false;  ///< LerLinha told of a line that is too long
  int guardDepth_ = 0;
};

}  // namespace kaldex_v1

#endif
