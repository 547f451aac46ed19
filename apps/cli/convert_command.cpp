#include <QFileInfo>
#include <QTemporaryDir>
#include <algorithm>
#include <memory>
#include <utility>

#include "cli/commands.h"
#include "cli/database_access.h"
#include "cli/delivery.h"
#include "cli/registry.h"
#include "cli/texts.h"

namespace kaldex::cli {

namespace {

const char kDataBaseEnding[] = ".gpkg";

bool takesObjects(short model) {
  return model == CADASTRALMODEL || model == NETWORKMODEL;
}

/// A file into another one, through a database that nobody sees, or into a new database.
class Conversion {
 public:
  explicit Conversion(Job& job) : job_(job), options_(job.options()) {}

  Result run();

 private:
  bool chooseFormats();
  Options importOptions() const;
  Options exportOptions(const QString& kind, InfoLayer& layer) const;
  Result intoDataBase();
  Result throughDataBase();
  Result exportFrom(DataBase& dataBase);
  QString exportKind(InfoLayer& layer);
  std::unique_ptr<DataBase> make(const QString& path);

  Job& job_;
  const Options& options_;
  const Format* from_ = nullptr;
  const Format* to_ = nullptr;  ///< null: a database
};

Result Conversion::run() {
  if (!chooseFormats()) return Result::failed;
  // Where the database is only a way, the classes and categories in it are no matter for the user.
  for (const char* const question :
       {"Categoria objeto inexistente Cria e continua ?", "Categoria sem classes. Cria e continua ?",
        "Classe não encontrada. Adiciona TODAS as classes não encontradas ?"})
    job_.conversation().presume(QString::fromUtf8(question), true);
  return to_ != nullptr ? throughDataBase() : intoDataBase();
}

bool Conversion::chooseFormats() {
  if (!QFileInfo::exists(options_.file)) {
    job_.fail(Say::tr("Não há arquivo %1.").arg(options_.file));
    return false;
  }
  const FileGuess guess = guessFile(options_.file);
  from_ = formatOfContent(guess.format);
  if (from_ == nullptr || from_->imports.empty()) {
    job_.fail(Say::tr("Não sei converter %1: %2.").arg(options_.file, guess.description));
    return false;
  }
  const bool dataBase = options_.output.endsWith(QLatin1String(kDataBaseEnding), Qt::CaseInsensitive);
  to_ = dataBase ? nullptr : formatOfName(options_.output);
  if (!dataBase && to_ == nullptr) {
    job_.fail(Say::tr("O nome %1 não diz em que formato escrever.").arg(options_.output));
    return false;
  }
  const Delivery delivery(options_.output, dataBase ? QStringList() : to_->companions);
  const QString objection = delivery.objection({options_.file});
  if (!objection.isEmpty()) {
    job_.fail(objection);
    return false;
  }
  if (!options_.overwrite && delivery.exists()) {
    job_.fail(Say::tr("%1 já existe; use --overwrite.").arg(options_.output));
    return false;
  }
  return true;
}

Options Conversion::importOptions() const {
  Options part = options_;
  part.format = QString::fromLatin1(from_->name);
  part.kind = from_->importKind(options_.kind) != nullptr ? options_.kind : QStringLiteral("features");
  const QString name = QFileInfo(options_.file).completeBaseName();
  part.place = QStringLiteral("%1/%1")
                   .arg(name.isEmpty() ? QStringLiteral("dados") : name)
                   .replace(QLatin1Char('\\'), QLatin1Char('_'));
  // Attributes only come along as those of objects.
  const bool heights = part.kind == QLatin1String("samples") || part.kind == QLatin1String("contours");
  const bool attributes = to_ == nullptr || to_->by.contains(QStringLiteral("object"));
  if (part.model == 0 && part.category.isEmpty() && from_->content == FileFormat::shapefile && !heights &&
      attributes)
    part.model = CADASTRALMODEL;
  part.coords.reset();
  part.keepPartial = false;
  part.dryRun = false;
  return part;
}

Options Conversion::exportOptions(const QString& kind, InfoLayer& layer) const {
  Options part = options_;
  part.format = QString::fromLatin1(to_->name);
  part.kind = kind;
  part.file = options_.output;
  part.place = QStringLiteral("%1/%2").arg(layer.project()->name, layer.name);
  part.category.clear();
  if (part.by.isEmpty() && to_->by.contains(QStringLiteral("object")) && takesObjects(layer.model()))
    part.by = QStringLiteral("object");
  return part;
}

std::unique_ptr<DataBase> Conversion::make(const QString& path) {
  QString error;
  std::unique_ptr<DataBase> dataBase = DataBase::Create(path, &error);
  if (dataBase == nullptr)
    job_.fail(Say::tr("Não foi possível criar o banco de dados %1: %2").arg(path, error));
  return dataBase;
}

Result Conversion::intoDataBase() {
  Delivery delivery(options_.output, {});
  QString trouble;
  if (!delivery.begin(false, options_.overwrite, trouble)) return job_.fail(trouble);
  std::unique_ptr<DataBase> dataBase = make(delivery.workPath());
  if (dataBase == nullptr) return Result::failed;
  const Result result = importFile(job_, importOptions(), *dataBase);
  dataBase.reset();
  if (result != Result::done || options_.dryRun) return result;
  if (!delivery.finish(trouble)) return job_.fail(trouble);
  Job::report().files = delivery.files();
  return result;
}

Result Conversion::throughDataBase() {
  const QTemporaryDir folder;
  if (!folder.isValid()) return job_.fail(Say::tr("Não foi possível criar uma pasta temporária."));
  const std::unique_ptr<DataBase> dataBase = make(folder.filePath(QStringLiteral("convert.gpkg")));
  if (dataBase == nullptr) return Result::failed;
  Result result = importFile(job_, importOptions(), *dataBase, false);
  if (result == Result::done) result = exportFrom(*dataBase);
  // What the way's database holds is nothing that was written.
  if (result != Result::done) Job::report().written.clear();
  return result;
}

// Points beside lines in a drawing, say, when only lines were asked for. What goes out under another name is
// no loss: borders as lines, samples as points, texts as labels.
void countOtherKinds(JobReport& whole, const JobReport& target) {
  static const std::pair<const char*, QStringList> kCarriers[] = {
      {"points", {"points", "samples", "labels"}},
      {"lines", {"lines", "polygons", "contours", "samples"}},
      {"texts", {"texts", "labels"}}};
  for (const auto& [kind, names] : kCarriers) {
    const long long kept = whole.written.value(QLatin1String(kind));
    const bool carried = std::any_of(names.begin(), names.end(), [&](const QString& name) {
      return target.read.value(name) + target.written.value(name) > 0;
    });
    if (kept > 0 && !carried) whole.countLeftOut(QStringLiteral("other_kind"), kept);
  }
}

// What was read is of the source, what was written of the target.
Result Conversion::exportFrom(DataBase& dataBase) {
  InfoLayer& layer = *dataBase.layers(*dataBase.projects().First()).First();
  const QString kind = exportKind(layer);
  if (kind.isEmpty()) return Result::failed;
  JobReport& whole = Job::report();
  JobReport part;
  Result result = Result::failed;
  {
    const JobReportScope scope(part);
    result = exportLayer(job_, exportOptions(kind, layer), dataBase);
  }
  if (result == Result::done) countOtherKinds(whole, part);
  whole.written = part.written;
  for (auto count = part.leftOut.begin(); count != part.leftOut.end(); ++count)
    whole.countLeftOut(count.key(), count.value());
  whole.renamed += part.renamed;
  whole.files = part.files;
  for (const QString& note : part.notes) whole.note(note);
  return result;
}

QString Conversion::exportKind(InfoLayer& layer) {
  if (const ExportKind* const asked = to_->exportKind(options_.kind)) {
    if (asked->present(layer)) return options_.kind;
    job_.fail(Say::tr("%1 não guarda nada que %2 possa receber.").arg(options_.file, options_.output));
    return QString();
  }
  if (!options_.kind.isEmpty() && from_->importKind(options_.kind) == nullptr) {
    job_.fail(Say::tr("%1 não oferece %2.").arg(QString::fromLatin1(to_->name), options_.kind));
    return QString();
  }
  QStringList kinds;
  for (const ExportKind& kind : to_->exports) {
    if (kind.present(layer)) kinds << QString::fromLatin1(kind.name);
  }
  // The lines of a layer of polygons are their borders.
  if (kinds.contains(QStringLiteral("polygons"))) kinds.removeAll(QStringLiteral("lines"));
  if (kinds.size() == 1) return kinds.first();
  job_.fail(kinds.isEmpty()
                ? Say::tr("%1 não guarda nada que %2 possa receber.").arg(options_.file, options_.output)
                : Say::tr("%1 guarda mais de um tipo; escolha com --kind: %2")
                      .arg(options_.file, kinds.join(QStringLiteral(", "))));
  return QString();
}

}  // namespace

int runConvert(const Options& options, const Language& language) {
  Job job(options, language);
  return job.end(guarded(job, [&] { return Conversion(job).run(); }));
}

}  // namespace kaldex::cli
