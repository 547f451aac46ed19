#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace kaldex::test {
namespace {

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

/// Tells which Qt module ("QtCore", ...) a header without a folder in its name belongs to; empty for what is
/// not Qt's.
using QtModuleOf = std::function<std::string(const std::string& header)>;

using Names = std::vector<std::string>;

/// What the files of a folder may include. Of two folders that fit, the one named first counts.
struct Folder {
  std::string path;
  Names project;  ///< beginnings of quoted names
  Names qt;       ///< Qt modules
};

const std::vector<Folder>& folders() {
  static const std::vector<Folder> all = {
      // Installed: nothing that an installed tree doesn't have, and of Qt only its core.
      {"include/kaldex/model/", {"kaldex/model/"}, {"QtCore"}},
      {"include/kaldex/", {"kaldex/"}, {"QtCore"}},
      {"examples/", {"kaldex/"}, {"QtCore"}},
      {"src/base/", {"base/"}, {"QtCore"}},
      // Leaves of the model, which the rest of it stands on.
      {"src/model/projection/", {"model/projection/", "kaldex/model/", "base/"}, {"QtCore"}},
      {"src/model/report/", {"model/report/", "kaldex/model/", "base/"}, {"QtCore"}},
      // The model knows no file format.
      {"src/model/", {"model/", "kaldex/model/", "base/"}, {"QtCore", "QtSql"}},
      // A document library knows the geometry that it hands out, and no format's handler.
      {"src/ogckml/", {"ogckml/", "kaldex/model/", "base/"}, {"QtCore"}},
      // The formats know the model by its headers only.
      {"src/lib/", {"lib/", "ogckml/", "kaldex/", "base/"}, {"QtCore"}},
      {"apps/", {"cli/", "desktop/", "lib/", "kaldex/", "base/"}, {"QtCore", "QtGui", "QtWidgets"}},
  };
  return all;
}

/// The one place below the applications that shows a window.
const char* const kDefaultPresenter = "src/model/report/message_box.cpp";

/// Headers of other libraries, by the beginning of their names, and where they are hidden.
struct Hidden {
  const char* header;
  const char* folder;
};
const Hidden kHidden[] = {
    {"sqlite3", "src/model/"}, {"proj", "src/model/projection/"},
    {"geos", "src/model/"},    {"shapefil.h", "src/lib/shapefile/"},
    {"CLI/", "apps/cli/"},     {"zip.h", "src/ogckml/"},
};

/// Modules of exported headers that aren't named like their module.
const std::map<std::string, std::string>& headerModules() {
  static const std::map<std::string, std::string> modules = {
      {"api", "frame"}, {"extforma", "frame"}, {"job_report", "frame"}, {"shapeie", "shapefile"}};
  return modules;
}

bool begins(const std::string& text, const std::string& beginning) {
  return text.compare(0, beginning.size(), beginning) == 0;
}

bool beginsWithOneOf(const std::string& text, const Names& beginnings) {
  return std::any_of(beginnings.begin(), beginnings.end(),
                     [&](const std::string& beginning) { return begins(text, beginning); });
}

std::string place(const SourceFile& file, const Include& include) {
  return file.path + ":" + std::to_string(include.line) + ": ";
}

/// The project's file that a quoted name means.
std::string pathOf(const std::string& name) {
  if (begins(name, "kaldex/")) return "include/" + name;
  return (begins(name, "cli/") || begins(name, "desktop/") ? "apps/" : "src/") + name;
}

/// A graph of names, asked for circles.
class Graph {
 public:
  void add(const std::string& from, const std::string& to) {
    if (from != to) edges_[from].insert(to);
  }

  /// One circle for each place where a walk closes, as "a -> b -> a".
  std::vector<std::string> circles() {
    for (const auto& node : edges_) visit(node.first);
    return circles_;
  }

 private:
  void visit(const std::string& node) {
    const auto open = std::find(path_.begin(), path_.end(), node);
    if (open != path_.end()) {
      std::string circle;
      for (auto step = open; step != path_.end(); ++step) circle += *step + " -> ";
      circles_.push_back(circle + node);
      return;
    }
    if (!visited_.insert(node).second) return;
    path_.push_back(node);
    const auto edges = edges_.find(node);
    if (edges != edges_.end()) {
      for (const std::string& next : edges->second) visit(next);
    }
    path_.pop_back();
  }

