#ifndef KALDEX_CLI_PROGRESS_BAR_H
#define KALDEX_CLI_PROGRESS_BAR_H

#include <QElapsedTimer>
#include <QObject>
#include <QString>

namespace kaldex::cli {

/// Draws the progress of operations on the last line of the terminal: a bar with rate and time left. Does
/// nothing where standard error is no terminal.
class ProgressBar : public QObject {
 public:
  explicit ProgressBar(bool wanted);
  ~ProgressBar() override;

  /// Make the line free for something else; the next step draws the bar again.
  void clear();
  /// Time that went by without the operation's doing.
  void discount(qint64 milliseconds) { discounted_ += milliseconds; }

 private:
  void begin(int maximum);
  void step(int value);
  QString line(int value) const;

  bool active_;
  bool shown_ = false;
  int maximum_ = 0;
  QString text_;
  QElapsedTimer sinceBegin_;
  qint64 discounted_ = 0;
  QElapsedTimer sinceDrawn_;
};

/// "1:05", or "2:03:04" from an hour on.
QString durationText(long long seconds);

}  // namespace kaldex::cli

#endif
