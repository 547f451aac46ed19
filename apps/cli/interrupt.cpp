#include "cli/interrupt.h"

#include <csignal>
#include <initializer_list>

#include "kaldex/model/report.h"

namespace kaldex::cli {

namespace {

volatile std::sig_atomic_t caught = 0;

void onSignal(int) {
  caught = 1;
  SGError->Cancel();
}

}  // namespace

void catchInterrupts() {
  struct sigaction action {};
  action.sa_handler = onSignal;
  // Once only; and a read from the terminal that waits for an answer ends.
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  sigemptyset(&action.sa_mask);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaction(signal, &action, nullptr);
  // A progress that begins forgets a cancelling that came just before it.
  QObject::connect(SGError, &SError::defineProgressMaximum, [](int) {
    if (caught != 0) SGError->Cancel();
  });
}

bool interrupted() {
  return caught != 0;
}

}  // namespace kaldex::cli
