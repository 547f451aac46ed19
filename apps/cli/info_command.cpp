#include <QFileInfo>

#include "cli/commands.h"
#include "cli/info.h"
#include "cli/info_writer.h"
#include "cli/texts.h"
#include "kaldex/intake.h"

namespace kaldex::cli {

int runInfo(const Options& options) {
  if (!QFileInfo::exists(options.dataBase))
    return failPlainly(options, Say::tr("Não há arquivo %1.").arg(options.dataBase));
  const QFileInfo file(options.dataBase);
  if (!file.isFile() || !file.isReadable())
    return failPlainly(options, Say::tr("Não foi possível ler o arquivo %1.").arg(options.dataBase));
  const FileGuess guess = guessFile(options.dataBase);
  if (guess.format == FileFormat::geographicDatabase) return informOfDataBase(options, guess.description);
  if (!options.place.isEmpty())
    return failPlainly(
        options,
        Say::tr("%1 não é um banco de dados geográfico: %2.").arg(options.dataBase, guess.description));
  switch (guess.format) {
    case FileFormat::shapefile:
      informOfShapefile(options);
      break;
    case FileFormat::drawing:
      return informOfDrawing(options);
    case FileFormat::ascii:
      informOfAscii(options);
      break;
    case FileFormat::kml:
      informOfKml(options);
      break;
    case FileFormat::ungenerate:
      informOfUngenerate(options);
      break;
    default:
      informOfOther(options, guess.description);
  }
  return kExitDone;
}

void informOfOther(const Options& options, const QString& description) {
  const qint64 size = QFileInfo(options.dataBase).size();
  if (options.json) {
    JsonWriter json;
    json.beginObject();
    json.member("format", QStringLiteral("unknown"));
    json.member("description", description);
    json.member("size", static_cast<long long>(size));
    json.endObject();
    printJson(json);
    return;
  }
  printLine(stdout, options.dataBase);
  printRow(Say::tr("formato"), description);
  printRow(Say::tr("tamanho"), Say::tr("%1 bytes").arg(countText(size)));
}

}  // namespace kaldex::cli
