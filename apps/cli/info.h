#ifndef KALDEX_CLI_INFO_H
#define KALDEX_CLI_INFO_H

#include <QString>

#include "cli/options.h"

namespace kaldex::cli {

/// Projects and layers of a database, a project, or one layer. A file of the database's format that isn't one
/// of ours is told by its description.
int informOfDataBase(const Options& options, const QString& description);
void informOfShapefile(const Options& options);
void informOfAscii(const Options& options);
/// Layers of a drawing with their colours and what they hold; the exit code.
int informOfDrawing(const Options& options);
void informOfKml(const Options& options);
void informOfUngenerate(const Options& options);
/// A file of which no more is known than what it seems to be.
void informOfOther(const Options& options, const QString& description);

}  // namespace kaldex::cli

#endif
