#include "cli/table_command.h"

#include <QFileInfo>
#include <memory>

#include "cli/delivery.h"
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

/// One table into a category of an open database.
class TableImport {
 public:
  TableImport(Job& job, const Options& options, DataBase& dataBase)
      : job_(job), options_(options), dataBase_(dataBase), kind_(*tableImportOf(options)) {}

  Result run();

 private:
  bool prepareFile();
  Result importInside();
  bool findCategory();

  Job& job_;
  const Options& options_;
  DataBase& dataBase_;
  const TableImportKind& kind_;
  std::unique_ptr<TextIntake> intake_;
  Category* category_ = nullptr;
  QStringList made_;
};

Result TableImport::run() {
  if (!sourceIsReadable(job_, options_.file) || !prepareFile()) return Result::failed;
  DBTransactionBlock block(&dataBase_);
  const Result result = guarded(job_, [this] { return importInside(); });
  return settleImport(job_, options_, block, result, made_);
}

bool TableImport::prepareFile() {
  const TextForm form = findFormat(options_.format)->textForm;
  intake_ = std::make_unique<TextIntake>(options_.file, form, options_.strict, options_.encoding);
  if (!intake_->isReady()) job_.fail(intake_->error());
  return intake_->isReady();
}

Result TableImport::importInside() {
  if (!findCategory()) return Result::failed;
  const QFileInfo file(intake_->path());
  const TableContext context{job_,      options_,  intake_->path(), file.path(), file.fileName(),
                             dataBase_, *category_};
  job_.conversation().nameFile(intake_->path(), options_.file);
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
  Category* category = options.model != 0 ? findCategory(dataBase, options.place, options.model)
                                          : findCategory(dataBase, options.place, OBJECTMODEL);
  if (category == nullptr && options.model == 0)
    category = findCategory(dataBase, options.place, NOTSPACIALMODEL);
  if (category == nullptr)
    return job.fail(Say::tr("Não há categoria com tabela de nome %1.").arg(options.place));
  Delivery delivery(options.file, {});
  QString trouble = delivery.objection({options.dataBase});
  if (!trouble.isEmpty()) return job.fail(trouble);
  if (delivery.exists() && !options.append && !options.overwrite)
    return job.fail(Say::tr("%1 já existe; use --append ou --overwrite.").arg(options.file));
  if (!delivery.begin(options.append, options.overwrite, trouble)) return job.fail(trouble);
  const QFileInfo file(delivery.workPath());
  const TableContext context{job,      options,  file.filePath(), file.path(), file.fileName(),
                             dataBase, *category};
  job.conversation().nameFile(file.filePath(), options.file);
  job.begin();
  Result result =
      job.judge(tableExportOf(options)->run(context),
                Say::tr("Não foi possível exportar a tabela da categoria %1.").arg(category->name));
  const QString shortage = result == Result::failed ? delivery.shortage() : QString();
  if (!shortage.isEmpty()) job.fail(shortage);
  JobReport& report = Job::report();
  report.encoding = {QStringLiteral("ISO-8859-1"), QStringLiteral("format")};
  report.files.clear();
  if (result == Result::done && !options.dryRun && !delivery.finish(trouble)) result = job.fail(trouble);
  if (result != Result::done) {
    report.written.clear();
  } else if (!options.dryRun) {
    report.files = delivery.files();
  }
  return result;
}

}  // namespace kaldex::cli
