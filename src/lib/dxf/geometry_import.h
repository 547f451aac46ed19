#ifndef KALDEX_DXF_GEOMETRY_IMPORT_H
#define KALDEX_DXF_GEOMETRY_IMPORT_H

#include <array>
#include <vector>

#include "kaldex/model/vector.h"
#include "lib/dxf/arc_points.h"
#include "lib/dxf/entity_import.h"
#include "lib/dxf/mesh_chain.h"

inline namespace kaldex_v1 {

/// What the imports of lines and of samples have in common: lines, polylines, arcs and circles become lines,
/// points what the derived class makes of them. What was inserted before a failure stays.
class IEDXF::GeometryImport : public IEDXF::EntityImport {
 protected:
  struct Result {
    short representation;  ///< of the entities: only a vector of the same takes lines
    char lineType;
    const char* lineKind;  ///< for the report, as the next
    const char* pointKind;
  };
  GeometryImport(IEDXF& handler, Vector& vector, SProjection* target, const Result& result);
  ~GeometryImport() override;

  bool takes(Kind kind) const override { return kind != Kind::none && kind != Kind::text; }
  void begin(Kind kind) override;
  void enter(bool chosen) override;
  bool isActive() const override { return active_; }
  Step take(int code) override;
  bool finishEntity() override;
  bool finishSequence() override;
  int finish() override;

  /// Pairs of points and of lines of two points: those of the derived class first.
  virtual Step takePoint(int code) = 0;
  virtual Step takeLine(int code) = 0;
  virtual bool usesHeights() const = 0;
  virtual void finishSet() {}

  /// A pair of plane coordinates of the start or end of the entity at hand; false when it is another pair.
  bool takeCoordinates(int code);
  Step insertLineOfTwo();
  /// The point at hand in the target's plane, if it lies in the vector's box. Ends the entity.
  bool placePoint(Point& point);
  Step inserted(int result);
  /// The point at hand has a height that is no number.
  Step withoutHeight();
  void setHeight(float height) { height_ = height; }

  Vector& vector_;
  double x_ = 0.0;
  double y_ = 0.0;
  long long pointsWritten_ = 0;

 private:
  enum class Sequence { none, ignored, open };

  void takeVertex(int code);
  void takeMeshVertex(int code);
  Step takeArc(int code);
  Step takeCircle(int code);
  bool finishVertex();
  bool isMesh() const;
  bool isClosed() const;
  Step insertPoints();
  bool insertLine();
  void beginSequence();
  void countOddForms();
  void report() const;

  Result result_;
  bool takesLines_;
  Box box_;
  bool active_ = false;
  double endX_ = 0.0;
  double endY_ = 0.0;
  float height_ = 0.0f;
  kaldex::ArcShape arc_;

  Sequence sequence_ = Sequence::none;
  int polylineFlags_ = 0;
  int vertexFlags_ = 0;
  std::array<int, 4> corners_{};
  kaldex::MeshChain mesh_;
  std::vector<double> xy_;

  bool outsideTold_ = false;
  long long linesRead_ = 0;
  long long linesWritten_ = 0;
  long long pointsRead_ = 0;
  long long outside_ = 0;
  long long fewPoints_ = 0;
  long long unplaced_ = 0;
  long long refused_ = 0;
  long long incomplete_ = 0;
  long long oddArcs_ = 0;
  long long droppedVertices_ = 0;
  long long otherVertices_ = 0;
  long long leftOpen_ = 0;
  long long grids_ = 0;
  long long looseEdges_ = 0;
};

}  // namespace kaldex_v1

#endif
