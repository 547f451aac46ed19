#ifndef KALDEX_MODEL_POLYGON_H
#define KALDEX_MODEL_POLYGON_H

#include <memory>
#include <vector>

#include "kaldex/model/line.h"

inline namespace kaldex_v1 {

/// A polygon of a vector layer: an outline made of lines of the layer, a father, and sons (the polygons that
/// lie in it and are not part of it). The shell rules of `Line` hold here too. Sons and lines are known by
/// identifier.
class KALDEX_MODEL_API SPolygon : public SObject {
 public:
  SPolygon();
  SPolygon(const SPolygon&) = delete;
  SPolygon& operator=(const SPolygon&) = delete;
  ~SPolygon() override;

  /// Make the outline from the polygon's lines. The result belongs to the polygon and lives until
  /// DeletePoints; null when there is none. The argument is not used.
  Line* CreatePoints(Point* unused = nullptr);
  void DeletePoints();
  /// Lend the polygon an outline; null gives it back. The polygon never deletes a lent one.
  void SetPoints(Line* outline);
  /// The outline as CreatePoints or SetPoints left it, or null.
  Line* Points() const { return lent_ != nullptr ? lent_ : outline_.get(); }
  /// Keep the outline made by Inside and the like (other than 0), or drop it after use (0).
  void KeepPoints(short keep);

  /// Add a line of the same vector to the outline; 0 for a null line or one without identifier.
  int AppendLine(Line* line);
  Line* FirstLine();
  Line* NextLine();
  /// Make `son` an inner polygon of this one: 0 for null, itself, or a polygon that already has another
  /// father. A flag other than 0 puts this polygon's identifier into the son.
  int AppendSon(SPolygon* son, short setParent);
  int NumSons() const;
  SPolygon* FirstSon();
  SPolygon* NextSon();

  /// 0 outside, 1 on the border (within `tolerance`, plane units), 2 inside the outline; sons are not looked
  /// at. The two doubles are for callers of an older form and may be null.
  short Inside(const Point& point, float tolerance = 0.0f, double* = nullptr, double* = nullptr);
  /// 1 clockwise, 2 counter-clockwise, 0 without an outline.
  short Orientation();
  /// Area and perimeter of the outline in plane units; the projection doesn't convert.
  void UpdateArea(const SProjection* projection = nullptr);
  void UpdatePerimeter(const SProjection* projection = nullptr);
  /// Put the label point inside the polygon and outside its sons; 0 (and an unset label point) when it can't.
  int LabelPointGeneration();
  /// Store what changed and drop the points; the shell stays usable.
  void Free();

  const std::vector<int>& lineIds() const { return lines_; }
  const std::vector<int>& sonIds() const { return sons_; }

  int id = 0;
  int parentId = 0;
  Box box;
  Point labelPoint = Point::unset();
  int classId = 0;
  double area = 0.0;
  double perimeter = 0.0;
  short changed = stateStored;  ///< an ObjectState: set to 1 and give the polygon back to store it
  bool processed = false;

 private:
  friend class kaldex::VectorStore;

  const Line* outlineForUse();
  void doneWithOutline();
  bool sonOutline(int son, std::vector<double>& xy);

  std::unique_ptr<Line> outline_;
  Line* lent_ = nullptr;
  bool keep_ = false;
  bool geometryChanged_ = false;
  bool hasRow_ = false;      ///< whether INSERT or UPDATE is due
  bool registered_ = false;  ///< a shell of the store, not a detached polygon or copy
  std::vector<int> lines_;
  std::vector<int> sons_;
  size_t lineCursor_ = 0;
  size_t sonCursor_ = 0;
  kaldex::VectorStore* store_ = nullptr;
};

}  // namespace kaldex_v1

#endif
