#ifndef KALDEX_KML_FEATURE_DESCRIBER_H
#define KALDEX_KML_FEATURE_DESCRIBER_H

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "kaldex/model/vector.h"
#include "lib/frame/anchor_objects.h"
#include "ogckml/kml_feature.h"

namespace kaldex {

// Says what the lines and points of a vector are: the class, or the object with its attributes, of a line or
// point itself, or else of the polygon that a line is the only border of.
class FeatureDescriber {
 public:
  // `dataBase` may be null: then only classes are known.
  FeatureDescriber(DataBase* dataBase, Vector& vector);

  void describe(const Line& line, KdxOgc::OgKMLPlacemark& placemark);
  void describe(const Point2d& point, KdxOgc::OgKMLPlacemark& placemark);
  // Features that more than one object stands for; they have the first.
  long long severalObjects() const { return severalObjects_; }

 private:
  // Which anchor stands for a piece; a list of these in order of pieces takes less room than a table.
  struct Piece {
    int id;
    int anchor;
  };
  using Pieces = std::vector<Piece>;

  void loadAnchors();
  static void addPieces(Pieces& pieces, const std::vector<int>& ids, int anchor);
  static void sort(Pieces& pieces);
  int anchorOf(const Pieces& pieces, int id);
  int polygonClass(int id);
  void tell(int anchor, int classId, KdxOgc::OgKMLPlacemark& placemark);
  bool useObject(int anchor);
  void addAttributes(const KaldexObject& object, const Category& category);
  const SFieldList& columns(const Category& category);

  DataBase* dataBase_;
  Vector& vector_;
  AnchorObjects objects_;
  bool hasHeights_;
  Pieces points_;
  Pieces lines_;
  Pieces polygons_;
  std::unordered_map<int, std::string> classNames_;
  std::unordered_map<int, int> polygonClasses_;
  std::map<int, SFieldList> columns_;  // by category
  SCellList cells_;
  int lastAnchor_ = 0;
  std::string name_;
  std::vector<KdxOgc::OgKMLDatum> data_;
  long long severalObjects_ = 0;
};

}  // namespace kaldex

#endif
