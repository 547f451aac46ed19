#include <fcntl.h>
#include <langinfo.h>
#include <unistd.h>

#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTextCodec>
#include <clocale>
#include <cstdio>
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

// The next file to be opened would take the place of a stream that the caller has closed, and what is printed
// would end up in it.
void openStandardStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(stream, F_GETFD) < 0) static_cast<void>(open("/dev/null", O_RDWR));
  }
}

/// Whether what was printed has arrived.
bool outputIsWhole() {
  return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
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
    case Command::classify:
      return runClassify(options, language);
    case Command::triangulate:
      return runTriangulate(options, language);
    case Command::none:
      break;
  }
  return kExitWrongUse;
}

int runCommand(int argc, char** argv, Options& options, const Language& language) {
  if (const std::optional<int> code = readOptions(argc, argv, options)) return *code;
  catchInterrupts();
  try {
    return run(options, language);
  } catch (...) {
    return failPlainly(options, currentTrouble());
  }
}

int runAll(int argc, char** argv) {
  openStandardStreams();
  const Application application(argc, argv);
  QCoreApplication::setApplicationName(QStringLiteral("kaldex"));
  settleCodec();
  const Language language(languageOption(argc, argv));
  Options options;
  const int code = runCommand(argc, argv, options, language);
  if (outputIsWhole()) return code;
  printLine(stderr, Say::tr("kaldex: o que se ia mostrar não pôde ser escrito"));
  // What was done is done, though nobody could be told; information was all that there was to do.
  const bool onlyPrints = options.command == Command::info || options.command == Command::none;
  return onlyPrints && code == kExitDone ? kExitFailed : code;
}

}  // namespace
}  // namespace kaldex::cli

int main(int argc, char** argv) {
  return kaldex::cli::runAll(argc, argv);
}
