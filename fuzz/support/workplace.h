#ifndef KALDEX_FUZZ_WORKPLACE_H
#define KALDEX_FUZZ_WORKPLACE_H

#include <QCoreApplication>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "fuzz/support/scratch.h"
#include "kaldex/extforma.h"
#include "kaldex/model/catalog.h"
#include "kaldex/model/database.h"
#include "kaldex/model/field.h"
#include "kaldex/model/projection.h"
#include "kaldex/model/report.h"
#include "kaldex/model/vector.h"

namespace kaldex::fuzz {

/// Answers the n-th question of a run by the n-th of eight bits. A message that no file may lead to ends the
/// process: that of a failure of the storage, or of memory, neither of which is short here.
class BitPresenter : public MessagePresenter {
 public:
  void start(std::uint8_t answers);
  int present(int kind, QWidget* parent, const QString& title, const QString& text) override;

 private:
  unsigned answers_ = 0;
  int asked_ = 0;
};

/// What one process reuses for all its runs: a folder in memory, and a geographic database in it with a layer
/// of each kind. The layers hold one feature of each sort, so that no run has to make a table.
class Workplace {
 public:
  enum LayerKind { thematic, network, cadastral, contours, samples, layerKinds };

  static Workplace& instance();

  QString path(const char* name) const { return scratch_.path(name); }
  void write(const char* name, std::string_view content) const { scratch_.write(name, content); }

  /// Set a handler up for a file of the folder and a layer. `settings` chooses units, coordinate form,
  /// separator, and whether the file's projection differs from the layer's.
  void init(SExtFormats& handler, LayerKind kind, const char* dataFile, std::uint8_t settings);
  InfoLayer* layer(LayerKind kind) const { return layers_[kind]; }
  Vector* vector(LayerKind kind) const;
  SProjection* projection() const { return project_->projection(); }

  /// Categories of objects, for targets that deal with them: one without and two with an attribute table, of
  /// which "known_O" is the one that a shapefile called known.shp goes into, and has an object that its first
  /// shape is. Also one of tables, "Tabela", and the representation of texts in the thematic layer.
  void needObjects();
  Category* objects(const char* name) const;
  DataBase& dataBase() const { return *dataBase_; }

  /// Run an operation on a layer in a transaction that is then undone, unless all counts are as they were.
  /// Ends the process when anything of it stays.
  void undone(LayerKind kind, std::uint8_t answers, const std::function<void()>& operation);

 private:
  Workplace();
  void makeCategories();
  void makeTable(const char* category, const std::vector<SField>& columns);
  void makeKnownObject();
  void countAnew();
  void makeLayers();
  void fill(LayerKind kind);
  long long contents(LayerKind kind) const;

  Scratch scratch_;
  std::unique_ptr<DataBase> dataBase_;
  std::unique_ptr<SProjection> foreign_;
  Project* project_ = nullptr;
  InfoLayer* layers_[layerKinds] = {};
  long long contentsBefore_[layerKinds] = {};
  BitPresenter presenter_;
  std::unique_ptr<DBTransactionBlock> block_;  // open between runs that change nothing
  bool hasObjects_ = false;
};

}  // namespace kaldex::fuzz

#endif
