#include "cli/conversation.h"

#include <unistd.h>

#include <QElapsedTimer>
#include <QObject>
#include <algorithm>
#include <cstdio>

#include "cli/interrupt.h"
#include "cli/texts.h"
#include "kaldex/job_report.h"

namespace kaldex::cli {

Conversation::Conversation(const Options& options, const Language& language, ProgressBar& progress)
    : options_(options), language_(language), progress_(progress), previous_(SMessageBox::install(this)) {
  // A progress that begins forgets that the operation is to stop.
  QObject::connect(SGError, &SError::defineProgressMaximum, &progress_, [this](int) {
    if (unasked_) SGError->Cancel();
  });
}

Conversation::~Conversation() {
  SMessageBox::install(previous_);
}

int Conversation::present(int kind, QWidget*, const QString&, const QString& text) {
  progress_.clear();
  if (kind == 1) {
    // A place is that of one message: this one has shown it to nobody, and the next one is about another.
    if (JobReport* const report = JobReport::current()) report->place = JobReport::Place();
    return ask(text) ? kAnswerYes : kAnswerNo;
  }
  // What an operation says while it stops for an unasked question is no news.
  if (!unasked_) tell(placed(text));
  return 0;
}

void Conversation::tell(const QString& text) {
  progress_.clear();
  messages_ << text;
  sinceQuestion_ << text;
  printLine(stderr, QStringLiteral("kaldex: ") + text);
}

// Puts the place in the file before a message that is about one.
QString Conversation::placed(const QString& text) {
  JobReport* const report = JobReport::current();
  if (report == nullptr || report->place.file.isEmpty()) return text;
  const JobReport::Place place = report->place;
  report->place = JobReport::Place();
  QString where = names_.value(place.file, place.file);
  if (place.line > 0) where += QStringLiteral(":%1").arg(place.line);
  if (place.line > 0 && place.column > 0) where += QStringLiteral(":%1").arg(place.column);
  return where + QStringLiteral(": ") + text;
}

bool Conversation::endedByNo() const {
  if (questions_.empty() || questions_.back().answer.value_or(true)) return false;
  // Operations that take back what they began say this on their way out.
  const QString farewell = QObject::tr("Valor inválido!");
  return std::all_of(sinceQuestion_.begin(), sinceQuestion_.end(),
                     [&](const QString& text) { return text == farewell; });
}

bool Conversation::matches(const QString& beginning, const QString& text) const {
  return text.startsWith(beginning) || language_.sourceOf(text).startsWith(beginning);
}

std::optional<bool> Conversation::givenAnswer(const QString& text) const {
  for (const Answer& answer : options_.answers) {
    if (matches(answer.beginning, text)) return answer.yes;
  }
  for (const Answer& answer : presumed_) {
    if (matches(answer.beginning, text)) return answer.yes;
  }
  if (options_.yes || options_.no) return options_.yes;
  return std::nullopt;
}

bool Conversation::ask(const QString& text) {
  sinceQuestion_.clear();
  if (unasked_ || interrupted()) return false;
  std::optional<bool> answer = givenAnswer(text);
  if (!answer && isatty(STDIN_FILENO) != 0 && isatty(STDERR_FILENO) != 0) answer = askTerminal(text);
  questions_.push_back({text, answer});
  if (answer) return *answer;
  if (!interrupted()) {
    unasked_ = true;
    printLine(stderr, Say::tr("kaldex: pergunta sem resposta: %1").arg(text));
    printLine(stderr, Say::tr("Responda com --yes, --no ou --answer."));
  }
  SGError->Cancel();
  return false;
}

std::optional<bool> Conversation::askTerminal(const QString& text) {
  QElapsedTimer waited;
  waited.start();
  const std::optional<bool> answer = readAnswer(text);
  progress_.discount(waited.elapsed());
  return answer;
}

std::optional<bool> Conversation::readAnswer(const QString& text) {
  for (;;) {
    const QByteArray prompt = (text + Say::tr(" [s/n] ")).toLocal8Bit();
    std::fwrite(prompt.constData(), 1, static_cast<std::size_t>(prompt.size()), stderr);
    std::fflush(stderr);
    char line[256];
    if (std::fgets(line, sizeof line, stdin) == nullptr) return std::nullopt;
    const QString answer = QString::fromLocal8Bit(line).trimmed().toLower();
    // Any language's words will do.
    if (QStringList{"s", "sim", "y", "yes", "si", "sí"}.contains(answer)) return true;
    if (QStringList{"n", "não", "nao", "no"}.contains(answer)) return false;
  }
}

}  // namespace kaldex::cli
