#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <algorithm>
#include <memory>

#include "base/companion_file.h"
#include "cli/csv_source.h"
#include "cli/job.h"
#include "cli/registry.h"
#include "cli/table_kind.h"
#include "cli/texts.h"
#include "kaldex/ascii.h"

// Delimited tables as the command offers them. The library converts a table beside its file; the command
// gives it a copy in a folder of its own.

namespace kaldex::cli {

namespace {

constexpr short kTextSize = 17;
constexpr int kLargestText = 32767;

QString tableName(QString file) {
  constexpr int ending = 4;
  file.chop(ending);
  return file + QStringLiteral("_TAB.kdx");
}

std::unique_ptr<IEAsc> handlerFor(const TableContext& context, const CsvSource& source) {
  return tableHandler(context, source.folder(), source.name(), source.survey().separator());
}

CsvQuestion questionFor(const TableContext& context) {
  CsvQuestion question;
  question.separator = context.options.separator;
  return question;
}

/// The columns of a table as the library proposes them, with the types that the user wants, room for their
/// values, and names of one word.
class Columns {
 public:
  Columns(const TableContext& context, const CsvSource& source) : context_(context), source_(source) {}

  bool propose(IEAsc& handler);
  SFieldList& list() { return list_; }

 private:
  bool applyType(const ColumnType& wanted);
  void tellName(const QString& given, const QString& used);

  const TableContext& context_;
  const CsvSource& source_;
  SFieldList list_;
};

bool Columns::propose(IEAsc& handler) {
  const int proposed = handler.GetAttTab(&list_);
  handler.FileClose();
  if (proposed == 0) return false;
  const std::vector<CsvSurvey::Column>& columns = source_.survey().columns();
  for (int i = 0; i < list_.Size() && i < static_cast<int>(columns.size()); ++i) {
    const CsvSurvey::Column& column = columns[static_cast<std::size_t>(i)];
    SField& field = *list_.at(i);
    field.size = static_cast<short>(std::clamp(column.longestValue, int{kTextSize}, kLargestText));
    field.name.replace(QLatin1Char(' '), QLatin1Char('_'));
    tellName(column.name, field.name);
  }
  return std::all_of(context_.options.types.begin(), context_.options.types.end(),
                     [this](const ColumnType& wanted) { return applyType(wanted); });
}

void Columns::tellName(const QString& given, const QString& used) {
  if (given != used) Job::report().renamed.append({given, used});
}

bool Columns::applyType(const ColumnType& wanted) {
  const std::vector<CsvSurvey::Column>& columns = source_.survey().columns();
  for (int i = 0; i < list_.Size() && i < static_cast<int>(columns.size()); ++i) {
    SField& field = *list_.at(i);
    const bool same =
        columns[static_cast<std::size_t>(i)].name.compare(wanted.name, Qt::CaseInsensitive) == 0;
    if (!same && !field.hasName(wanted.name)) continue;
    field.type = wanted.type;
    if (wanted.size > 0) field.size = wanted.size;
    return true;
  }
  context_.job.fail(Say::tr("--types: não há coluna %1 em %2.").arg(wanted.name, context_.options.file));
  return false;
}

// The table that was made goes where the user can find it.
bool keepTable(const TableContext& context, const QString& table) {
  const QFileInfo file(context.options.file);
  const QString target = file.path() + QLatin1Char('/') + tableName(file.fileName());
  const QString part = target + QStringLiteral(".part");
  QFile::remove(part);
  QFile::remove(target);
  if (!QFile::copy(table, part) || !QFile::rename(part, target)) {
    context.job.fail(Say::tr("Não foi possível gravar %1.").arg(target));
    return false;
  }
  Job::report().files.append(target);
  return true;
}

int importTableFile(const TableContext& context) {
  CsvQuestion question = questionFor(context);
  question.anySeparator = true;
  question.key = context.options.key;
  CsvSource source(context, question);
  if (!source.prepare()) return 0;
  const int key = source.survey().keyColumn();
  if (!question.key.isEmpty() && key == 0) {
    context.job.fail(Say::tr("--key: não há coluna %1 em %2.").arg(question.key, context.options.file));
    return 0;
  }
  const auto handler = handlerFor(context, source);
  Columns columns(context, source);
  if (!columns.propose(*handler)) return 0;
  const QString table = tableName(source.name());
  const QString path = source.folder() + QLatin1Char('/') + table;
  context.job.conversation().nameFile(path, table);
  if (handler->ConvertCsvToAscii(&context.category, columns.list(), static_cast<short>(key)) == 0) return 0;
  if (context.options.keepTable && !context.options.dryRun && !keepTable(context, path)) return 0;
  return handler->ImportAttributes(&context.category);
}

int importNonSpatial(const TableContext& context) {
  CsvQuestion question = questionFor(context);
  question.shortNames = question.needsFirst = true;
  CsvSource source(context, question);
  if (!source.prepare()) return 0;
  return handlerFor(context, source)->Import_CSV_TAB_NOTSPACIAL(&context.category);
}

int updateBy(const TableContext& context, CsvQuestion question, int (SExtFormats::*update)(Category*)) {
  question.key = QStringLiteral("1");
  CsvSource source(context, question);
  if (!source.prepare()) return 0;
  const auto handler = handlerFor(context, source);
  return (handler.get()->*update)(&context.category);
}

int importUpdate(const TableContext& context) {
  return updateBy(context, questionFor(context), &SExtFormats::Import_CSV_TAB_UPDATE);
}

int importStatistics(const TableContext& context) {
  CsvQuestion question;
  question.separator = QStringLiteral(",");
  return updateBy(context, question, &SExtFormats::Import_SPACESTAT_TAB);
}

/// Columns for the objects that a category has, in their order: its table is written as the section that the
/// library extends, which then is imported again.
class ColumnAppend {
 public:
  explicit ColumnAppend(const TableContext& context) : context_(context) {}

