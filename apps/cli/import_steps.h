#ifndef KALDEX_CLI_IMPORT_STEPS_H
#define KALDEX_CLI_IMPORT_STEPS_H

#include <QStringList>

#include "cli/job.h"
#include "kaldex/model/database.h"

namespace kaldex::cli {

// What imports have in common, wherever their data goes.

/// Whether the source file can be read; told if not.
bool sourceIsReadable(Job& job, const QString& file);

/// End an import's transaction as its result and the options want it. `made` is what was made for the import,
/// in words, to be told when it stays.
Result settleImport(Job& job, const Options& options, DBTransactionBlock& block, Result result,
                    const QStringList& made);

}  // namespace kaldex::cli

#endif
