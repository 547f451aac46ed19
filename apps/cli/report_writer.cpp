#include "cli/report_writer.h"

#include <cstdio>
#include <numeric>

#include "cli/info_writer.h"
#include "cli/json_writer.h"
#include "cli/texts.h"

namespace kaldex::cli {

namespace {

QString resultText(const Ending& ending, bool dryRun) {
  if (ending.result == Result::done)
    return dryRun ? Say::tr("Conferido; nada foi guardado.") : Say::tr("Feito.");
  const QString rest =
      ending.keptPartial ? Say::tr(" O que já estava feito ficou.") : Say::tr(" Nada mudou.");
  switch (ending.result) {
    case Result::refused:
      return Say::tr("Recusado por uma pergunta.") + rest;
    case Result::cancelled:
      return Say::tr("Cancelado.") + rest;
    default:
      return Say::tr("Falhou.") + rest;
  }
}

void writeCounts(JsonWriter& json, const char* name, const QMap<QString, long long>& counts) {
  json.key(name);
  json.beginObject();
  for (auto count = counts.begin(); count != counts.end(); ++count)
    json.member(count.key().toLatin1().constData(), count.value());
  json.endObject();
}

void writeQuestions(JsonWriter& json, const std::vector<Conversation::Question>& questions) {
  json.key("questions");
  json.beginArray();
  for (const Conversation::Question& question : questions) {
    json.beginObject();
    json.member("text", question.text);
    json.key("answer");
    if (question.answer) {
      json.value(QString::fromLatin1(*question.answer ? "yes" : "no"));
    } else {
      json.null();
    }
    json.endObject();
  }
  json.endArray();
}

void writeRenamed(JsonWriter& json, const QVector<QPair<QString, QString>>& renamed) {
  json.key("renamed");
  json.beginArray();
  for (const auto& pair : renamed) json.list({pair.first, pair.second});
  json.endArray();
}

}  // namespace

void ReportWriter::printJson() const {
  JsonWriter json;
  json.beginObject();
  json.member("result", resultName(ending_.result));
  json.key("messages");
  json.list(conversation_.messages());
  writeQuestions(json, conversation_.questions());
  writeCounts(json, "read", report_.read);
  writeCounts(json, "written", report_.written);
  writeCounts(json, "left_out", report_.leftOut);
  writeRenamed(json, report_.renamed);
  writeChoice(json, "encoding", report_.encoding.name, report_.encoding.reason);
  writeChoice(json, "projection", report_.projection.name, report_.projection.reason);
  json.key("files");
  json.list(report_.files);
  json.member("seconds", ending_.seconds);
  json.key("notes");
  json.list(report_.notes);
  json.endObject();
  kaldex::cli::printJson(json);
}

void ReportWriter::printText() const {
  printLine(stdout, resultText(ending_, options_.dryRun));
  printCounts(Say::tr("lidos"), report_.read, kindText);
  printCounts(Say::tr("gravados"), report_.written, kindText);
  printCounts(Say::tr("fora"), report_.leftOut, leftOutText);
  for (const auto& pair : report_.renamed)
    printRow(Say::tr("renomeado"), pair.first + QStringLiteral(" -> ") + pair.second);
  printChoice(Say::tr("codificação"), report_.encoding);
  printChoice(Say::tr("projeção"), report_.projection);
  for (const QString& file : report_.files) printRow(Say::tr("arquivo"), file);
  for (const QString& note : report_.notes) printRow(Say::tr("nota"), note);
  printTime();
}

void ReportWriter::printCounts(const QString& title, const QMap<QString, long long>& counts,
                               QString (*wordOf)(const QString&)) const {
  QStringList parts;
  for (auto count = counts.begin(); count != counts.end(); ++count) {
    if (count.value() != 0) parts << countText(count.value()) + QLatin1Char(' ') + wordOf(count.key());
  }
  if (!parts.isEmpty()) printRow(title, parts.join(QStringLiteral(", ")));
}

void ReportWriter::printChoice(const QString& title, const JobReport::Choice& choice) const {
  if (choice.name.isEmpty() && choice.reason.isEmpty()) return;
  printRow(title, choice.reason.isEmpty()
                      ? choice.name
                      : QStringLiteral("%1 (%2)").arg(choice.name, choiceText(choice.reason)));
}

void ReportWriter::printTime() const {
  QString text = QString::number(ending_.seconds, 'f', 2) + QStringLiteral(" s");
  const long long read = std::accumulate(report_.read.begin(), report_.read.end(), 0LL);
  if (read > 0 && ending_.seconds > 0.0)
    text += QStringLiteral(", %1/s").arg(
        countText(static_cast<long long>(static_cast<double>(read) / ending_.seconds)));
  printRow(Say::tr("tempo"), text);
}

}  // namespace kaldex::cli