  int run();

 private:
  bool fitsObjects(const CsvSurvey& survey);
  bool areNew(const SFieldList& columns);
  bool exportTable();
  bool writeValues(const CsvSource& source);

  const TableContext& context_;
  QTemporaryDir folder_;
  const QString table_ = QStringLiteral("objects_TAB.kdx");
};

int ColumnAppend::run() {
  CsvSource source(context_, questionFor(context_));
  if (!source.prepare() || !fitsObjects(source.survey())) return 0;
  Columns columns(context_, source);
  if (!columns.propose(*handlerFor(context_, source)) || !areNew(columns.list())) return 0;
  if (!exportTable() || !writeValues(source)) return 0;
  const auto handler = tableHandler(context_, folder_.path(), table_, QStringLiteral(";"));
  context_.job.conversation().nameFile(folder_.filePath(table_), table_);
  const QString values = folder_.filePath(QStringLiteral("values.csv"));
  if (handler->Import_CSV_TABUPDATE(&context_.category, columns.list(), values) == 0) return 0;
  return handler->ImportAttributes(&context_.category);
}

bool ColumnAppend::fitsObjects(const CsvSurvey& survey) {
  long long objects = 0;
  KaldexObject object;
  for (int walk = context_.dataBase.firstObject(context_.category, object); walk == objectFound;
       walk = context_.dataBase.nextObject(context_.category, object)) {
    ++objects;
  }
  if (objects == survey.rows()) return true;
  context_.job.fail(Say::tr("A categoria %1 tem %2 objetos, e %3 tem %4 registros.")
                        .arg(context_.category.name)
                        .arg(objects)
                        .arg(context_.options.file)
                        .arg(survey.rows()));
  return false;
}

bool ColumnAppend::areNew(const SFieldList& columns) {
  SFieldList existing;
  context_.dataBase.loadTableFields(existing, context_.category.attributeTable);
  for (const SField* column : columns) {
    if (existing.find(column->name) == nullptr) continue;
    context_.job.fail(Say::tr("A tabela já tem a coluna %1; use update.").arg(column->name));
    return false;
  }
  return true;
}

bool ColumnAppend::exportTable() {
  if (!folder_.isValid()) return false;
  JobReport apart;
  int exported = 0;
  {
    const JobReportScope scope(apart);
    const auto handler = tableHandler(context_, folder_.path(), table_, QStringLiteral(";"));
    exported = handler->ExportTable(&context_.category);
  }
  // What doesn't come back as it is would be changed beside the new columns.
  if (!apart.notes.isEmpty()) context_.job.fail(apart.notes.first());
  return exported != 0 && apart.notes.isEmpty();
}

// Lines of values are taken as they stand, behind a header of one word.
bool ColumnAppend::writeValues(const CsvSource& source) {
  CsvQuestion question;
  question.separator = source.survey().separator();
  question.newSeparator = QStringLiteral(";");
  question.wholeWords = true;
  CsvCleaner cleaner(question);
  QString error;
  const QString from = source.folder() + QLatin1Char('/') + source.name();
  if (cleaner.clean(from, folder_.filePath(QStringLiteral("values.csv")), error)) return true;
  context_.job.fail(error);
  return false;
}

QString nothingDone(const TableContext& context) {
  return Say::tr("A tabela %1 não foi importada.").arg(context.options.file);
}

QString nothingUpdated(const TableContext& context) {
  return Say::tr("A tabela da categoria %1 não foi atualizada: não existe, ou não aceita as colunas de %2.")
      .arg(context.category.name, context.options.file);
}

}  // namespace

Format csvFormat() {
  Format format;
  format.name = "csv";
  format.content = FileFormat::delimitedTable;
  format.isText = true;
  format.appends = false;
  format.inspect = nullptr;
  format.textForm = TextForm::delimitedTable;
  format.tableImports = {
      {"table", OBJECTMODEL, true, importTableFile, nothingDone},
      {"append-columns", OBJECTMODEL, false,
       [](const TableContext& context) { return ColumnAppend(context).run(); }, nothingUpdated},
      {"update", OBJECTMODEL, false, importUpdate, nothingUpdated},
      {"statistics", OBJECTMODEL, false, importStatistics, nothingUpdated},
      {"nonspatial", NOTSPACIALMODEL, true, importNonSpatial, nothingDone}};
  return format;
}

}  // namespace kaldex::cli
