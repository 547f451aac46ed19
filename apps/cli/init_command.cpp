#include <QFileInfo>
#include <cstdio>

#include "cli/commands.h"
#include "cli/json_writer.h"
#include "cli/texts.h"

namespace kaldex::cli {

void tellResult(const Options& options, Result result, const QStringList& messages,
                const QStringList& files) {
  for (const QString& message : messages) printLine(stderr, QStringLiteral("kaldex: ") + message);
  if (!options.json) return;
  JsonWriter json;
  json.beginObject();
  json.member("result", resultName(result));
  json.key("messages");
  json.list(messages);
  json.key("files");
  json.list(files);
  json.endObject();
  std::fputs(json.take().constData(), stdout);
}

int failPlainly(const Options& options, const QString& why) {
  tellResult(options, Result::failed, {why}, {});
  return kExitFailed;
}

int runInit(const Options& options) {
  const QString& path = options.dataBase;
  if (QFileInfo::exists(path)) return failPlainly(options, Say::tr("%1 já existe.").arg(path));
  QString error;
  if (DataBase::Create(path, &error) == nullptr)
    return failPlainly(options, Say::tr("Não foi possível criar o banco de dados %1: %2").arg(path, error));
  tellResult(options, Result::done, {}, {path});
  if (!options.json && !options.quiet)
    printLine(stdout, Say::tr("Banco de dados geográfico criado: %1").arg(path));
  return kExitDone;
}

}  // namespace kaldex::cli
