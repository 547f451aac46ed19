#include "cli/commands.h"
#include "cli/database_access.h"
#include "cli/database_job.h"
#include "cli/export_steps.h"
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
        kind_(*findFormat(options.format)->exportKind(options.kind)),
        target_(job, options, *findFormat(options.format)) {}

  Result run();

 private:
  Result write(Project& project, InfoLayer& layer, Vector* vector);

  Job& job_;
  const Options& options_;
  DataBase& dataBase_;
  const ExportKind& kind_;
  ExportTarget target_;
};

Result Export::run() {
  QString trouble;
  const Place place = findPlace(dataBase_, PlaceNames(options_.place), trouble);
  if (!trouble.isEmpty()) return job_.fail(trouble);
  const bool ofVector = kind_.runOnLayer == nullptr;
  Vector* const vector = ofVector ? kind_.source(*place.layer) : nullptr;
  if (ofVector ? vector == nullptr : !kind_.present(*place.layer))
    return job_.fail(
        Say::tr("O plano %1 não tem nada que se exporte como %2.").arg(place.layer->name, options_.kind));
  return target_.begin() ? write(*place.project, *place.layer, vector) : Result::failed;
}

Result Export::write(Project& project, InfoLayer& layer, Vector* vector) {
  const ExportContext context{options_, target_.path(), target_.folder(), target_.name(), dataBase_,
                              project,  layer};
  job_.begin();
  const int returned = vector != nullptr ? kind_.run(context, *vector) : kind_.runOnLayer(context);
  const Result result = job_.judge(
      returned, Say::tr("Não foi possível exportar %1 do plano %2.").arg(options_.kind, layer.name));
  JobReport& report = Job::report();
  if (report.projection.name.isEmpty())
    report.projection = {projectionName(*project.projection()), QStringLiteral("project")};
  return target_.finish(result);
}

}  // namespace

Result exportLayer(Job& job, const Options& options, DataBase& dataBase) {
  if (tableExportOf(options) != nullptr) return exportTable(job, options, dataBase);
  return Export(job, options, dataBase).run();
}

int runExport(const Options& options, const Language& language) {
  return runOnDataBase(options, language,
                       [&](Job& job, DataBase& dataBase) { return exportLayer(job, options, dataBase); });
}

}  // namespace kaldex::cli
