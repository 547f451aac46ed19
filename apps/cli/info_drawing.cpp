#include "cli/commands.h"
#include "cli/info.h"
#include "cli/info_writer.h"
#include "cli/texts.h"
#include "kaldex/dxf.h"
#include "kaldex/intake.h"

namespace kaldex::cli {

namespace {

void writeCounts(JsonWriter& json, const DxfOutline::Layer& layer) {
  json.key("entities");
  json.beginArray();
  for (auto count = layer.entities.begin(); count != layer.entities.end(); ++count) {
    json.beginObject();
    json.member("kind", count.key());
    json.member("count", count.value());
    json.endObject();
  }
  json.endArray();
}

void printAsJson(const DxfOutline& outline) {
  JsonWriter json;
  json.beginObject();
  json.member("format", QStringLiteral("dxf"));
  json.member("version", outline.version());
  json.key("complete");
  json.value(outline.isComplete());
  json.member("units_code", static_cast<long long>(outline.unitsCode()));
  json.key("encoding");
  json.beginObject();
  json.member("name", outline.encoding());
  json.member("reason", outline.encodingReason());
  json.endObject();
  json.key("layers");
  json.beginArray();
  for (const DxfOutline::Layer& layer : outline.layers()) {
    json.beginObject();
    json.member("name", layer.name);
    json.member("color", static_cast<long long>(layer.color));
    json.key("declared");
    json.value(layer.declared);
    writeCounts(json, layer);
    if (layer.box.isInverted()) {
      json.key("box");
      json.null();
    } else {
      writeBox(json, layer.box);
    }
    json.endObject();
  }
  json.endArray();
  json.endObject();
  printJson(json);
}

QString layerText(const DxfOutline::Layer& layer) {
  QStringList parts;
  for (auto count = layer.entities.begin(); count != layer.entities.end(); ++count)
    parts << countText(count.value()) + QLatin1Char(' ') + count.key();
  const QString content = parts.isEmpty() ? Say::tr("vazio") : parts.join(QStringLiteral(", "));
  const QString color = layer.color == 0 ? QString() : Say::tr(", cor %1").arg(layer.color);
  return QStringLiteral("%1%2: %3").arg(layer.name, color, content);
}

void printAsText(const Options& options, const DxfOutline& outline) {
  printLine(stdout, options.dataBase);
  printRow(Say::tr("formato"), QStringLiteral("dxf %1").arg(outline.version()).trimmed());
  if (!outline.isComplete()) printRow(Say::tr("atenção"), Say::tr("falta o fim do desenho"));
  printRow(Say::tr("codificação"),
           QStringLiteral("%1 (%2)").arg(outline.encoding(), choiceText(outline.encodingReason())));
  const Box box = outline.box();
  if (!box.isInverted()) printRow(Say::tr("caixa"), boxText(box));
  for (const DxfOutline::Layer& layer : outline.layers()) printRow(Say::tr("plano"), layerText(layer));
}

}  // namespace

int informOfDrawing(const Options& options) {
  const TextIntake text(options.dataBase, TextForm::drawing);
  if (!text.isReady()) return failPlainly(options, text.error());
  const DxfOutline outline(text.path());
  if (options.json) {
    printAsJson(outline);
  } else {
    printAsText(options, outline);
  }
  return kExitDone;
}

}  // namespace kaldex::cli
