#ifndef KALDEX_CLI_INFO_WRITER_H
#define KALDEX_CLI_INFO_WRITER_H

#include <QString>
#include <vector>

#include "cli/json_writer.h"
#include "cli/layer_facts.h"
#include "kaldex/model/geometry.h"

namespace kaldex::cli {

// Pieces that the information about databases and files has in common.

void writeBox(JsonWriter& json, const Box& box);
/// An object of "name" and "reason".
void writeChoice(JsonWriter& json, const char* name, const QString& value, const QString& reason);
void writeColumns(JsonWriter& json, const std::vector<ColumnFacts>& columns);
void writeCounts(JsonWriter& json, const LayerFacts& facts);

QString boxText(const Box& box);
QString columnsText(const std::vector<ColumnFacts>& columns);
QString countsText(const LayerFacts& facts);
/// "  title        text"
void printRow(const QString& title, const QString& text);
void printJson(JsonWriter& json);

}  // namespace kaldex::cli

#endif
