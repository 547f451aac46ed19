#include <QObject>
#include <algorithm>

#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/model/database.h"
#include "lib/shapefile/attribute_value.h"
#include "lib/shapefile/shape_import.h"

inline namespace kaldex_v1 {

IEShp::AttributeSource::AttributeSource(IEShp& handler)
    : handler_(handler), dbf_(handler.path(), OpenMode::read, handler.encoding_) {}

bool IEShp::AttributeSource::prepare() {
  if (!layerTakesObjects()) return true;
  if (dbf_.ReadAttr(handler_.path(), &source_) == 0) {
    show(QObject::tr("Arquivo .dbf corrompido ou aberto, fechar para ter acesso a lista de atributos  ") +
         handler_.path());
    return ask(QObject::tr("Continuar sem importar atributos do .dbf ? "));
  }
  if (!findCategory()) return false;
  loadTable();
  if (!nameColumns()) return false;
  extendTable();
  tellRenamed(handler_.reservedNames, handler_.replacementNames, "  ");
  dbf_.First();
  on_ = true;
  return true;
}

bool IEShp::AttributeSource::layerTakesObjects() const {
  const InfoLayer* layer = handler_.infoLayer;
  if (layer == nullptr || handler_.dataBase == nullptr) return false;
  return layer->model() == NETWORKMODEL || layer->model() == CADASTRALMODEL;
}

bool IEShp::AttributeSource::findCategory() {
  const QString name = handler_.dataFile.section(QLatin1Char('.'), 0, 0) + QStringLiteral("_O");
  category_ = handler_.dataBase->categoryList().Select(name);
  if (category_ != nullptr) return true;
  if (!ask(QObject::tr("Categoria objeto inexistente Cria e continua ?") + name)) return false;
  category_ = new Category(-1, name, OBJECTMODEL, QString(), 0, nullptr);
  categoryIsNew_ = true;
  newCategories_.Append(category_);
  if (handler_.dataBase->storeCategories(newCategories_) == 0) {
    show(QObject::tr("Problemas na atualização de Categorias!"));
  }
  return true;
}

void IEShp::AttributeSource::loadTable() {
  handler_.dataBase->tableExists(QStringLiteral("OJ%1").arg(category_->id, 6, 10, QLatin1Char('0')));
  handler_.dataBase->loadTableFields(existing_, category_->attributeTable);
  if (existing_.Size() == 0) return;
  handler_.reservedNames.clear();
  handler_.replacementNames.clear();
}

bool IEShp::AttributeSource::nameColumns() {
  names_ = std::make_unique<kaldex::AttributeNames>(existing_);
  for (const SField* column : source_) {
    if (names_->add(*column)) continue;
    if (names_->failure() != nullptr) return outOfMemory(names_->failure()) != 0;
    ++unusableColumns_;
  }
  handler_.reservedNames += names_->reserved();
  handler_.replacementNames += names_->replacements();
  return true;
}

void IEShp::AttributeSource::extendTable() {
  const SFieldList& added = names_->newColumns();
  if (added.Size() == 0) return;
  if (existing_.Size() == 0) {
    handler_.dataBase->createAttributeTable(*category_, added);
  } else if (handler_.dataBase->addColumns(added, category_->attributeTable, 1, 0) == 0) {
    throw kaldex::ImportStopped{};
  }
}

void IEShp::AttributeSource::write(int record, int objectId) {
  // The rows are found by the shape's number: shapes that were left out leave their rows out too.
  dbf_.Go(record);
  if (handler_.writeRow(dbf_, names_->columns(), *category_, objectId) == 0) throw kaldex::ImportStopped{};
}

// Rows and shapes belong together by their number; what has no counterpart would be lost without a word.
void IEShp::AttributeSource::reportRows(JobReport& report, int shapes) const {
  const long long rows = dbf_.NumRows();
  report.countRead(QStringLiteral("rows"), rows);
  if (rows < shapes) {
    report.note(QObject::tr("O .dbf só tem %1 registros para %2 do .shp: os outros ficaram sem atributos.")
                    .arg(rows)
                    .arg(shapes));
  } else if (rows > shapes) {
    report.note(QObject::tr("O .dbf tem %1 registros para %2 do .shp: os outros não foram importados.")
                    .arg(rows)
                    .arg(shapes));
  }
}

void IEShp::AttributeSource::report(int shapes) const {
  JobReport* report = JobReport::current();
  if (report == nullptr || !on_) return;
  reportRows(*report, shapes);
  report->encoding = {dbf_.encodingName(), dbf_.encodingReason()};
  report->renamed += names_->renamed();
  const long long ignored = dbf_.ignoredColumns().size() + unusableColumns_;
  if (ignored > 0) report->countLeftOut(QStringLiteral("column_ignored"), ignored);
  if (handler_.badValues_ > 0) report->countLeftOut(QStringLiteral("bad_value"), handler_.badValues_);
  if (!dbf_.encodingDoubt().isEmpty()) {
    report->note(QObject::tr("A codificação indicada não é conhecida: %1").arg(dbf_.encodingDoubt()));
  }
  if (dbf_.undecodable() > 0) {
    report->note(QObject::tr("%1 textos do .dbf têm bytes que nada significam na codificação %2.")
                     .arg(dbf_.undecodable())
                     .arg(dbf_.encodingName()));
  }
}

int IEShp::ImportAttrValueFromDbf(DbfImpExp& dbf, SFieldList* fields, Category* category, int objectId) {
  const Tracer tracer(__FILE__, __LINE__, "IEShp::ImportAttrValueFromDbf");
  if (fields == nullptr) return invalidArgument("fields");
  if (category == nullptr) return invalidArgument("category");
  return guardedImport(nullptr, [&] { return writeRow(dbf, *fields, *category, objectId); });
}

int IEShp::writeRow(DbfImpExp& dbf, const SFieldList& fields, Category& category, int objectId) {
  if (dbf.IsEOF()) return 1;
  if (dataBase == nullptr) return 0;
  dataBase->readObjectAttributes(fields, row_, category.attributeTable, objectId);
  if (row_.Size() == 0) return 0;
  const int columns = std::min(dbf.NumFields(), fields.Size());
  for (int column = 0; column < columns; ++column) {
    if (!writeCell(*fields.at(column), dbf.GetFieldValue(column))) return 0;
  }
  dataBase->writeObjectAttributes(fields, row_, category.attributeTable, objectId);
  dbf.Next();
  return 1;
}

bool IEShp::writeCell(const SField& field, QString value) {
  const QString original = value;
  const kaldex::ValueFit fit = kaldex::fitValue(field, value);
  if (fit != kaldex::ValueFit::whole) ++badValues_;
  if (fit == kaldex::ValueFit::wrong) {
    return ask(QObject::tr("Arquivo INCONSISTENTE. Ignorar somente o item errado e continuar?") + field.name +
               QLatin1Char(' ') + original);
  }
  if (field.index >= 0 && field.index < row_.Size()) row_.at(field.index)->ChangeCell(value);
  return true;
}

}  // namespace kaldex_v1
