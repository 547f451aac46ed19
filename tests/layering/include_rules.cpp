#include "layering/include_rules.h"

#include <algorithm>
#include <map>
#include <regex>
#include <set>
#include <sstream>

namespace kaldex::test {

namespace {

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

bool contains(const Names& names, const std::string& name) {
  return std::find(names.begin(), names.end(), name) != names.end();
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
      if (contains(folder.qt, module) || file.path == kDefaultPresenter) return;
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

}  // namespace

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

std::vector<std::string> violationsOf(const std::vector<SourceFile>& files, const QtModuleOf& qtModuleOf) {
  return Check(files, qtModuleOf).run();
}

}  // namespace kaldex::test
