#ifndef KALDEX_CLI_INTERRUPT_H
#define KALDEX_CLI_INTERRUPT_H

namespace kaldex::cli {

/// From here on an interruption (Ctrl+C, SIGTERM, SIGHUP) cancels the running operation, so that what it
/// began is taken back; a second one ends the process at once.
void catchInterrupts();
bool interrupted();

}  // namespace kaldex::cli

#endif
