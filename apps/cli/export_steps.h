#ifndef KALDEX_CLI_EXPORT_STEPS_H
#define KALDEX_CLI_EXPORT_STEPS_H

#include "cli/delivery.h"
#include "cli/job.h"
#include "cli/registry.h"

namespace kaldex::cli {

/// Where an export writes, whatever it exports: a file that gets its name when it is complete.
class ExportTarget {
 public:
  ExportTarget(Job& job, const Options& options, const Format& format)
      : job_(job), options_(options), format_(format), delivery_(options.file, format.companions) {}

  /// False when nothing can be written there, which is told.
  bool begin();
  /// What a handler is to write: path, folder and name in it.
  QString path() const { return delivery_.workPath(); }
  QString folder() const;
  QString name() const;
  /// The operation ended so: gives the files their names and the report what it says of every export.
  Result finish(Result result);

 private:
  QString objection() const;

  Job& job_;
  const Options& options_;
  const Format& format_;
  Delivery delivery_;
};

}  // namespace kaldex::cli

#endif
