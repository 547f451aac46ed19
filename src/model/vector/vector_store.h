#ifndef KALDEX_MODEL_VECTOR_STORE_H
#define KALDEX_MODEL_VECTOR_STORE_H

#include <QString>
#include <array>
#include <deque>
#include <exception>
#include <memory>
#include <set>
#include <string_view>

#include "kaldex/model/exception.h"
#include "kaldex/model/vector.h"
#include "model/database/row_batch.h"
#include "model/vector/feature_table.h"
#include "model/vector/shell_registry.h"

namespace kaldex {

/// Lists of identifiers as a column holds them: decimal, a blank between two.
std::string idsToText(const std::vector<int>& ids);
std::vector<int> idsFromText(std::string_view list);

/// What stands behind a `Vector`: its feature tables, the shells of what is in use, and the search over both.
class VectorStore : public TransactionListener {
 public:
  struct Info {
    int layerId = 0;
    InfoLayer* layer = nullptr;  ///< null for a vector of its own
    SProjection* projection = nullptr;
    Box box;
    short kind = vectorLines;
    int modelKind = 0;
    QString directory;
    QString name;
    QString title;  ///< shown by other programs, as "project/layer"
  };

  /// Opens the representation, and registers it when the layer doesn't have it yet.
  VectorStore(SqliteConnection& connection, const Info& info);
  VectorStore(const VectorStore&) = delete;
  VectorStore& operator=(const VectorStore&) = delete;
  ~VectorStore() override;

  /// A store in a GeoPackage of its own at directory/name, made anew. Throws SException.
  static std::unique_ptr<VectorStore> standalone(const Info& info);
  static bool exists(SqliteConnection& connection, int layerId, short kind);
  /// Classes of all lines, polygons and points of a layer, 0 left out; one scan of each table.
  static std::set<int> classesInUse(SqliteConnection& connection, int layerId);
  static bool classInUse(SqliteConnection& connection, int layerId, int classId);

  // Lines
  bool adopt(Line& line);
  Line* line(int id);
  Line* firstLine();
  Line* nextLine();
  /// The live shell of that line when its points are in memory, else null; reads nothing.
  const Line* loadedLine(int id) const;
  bool liveLine(int id) const { return lineShells_.find(id) != nullptr; }
  void loadPoints(const Line& line);
  /// Store what changed; with `dropPoints` the points go unless lines are kept in memory.
  void giveBack(Line& line, bool dropPoints);
  void lineDies(Line& line) noexcept;

  // Polygons
  bool adopt(SPolygon& polygon);
  SPolygon* polygon(int id);
  SPolygon* livePolygon(int id) const { return polygonShells_.find(id); }
  SPolygon* polygonAt(int id);  ///< as polygon, and the cursor goes there
  SPolygon* polygonCopy(int id);
  SPolygon* firstPolygon();
  SPolygon* nextPolygon();
  /// The outline of a stored polygon; false when its row has none.
  bool loadOutline(int id, std::vector<double>& xy);
  /// The outline that the polygon's lines make, chained end to end.
  bool chainLines(const std::vector<int>& lines, std::vector<double>& xy);
  void giveBack(SPolygon& polygon);
  void polygonDies(SPolygon& polygon) noexcept;

  // Points, samples
  bool insert(Point2d& point);
  Point2d* point(int id);
  Point2d* firstPoint();
  Point2d* nextPoint();
  bool insert(Point3d& point);
  Point3d* firstSample();
  Point3d* nextSample();

  // Anchors
  bool insert(Anchor& anchor);
  bool update(const Anchor& anchor);
  Anchor* anchor(int id);
  Anchor* firstAnchor();
  Anchor* nextAnchor();
  std::vector<std::int64_t> anchorCandidates(const Box& box);

  // Search
  std::vector<std::int64_t> lineCandidates(const Box& box) { return lines_.candidates(box); }
  std::vector<std::int64_t> polygonCandidates(const Box& box) { return polygons_.candidates(box); }
  std::vector<std::int64_t> pointCandidates(const Box& box) { return points_.candidates(box); }
  /// A point of the vector that is not stored (yet): a line's end as a node.
  Point2d* handOut(const Point2d& point);
  int newPointId() { return static_cast<int>(points_.newId()); }

