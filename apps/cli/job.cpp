#include "cli/job.h"

#include <algorithm>
#include <exception>
#include <new>
#include <numeric>

#include "cli/interrupt.h"
#include "cli/report_writer.h"
#include "cli/texts.h"
#include "kaldex/model/exception.h"

namespace kaldex::cli {

namespace {

long long total(const QMap<QString, long long>& counts) {
  return std::accumulate(counts.begin(), counts.end(), 0LL);
}

}  // namespace

Job::Job(const Options& options, const Language& language)
    : options_(options),
      progress_(!options.quiet),
      conversation_(options, language, progress_),
      scope_(report_) {
  timer_.start();
}

Result Job::fail(const QString& why) {
  conversation_.tell(why);
  return Result::failed;
}

Result Job::judge(int returned, const QString& missing) {
  if (interrupted()) return Result::cancelled;
  if (conversation_.unasked()) return Result::refused;
  if (returned == 0) {
    if (conversation_.endedByNo()) return Result::refused;
    return conversation_.messages().size() == saidBefore_ ? fail(missing) : Result::failed;
  }
  // What is left out was read, though not every operation counts it so.
  if (total(report().read) + total(report().leftOut) > 0 && total(report().written) == 0)
    return fail(Say::tr("Nada do que foi lido foi gravado."));
  return Result::done;
}

int Job::end(Result result) {
  const double seconds = static_cast<double>(timer_.nsecsElapsed()) * 1e-9;
  progress_.clear();
  const ReportWriter writer(options_, conversation_, report_, {result, keptPartial_, seconds});
  if (options_.json) {
    writer.printJson();
  } else if (!options_.quiet) {
    writer.printText();
  }
  return exitCode(result);
}

QString resultName(Result result) {
  switch (result) {
    case Result::done:
      return QStringLiteral("done");
    case Result::refused:
      return QStringLiteral("refused");
    case Result::cancelled:
      return QStringLiteral("cancelled");
    case Result::failed:
      break;
  }
  return QStringLiteral("failed");
}

int exitCode(Result result) {
  switch (result) {
    case Result::done:
      return kExitDone;
    case Result::refused:
      return kExitRefused;
    case Result::cancelled:
      return kExitCancelled;
    case Result::failed:
      break;
  }
  return kExitFailed;
}

QString currentTrouble() {
  try {
    throw;
  } catch (const SException& exception) {
    return exception.GetMsg();
  } catch (const std::bad_alloc&) {
    return Say::tr("Falta memória.");
  } catch (const std::exception& exception) {
    return QString::fromUtf8(exception.what());
  } catch (...) {
    return Say::tr("Erro desconhecido.");
  }
}

}  // namespace kaldex::cli