  std::map<std::string, std::set<std::string>> edges_;
  std::set<std::string> visited_;
  Names path_;
  Names circles_;
};

std::vector<Include> includesOf(const std::string& text) {
  static const std::regex form("\\s*#\\s*include\\s*([\"<])([^\">]+)[\">].*");
  std::vector<Include> includes;
  std::istringstream stream(text);
  std::string line;
  for (int number = 1; std::getline(stream, line); ++number) {
    std::smatch match;
    if (line.find("include") == std::string::npos || !std::regex_match(line, match, form)) continue;
    includes.push_back({match[2], match[1] == "\"", number});
  }
  return includes;
}

class Check {
 public:
  Check(const std::vector<SourceFile>& files, const QtModuleOf& qtModuleOf)
      : files_(files), qtModuleOf_(qtModuleOf) {}

  Names run() {
    for (const SourceFile& file : files_) checkFile(file);
    for (const std::string& circle : headers_.circles())
      violations_.push_back("headers in a circle: " + circle);
    for (const std::string& circle : modules_.circles())
      violations_.push_back("modules in a circle: " + circle);
    return violations_;
  }

 private:
  void checkFile(const SourceFile& file) {
    const auto& all = folders();
    const auto folder =
        std::find_if(all.begin(), all.end(), [&](const Folder& one) { return begins(file.path, one.path); });
    if (folder == all.end()) {
      violations_.push_back(file.path + ": no rule says what this folder may include");
      return;
    }
    for (const Include& include : includesOf(file.text)) {
      if (include.quoted || beginsWithOneOf(include.name, {"kaldex/", "base/", "model/", "lib/"})) {
        checkProject(*folder, file, include);
      } else {
        checkOutside(*folder, file, include);
      }
    }
  }

  void checkProject(const Folder& folder, const SourceFile& file, const Include& include) {
    if (!beginsWithOneOf(include.name, folder.project)) {
      violations_.push_back(place(file, include) + folder.path + " must not include \"" + include.name +
                            "\"");
      return;
    }
    headers_.add(file.path, pathOf(include.name));
    const std::string from = moduleOf(file.path);
    const std::string to = moduleOf(pathOf(include.name));
    if (!from.empty() && !to.empty()) modules_.add(from, to);
  }

  void checkOutside(const Folder& folder, const SourceFile& file, const Include& include) {
    const std::string module = qtModule(include.name);
    if (!module.empty()) {
      if (std::count(folder.qt.begin(), folder.qt.end(), module) > 0 || file.path == kDefaultPresenter)
        return;
      violations_.push_back(place(file, include) + folder.path + " must not use " + module + " (<" +
                            include.name + ">)");
      return;
    }
    const bool installed = begins(folder.path, "include/") || begins(folder.path, "examples/");
    if (installed && include.name.find('.') != std::string::npos) {
      violations_.push_back(place(file, include) + "<" + include.name +
                            "> is neither Qt's nor the standard library's");
    }
    for (const Hidden& hidden : kHidden) {
      if (begins(include.name, hidden.header) && !begins(file.path, hidden.folder)) {
        violations_.push_back(place(file, include) + "<" + include.name + "> is hidden in " + hidden.folder);
      }
    }
  }

  std::string qtModule(const std::string& name) const {
    const std::size_t slash = name.find('/');
    if (slash == std::string::npos) return qtModuleOf_(name);
    return begins(name, "Qt") ? name.substr(0, slash) : std::string();
  }

  /// The format module of a file of the interchange library, empty for files of others.
  std::string moduleOf(const std::string& path) {
    static const std::regex source("src/lib/([^/]+)/.*");
    static const std::regex header("include/kaldex/([^/]+)\\.h");
    std::smatch match;
    if (std::regex_match(path, match, source)) return match[1];
    if (!std::regex_match(path, match, header)) return std::string();
    const auto known = headerModules().find(match[1]);
    if (known != headerModules().end()) return known->second;
    const std::string folder = "src/lib/" + match[1].str() + "/";
    const bool exists = std::any_of(files_.begin(), files_.end(),
                                    [&](const SourceFile& file) { return begins(file.path, folder); });
    if (!exists && unplaced_.insert(path).second) {
      violations_.push_back(path + ": belongs to no module; name it in headerModules()");
    }
    return match[1];
  }