  /// Store every changed shell and what else is pending, then indexes and extents.
  void flush();
  void flushRows();

  // TransactionListener
  void beforeCommit() override { flush(); }
  void releaseCursors() override;
  void afterRollback() override;

  const Info& info() const { return info_; }
  /// For representations that have tables of their own beside these.
  SqliteConnection& connection() { return *connection_; }
  const std::string& baseName() const { return baseName_; }
  /// Make sure that the database lists the representation.
  void ensureRegistered();
  long long lineCount();
  long long polygonCount();
  long long pointCount();
  long long sampleCount();
  long long anchorCount();
  Box extent();

  short keepFilesOpen = 0;
  bool keepOnMemory = false;
  /// Lines stay loaded between LineSet::LoadLines and DestroyLines.
  bool holdLines = false;
  void loadAllLines(LineList* list);
  void dropAllLines();

 private:
  VectorStore(std::unique_ptr<SqliteConnection> own, const Info& info);
  void registerRepresentation();
  bool anchorTableExists();
  void ensureAnchorTable();
  void writeLine(Line& line);
  void insertLine(Line& line);
  void updateLine(Line& line);
  template <class Row>
  static void putColumns(Row& row, const Line& line);
  Line* lineFrom(Statement& row);
  void limitUnreleased();
  void writePolygon(SPolygon& polygon);
  void insertPolygon(const SPolygon& polygon);
  void updatePolygon(const SPolygon& polygon, bool withGeometry);
  template <class Row>
  static void putColumns(Row& row, const SPolygon& polygon);
  void encodeWithSons(SPolygon& polygon);
  void fill(SPolygon& polygon, Statement& row);
  SPolygon* polygonFrom(Statement& row);
  Point2d* pointFrom(Statement& row);
  /// Puts the pending anchor among the new rows or into its row.
  void settleAnchor();
  void flushAnchors();
  template <class Row>
  static void putColumns(Row& row, const Anchor& anchor);
  static Anchor* anchorFrom(Statement& row);
  std::array<RowBatch*, 5> newRows() {
    return {&newLines_, &newPolygons_, &newPoints_, &newSamples_, &newAnchors_};
  }
  void rethrowDeferred();
  void beginChange() { connection_->beginChange(); }

  std::unique_ptr<SqliteConnection> ownConnection_;
  SqliteConnection* connection_;
  Info info_;
  std::string baseName_;
  bool registered_ = false;  ///< whether the database is known to list the representation
  FeatureTable lines_, polygons_, points_, samples_;
  std::string anchorTable_;
  int anchorTableKnown_ = -1;
  std::int64_t lastAnchorId_ = -1;

  ShellRegistry<Line> lineShells_;
  ShellRegistry<SPolygon> polygonShells_;
  /// New lines that nobody has given back yet, oldest first; past a limit their points are stored and
  /// dropped.
  std::deque<int> unreleased_;
  /// The 2D points handed out last; a caller may rely on the most recent few hundred.
  std::deque<std::unique_ptr<Point2d>> handedOut_;
  std::unique_ptr<Anchor> pendingAnchor_;  ///< inserted or changed, not yet written
  bool pendingAnchorIsNew_ = false;
  std::unique_ptr<BoxTree> anchorTree_;
  std::exception_ptr deferred_;  ///< what went wrong where nothing could be thrown

  RowCursor lineCursor_, polygonCursor_, pointCursor_, sampleCursor_, anchorCursor_;
  /// New rows on their way; flushed before their table is read.
  RowBatch newLines_, newPolygons_, newPoints_, newSamples_, newAnchors_;
  Statement updateLine_, updateLineGeometry_, selectLine_, selectLineGeometry_;
  Statement updatePolygon_, updatePolygonGeometry_, selectPolygon_, selectPolygonGeometry_;
  Statement selectPoint_, updateAnchor_, selectAnchor_;
  Bytes blob_;
  std::vector<double> scratch_;
};

}  // namespace kaldex

#endif
