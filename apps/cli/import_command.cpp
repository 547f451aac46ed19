#include <QFileInfo>
#include <memory>

#include "cli/commands.h"
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
        tellMade_(tellMade) {}

  Result run();

 private:
  bool prepareFile();
  Result importInside();

  Job& job_;
  const Options& options_;
  DataBase& dataBase_;
  const Format& format_;
  const ImportKind& kind_;
  bool tellMade_;
  std::unique_ptr<TextIntake> intake_;
  QString path_;
  QStringList made_;  ///< what was made for the import, in words
};

Result Import::run() {
  if (!sourceIsReadable(job_, options_.file) || !prepareFile()) return Result::failed;
  DBTransactionBlock block(&dataBase_);
  const Result result = guarded(job_, [this] { return importInside(); });
  return settleImport(job_, options_, block, result, tellMade_ ? made_ : QStringList());
}

bool Import::prepareFile() {
  path_ = options_.file;
  if (!format_.isText) return true;
  intake_ =
      std::make_unique<TextIntake>(options_.file, TextForm::sections, options_.strict, options_.encoding);
  if (!intake_->isReady()) {
    job_.fail(intake_->error());
    return false;
  }
  path_ = intake_->path();
  return true;
}

Result Import::importInside() {
  const SourceFacts facts = format_.inspect(path_, options_.kind, options_);
  if (!facts.complaint.isEmpty()) return job_.fail(facts.complaint);
  ImportTarget target(job_, options_, dataBase_, facts, kind_);
  if (!target.prepare()) return Result::failed;
  made_ = target.made();
  const QFileInfo file(path_);
  const ImportContext context{options_,         path_,          file.path(),     file.fileName(), dataBase_,
                              target.project(), target.layer(), target.source(), target.units()};
  job_.conversation().nameFile(QStringLiteral("%1/%2").arg(context.folder, context.name), options_.file);
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
  Job job(options, language);
  const Result result = guarded(job, [&] {
    QString trouble;
    const std::unique_ptr<DataBase> dataBase = openDataBase(options.dataBase, trouble);
    return dataBase != nullptr ? importFile(job, options, *dataBase) : job.fail(trouble);
  });
  return job.end(result);
}

}  // namespace kaldex::cli
