#ifndef KALDEX_CLI_ASCII_KINDS_H
#define KALDEX_CLI_ASCII_KINDS_H

#include <memory>

#include "cli/registry.h"
#include "kaldex/ascii.h"

namespace kaldex::cli {

// The kinds of the system's own text format, beside lines and polygons, as the command offers them.

/// A handler that is set up for an import or an export.
std::unique_ptr<IEAsc> asciiImporter(const ImportContext& context, SProjection* projection);
std::unique_ptr<IEAsc> asciiExporter(const ExportContext& context);

int importSamples(const ImportContext& context);
int importPoints(const ImportContext& context);
/// Reads the texts and stores them in the layer.
int importTexts(const ImportContext& context);
/// Turns stand in a file beside the database: a dry run puts it back.
int importTurns(const ImportContext& context);

Vector* sampleLayer(InfoLayer& layer);
bool hasSamples(InfoLayer& layer);
int exportSamples(const ExportContext& context, Vector& vector);

bool hasTexts(InfoLayer& layer);
int exportTexts(const ExportContext& context);

Vector* tinLayer(InfoLayer& layer);
bool hasTin(InfoLayer& layer);
int exportTin(const ExportContext& context, Vector& vector);
int exportTin3d(const ExportContext& context, Vector& vector);

Vector* networkLayer(InfoLayer& layer);
bool hasTurns(InfoLayer& layer);
int exportTurns(const ExportContext& context, Vector& vector);

}  // namespace kaldex::cli

#endif
