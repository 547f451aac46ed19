#include "cli/import_steps.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QFileInfo>

#include "base/companion_file.h"
#include "cli/texts.h"

namespace kaldex::cli {

namespace {

void tellMade(const QStringList& made) {
  for (const QString& words : made) Job::report().note(words);
}

Result keep(Job& job, DBTransactionBlock& block, Result result, const QStringList& made) {
  const Result kept = guarded(job, [&] {
    block.enableCommit();
    tellMade(made);
    if (result != Result::done) job.keptPartial();
    return result;
  });
  if (kept != result) Job::report().written.clear();
  return kept;
}

}  // namespace

bool ImportSource::prepare() {
  if (!isReadable()) return false;
  path_ = options_.file;
  if (format_.isText) {
    intake_ =
        std::make_unique<TextIntake>(options_.file, format_.textForm, options_.strict, options_.encoding);
    if (!intake_->isReady()) {
      job_.fail(intake_->error());
      return false;
    }
    path_ = intake_->path();
  }
  job_.conversation().nameFile(QStringLiteral("%1/%2").arg(folder(), name()), options_.file);
  return true;
}

QString ImportSource::folder() const {
  return QFileInfo(path_).path();
}

QString ImportSource::name() const {
  return QFileInfo(path_).fileName();
}

bool ImportSource::isReadable() const {
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

// A question that couldn't be asked stops everything before anything is kept; other early ends may leave what
// the operation itself leaves, if that is wanted.
Result settleImport(Job& job, const Options& options, DBTransactionBlock& block, Result result,
                    const QStringList& made) {
  const bool partial = result != Result::done && options.keepPartial && !job.conversation().unasked();
  if (result == Result::done && options.dryRun) {
    tellMade(made);
    return result;
  }
  if ((result == Result::done || partial) && !options.dryRun) return keep(job, block, result, made);
  Job::report().written.clear();
  return result;
}

}  // namespace kaldex::cli
