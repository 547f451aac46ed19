#ifndef KALDEX_CLI_CONVERSATION_H
#define KALDEX_CLI_CONVERSATION_H

#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "cli/language.h"
#include "cli/options.h"
#include "cli/progress_bar.h"
#include "kaldex/model/report.h"

namespace kaldex::cli {

/// What operations tell and ask, on the terminal. Messages go to standard error as they come. A question is
/// answered by what the command line says, else by who sits at the terminal; when neither can be, the
/// operation is stopped.
class Conversation : public MessagePresenter {
 public:
  struct Question {
    QString text;
    std::optional<bool> answer;  ///< nothing: it could not be asked
  };

  Conversation(const Options& options, const Language& language, ProgressBar& progress);
  ~Conversation() override;

  int present(int kind, QWidget* parent, const QString& title, const QString& text) override;
  /// The command's own words.
  void tell(const QString& text);
  /// How a file that messages are about is called for the user.
  void nameFile(const QString& handled, const QString& shown) { names_.insert(handled, shown); }
  /// The answer to a question that is none for the user, unless the command line answers it.
  void presume(const QString& beginning, bool yes) { presumed_.push_back({beginning, yes}); }

  const QStringList& messages() const { return messages_; }
  const std::vector<Question>& questions() const { return questions_; }
  /// A question could not be asked.
  bool unasked() const { return unasked_; }
  /// The last word of the operation was a No that it got.
  bool endedByNo() const;
  bool saidAnything() const { return !messages_.isEmpty() || !questions_.empty(); }

 private:
  QString placed(const QString& text);
  bool ask(const QString& text);
  std::optional<bool> givenAnswer(const QString& text) const;
  std::optional<bool> askTerminal(const QString& text);
  static std::optional<bool> readAnswer(const QString& text);
  bool matches(const QString& beginning, const QString& text) const;

  const Options& options_;
  const Language& language_;
  ProgressBar& progress_;
  QHash<QString, QString> names_;
  std::vector<Answer> presumed_;
  QStringList messages_;
  std::vector<Question> questions_;
  QStringList sinceQuestion_;  ///< messages after the last question
  bool unasked_ = false;
  MessagePresenter* previous_;
};

}  // namespace kaldex::cli

#endif
