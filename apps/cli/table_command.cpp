#include "cli/table_command.h"

#include "cli/export_steps.h"
#include "cli/import_steps.h"
#include "cli/texts.h"

namespace kaldex::cli {

namespace {

Category* findCategory(DataBase& dataBase, const QString& name, short model) {
  for (Category* const category : dataBase.categoryList()) {
    if (category->name == name && category->model == model) return category;
  }
  return nullptr;
}

// What the options name; without a model an object category goes first.
Category* tableCategory(DataBase& dataBase, const Options& options) {
  if (options.model != 0) return findCategory(dataBase, options.place, options.model);
  Category* const category = findCategory(dataBase, options.place, OBJECTMODEL);
  return category != nullptr ? category : findCategory(dataBase, options.place, NOTSPACIALMODEL);
}

/// One table into a category of an open database.
class TableImport {
 public:
  TableImport(Job& job, const Options& options, DataBase& dataBase)
      : job_(job),
        options_(options),
        dataBase_(dataBase),
        kind_(*tableImportOf(options)),
        source_(job, options, *findFormat(options.format)) {}

  Result run();

 private:
  Result importInside();
  bool findCategory();

  Job& job_;
  const Options& options_;
  DataBase& dataBase_;
  const TableImportKind& kind_;
  ImportSource source_;
  Category* category_ = nullptr;
  QStringList made_;
};

Result TableImport::run() {
  if (!source_.prepare()) return Result::failed;
  DBTransactionBlock block(&dataBase_);
  const Result result = guarded(job_, [this] { return importInside(); });
  return settleImport(job_, options_, block, result, made_);
}

Result TableImport::importInside() {
  if (!findCategory()) return Result::failed;
  const TableContext context{job_,           options_,  source_.path(), source_.folder(),
                             source_.name(), dataBase_, *category_};
  job_.begin();
  const int returned = kind_.run(context);
  return job_.judge(returned, kind_.missing(context));
}

bool TableImport::findCategory() {
  const QString& name = options_.place;
  category_ = cli::findCategory(dataBase_, name, kind_.model);
  if (category_ != nullptr) return true;
  if (!kind_.makesCategory) {
    job_.fail(Say::tr("Não há categoria de objetos %1.").arg(name));
    return false;
  }
  CategoryList fresh(List::Ownership::owns);
  category_ = new Category(-1, name, kind_.model, QString(), 0, nullptr);
  fresh.Append(category_);
  if (dataBase_.storeCategories(fresh) == 0) {
    job_.fail(Say::tr("Não foi possível criar a categoria %1.").arg(name));
    return false;
  }
  made_ << Say::tr("Categoria %1 criada.").arg(name);
  // Whoever wants the table of a category that isn't there wants its columns.
  job_.conversation().presume(QStringLiteral("Deseja inserir este(s) atributo(s)?"), true);
  return true;
}

}  // namespace

const TableImportKind* tableImportOf(const Options& options) {
  const Format* const format = findFormat(options.format);
  if (format == nullptr) return nullptr;
  const TableImportKind* const kind = format->tableImport(options.kind);
  const bool other = kind != nullptr && options.model == NOTSPACIALMODEL && kind->model != NOTSPACIALMODEL;
  const TableImportKind* const nonSpatial =
      other ? format->tableImport(QStringLiteral("nonspatial")) : nullptr;
  return nonSpatial != nullptr ? nonSpatial : kind;
}

const TableExportKind* tableExportOf(const Options& options) {
  const Format* const format = findFormat(options.format);
  return format != nullptr ? format->tableExport(options.kind) : nullptr;
}

Result importTable(Job& job, const Options& options, DataBase& dataBase) {
  return TableImport(job, options, dataBase).run();
}

Result exportTable(Job& job, const Options& options, DataBase& dataBase) {
  Category* const category = tableCategory(dataBase, options);
  if (category == nullptr)
    return job.fail(Say::tr("Não há categoria com tabela de nome %1.").arg(options.place));
  ExportTarget target(job, options, *findFormat(options.format));
  if (!target.begin()) return Result::failed;
  const TableContext context{job,           options,  target.path(), target.folder(),
                             target.name(), dataBase, *category};
  job.begin();
  const int returned = tableExportOf(options)->run(context);
  return target.finish(job.judge(
      returned, Say::tr("Não foi possível exportar a tabela da categoria %1.").arg(category->name)));
}

}  // namespace kaldex::cli
