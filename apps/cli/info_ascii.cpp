#include <memory>
#include <utility>
#include <vector>

#include "cli/database_access.h"
#include "cli/info.h"
#include "cli/info_writer.h"
#include "cli/texts.h"
#include "kaldex/intake.h"

namespace kaldex::cli {

namespace {

/// What a section of an ASCII file tells of itself.
struct SectionFacts {
  SectionFacts(const AsciiOutline& outline, const AsciiSection& section)
      : keyword(section.keyword), line(section.line), header(outline.header(section)) {
    if (header.projection != nullptr) projection = projectionName(*header.projection);
    projectionReason = header.projection != nullptr ? QStringLiteral("header") : QStringLiteral("unknown");
    box = header.hasBox
              ? header.box
              : outline.extent(section, header.projection.get(), header.projection.get(), header.units);
    boxReason = header.hasBox      ? QStringLiteral("header")
                : box.isInverted() ? QStringLiteral("unknown")
                                   : QStringLiteral("coordinates");
    for (const AsciiColumn& column : header.columns)
      columns.push_back({column.name, column.type, column.size, column.decimals});
  }

  QString keyword;
  long long line;
  AsciiHeader header;
  QString projection;
  QString projectionReason;
  Box box;  ///< in the plane of the section's projection; inverted when there is none
  QString boxReason;
  std::vector<ColumnFacts> columns;
};

void writeText(JsonWriter& json, const char* name, const QString& text) {
  if (!text.isEmpty()) json.member(name, text);
}

void writePlace(JsonWriter& json, const SectionFacts& facts) {
  if (facts.box.isInverted()) {
    json.key("box");
    json.null();
  } else {
    writeBox(json, facts.box);
  }
  writeChoice(json, "projection", facts.projection, facts.projectionReason);
}

void writeSection(JsonWriter& json, const SectionFacts& facts) {
  json.beginObject();
  json.member("keyword", facts.keyword);
  json.member("line", facts.line);
  writePlace(json, facts);
  json.member("box_reason", facts.boxReason);
  if (facts.header.scale > 0.0) json.member("scale", facts.header.scale);
  writeText(json, "separator", facts.header.separator);
  writeText(json, "category", facts.header.category);
  json.key("classes");
  json.list(facts.header.classes);
  writeColumns(json, facts.columns);
  json.endObject();
}

void printSection(const SectionFacts& facts) {
  const auto row = [](const QString& title, const QString& text) {
    if (!text.isEmpty()) printRow(title, text);
  };
  const AsciiHeader& header = facts.header;
  row(Say::tr("seção"), Say::tr("%1, linha %2").arg(facts.keyword).arg(facts.line));
  if (!facts.box.isInverted())
    row(Say::tr("caixa"), QStringLiteral("%1 (%2)").arg(boxText(facts.box), choiceText(facts.boxReason)));
  row(Say::tr("projeção"), facts.projection);
  if (header.scale > 0.0) row(Say::tr("escala"), QStringLiteral("1:%1").arg(numberText(header.scale)));
  row(Say::tr("separador"), header.separator);
  row(Say::tr("categoria"), header.category);
  row(Say::tr("classes"), header.classes.join(QStringLiteral(", ")));
  row(Say::tr("colunas"), columnsText(facts.columns));
}

}  // namespace

// A section at a time: a file may have very many.
void informOfAscii(const Options& options) {
  const TextIntake text(options.dataBase, TextForm::sections);
  const AsciiOutline outline(text.isReady() ? text.path() : options.dataBase);
  if (!options.json) {
    printLine(stdout, options.dataBase);
    printRow(Say::tr("formato"), QStringLiteral("ascii"));
    for (const AsciiSection& section : outline.sections()) printSection(SectionFacts(outline, section));
    return;
  }
  JsonWriter json;
  json.beginObject();
  json.member("format", QStringLiteral("ascii"));
  json.key("sections");
  json.beginArray();
  // What the first one tells stands for the file.
  std::unique_ptr<SectionFacts> first;
  for (const AsciiSection& section : outline.sections()) {
    auto facts = std::make_unique<SectionFacts>(outline, section);
    writeSection(json, *facts);
    if (first == nullptr) first = std::move(facts);
  }
  json.endArray();
  if (first != nullptr) writePlace(json, *first);
  json.endObject();
  printJson(json);
}

}  // namespace kaldex::cli
