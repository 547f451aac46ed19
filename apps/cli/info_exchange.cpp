#include "cli/info.h"
#include "cli/info_writer.h"
#include "cli/texts.h"
#include "kaldex/arcinfo.h"
#include "kaldex/intake.h"
#include "kaldex/kml.h"

// Files of formats that have no header: what is in them.

namespace kaldex::cli {

namespace {

struct Count {
  const char* kind;
  long long count;
};

void writeExtent(JsonWriter& json, const Box& box) {
  if (!box.isInverted()) return writeBox(json, box);
  json.key("box");
  json.null();
}

}  // namespace

void informOfKml(const Options& options) {
  const KmlOutline outline(options.dataBase);
  const Count counts[] = {
      {"points", outline.points()}, {"lines", outline.lines()}, {"polygons", outline.polygons()}};
  if (options.json) {
    JsonWriter json;
    json.beginObject();
    json.member("format", QStringLiteral("kml"));
    json.member("name", outline.name());
    json.key("counts");
    json.beginObject();
    for (const Count& one : counts) json.member(one.kind, one.count);
    json.endObject();
    writeExtent(json, outline.extent());
    json.key("data");
    json.list(outline.dataNames());
    if (!outline.isValid()) json.member("error", outline.error());
    json.endObject();
    printJson(json);
    return;
  }
  printLine(stdout, options.dataBase);
  printRow(Say::tr("formato"), QStringLiteral("kml"));
  if (!outline.isValid()) printRow(Say::tr("erro"), outline.error());
  if (!outline.name().isEmpty()) printRow(Say::tr("nome"), outline.name());
  for (const Count& one : counts) {
    if (one.count > 0) printRow(QString::fromLatin1(one.kind), countText(one.count));
  }
  if (!outline.extent().isInverted()) printRow(Say::tr("caixa"), boxText(outline.extent()));
  if (!outline.dataNames().isEmpty())
    printRow(Say::tr("dados"), outline.dataNames().join(QStringLiteral(", ")));
}

void informOfUngenerate(const Options& options) {
  static const char* const forms[] = {"unknown", "lines", "lines-with-heights", "points-with-heights",
                                      "labels"};
  const TextIntake text(options.dataBase, TextForm::sections);
  const UngenerateOutline outline(text.isReady() ? text.path() : options.dataBase);
  const QString form = QString::fromLatin1(forms[static_cast<int>(outline.form())]);
  const Box box = outline.extent(nullptr, nullptr, 0);
  if (options.json) {
    JsonWriter json;
    json.beginObject();
    json.member("format", QStringLiteral("arcinfo"));
    json.member("form", form);
    writeExtent(json, box);
    json.endObject();
    printJson(json);
    return;
  }
  printLine(stdout, options.dataBase);
  printRow(Say::tr("formato"), QStringLiteral("arcinfo (%1)").arg(form));
  if (!box.isInverted()) printRow(Say::tr("caixa"), boxText(box));
}

}  // namespace kaldex::cli
