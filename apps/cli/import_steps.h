#ifndef KALDEX_CLI_IMPORT_STEPS_H
#define KALDEX_CLI_IMPORT_STEPS_H

#include <QStringList>
#include <memory>

#include "cli/job.h"
#include "cli/registry.h"
#include "kaldex/model/database.h"

namespace kaldex::cli {

// What imports have in common, wherever their data goes.

/// The file that is imported, in the form that handlers take.
class ImportSource {
 public:
  ImportSource(Job& job, const Options& options, const Format& format)
      : job_(job), options_(options), format_(format) {}

  /// False when the file can't be read, which is told.
  bool prepare();
  /// What a handler is to read: path, folder and name in it.
  QString path() const { return path_; }
  QString folder() const;
  QString name() const;

 private:
  bool isReadable() const;

  Job& job_;
  const Options& options_;
  const Format& format_;
  std::unique_ptr<TextIntake> intake_;
  QString path_;
};

/// End an import's transaction as its result and the options want it. `made` is what was made for the import,
/// in words, to be told when it stays.
Result settleImport(Job& job, const Options& options, DBTransactionBlock& block, Result result,
                    const QStringList& made);

}  // namespace kaldex::cli

#endif
