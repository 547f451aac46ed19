#include <sys/stat.h>
#include <unistd.h>

#include <QFileInfo>
#include <memory>

#include "base/companion_file.h"
#include "cli/commands.h"
#include "cli/import_target.h"
#include "cli/registry.h"
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
  bool checkFile();
  bool prepareFile();
  Result importInside();
  Result settle(DBTransactionBlock& block, Result result);
  Result keep(DBTransactionBlock& block, Result result);
  void tellMade() const;

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
  if (!checkFile() || !prepareFile()) return Result::failed;
  DBTransactionBlock block(&dataBase_);
  return settle(block, guarded(job_, [this] { return importInside(); }));
}

bool Import::checkFile() {
  const QByteArray path = pathBytes(options_.file);
  struct stat status {};
  if (stat(path.constData(), &status) != 0) {
    job_.fail(Say::tr("Não há arquivo %1.").arg(options_.file));
    return false;
  }
  if (!S_ISREG(status.st_mode) || access(path.constData(), R_OK) != 0) {
    job_.fail(Say::tr("Não foi possível ler o arquivo %1.").arg(options_.file));
    return false;
  }
  return true;
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

// A question that couldn't be asked stops everything before anything is kept; other early ends may leave what
// the operation itself leaves, if that is wanted.
Result Import::settle(DBTransactionBlock& block, Result result) {
  const bool partial = result != Result::done && options_.keepPartial && !job_.conversation().unasked();
  if (result == Result::done && options_.dryRun) {
    tellMade();
    return result;
  }
  if ((result == Result::done || partial) && !options_.dryRun) return keep(block, result);
  Job::report().written.clear();
  return result;
}

Result Import::keep(DBTransactionBlock& block, Result result) {
  const Result kept = guarded(job_, [&] {
    block.enableCommit();
    tellMade();
    if (result != Result::done) job_.keptPartial();
    return result;
  });
  if (kept != result) Job::report().written.clear();
  return kept;
}

void Import::tellMade() const {
  if (!tellMade_) return;
  for (const QString& words : made_) Job::report().note(words);
}

}  // namespace

Result importFile(Job& job, const Options& options, DataBase& dataBase, bool tellMade) {
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
