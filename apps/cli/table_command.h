#ifndef KALDEX_CLI_TABLE_COMMAND_H
#define KALDEX_CLI_TABLE_COMMAND_H

#include "cli/job.h"
#include "cli/registry.h"

namespace kaldex::cli {

/// The kind of table that an import or export is about; null when it is about a layer.
const TableImportKind* tableImportOf(const Options& options);
const TableExportKind* tableExportOf(const Options& options);

/// Import a table into its category, inside one transaction, and export one.
Result importTable(Job& job, const Options& options, DataBase& dataBase);
Result exportTable(Job& job, const Options& options, DataBase& dataBase);

}  // namespace kaldex::cli

#endif
