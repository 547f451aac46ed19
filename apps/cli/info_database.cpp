#include <memory>

#include "cli/commands.h"
#include "cli/database_access.h"
#include "cli/info.h"
#include "cli/info_writer.h"
#include "cli/texts.h"
#include "kaldex/model/projection_text.h"

namespace kaldex::cli {

namespace {

/// "EPSG:n" where the system is a known one, else a PROJ string.
QString systemText(const SProjection& projection) {
  const int code = projectionEpsgCode(projection);
  return code != 0 ? QStringLiteral("EPSG:%1").arg(code) : projectionToProj4(projection);
}

void writeLayer(JsonWriter& json, DataBase& dataBase, InfoLayer& layer) {
  const LayerFacts facts = factsOf(dataBase, layer);
  json.member("model", modelWord(layer.model()));
  writeBox(json, layer.box);
  json.member("projection", projectionName(*layer.projection()));
  writeCounts(json, facts);
  json.key("classes");
  json.list(facts.classes);
  writeColumns(json, facts.columns);
  json.member("category", layer.GetCategoryName());
  json.member("scale", static_cast<double>(layer.scale));
}

void writeProject(JsonWriter& json, DataBase& dataBase, Project& project) {
  json.beginObject();
  json.member("name", project.name);
  json.member("projection", projectionName(*project.projection()));
  json.member("crs", systemText(*project.projection()));
  json.key("layers");
  json.beginArray();
  for (InfoLayer* const layer : dataBase.layers(project)) {
    json.beginObject();
    json.member("name", layer->name);
    writeLayer(json, dataBase, *layer);
    json.endObject();
  }
  json.endArray();
  json.endObject();
}

void printLayer(DataBase& dataBase, InfoLayer& layer) {
  const LayerFacts facts = factsOf(dataBase, layer);
  printLine(stdout, QStringLiteral("%1/%2").arg(layer.project()->name, layer.name));
  printRow(Say::tr("modelo"), modelWord(layer.model()));
  printRow(Say::tr("categoria"), layer.GetCategoryName());
  printRow(Say::tr("conteúdo"), countsText(facts));
  printRow(Say::tr("caixa"), boxText(layer.box));
  printRow(Say::tr("projeção"), projectionName(*layer.projection()));
  printRow(Say::tr("escala"), QStringLiteral("1:%1").arg(numberText(layer.scale)));
  if (!facts.classes.isEmpty()) printRow(Say::tr("classes"), facts.classes.join(QStringLiteral(", ")));
  if (!facts.columns.empty()) printRow(Say::tr("colunas"), columnsText(facts.columns));
}

void printProject(DataBase& dataBase, Project& project) {
  const QString system = systemText(*project.projection());
  printLine(stdout, Say::tr("Projeto %1, projeção %2%3")
                        .arg(project.name, projectionName(*project.projection()),
                             system.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(system)));
  for (InfoLayer* const layer : dataBase.layers(project)) printLayer(dataBase, *layer);
}

void informOfLayer(const Options& options, DataBase& dataBase, InfoLayer& layer) {
  if (!options.json) {
    printLayer(dataBase, layer);
    return;
  }
  JsonWriter json;
  json.beginObject();
  writeLayer(json, dataBase, layer);
  json.endObject();
  printJson(json);
}

/// Attribute tables stand beside the projects: they are those of categories.
void informOfTables(const Options& options, DataBase& dataBase, JsonWriter& json) {
  json.key("tables");
  json.beginArray();
  for (const Category* const category : dataBase.categoryList()) {
    if (category->model != OBJECTMODEL && category->model != NOTSPACIALMODEL) continue;
    const std::vector<ColumnFacts> columns = tableColumns(dataBase, *category);
    if (columns.empty()) continue;
    json.beginObject();
    json.member("category", category->name);
    json.member("model", modelWord(category->model));
    writeColumns(json, columns);
    json.endObject();
    if (options.json) continue;
    printLine(stdout, Say::tr("Tabela %1, modelo %2").arg(category->name, modelWord(category->model)));
    printRow(Say::tr("colunas"), columnsText(columns));
  }
  json.endArray();
}

void informOfProjects(const Options& options, DataBase& dataBase, const QString& only) {
  JsonWriter json;
  json.beginObject();
  json.member("format", QStringLiteral("database"));
  json.key("projects");
  json.beginArray();
  for (Project* const project : dataBase.projects()) {
    if (!only.isEmpty() && project->name != only) continue;
    if (options.json) {
      writeProject(json, dataBase, *project);
    } else {
      printProject(dataBase, *project);
    }
  }
  json.endArray();
  if (only.isEmpty()) informOfTables(options, dataBase, json);
  json.endObject();
  if (options.json) printJson(json);
}

}  // namespace

int informOfDataBase(const Options& options, const QString& description) {
  QString trouble;
  const std::unique_ptr<DataBase> dataBase = openDataBase(options.dataBase, trouble);
  if (dataBase == nullptr) {
    if (options.place.isEmpty() && !options.json) informOfOther(options, description);
    return failPlainly(options, trouble);
  }
  const PlaceNames names(options.place);
  if (options.place.isEmpty()) {
    if (!options.json && dataBase->projects().Size() == 0)
      printLine(stdout, Say::tr("Banco de dados sem projetos."));
    informOfProjects(options, *dataBase, QString());
    return kExitDone;
  }
  const Place place = findPlace(*dataBase, names, trouble);
  if (!trouble.isEmpty()) return failPlainly(options, trouble);
  if (place.layer != nullptr) {
    informOfLayer(options, *dataBase, *place.layer);
  } else {
    informOfProjects(options, *dataBase, names.project);
  }
  return kExitDone;
}

}  // namespace kaldex::cli
