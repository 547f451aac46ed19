#include <QApplication>
#include <QMessageBox>
#include <cstdio>
#include <string>

#include "kaldex/model/report.h"

inline namespace kaldex_v1 {

static_assert(kAnswerYes == QMessageBox::Yes && kAnswerNo == QMessageBox::No);

namespace {

class QtPresenter : public MessagePresenter {
 public:
  int present(int kind, QWidget* parent, const QString& title, const QString& text) override {
    if (qobject_cast<QApplication*>(QCoreApplication::instance()) == nullptr)
      return presentBare(kind, title, text);
    if (kind == 1) return QMessageBox::question(parent, title, text, QMessageBox::Yes | QMessageBox::No);
    QMessageBox::warning(parent, title, text);
    return QMessageBox::Ok;
  }

 private:
  // A box needs an application. A program without one still learns what was said, and a question that nobody
  // can be asked is answered by the side that changes nothing.
  static int presentBare(int kind, const QString& title, const QString& text) {
    const std::string line = (title + QStringLiteral(": ") + text + QLatin1Char('\n')).toStdString();
    std::fputs(line.c_str(), stderr);
    return kind == 1 ? kAnswerNo : 0;
  }
};

MessagePresenter* installed = nullptr;

}  // namespace

MessagePresenter::~MessagePresenter() = default;

int SMessageBox::Show(int kind, QWidget* parent, const QString& title, const QString& text) {
  if (installed != nullptr) return installed->present(kind, parent, title, text);
  return QtPresenter().present(kind, parent, title, text);
}

MessagePresenter* SMessageBox::install(MessagePresenter* presenter) {
  MessagePresenter* previous = installed;
  installed = presenter;
  return previous;
}

}  // namespace kaldex_v1
