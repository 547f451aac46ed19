#include "cli/progress_bar.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "cli/texts.h"
#include "kaldex/model/report.h"

namespace kaldex::cli {

namespace {

constexpr int kBarWidth = 30;
constexpr qint64 kBetweenDrawings = 100;  // milliseconds
constexpr qint64 kBeforeEstimate = 1000;  // a rate tells nothing before

int terminalWidth() {
  winsize size{};
  return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

void print(const QString& text) {
  const QByteArray bytes = text.toLocal8Bit();
  std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr);
  std::fflush(stderr);
}

}  // namespace

QString durationText(long long seconds) {
  const QLatin1Char zero('0');
  const QString tail = QStringLiteral("%1:%2")
                           .arg(seconds / 60 % 60, seconds >= 3600 ? 2 : 1, 10, zero)
                           .arg(seconds % 60, 2, 10, zero);
  return seconds >= 3600 ? QStringLiteral("%1:").arg(seconds / 3600) + tail : tail;
}

ProgressBar::ProgressBar(bool wanted) : active_(wanted && isatty(STDERR_FILENO) != 0) {
  if (!active_) return;
  connect(SGError, &SError::defineProgressMaximum, this, [this](int maximum) { begin(maximum); });
  connect(SGError, &SError::defineProgressValue, this, [this](int value) { step(value); });
  connect(SGError, &SError::defineProgressText, this, [this](const QString& text) { text_ = text; });
  connect(SGError, &SError::progressStopped, this, [this](bool) { clear(); });
}

ProgressBar::~ProgressBar() {
  clear();
}

void ProgressBar::clear() {
  if (!shown_) return;
  print(QStringLiteral("\r\x1b[K"));
  shown_ = false;
}

void ProgressBar::begin(int maximum) {
  maximum_ = maximum;
  sinceBegin_.start();
  discounted_ = 0;
  sinceDrawn_.start();
}

void ProgressBar::step(int value) {
  if (maximum_ <= 0 || sinceDrawn_.elapsed() < kBetweenDrawings) return;
  sinceDrawn_.restart();
  print(QLatin1Char('\r') + line(value) + QStringLiteral("\x1b[K"));
  shown_ = true;
}

QString ProgressBar::line(int value) const {
  const double part = std::min(1.0, static_cast<double>(value) / maximum_);
  const int full = static_cast<int>(part * kBarWidth);
  QString line = QStringLiteral("[%1%2] %3 %")
                     .arg(QString(full, QLatin1Char('#')), QString(kBarWidth - full, QLatin1Char('.')))
                     .arg(static_cast<int>(part * 100), 3);
  const qint64 spent = sinceBegin_.elapsed() - discounted_;
  if (spent >= kBeforeEstimate && value > 0) {
    const double elapsed = static_cast<double>(spent) / 1000.0;
    const auto left = static_cast<long long>(elapsed * (1.0 - part) / part + 0.5);
    line += Say::tr("  %1/s  faltam %2")
                .arg(countText(static_cast<long long>(value / elapsed)), durationText(left));
  }
  if (!text_.isEmpty()) line.prepend(text_ + QLatin1Char(' '));
  return line.left(terminalWidth() - 1);
}

}  // namespace kaldex::cli
