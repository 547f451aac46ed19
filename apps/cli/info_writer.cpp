#include "cli/info_writer.h"

#include <cstdio>
#include <utility>

#include "cli/texts.h"

namespace kaldex::cli {

namespace {

constexpr int kTitleWidth = 13;

std::vector<std::pair<const char*, long long>> countsOf(const LayerFacts& facts) {
  return {{"lines", facts.lines},     {"polygons", facts.polygons}, {"points", facts.points},
          {"samples", facts.samples}, {"texts", facts.texts},       {"objects", facts.objects}};
}

}  // namespace

void writeBox(JsonWriter& json, const Box& box) {
  json.key("box");
  json.beginArray();
  for (const double corner : {box.x1, box.y1, box.x2, box.y2}) json.value(corner);
  json.endArray();
}

void writeChoice(JsonWriter& json, const char* name, const QString& value, const QString& reason) {
  json.key(name);
  json.beginObject();
  json.member("name", value);
  json.member("reason", reason);
  json.endObject();
}

void writeColumns(JsonWriter& json, const std::vector<ColumnFacts>& columns) {
  json.key("columns");
  json.beginArray();
  for (const ColumnFacts& column : columns) {
    json.beginObject();
    json.member("name", column.name);
    json.member("type", columnTypeName(column.type));
    json.member("size", static_cast<long long>(column.size));
    json.member("decimals", static_cast<long long>(column.decimals));
    json.endObject();
  }
  json.endArray();
}

void writeCounts(JsonWriter& json, const LayerFacts& facts) {
  json.key("counts");
  json.beginObject();
  for (const auto& [kind, count] : countsOf(facts)) json.member(kind, count);
  json.endObject();
}

QString boxText(const Box& box) {
  return boxText(box.x1, box.y1, box.x2, box.y2);
}

QString columnsText(const std::vector<ColumnFacts>& columns) {
  QStringList parts;
  for (const ColumnFacts& column : columns) {
    const QString decimals = column.decimals > 0 ? QStringLiteral(",%1").arg(column.decimals) : QString();
    parts << QStringLiteral("%1 %2(%3%4)")
                 .arg(column.name, columnTypeName(column.type), QString::number(column.size), decimals);
  }
  return parts.join(QStringLiteral(", "));
}

QString countsText(const LayerFacts& facts) {
  QStringList parts;
  for (const auto& [kind, count] : countsOf(facts)) {
    if (count != 0) parts << countText(count) + QLatin1Char(' ') + kindText(QString::fromLatin1(kind));
  }
  return parts.isEmpty() ? Say::tr("vazio") : parts.join(QStringLiteral(", "));
}

void printRow(const QString& title, const QString& text) {
  printLine(stdout, QStringLiteral("  ") + title.leftJustified(kTitleWidth) + text);
}

void printJson(JsonWriter& json) {
  const QByteArray text = json.take();
  std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stdout);
}

}  // namespace kaldex::cli
