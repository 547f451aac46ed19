#ifndef KALDEX_FRAME_OBJECT_BINDING_H
#define KALDEX_FRAME_OBJECT_BINDING_H

#include <memory>
#include <unordered_map>

#include "kaldex/extforma.h"
#include "kaldex/model/database.h"
#include "lib/frame/label_search.h"
#include "lib/frame/progress_scope.h"

inline namespace kaldex_v1 {

/// Makes nodes, lines and polygons of a vector the places of the objects that the handler's label points
/// name. One run an object.
class SExtFormats::ObjectBinding {
 public:
  ObjectBinding(SExtFormats& handler, Vector& vector, InfoLayer& layer);

  int run();

 private:
  enum class Outcome {
    bound,
    passedOver,  ///< the next label point is up, this one keeps its state
    refused,     ///< the end, in an orderly way
    failed       ///< the end
  };

  void loadTable();
  Outcome bindNodesAndLines();
  Outcome bindNode(SExtLabelPoint& labelPoint);
  Outcome bindLine(SExtLabelPoint& labelPoint);
  Outcome bindPolygons();
  Outcome bindPolygon(SExtLabelPoint& labelPoint);

  template <class Piece>
  Outcome bind(SExtLabelPoint& labelPoint, const Piece& piece);
  Outcome findCategory(const QString& name, Category*& category);
  bool findOrMakeObject(const SExtLabelPoint& labelPoint, Category& category, KaldexObject& object);
  template <class Piece>
  Outcome addToAnchor(const KaldexObject& object, int anchorId, const Piece& piece);
  template <class Piece>
  void makeAnchor(const KaldexObject& object, const Category& category, const Piece& piece);
  const GeneralVisual* visual(int id);
  Outcome updateRow(const KaldexObject& object, const Anchor& anchor);
  void addRow(const KaldexObject& object, const Anchor& anchor);
  void setMeasures(const Anchor& anchor);

  static bool holds(const Anchor& anchor, const Point2d& point);
  static bool holds(const Anchor& anchor, const Line& line);
  static bool holds(const Anchor& anchor, const SPolygon& polygon);
  int insert(Anchor& anchor, const Point2d& point) const;
  int insert(Anchor& anchor, const Line& line) const;
  int insert(Anchor& anchor, const SPolygon& polygon) const;

  SExtFormats& handler_;
  Vector& vector_;
  InfoLayer& layer_;
  DataBase& base_;
  CategoryList& categories_;
  bool cadastral_;
  kaldex::LabelSearch search_;
  kaldex::LabelTally tally_;
  kaldex::ProgressScope progress_;
  std::unique_ptr<RecordSet> rows_;
  std::unordered_map<int, int> anchors_;  ///< by object
  std::unordered_map<int, int> visuals_;  ///< by anchor
  std::unordered_map<int, GeneralVisual> loadedVisuals_;
};

}  // namespace kaldex_v1

#endif
