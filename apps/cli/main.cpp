#include <langinfo.h>

#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTextCodec>
#include <clocale>
#include <cstring>
#include <memory>
#include <optional>

#include "cli/commands.h"
#include "cli/interrupt.h"
#include "cli/language.h"
#include "cli/options.h"
#include "cli/texts.h"

namespace kaldex::cli {
namespace {

/// The application. Only drawing needs fonts, and with them the graphical half of one; that takes its time to
/// start.
class Application {
 public:
  Application(int& argc, char** argv) {
    if (isSubcommand(argc, argv, "draw")) {
      pretendDesktop();
      // Never ended: the platform loses track of what it has then, and the process is over in any case.
      static_cast<void>(new QGuiApplication(argc, argv));
    } else {
      application_ = std::make_unique<QCoreApplication>(argc, argv);
    }
  }

 private:
  // What a session would have set up; without it there are complaints, and a folder among the temporary
  // files.
  void pretendDesktop() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    if (!qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")) return;
    runtimeFolder_.emplace();
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtimeFolder_->path()));
  }

  std::optional<QTemporaryDir> runtimeFolder_;
  std::unique_ptr<QCoreApplication> application_;
};

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
  const Application application(argc, argv);
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
