#include "cli/import_steps.h"

#include <sys/stat.h>
#include <unistd.h>

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

bool sourceIsReadable(Job& job, const QString& file) {
  const QByteArray path = pathBytes(file);
  struct stat status {};
  if (stat(path.constData(), &status) != 0) {
    job.fail(Say::tr("Não há arquivo %1.").arg(file));
    return false;
  }
  if (!S_ISREG(status.st_mode) || access(path.constData(), R_OK) != 0) {
    job.fail(Say::tr("Não foi possível ler o arquivo %1.").arg(file));
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
