#ifndef KALDEX_CLI_IMPORT_TARGET_H
#define KALDEX_CLI_IMPORT_TARGET_H

#include <memory>

#include "cli/database_access.h"
#include "cli/job.h"
#include "cli/registry.h"

namespace kaldex::cli {

/// Where an import goes: finds or makes project, category and layer, from the command line or else from what
/// the file tells, and settles what the file's own projection is.
class ImportTarget {
 public:
  ImportTarget(Job& job, const Options& options, DataBase& dataBase, const SourceFacts& facts,
               const ImportKind& kind)
      : job_(job), options_(options), dataBase_(dataBase), facts_(facts), kind_(kind) {}

  /// False after a failure, which is told.
  bool prepare();

  Project& project() { return *project_; }
  InfoLayer& layer() { return *layer_; }
  SProjection* source() { return source_.get(); }
  int units() const { return units_; }
  /// What was made in the database, in words.
  const QStringList& made() const { return made_; }

 private:
  bool readProjections();
  bool findProject();
  void settleSource();
  void chooseUnits();
  bool findLayer();
  bool suitsLayer();
  bool makeLayer();
  Category* findCategory(short model);
  Category* makeCategory(const QString& name, short model);
  short chosenModel(const QString& category) const;
  Box chosenBox(QString& reason) const;
  bool refuse(const QString& why);

  Job& job_;
  const Options& options_;
  DataBase& dataBase_;
  const SourceFacts& facts_;
  const ImportKind& kind_;
  std::unique_ptr<SProjection> asked_;  ///< of "--crs"
  std::unique_ptr<SProjection> source_;
  QString sourceReason_;
  Project* project_ = nullptr;
  InfoLayer* layer_ = nullptr;
  int units_ = 0;
  QStringList made_;
};

}  // namespace kaldex::cli

#endif
