#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include "layering/include_rules.h"

namespace kaldex::test {
namespace {

namespace fs = std::filesystem;

// KALDEX_SOURCE_DIR and KALDEX_QT_HEADERS come from the build.

std::string textOf(const fs::path& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<SourceFile> sourceTree() {
  const fs::path root = KALDEX_SOURCE_DIR;
  std::vector<SourceFile> files;
  for (const char* folder : {"include", "src", "apps", "examples"}) {
    for (const auto& entry : fs::recursive_directory_iterator(root / folder)) {
      const std::string extension = entry.path().extension().string();
      if (extension != ".h" && extension != ".cpp") continue;
      files.push_back({fs::relative(entry.path(), root).generic_string(), textOf(entry.path())});
    }
  }
  return files;
}

std::string installedQtModuleOf(const std::string& header) {
  static std::map<std::string, std::string> known;
  if (header.empty() || (header[0] != 'Q' && header[0] != 'q')) return {};
  const auto found = known.find(header);
  if (found != known.end()) return found->second;
  for (const auto& module : fs::directory_iterator(KALDEX_QT_HEADERS)) {
    if (fs::exists(module.path() / header)) return known[header] = module.path().filename().string();
  }
  return {};
}

std::string lines(const std::vector<std::string>& texts) {
  std::string all;
  for (const std::string& text : texts) all += text + "\n";
  return all;
}

TEST(Layering, TheProjectKeepsTheArrows) {
  const std::vector<SourceFile> files = sourceTree();
  for (const char* folder : {"include/kaldex/", "include/kaldex/model/", "src/base/", "src/model/",
                             "src/lib/frame/", "apps/cli/", "examples/"}) {
    EXPECT_TRUE(std::any_of(files.begin(), files.end(),
                            [&](const SourceFile& file) { return file.path.rfind(folder, 0) == 0; }))
        << "no file was found in " << folder;
  }
  EXPECT_EQ(lines(violationsOf(files, installedQtModuleOf)), "");
}

struct Tree {
  const char* name;
  std::vector<SourceFile> files;
  std::vector<std::string> expected;
};

class MadeUpTree : public ::testing::TestWithParam<Tree> {};

TEST_P(MadeUpTree, IsJudged) {
  EXPECT_EQ(lines(violationsOf(GetParam().files, installedQtModuleOf)), lines(GetParam().expected));
}

const Tree trees[] = {
    {"Good",
     {{"src/base/number.cpp", "#include \"base/number.h\"\n\n#include <QString>\n#include <unistd.h>\n"},
      {"include/kaldex/ascii.h", "#include <QVector>\n#include <vector>\n\n#include \"kaldex/extforma.h\"\n"},
      {"src/model/database/rows.cpp",
       "#include <sqlite3.h>\n#include <QtSql/QSqlQuery>\n#include \"base/number.h\"\n"},
      {"src/model/report/message_box.cpp", "#include <QMessageBox>\n"},
      {"src/lib/ascii/lines.cpp", "#include \"kaldex/ascii.h\"\n#include \"lib/frame/place.h\"\n"},
      {"apps/cli/main.cpp", "#include <CLI/CLI.hpp>\n#include <QImage>\n#include \"lib/ascii/x.h\"\n"}},
     {}},
    {"BaseLooksUp",
     {{"src/base/number.cpp", "\n#include \"kaldex/model/line.h\"\n"}},
     {"src/base/number.cpp:2: src/base/ must not include \"kaldex/model/line.h\""}},
    {"ModelKnowsAFormat",
     {{"src/model/vector/store.cpp",
       "#include \"kaldex/job_report.h\"\n  #  include \"lib/frame/place.h\"\n"}},
     {"src/model/vector/store.cpp:1: src/model/ must not include \"kaldex/job_report.h\"",
      "src/model/vector/store.cpp:2: src/model/ must not include \"lib/frame/place.h\""}},
    {"FormatKnowsTheStore",
     {{"src/lib/ascii/lines.cpp", "#include \"model/vector/vector_store.h\"\n#include <model/x.h>\n"}},
     {"src/lib/ascii/lines.cpp:1: src/lib/ must not include \"model/vector/vector_store.h\"",
      "src/lib/ascii/lines.cpp:2: src/lib/ must not include \"model/x.h\""}},
    {"CommandKnowsTheStore",
     {{"apps/cli/main.cpp", "#include \"model/database/sqlite.h\"\n"}},
     {"apps/cli/main.cpp:1: apps/ must not include \"model/database/sqlite.h\""}},
    {"ExportedHeaderNeedsMoreThanIsInstalled",
     {{"include/kaldex/model/line.h",
       "#include <proj.h>\n#include \"base/number.h\"\n#include \"kaldex/ascii.h\"\n"}},
     {"include/kaldex/model/line.h:1: <proj.h> is neither Qt's nor the standard library's",
      "include/kaldex/model/line.h:1: <proj.h> is hidden in src/model/projection/",
      "include/kaldex/model/line.h:2: include/kaldex/model/ must not include \"base/number.h\"",
      "include/kaldex/model/line.h:3: include/kaldex/model/ must not include \"kaldex/ascii.h\""}},
    {"WindowsBelowTheApplications",
     {{"src/lib/frame/show.cpp",
       "#include <QMessageBox>\n#include <QtWidgets/QLabel>\n#include <qwidget.h>\n"},
      {"src/model/report/progress.cpp", "#include <QProgressDialog>\n"},
      {"include/kaldex/extforma.h", "#include <QColor>\n"}},
     {"src/lib/frame/show.cpp:1: src/lib/ must not use QtWidgets (<QMessageBox>)",
      "src/lib/frame/show.cpp:2: src/lib/ must not use QtWidgets (<QtWidgets/QLabel>)",
      "src/lib/frame/show.cpp:3: src/lib/ must not use QtWidgets (<qwidget.h>)",
      "src/model/report/progress.cpp:1: src/model/report/ must not use QtWidgets (<QProgressDialog>)",
      "include/kaldex/extforma.h:1: include/kaldex/ must not use QtGui (<QColor>)"}},
    {"LibraryUsedPastItsOwner",
     {{"src/lib/ascii/lines.cpp", "#include <shapefil.h>\n"},
      {"apps/cli/info.cpp", "#include <sqlite3.h>\n"}},
     {"src/lib/ascii/lines.cpp:1: <shapefil.h> is hidden in src/lib/shapefile/",
      "apps/cli/info.cpp:1: <sqlite3.h> is hidden in src/model/"}},
    {"HeadersInACircle",
     {{"src/base/a.h", "#include \"base/b.h\"\n"},
      {"src/base/b.h", "#include \"base/c.h\"\n"},
      {"src/base/c.h", "#include \"base/a.h\"\n"}},
     {"headers in a circle: src/base/a.h -> src/base/b.h -> src/base/c.h -> src/base/a.h"}},
    {"ModulesInACircle",
     {{"src/lib/frame/guard.cpp", "#include \"kaldex/ascii.h\"\n"},
      {"src/lib/ascii/lines.cpp", "#include \"kaldex/extforma.h\"\n"}},
     {"modules in a circle: ascii -> frame -> ascii"}},
    {"NewFolderWithoutARule",
     {{"src/gps/port.cpp", "#include <QString>\n"}},
     {"src/gps/port.cpp: no rule says what this folder may include"}},
    {"ExportedHeaderOfNoModule",
     {{"include/kaldex/kml.h", "#include \"kaldex/extforma.h\"\n"}},
     {"include/kaldex/kml.h: belongs to no module; name it in headerModules()"}},
};

INSTANTIATE_TEST_SUITE_P(Layering, MadeUpTree, ::testing::ValuesIn(trees),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace kaldex::test
