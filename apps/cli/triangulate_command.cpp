#include "cli/commands.h"
#include "cli/database_access.h"
#include "cli/database_job.h"
#include "cli/registry.h"
#include "cli/texts.h"
#include "kaldex/model/tin.h"

namespace kaldex::cli {

namespace {

Result triangulate(Job& job, DataBase& dataBase, InfoLayer& layer) {
  Vector* const source = firstVector(layer, {vectorSamples, vectorContours});
  DBTransactionBlock block(&dataBase);
  // What is made without being kept goes with the block.
  auto* const surface = source != nullptr ? static_cast<Tin*>(layer.vector(vectorTin, true)) : nullptr;
  if (surface == nullptr || surface->triangulate(*source) == 0) {
    return job.fail(
        Say::tr("O plano %1 não tem amostras ou isolinhas que formem triângulos.").arg(layer.name));
  }
  JobReport& report = Job::report();
  report.countRead(QStringLiteral("samples"), source->point3dCount());
  report.countRead(QStringLiteral("lines"), source->lineCount());
  if (surface->store() == 0) return job.fail(Say::tr("Não foi possível gravar a triangulação."));
  report.countWritten(QStringLiteral("triangles"), surface->triangleCount() - 1);
  if (!job.options().dryRun) block.enableCommit();
  return Result::done;
}

}  // namespace

int runTriangulate(const Options& options, const Language& language) {
  return runOnDataBase(options, language, [&](Job& job, DataBase& dataBase) {
    QString trouble;
    const Place place = findPlace(dataBase, PlaceNames(options.place), trouble);
    return trouble.isEmpty() ? triangulate(job, dataBase, *place.layer) : job.fail(trouble);
  });
}

}  // namespace kaldex::cli
