#include "cli/commands.h"
#include "cli/database_job.h"
#include "cli/import_steps.h"
#include "cli/import_target.h"
#include "cli/registry.h"
#include "cli/table_command.h"
#include "cli/texts.h"

namespace kaldex::cli {

namespace {

/// One import into an open database: all of it inside one transaction.
class Import {
 public:
  Import(Job& job, const Options& options, DataBase& dataBase, bool tellMade)
      : job_(job),
        options_(options),
        dataBase_(dataBase),
        format_(*findFormat(options_.format)),
        kind_(*format_.importKind(options_.kind)),
        tellMade_(tellMade),
        source_(job, options, format_) {}

  Result run();

 private:
  Result importInside();

  Job& job_;
  const Options& options_;
  DataBase& dataBase_;
  const Format& format_;
  const ImportKind& kind_;
  bool tellMade_;
  ImportSource source_;
  QStringList made_;  ///< what was made for the import, in words
};

Result Import::run() {
  if (!source_.prepare()) return Result::failed;
  DBTransactionBlock block(&dataBase_);
  const Result result = guarded(job_, [this] { return importInside(); });
  return settleImport(job_, options_, block, result, tellMade_ ? made_ : QStringList());
}

Result Import::importInside() {
  const SourceFacts facts = format_.inspect(source_.path(), options_.kind, options_);
  if (!facts.complaint.isEmpty()) return job_.fail(facts.complaint);
  ImportTarget target(job_, options_, dataBase_, facts, kind_);
  if (!target.prepare()) return Result::failed;
  made_ = target.made();
  const ImportContext context{options_,         source_.path(), source_.folder(), source_.name(), dataBase_,
                              target.project(), target.layer(), target.source(),  target.units()};
  job_.begin();
  const int returned = kind_.run(context);
  return job_.judge(returned, kind_.missing(context));
}

}  // namespace

Result importFile(Job& job, const Options& options, DataBase& dataBase, bool tellMade) {
  if (tableImportOf(options) != nullptr) return importTable(job, options, dataBase);
  return Import(job, options, dataBase, tellMade).run();
}

int runImport(const Options& options, const Language& language) {
  return runOnDataBase(options, language,
                       [&](Job& job, DataBase& dataBase) { return importFile(job, options, dataBase); });
}

}  // namespace kaldex::cli
