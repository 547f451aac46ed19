#include <langinfo.h>

#include <QGuiApplication>
#include <QTextCodec>
#include <clocale>
#include <cstring>
#include <memory>

#include "cli/commands.h"
#include "cli/interrupt.h"
#include "cli/language.h"
#include "cli/options.h"
#include "cli/texts.h"

namespace kaldex::cli {
namespace {

/// Only drawing needs fonts, and with them the graphical half of an application; it takes its time to start.
std::unique_ptr<QCoreApplication> makeApplication(int& argc, char** argv) {
  if (!isSubcommand(argc, argv, "draw")) return std::make_unique<QCoreApplication>(argc, argv);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  // The platform complains of what a desktop session would have set up; nobody needs that for a picture.
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  return std::make_unique<QGuiApplication>(argc, argv);
}

/// Words of the command line and file names are UTF-8 where the locale leaves the matter open.
void settleCodec() {
  const char* const codeSet = nl_langinfo(CODESET);
  if (codeSet == nullptr || std::strcmp(codeSet, "ANSI_X3.4-1968") == 0)
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
}

int run(const Options& options, const Language& language) {
  switch (options.command) {
    case Command::init:
      return runInit(options);
    case Command::import:
      return runImport(options, language);
    case Command::export_:
      return runExport(options, language);
    case Command::convert:
      return runConvert(options, language);
    case Command::info:
      return runInfo(options);
    case Command::draw:
      return runDraw(options);
    case Command::none:
      break;
  }
  return kExitWrongUse;
}

int runAll(int argc, char** argv) {
  const std::unique_ptr<QCoreApplication> application = makeApplication(argc, argv);
  QCoreApplication::setApplicationName(QStringLiteral("kaldex"));
  settleCodec();
  const Language language(languageOption(argc, argv));
  Options options;
  if (const std::optional<int> code = readOptions(argc, argv, options)) return *code;
  catchInterrupts();
  try {
    return run(options, language);
  } catch (...) {
    return failPlainly(currentTrouble());
  }
}

}  // namespace
}  // namespace kaldex::cli

int main(int argc, char** argv) {
  return kaldex::cli::runAll(argc, argv);
}
