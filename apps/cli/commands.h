#ifndef KALDEX_CLI_COMMANDS_H
#define KALDEX_CLI_COMMANDS_H

#include "cli/job.h"
#include "kaldex/model/database.h"

namespace kaldex::cli {

// The sub-commands; each returns the exit code of the process.
int runInit(const Options& options);
int runImport(const Options& options, const Language& language);
int runExport(const Options& options, const Language& language);
int runConvert(const Options& options, const Language& language);
int runInfo(const Options& options);
int runDraw(const Options& options);
int runClassify(const Options& options, const Language& language);
int runTriangulate(const Options& options, const Language& language);

/// Import and export as parts of a larger work: with these options, telling the job and the current report
/// what they do. `tellMade` is whether projects and layers that are made matter to the user.
Result importFile(Job& job, const Options& options, DataBase& dataBase, bool tellMade = true);
Result exportLayer(Job& job, const Options& options, DataBase& dataBase);

/// How a command that makes no report ends: as an object with "--json". `messages` go to standard error, too.
void tellResult(const Options& options, Result result, const QStringList& messages, const QStringList& files);
/// Tell an error of such a command.
int failPlainly(const Options& options, const QString& why);

}  // namespace kaldex::cli

#endif
