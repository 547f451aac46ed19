#ifndef KALDEX_FRAME_OBJECT_BINDING_H
#define KALDEX_FRAME_OBJECT_BINDING_H

#include <memory>
#include <unordered_map>

#include "kaldex/extforma.h"
#include "kaldex/model/database.h"
#include "lib/frame/anchor_shelf.h"
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
  Outcome bindAll();
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
  kaldex::AnchorShelf::Held* fetchAnchor(const KaldexObject& object, int anchorId);
  const GeneralVisual* visual(int id);
  void storeAnchor(const Anchor& anchor, int objectId);
  Outcome updateRow(int objectId, const Anchor& anchor);
  void addRow(const KaldexObject& object, const Anchor& anchor);
  void setMeasures(const Anchor& anchor);

  static kaldex::AnchorShelf::Kind kindOf(const Point2d&) { return kaldex::AnchorShelf::Kind::point; }
  static kaldex::AnchorShelf::Kind kindOf(const Line&) { return kaldex::AnchorShelf::Kind::line; }
  static kaldex::AnchorShelf::Kind kindOf(const SPolygon&) { return kaldex::AnchorShelf::Kind::polygon; }
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
  std::unordered_map<int, int> visuals_;  ///< by anchor, of those that the table had; new ones know their own
  std::unordered_map<int, GeneralVisual> loadedVisuals_;
  kaldex::AnchorShelf shelf_;
};

}  // namespace kaldex_v1

#endif
