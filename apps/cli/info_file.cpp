#include <memory>

#include "cli/database_access.h"
#include "cli/info.h"
#include "cli/info_writer.h"
#include "cli/texts.h"
#include "kaldex/intake.h"
#include "kaldex/model/dbf.h"
#include "kaldex/shapeie.h"

namespace kaldex::cli {

namespace {

void writeChoice(JsonWriter& json, const char* name, const QString& value, const QString& reason) {
  json.key(name);
  json.beginObject();
  json.member("name", value);
  json.member("reason", reason);
  json.endObject();
}

/// What a shapefile tells of itself.
struct ShapefileFacts {
  explicit ShapefileFacts(const QString& path)
      : outline(path), table(path, OpenMode::read), projection(IEShp::sourceProjection(path)) {
    outline.extent(&count);
    SFieldList fields;
    if (table.isOpen() && table.ReadAttr(path, &fields) != 0) columns = columnsOf(fields);
    if (projection != nullptr) projectionText = projectionName(*projection);
  }

  ShapeOutline outline;
  DbfImpExp table;
  std::unique_ptr<SProjection> projection;
  QString projectionText;
  std::vector<ColumnFacts> columns;
  long long count = 0;
};

}  // namespace

void informOfShapefile(const Options& options) {
  const ShapefileFacts facts(options.dataBase);
  const QString encoding = facts.table.isOpen() ? facts.table.encodingName() : QString();
  const QString encodingReason = facts.table.isOpen() ? facts.table.encodingReason() : QString();
  const QString projectionReason =
      facts.projection != nullptr ? QStringLiteral("prj") : QStringLiteral("unknown");
  if (options.json) {
    JsonWriter json;
    json.beginObject();
    json.member("format", QStringLiteral("shapefile"));
    json.member("type", static_cast<long long>(facts.outline.type()));
    json.member("type_name", facts.outline.typeName());
    json.member("count", facts.count);
    writeBox(json, facts.outline.box());
    writeChoice(json, "projection", facts.projectionText, projectionReason);
    writeChoice(json, "encoding", encoding, encodingReason);
    writeColumns(json, facts.columns);
    json.endObject();
    printJson(json);
    return;
  }
  printLine(stdout, options.dataBase);
  printRow(Say::tr("formato"), QStringLiteral("shapefile"));
  printRow(Say::tr("geometria"),
           QStringLiteral("%1 (%2)").arg(facts.outline.typeName()).arg(facts.outline.type()));
  printRow(Say::tr("registros"), countText(facts.count));
  printRow(Say::tr("caixa"), boxText(facts.outline.box()));
  printRow(Say::tr("projeção"),
           QStringLiteral("%1 (%2)").arg(facts.projectionText, choiceText(projectionReason)));
  if (facts.table.isOpen())
    printRow(Say::tr("codificação"), QStringLiteral("%1 (%2)").arg(encoding, choiceText(encodingReason)));
  if (!facts.columns.empty()) printRow(Say::tr("colunas"), columnsText(facts.columns));
}

namespace {

void writeSections(JsonWriter& json, const AsciiOutline& outline) {
  json.key("sections");
  json.beginArray();
  for (const AsciiSection& section : outline.sections()) {
    json.beginObject();
    json.member("keyword", section.keyword);
    json.member("line", section.line);
    json.endObject();
  }
  json.endArray();
}

void printSections(const AsciiOutline& outline) {
  for (const AsciiSection& section : outline.sections())
    printRow(Say::tr("seção"), Say::tr("%1, linha %2").arg(section.keyword).arg(section.line));
}

}  // namespace

void informOfAscii(const Options& options) {
  const TextIntake text(options.dataBase, TextForm::sections);
  const AsciiOutline outline(text.isReady() ? text.path() : options.dataBase);
  const AsciiHeader header = outline.header(outline.sections().front());
  const QString projection = header.projection != nullptr ? projectionName(*header.projection) : QString();
  const QString reason = header.projection != nullptr ? QStringLiteral("header") : QStringLiteral("unknown");
  if (options.json) {
    JsonWriter json;
    json.beginObject();
    json.member("format", QStringLiteral("ascii"));
    writeSections(json, outline);
    if (header.hasBox) {
      writeBox(json, header.box);
    } else {
      json.key("box");
      json.null();
    }
    writeChoice(json, "projection", projection, reason);
    json.endObject();
    printJson(json);
    return;
  }
  printLine(stdout, options.dataBase);
  printRow(Say::tr("formato"), QStringLiteral("ascii"));
  printSections(outline);
  if (header.hasBox) printRow(Say::tr("caixa"), boxText(header.box));
  printRow(Say::tr("projeção"), QStringLiteral("%1 (%2)").arg(projection, choiceText(reason)));
}

}  // namespace kaldex::cli
