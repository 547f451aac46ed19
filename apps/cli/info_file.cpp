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

}  // namespace kaldex::cli