  const std::vector<SourceFile>& files_;
  const QtModuleOf& qtModuleOf_;
  Graph headers_;
  Graph modules_;
  std::set<std::string> unplaced_;
  Names violations_;
};

/// What breaks the arrows between the folders, one text for each include: "src/base/x.cpp:3: ...". Then,
/// where these don't hide them, circles: of headers that include one another, and of format modules that use
/// one another.
std::vector<std::string> violationsOf(const std::vector<SourceFile>& files, const QtModuleOf& qtModuleOf) {
  return Check(files, qtModuleOf).run();
}

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

TEST(Layering, MadeUpTreesAreJudged) {
  const Tree trees[] = {
      {"Good",
       {{"src/base/number.cpp", "#include \"base/number.h\"\n\n#include <QString>\n#include <unistd.h>\n"},
        {"include/kaldex/ascii.h",
         "#include <QVector>\n#include <vector>\n\n#include \"kaldex/extforma.h\"\n"},
        {"src/model/database/rows.cpp",
         "#include <sqlite3.h>\n#include <QtSql/QSqlQuery>\n#include \"base/number.h\"\n"},
        {"src/model/report/message_box.cpp", "#include <QMessageBox>\n"},
        {"src/lib/ascii/lines.cpp", "#include \"kaldex/ascii.h\"\n#include \"lib/frame/place.h\"\n"},
        {"apps/cli/main.cpp", "#include <CLI/CLI.hpp>\n#include <QImage>\n#include \"lib/ascii/x.h\"\n"}},
       {}},
      {"PastTheArrows",
       {{"src/base/number.cpp", "\n#include \"kaldex/model/line.h\"\n"},
        {"src/model/vector/store.cpp",
         "#include \"kaldex/job_report.h\"\n  #  include \"lib/frame/place.h\"\n"},
        {"src/lib/ascii/lines.cpp", "#include \"model/vector/vector_store.h\"\n#include <model/x.h>\n"},
        {"src/lib/ascii/points.cpp", "#include <shapefil.h>\n"},
        {"apps/cli/main.cpp", "#include \"model/database/sqlite.h\"\n#include <sqlite3.h>\n"},
        {"src/gps/port.cpp", "#include <QString>\n"}},
       {"src/base/number.cpp:2: src/base/ must not include \"kaldex/model/line.h\"",
        "src/model/vector/store.cpp:1: src/model/ must not include \"kaldex/job_report.h\"",
        "src/model/vector/store.cpp:2: src/model/ must not include \"lib/frame/place.h\"",
        "src/lib/ascii/lines.cpp:1: src/lib/ must not include \"model/vector/vector_store.h\"",
        "src/lib/ascii/lines.cpp:2: src/lib/ must not include \"model/x.h\"",
        "src/lib/ascii/points.cpp:1: <shapefil.h> is hidden in src/lib/shapefile/",
        "apps/cli/main.cpp:1: apps/ must not include \"model/database/sqlite.h\"",
        "apps/cli/main.cpp:2: <sqlite3.h> is hidden in src/model/",
        "src/gps/port.cpp: no rule says what this folder may include"}},
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
      {"HeadersInACircle",
       {{"src/base/a.h", "#include \"base/b.h\"\n"},
        {"src/base/b.h", "#include \"base/c.h\"\n"},
        {"src/base/c.h", "#include \"base/a.h\"\n"}},
       {"headers in a circle: src/base/a.h -> src/base/b.h -> src/base/c.h -> src/base/a.h"}},
      {"ModulesInACircle",
       {{"src/lib/frame/guard.cpp", "#include \"kaldex/ascii.h\"\n"},
        {"src/lib/ascii/lines.cpp", "#include \"kaldex/extforma.h\"\n"}},
       {"modules in a circle: ascii -> frame -> ascii"}},
      {"ExportedHeaderOfNoModule",
       {{"include/kaldex/kml.h", "#include \"kaldex/extforma.h\"\n"}},
       {"include/kaldex/kml.h: belongs to no module; name it in headerModules()"}},
  };
  for (const Tree& one : trees) {
    EXPECT_EQ(lines(violationsOf(one.files, installedQtModuleOf)), lines(one.expected)) << one.name;
  }
}

}  // namespace
}  // namespace kaldex::test
