#ifndef KALDEX_MODEL_VECTOR_H
#define KALDEX_MODEL_VECTOR_H

#include <QString>
#include <memory>
#include <string>

#include "kaldex/model/anchor.h"
#include "kaldex/model/line.h"
#include "kaldex/model/polygon.h"

namespace kaldex {
class VectorStore;
}

inline namespace kaldex_v1 {

/// Representation kinds of a vector.
enum VectorKind : short { vectorContours = 5, vectorSamples = 7, vectorLines = 12, vectorTin = 16 };

/// The lines of a vector as a set.
class KALDEX_MODEL_API LineSet {
 public:
  explicit LineSet(kaldex::VectorStore& store) : store_(store) {}
  /// Hold all lines in memory until DestroyLines; with a list, append them to it too. 1.
  int LoadLines(LineList* list);
  void DestroyLines();
  /// Whether lines stay in memory when they are given back: then `Line::Free(1)` returns one, else deletion
  /// does.
  bool keepsInMemory() const;

 private:
  kaldex::VectorStore& store_;
};

class KALDEX_MODEL_API PolygonSet {
 public:
  explicit PolygonSet(kaldex::VectorStore& store) : store_(store) {}
  /// A copy that the caller deletes, apart from the vector's own shells; null when there is none.
  SPolygon* Get(int id);

 private:
  kaldex::VectorStore& store_;
};

class KALDEX_MODEL_API Point3dSet {
 public:
  explicit Point3dSet(kaldex::VectorStore& store) : store_(store) {}
  void KeepFilesOpen(short keep);

 private:
  kaldex::VectorStore& store_;
};

class KALDEX_MODEL_API AnchorSet {
 public:
  explicit AnchorSet(kaldex::VectorStore& store) : store_(store) {}
  /// A copy that the caller deletes; null when there is none.
  Anchor* Get(int id);
  /// Store an anchor that has an identifier; 0 when it is not in the layer.
  int Update(const Anchor& anchor);

 private:
  kaldex::VectorStore& store_;
};

/// The vector representation of a layer: its lines, polygons, points, samples and anchors, kept in feature
/// tables of the geographic database (or, made by Init, in a file of its own).
///
/// Cursors remember an identifier, not an object, and walk in ascending identifier: deleting what a cursor
/// handed out, or inserting while it walks, is safe. Lines, polygons and 2D points that the vector hands out
/// are its own shells; points with height and anchors are the caller's copies and deleted by the caller.
/// Failures of the database below (a full disk, a lock) throw SException.
class KALDEX_MODEL_API Vector : public SObject {
 public:
  Vector();
  Vector(const Vector&) = delete;
  Vector& operator=(const Vector&) = delete;
  ~Vector() override;

  /// Make a vector of its own at directory/name, outside any project. `representation` is a VectorKind,
  /// `modelKind` a category model. 1, or 0 when the file can't be made. The projection is borrowed.
  int Init(SProjection* projection, const Box& box, short representation, int modelKind,
           const QString& directory, const QString& name);

  Line* FirstLine();
  Line* NextLine();
  SPolygon* FirstPolygon();
  SPolygon* NextPolygon();
  Point2d* FirstPoint2d();
  Point2d* NextPoint2d();
  Point3d* FirstPoint3d();
  Point3d* NextPoint3d();
  Anchor* FirstAnchor();
  Anchor* NextAnchor();

  /// Null when absent. GetPolygon also puts the polygon cursor there; no other look-up moves a cursor.
  Line* GetLine(int id);
  SPolygon* GetPolygon(int id);
  Point2d* GetPoint2d(int id);
  /// A copy that the caller deletes.
  Anchor* GetAnchor(int id);

  /// Lines and polygons are adopted when the result is not 0 (they get their identifier); on 0 they stay the
  /// caller's. An empty line, a line whose coordinates are not finite, and a polygon without a closed outline
  /// are refused.
  int Insert(Line& line, int flag);
  int Insert(SPolygon& polygon);
  /// Points and anchors are copied, and their new identifier is written back. A 2D point that carries the
  /// identifier of a stored one is accepted and stored once.
  int Insert(Point2d& point);
  int Insert(Point3d& point, short flag);
  int Insert(Anchor& anchor);

  /// Append the lines whose box meets `box` to the (borrowing) list; returns their count.
  int Lines(const Box& box, LineList& list, double = 0, double = 0);
  /// Append copies of the anchors that have a piece of the wanted kinds in `box`; the list must own its
  /// items.
  int Anchors(const Box& box, AnchorList& list, short wantPoints, short wantLines, short wantPolygons,
              double = 0, double = 0);
  /// The anchor with a point within `tolerance` of `point`, nearest first; the caller's, or null.
  Anchor* FindAnchors(const Point& point, float tolerance, double = 0, double = 0);
  /// The line nearest to `point` within `tolerance` (plane units); of several as near the lowest identifier.
  /// `segment` takes the index of the nearest segment, `vertex` the nearer end of it, `nearest` the place on
  /// the line; each may be null.
  Line* FindLine(const Point& point, int* segment, float tolerance, float tolerance2, int* vertex,
                 Point* nearest, double = 0, double = 0);
  /// The line with these end points, in either order, each within half a metre; the best match.
  Line* FindLine(const Point& from, const Point& to);
  /// The innermost polygon that holds the point (a son is not part of its father); on a border the lowest
  /// identifier.
  SPolygon* FindPolygon(const Point& point, double = 0, double = 0);
  /// The end of a line, or the stored point, within `tolerance`: the vector's own, or null.
  Point2d* FindNode(const Point& point, float tolerance);
  /// The stored 2D point within `tolerance` (0 finds exact repeats), nearest first, or null.
  Point2d* FindPoint2d(const Point& point, float tolerance);

  /// Hold the store's statements ready between calls (1) or drop them (0).
  void KeepFilesOpen(short keep);
  short KeepsFilesOpen() const;
  /// Keep lines in memory once they are loaded (other than 0); see LineSet::keepsInMemory.
  void KeepOnMemory(short keep);
  /// Whether polygons are held in memory when they are given back.
  bool PolygonsInMemory() const;
  /// The declared box of the layer, not the extent of its data.
  virtual Box BoundingBox() const;
  /// The extent of what is stored; inverted when there is nothing.
  Box dataExtent();
  /// How many of each are stored.
  long long lineCount();
  long long polygonCount();
  long long point2dCount();
  long long point3dCount();
  long long anchorCount();

  /// Store what changed and make the spatial indexes of all that was inserted. Operations call it at their
  /// end; the database does before it commits.
  void flush();

  short representation() const;
  int modelKind() const;
  SProjection* projection() const;  ///< may be null
  InfoLayer* infoLayer() const;     ///< null for a vector of its own
  QString directory() const;
  QString name() const;
  float tolerance() const;

  LineSet* lineSet();
  PolygonSet* polygonSet();
  Point3dSet* point3dSet();
  AnchorSet* anchorSet();

  /// For the database, which makes the vectors of layers.
  explicit Vector(std::unique_ptr<kaldex::VectorStore> store);
  kaldex::VectorStore* store() { return store_.get(); }

 private:
  std::unique_ptr<kaldex::VectorStore> store_;
  std::unique_ptr<LineSet> lineSet_;
  std::unique_ptr<PolygonSet> polygonSet_;
  std::unique_ptr<Point3dSet> point3dSet_;
  std::unique_ptr<AnchorSet> anchorSet_;
};

/// The turns of a network layer, kept in a text file "directory/name.turn".
class KALDEX_MODEL_API RestrictionList : public TypedList<Restriction> {
 public:
  /// Loads what the file at `path` holds; a missing file is an empty list.
  explicit RestrictionList(const std::string& path);
  /// 1, or 0 when the file can't be written.
  int Save() const;

 private:
  std::string path_;
};

}  // namespace kaldex_v1

#endif
