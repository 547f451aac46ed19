#ifndef KALDEX_MODEL_REPORT_H
#define KALDEX_MODEL_REPORT_H

#include <QObject>
#include <QString>

#include "kaldex/model/api.h"

class QWidget;

inline namespace kaldex_v1 {

/// What a question of SMessageBox returns.
constexpr int kAnswerYes = 16384;
constexpr int kAnswerNo = 65536;

/// Where messages and questions go: a modal box on the desktop, the terminal, a recorder in tests.
class KALDEX_MODEL_API MessagePresenter {
 public:
  virtual ~MessagePresenter();
  /// Show `text`; for a question (kind 1) return kAnswerYes or kAnswerNo, for a message (kind 0) anything.
  virtual int present(int kind, QWidget* parent, const QString& title, const QString& text) = 0;
};

/// The one door for all that the system tells or asks its user.
class KALDEX_MODEL_API SMessageBox {
 public:
  static int Show(int kind, QWidget* parent, const QString& title, const QString& text);
  /// Install a presenter (borrowed); null brings back the default one, a Qt message box. Returns the one before.
  static MessagePresenter* install(MessagePresenter* presenter);
};

/// Progress of a long operation, and the way to cancel it. Steps may come by the million: the value signal is sent at
/// most about a thousand times over the range.
class KALDEX_MODEL_API SError : public QObject {
  Q_OBJECT

 public:
  void ProgressInit(int minimum, int maximum, int step);
  void ProgressStep() {
    value_ += step_;
    if (value_ >= nextSignal_) signalValue();
  }
  void ProgressStop(bool finished);
  void ProgressSetRange(int minimum, int maximum, int step);
  void ProgressSetText(const QString& text);
  /// Ask the running operation to stop. Operations look at `cancelled` where they can leave; ProgressInit clears it.
  void Cancel();
  bool cancelled() const { return cancelled_; }
  int value() const { return value_; }
  int maximum() const { return maximum_; }

 Q_SIGNALS:
  void defineProgressMinimum(int minimum);
  void defineProgressMaximum(int maximum);
  void defineProgressValue(int value);
  void defineProgressText(const QString& text);
  void progressStopped(bool finished);

 private:
  void signalValue();

  int value_ = 0;
  int step_ = 1;
  int maximum_ = 0;
  int stride_ = 1;
  int nextSignal_ = 0;
  volatile bool cancelled_ = false;
};

/// The process-wide progress reporter.
KALDEX_MODEL_API extern SError* const SGError;

}  // namespace kaldex_v1

#endif
