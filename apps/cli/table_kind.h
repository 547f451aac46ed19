#ifndef KALDEX_CLI_TABLE_KIND_H
#define KALDEX_CLI_TABLE_KIND_H

#include <memory>

#include "cli/registry.h"
#include "kaldex/ascii.h"

namespace kaldex::cli {

/// A handler that is set up for a file of a category's.
std::unique_ptr<IEAsc> tableHandler(const TableContext& context, const QString& folder, const QString& name,
                                    const QString& separator);

// Attribute tables of the system's own text format as the command offers them.
TableImportKind tableImport();
TableExportKind tableExport();

}  // namespace kaldex::cli

#endif
