#ifndef KALDEX_CLI_REGISTRY_H
#define KALDEX_CLI_REGISTRY_H

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

#include "cli/options.h"
#include "kaldex/intake.h"
#include "kaldex/model/database.h"
#include "kaldex/model/vector.h"

namespace kaldex::cli {

class Job;

/// What a source file tells of itself, before anything is imported.
struct SourceFacts {
  /// Null when the file doesn't tell; `projectionReason` is then why, if there is more to say than that.
  std::unique_ptr<SProjection> projection;
  QString projectionReason;
  int units = 0;       ///< as for SExtFormats::Units2Meter
  double scale = 0.0;  ///< 0: not told
  short model = 0;     ///< the category model that suits the file; 0: the kind's own
  /// The box of the data in the plane of a target; inverted when there is none.
  std::function<Box(SProjection* source, SProjection* target, int units)> box;
  QString boxReason;  ///< where the box is from, for the report
  /// Why the file can't be imported as this kind; empty when it can.
  QString complaint;
};

/// All that an import needs. The projection is that of the file.
struct ImportContext {
  const Options& options;
  QString path;    ///< what the handler reads
  QString folder;  ///< of it
  QString name;    ///< of it, without the folder
  DataBase& dataBase;
  Project& project;
  InfoLayer& layer;
  SProjection* projection;
  int units;
};

struct ImportKind {
  const char* name;
  short model;  ///< of a layer that is made for it, when nobody says another
  int (*run)(const ImportContext& context);
  /// What the command says when the operation ended with 0 and without a word.
  QString (*missing)(const ImportContext& context);
};

/// All that an export needs. The path is where the file is made; it moves to its final place afterwards.
struct ExportContext {
  const Options& options;
  QString path;
  QString folder;
  QString name;
  DataBase& dataBase;
  Project& project;
  InfoLayer& layer;
};

struct ExportKind {
  const char* name;
  /// The representation that is written, or another one that the handler will refuse with its own words; null
  /// when the layer has none.
  Vector* (*source)(InfoLayer& layer);
  /// Whether there is anything of this kind to write.
  bool (*present)(InfoLayer& layer);
  int (*run)(const ExportContext& context, Vector& vector);
  /// For what is in no vector: then there is neither `source` nor `run`, and `present` is asked before.
  int (*runOnLayer)(const ExportContext& context) = nullptr;
  /// Where the format adds to existing files: whether this kind does, too.
  bool appends = true;
};

/// All that the import of a table needs, and that its export needs. Tables are those of categories: they have
/// no place on a map.
struct TableContext {
  Job& job;
  const Options& options;
  QString path;    ///< what the handler reads, or where the file is made
  QString folder;  ///< of it
  QString name;    ///< of it, without the folder
  DataBase& dataBase;
  Category& category;
};

struct TableImportKind {
  const char* name;
  short model;         ///< of the category
  bool makesCategory;  ///< when it is missing
  int (*run)(const TableContext& context);
  /// What the command says when the operation ended with 0 and without a word.
  QString (*missing)(const TableContext& context);
};

struct TableExportKind {
  const char* name;
  int (*run)(const TableContext& context);
};

/// A file format of the command: its entry in the registry.
struct Format {
  const char* name;
  FileFormat content;
  bool isText;          ///< files are prepared before the handler sees them
  bool appends;         ///< exports add to an existing file
  QStringList endings;  ///< of file names; of a format of several files the main one's first
  /// Endings of the files that an export makes and of those that an older one may have left; empty for one
  /// file of any name.
  QStringList companions;
  SourceFacts (*inspect)(const QString& path, const QString& kind, const Options& options);
  std::vector<ImportKind> imports;
  std::vector<ExportKind> exports;
  QStringList by;                          ///< values of "--by"
  TextForm textForm = TextForm::sections;  ///< that its files are prepared for
  std::vector<TableImportKind> tableImports = {};
  std::vector<TableExportKind> tableExports = {};
  /// Why nothing can be written with such options, or empty.
  QString (*exportComplaint)(const Options& options) = [](const Options&) { return QString(); };

  const ImportKind* importKind(const QString& kind) const;
  const ExportKind* exportKind(const QString& kind) const;
  const TableImportKind* tableImport(const QString& kind) const;
  const TableExportKind* tableExport(const QString& kind) const;
};

/// All formats, in the order in which help lists them. A new format adds one entry here.
const std::vector<Format>& formats();
const Format* findFormat(const QString& name);
/// The format of a file name's ending, or null.
const Format* formatOfName(const QString& path);
const Format* formatOfContent(FileFormat content);

// The entries.
Format asciiFormat();
Format shapefileFormat();
Format csvFormat();
Format dxfFormat();
Format arcinfoFormat();
Format kmlFormat();

/// The first representation of the layer among these kinds, or null.
Vector* firstVector(InfoLayer& layer, std::initializer_list<short> kinds);

}  // namespace kaldex::cli

#endif
