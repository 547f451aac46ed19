#ifndef KALDEX_CLI_OPTION_WORDS_H
#define KALDEX_CLI_OPTION_WORDS_H

#include <CLI/CLI.hpp>
#include <initializer_list>
#include <string>

#include "cli/options.h"

namespace kaldex::cli {

// What single words of the command line mean. Each function throws WrongUse for a word that means nothing.

/// A word of the command line that means nothing.
class WrongUse : public CLI::Error {
 public:
  explicit WrongUse(const QString& text)
      : CLI::Error("WrongUse", text.toLocal8Bit().toStdString(), CLI::ExitCodes::ValidationError) {}
};

/// A word of the command line. Bytes that are none of the terminal's encoding come from a file name of an
/// older system: they stand for themselves.
QString fromWord(const std::string& word);

/// The position among `values` of what stands behind the option `name`.
int choice(const std::string& value, const char* name, std::initializer_list<const char*> values);
double number(const QString& text, const char* name);
Box boxOf(const std::string& value);
QSize sizeOf(const std::string& value);
Answer answerOf(const std::string& value);
/// One character by itself or by its name; "none" is an empty one.
QString separatorOf(const std::string& value);
ColumnType columnTypeOf(const QString& text);
/// Two numbers, DX,DY.
void takeMove(const std::string& value, Placement& placement);

}  // namespace kaldex::cli

#endif
