#include "cli/commands.h"
#include "cli/database_access.h"

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
  Job job(options, language);
  const Result result = guarded(job, [&] {
    QString trouble;
    const std::unique_ptr<DataBase> dataBase = openDataBase(options.dataBase, trouble);
    return dataBase != nullptr ? classify(job, options, *dataBase) : job.fail(trouble);
  });
  return job.end(result);
}

}  // namespace kaldex::cli
