#include "cli/database_job.h"

#include <memory>

#include "cli/database_access.h"

namespace kaldex::cli {

int runOnDataBase(const Options& options, const Language& language,
                  const std::function<Result(Job& job, DataBase& dataBase)>& work) {
  Job job(options, language);
  const Result result = guarded(job, [&] {
    QString trouble;
    const std::unique_ptr<DataBase> dataBase = openDataBase(options.dataBase, trouble);
    return dataBase != nullptr ? work(job, *dataBase) : job.fail(trouble);
  });
  return job.end(result);
}

}  // namespace kaldex::cli
