#ifndef KALDEX_CLI_DATABASE_JOB_H
#define KALDEX_CLI_DATABASE_JOB_H

#include <functional>

#include "cli/job.h"
#include "kaldex/model/database.h"

namespace kaldex::cli {

/// Does a job with the database that the options name, and reports; the exit code of the process.
int runOnDataBase(const Options& options, const Language& language,
                  const std::function<Result(Job& job, DataBase& dataBase)>& work);

}  // namespace kaldex::cli

#endif
