#include "cli/commands.h"
#include "cli/database_access.h"
#include "cli/database_job.h"

namespace kaldex::cli {

namespace {

// An import of labels, but for a layer that it would make: an empty one has nothing to classify.
Result classify(Job& job, const Options& options, DataBase& dataBase) {
  QString trouble;
  findPlace(dataBase, PlaceNames(options.place), trouble);
  return trouble.isEmpty() ? importFile(job, options, dataBase) : job.fail(trouble);
}

}  // namespace

int runClassify(const Options& options, const Language& language) {
  return runOnDataBase(options, language,
                       [&](Job& job, DataBase& dataBase) { return classify(job, options, dataBase); });
}

}  // namespace kaldex::cli
