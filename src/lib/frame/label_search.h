#ifndef KALDEX_FRAME_LABEL_SEARCH_H
#define KALDEX_FRAME_LABEL_SEARCH_H

#include <QString>

#include "kaldex/model/vector.h"

namespace kaldex {

// Finds what a label point of a vector lies on or in. The vector is borrowed, and so is what is found.
class LabelSearch {
 public:
  // `scale` is the denominator of the layer's map scale.
  LabelSearch(Vector& vector, float scale);

  // Within half a millimetre at map scale.
  Line* findLine(const Point& point) const;
  // The end of a line or a stored point, within a centimetre.
  Point2d* findNode(const Point& point) const;
  SPolygon* findPolygon(const Point& point) const { return vector_.FindPolygon(point, 0, 0); }
  static bool isBoundary(const Line& line) { return line.leftPolygon > 0 || line.rightPolygon > 0; }

  // Metres in a unit of the plane.
  double metresPerUnit() const { return metresPerUnit_; }

 private:
  Vector& vector_;
  double metresPerUnit_ = 1.0;
  float lineTolerance_;
  float nodeTolerance_;
};

// Gives a line the label point's place and marks it changed.
void label(Line& line, const Point& point, int classId);
void label(SPolygon& polygon, const Point& point, int classId);

// What became of the label points of a classification.
struct LabelTally {
  int associated = 0;
  int notAssociated = 0;
  int alreadyAssociated = 0;

  // The user's summary.
  QString text() const;
  // Into the current job report; `kept` labels stand in the layer now.
  void report(int kept) const;
};

}  // namespace kaldex

#endif
