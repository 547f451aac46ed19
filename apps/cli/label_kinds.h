#ifndef KALDEX_CLI_LABEL_KINDS_H
#define KALDEX_CLI_LABEL_KINDS_H

#include "cli/registry.h"

namespace kaldex::cli {

// Label points of the system's own text format as the command offers them: they say of what there is in a
// layer which class or object it is.

/// Whether layers of that model have classes or objects.
bool takesLabels(short model);
/// Reads the label points and classifies the layer by them.
int importLabels(const ImportContext& context);
QString missingLabels(const ImportContext& context);

/// The exports of label points and of 2D points.
std::vector<ExportKind> labelExports();

}  // namespace kaldex::cli

#endif
