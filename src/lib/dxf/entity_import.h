#ifndef KALDEX_DXF_ENTITY_IMPORT_H
#define KALDEX_DXF_ENTITY_IMPORT_H

#include <string>
#include <string_view>

#include "kaldex/dxf.h"
#include "lib/dxf/drawing_reader.h"
#include "lib/dxf/entity_kind.h"
#include "lib/dxf/entity_remarks.h"
#include "lib/dxf/entity_tally.h"
#include "lib/dxf/layer_selection.h"
#include "lib/frame/coordinate_transfer.h"

inline namespace kaldex_v1 {

/// One pass over the entities of a drawing: what every import has in common. Derived classes say which kinds
/// they take and what becomes of the pairs. The handler's file must be open.
class IEDXF::EntityImport {
 public:
  EntityImport(const EntityImport&) = delete;
  EntityImport& operator=(const EntityImport&) = delete;

  int run();

 protected:
  using Kind = kaldex::EntityKind;
  enum class Step { goOn, end, failed };

  EntityImport(IEDXF& handler, SProjection* target);
  /// Tells the report what was not taken.
  virtual ~EntityImport();

  virtual bool takes(Kind kind) const = 0;
  /// An entity that is taken begins.
  virtual void begin(Kind kind) = 0;
  /// The layer of the entity at hand is known: whether it was chosen.
  virtual void enter(bool chosen) = 0;
  /// Whether pairs of the entity at hand count.
  virtual bool isActive() const = 0;
  /// A pair of an active entity.
  virtual Step take(int code) = 0;
  /// The entity at hand is at its end; false ends the import as a failure.
  virtual bool finishEntity() = 0;
  /// "SEQEND".
  virtual bool finishSequence() { return true; }
  /// The drawing is at its end: the import's result.
  virtual int finish() = 0;

  Kind kind() const { return kind_; }
  /// No further pair of the entity counts.
  void leave() { kind_ = Kind::none; }
  /// As far as the value is a number; what isn't one as a whole, or isn't finite, is told.
  double real();
  int integer() const;
  std::string_view value() const { return reader_.value(); }
  kaldex::DrawingText& text() { return layers_.text(); }

  /// From the file's coordinates into the target's plane, `count` pairs x, y; false when one has no place
  /// there.
  bool place(double* xy, std::size_t count) const;
  /// "File INCONSISTENT", with the file's name and what it has no data for.
  int emptyFile(const char* what);
  /// The target refuses the entity at hand.
  Step refused();

  IEDXF& handler_;
  kaldex::DrawingReader& reader_;

 private:
  bool findEntities();
  Step takePair();
  Step startEntity();
  void endSection();
  Step takeAfterSection();
  void takeLayer(std::string_view raw);
  void holdLayer(std::string_view raw, bool chosen);
  QString heldLayerName();
  void report();
  void reportReading() const;

  kaldex::CoordinateTransfer transfer_;
  double factor_;
  bool transforms_;
  QStringList names_;
  kaldex::ChosenLayers layers_;
  kaldex::EntityTally notTaken_;
  kaldex::EntityRemarks remarks_;
  Kind kind_ = Kind::none;
  bool layerKnown_ = false;
  bool betweenSections_ = false;
  bool afterOpening_ = false;
  std::string heldLayer_;
  long long otherLayers_ = 0;
  long long inserts_ = 0;
  long long badNumbers_ = 0;
  long firstBadNumber_ = 0;
};

}  // namespace kaldex_v1

#endif
