#include "cli/export_steps.h"

#include <QFileInfo>

#include "cli/texts.h"

namespace kaldex::cli {

QString ExportTarget::objection() const {
  QString trouble = format_.exportComplaint(options_);
  if (trouble.isEmpty()) trouble = delivery_.objection({options_.dataBase});
  if (!trouble.isEmpty() || !delivery_.exists() || options_.append || options_.overwrite) return trouble;
  return format_.appends ? Say::tr("%1 já existe; use --append ou --overwrite.").arg(options_.file)
                         : Say::tr("%1 já existe; use --overwrite.").arg(options_.file);
}

bool ExportTarget::begin() {
  QString trouble = objection();
  if (trouble.isEmpty() && delivery_.begin(options_.append, options_.overwrite, trouble)) {
    job_.conversation().nameFile(path(), options_.file);
    return true;
  }
  job_.fail(trouble);
  return false;
}

QString ExportTarget::folder() const {
  return QFileInfo(path()).path();
}

QString ExportTarget::name() const {
  return QFileInfo(path()).fileName();
}

Result ExportTarget::finish(Result result) {
  JobReport& report = Job::report();
  QString trouble = result == Result::failed ? delivery_.shortage() : QString();
  if (!trouble.isEmpty()) job_.fail(trouble);
  if (report.encoding.name.isEmpty())
    report.encoding = {QStringLiteral("ISO-8859-1"), QStringLiteral("format")};
  report.files.clear();
  if (result == Result::done && !options_.dryRun && !delivery_.finish(trouble)) result = job_.fail(trouble);
  if (result != Result::done) report.written.clear();
  if (result == Result::done && !options_.dryRun) report.files = delivery_.files();
  return result;
}

}  // namespace kaldex::cli
