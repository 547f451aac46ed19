#include <QFileInfo>
#include <memory>

#include "cli/commands.h"
#include "cli/database_access.h"
#include "cli/delivery.h"
#include "cli/registry.h"
#include "cli/table_command.h"
#include "cli/texts.h"

namespace kaldex::cli {

namespace {

/// One export from an open database.
class Export {
 public:
  Export(Job& job, const Options& options, DataBase& dataBase)
      : job_(job),
        options_(options),
        dataBase_(dataBase),
        format_(*findFormat(options_.format)),
        kind_(*format_.exportKind(options_.kind)),
        delivery_(options_.file, format_.companions) {}

  Result run();

 private:
  Result write(Project& project, InfoLayer& layer, Vector* vector);
  Result deliver();
  void tellProjection(const Project& project);

  Job& job_;
  const Options& options_;
  DataBase& dataBase_;
  const Format& format_;
  const ExportKind& kind_;
  Delivery delivery_;
};

Result Export::run() {
  QString trouble;
  const Place place = findPlace(dataBase_, PlaceNames(options_.place), trouble);
  if (!trouble.isEmpty()) return job_.fail(trouble);
  trouble = format_.exportComplaint(options_);
  if (trouble.isEmpty()) trouble = delivery_.objection({options_.dataBase});
  if (!trouble.isEmpty()) return job_.fail(trouble);
  if (delivery_.exists() && !options_.append && !options_.overwrite) {
    return job_.fail(format_.appends
                         ? Say::tr("%1 já existe; use --append ou --overwrite.").arg(options_.file)
                         : Say::tr("%1 já existe; use --overwrite.").arg(options_.file));
  }
  Vector* const vector = kind_.runOnLayer == nullptr ? kind_.source(*place.layer) : nullptr;
  if (kind_.runOnLayer != nullptr ? !kind_.present(*place.layer) : vector == nullptr)
    return job_.fail(
        Say::tr("O plano %1 não tem nada que se exporte como %2.").arg(place.layer->name, options_.kind));
  if (!delivery_.begin(options_.append, options_.overwrite, trouble)) return job_.fail(trouble);
  return write(*place.project, *place.layer, vector);
}

Result Export::write(Project& project, InfoLayer& layer, Vector* vector) {
  const QFileInfo file(delivery_.workPath());
  const ExportContext context{options_,  file.filePath(), file.path(), file.fileName(),
                              dataBase_, project,         layer};
  job_.conversation().nameFile(file.filePath(), options_.file);
  job_.begin();
  const int returned = vector != nullptr ? kind_.run(context, *vector) : kind_.runOnLayer(context);
  Result result = job_.judge(
      returned, Say::tr("Não foi possível exportar %1 do plano %2.").arg(options_.kind, layer.name));
  const QString shortage = result == Result::failed ? delivery_.shortage() : QString();
  if (!shortage.isEmpty()) job_.fail(shortage);
  tellProjection(project);
  if (result == Result::done && !options_.dryRun) result = deliver();
  if (result != Result::done) Job::report().written.clear();
  return result;
}

Result Export::deliver() {
  QString trouble;
  if (!delivery_.finish(trouble)) return job_.fail(trouble);
  job_.report().files = delivery_.files();
  return Result::done;
}

// What the exports themselves don't say.
void Export::tellProjection(const Project& project) {
  JobReport& report = job_.report();
  if (report.encoding.name.isEmpty())
    report.encoding = {QStringLiteral("ISO-8859-1"), QStringLiteral("format")};
  if (report.projection.name.isEmpty())
    report.projection = {projectionName(*project.projection()), QStringLiteral("project")};
  report.files.clear();
}

}  // namespace

Result exportLayer(Job& job, const Options& options, DataBase& dataBase) {
  if (tableExportOf(options) != nullptr) return exportTable(job, options, dataBase);
  return Export(job, options, dataBase).run();
}

int runExport(const Options& options, const Language& language) {
  Job job(options, language);
  const Result result = guarded(job, [&] {
    QString trouble;
    const std::unique_ptr<DataBase> dataBase = openDataBase(options.dataBase, trouble);
    return dataBase != nullptr ? exportLayer(job, options, *dataBase) : job.fail(trouble);
  });
  return job.end(result);
}

}  // namespace kaldex::cli
