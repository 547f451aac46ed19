#ifndef KALDEX_TESTS_LAYERING_INCLUDE_RULES_H
#define KALDEX_TESTS_LAYERING_INCLUDE_RULES_H

#include <functional>
#include <string>
#include <vector>

namespace kaldex::test {

/// A file of the project: its path from the project's folder, with slashes, and its text.
struct SourceFile {
  std::string path;
  std::string text;
};

struct Include {
  std::string name;     ///< as it stands between the quotes or brackets
  bool quoted = false;  ///< "name", not <name>
  int line = 0;         ///< from 1
};

std::vector<Include> includesOf(const std::string& text);

/// Tells which Qt module ("QtCore", ...) a header without a folder in its name belongs to; empty for what is
/// not Qt's.
using QtModuleOf = std::function<std::string(const std::string& header)>;

/// What breaks the arrows between the folders, one text for each include: "src/base/x.cpp:3: ...". Then,
/// where these don't hide them, circles: of headers that include one another, and of format modules that use
/// one another.
std::vector<std::string> violationsOf(const std::vector<SourceFile>& files, const QtModuleOf& qtModuleOf);

}  // namespace kaldex::test

#endif
