#include <QFileInfo>
#include <cstdio>

#include "cli/commands.h"
#include "cli/json_writer.h"
#include "cli/texts.h"

namespace kaldex::cli {

int failPlainly(const QString& why) {
  printLine(stderr, QStringLiteral("kaldex: ") + why);
  return kExitFailed;
}

int runInit(const Options& options) {
  if (QFileInfo::exists(options.dataBase)) return failPlainly(Say::tr("%1 já existe.").arg(options.dataBase));
  QString error;
  if (DataBase::Create(options.dataBase, &error) == nullptr)
    return failPlainly(
        Say::tr("Não foi possível criar o banco de dados %1: %2").arg(options.dataBase, error));
  if (options.json) {
    JsonWriter json;
    json.beginObject();
    json.member("result", QStringLiteral("done"));
    json.key("files");
    json.list({options.dataBase});
    json.endObject();
    std::fputs(json.take().constData(), stdout);
  } else if (!options.quiet) {
    printLine(stdout, Say::tr("Banco de dados geográfico criado: %1").arg(options.dataBase));
  }
  return kExitDone;
}

}  // namespace kaldex::cli
