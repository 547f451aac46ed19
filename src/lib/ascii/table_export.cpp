#include <QObject>
#include <algorithm>
#include <memory>

#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/model/catalog.h"
#include "kaldex/model/database.h"
#include "lib/ascii/section_writer.h"
#include "lib/frame/delimited_record.h"
#include "lib/frame/progress_scope.h"

inline namespace kaldex_v1 {

/// Appends the table of a category as a TABLE section to the handler's file, which must be open.
class IEAsc::TableExport {
 public:
  TableExport(IEAsc& handler, Category& category)
      : handler_(handler),
        base_(*handler.dataBase),
        category_(category),
        ofObjects_(category.model == OBJECTMODEL),
        writer_(handler),
        progress_(0) {}
  ~TableExport();

  int run();

 private:
  static const char* typeWord(short type);
  static bool isSerial(const SField& column);

  void separate();
  void writeHead();
  void declare(const QString& name, const char* type, int size, int decimals);
  void declareColumns();
  bool wantsMore() const { return writer_.ok() && !progress_.cancelled(); }
  int writeObjects();
  void writeObject(const KaldexObject& object);
  int writeRecords();
  void asItStands(const QString& text);
  void value(const QString& text);

  IEAsc& handler_;
  DataBase& base_;
  Category& category_;
  bool ofObjects_;
  SectionWriter writer_;
  kaldex::ProgressScope progress_;
  SFieldList columns_;
  int serial_ = -1;  ///< the position of the column that isn't written
  SCellList cells_;
  long long rows_ = 0;
  long long unreadable_ = 0;  ///< values that a reader will take apart, or not see
  long long commas_ = 0;      ///< values that come back with a point for their comma
};

IEAsc::TableExport::~TableExport() {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  if (rows_ > 0) {
    job->countRead("rows", rows_);
    job->countWritten("rows", rows_);
  }
  if (unreadable_ > 0) {
    job->note(
        QObject::tr("Valores que contêm o separador ou um final de linha, que a leitura não reconhece: %1")
            .arg(unreadable_));
  }
  if (commas_ > 0) {
    job->note(QObject::tr("Valores com uma vírgula entre dígitos, que a leitura troca por um ponto: %1")
                  .arg(commas_));
  }
}

int IEAsc::TableExport::run() {
  writeHead();
  base_.loadTableFields(columns_, category_.attributeTable);
  if (columns_.Size() == 0) {
    writer_.endHeader();
    return writer_.finish();
  }
  declareColumns();
  writer_.endHeader();
  return ofObjects_ ? writeObjects() : writeRecords();
}

void IEAsc::TableExport::separate() {
  writer_.out().append(' ');
  writer_.out().append(handler_.separator);
  writer_.out().append(' ');
}

void IEAsc::TableExport::writeHead() {
  writer_.out().append("\nTABLE\nINFO\n");
  writer_.text(QObject::tr("//Tabela de Atributos ASCII gerada pelo Sistema KALDEX"));
  writer_.out().append("\nSEPARATOR ");
  writer_.out().append(handler_.separator);
  writer_.out().append("\nUNFORMATED");
  writer_.out().append(ofObjects_ ? "\nCATEGORY_OBJ\t" : "\nCATEGORY_NOSPATIAL\t");
  writer_.text(category_.name);
  if (!ofObjects_) return;
  constexpr int labelSize = 32;
  for (const char* name : {"T_KEY", "T_NAME"}) declare(QString::fromLatin1(name), "TEXT", labelSize, 0);
}

void IEAsc::TableExport::declare(const QString& name, const char* type, int size, int decimals) {
  writer_.out().append('\n');
  writer_.text(name);
  separate();
  writer_.out().append(type);
  separate();
  writer_.out().appendInt(size);
  separate();
  writer_.out().appendInt(decimals);
}

const char* IEAsc::TableExport::typeWord(short type) {
  static constexpr const char* words[] = {"INTEGER", "REAL", "DATE", "TEXT"};
  return type >= fieldInteger && type <= fieldText ? words[type] : "ERRO";
}

bool IEAsc::TableExport::isSerial(const SField& column) {
  return column.hasName(QStringLiteral("MYSQL_ID")) || column.hasName(QStringLiteral("KALDEX_ID"));
}

// The first column of objects is their identifier, for which the label stands.
void IEAsc::TableExport::declareColumns() {
  for (int i = ofObjects_ ? 1 : 0; i < columns_.Size(); ++i) {
    const SField& column = *columns_.at(i);
    if (isSerial(column)) {
      serial_ = i;
    } else {
      declare(column.name, typeWord(column.type), column.size, column.decimals);
    }
  }
}

int IEAsc::TableExport::writeObjects() {
  KaldexObject object;
  int walk = base_.firstObject(category_, object);
  for (; walk == objectFound && wantsMore(); walk = base_.nextObject(category_, object)) {
    base_.readObjectAttributes(columns_, cells_, category_.attributeTable, object.id);
    writeObject(object);
    ++rows_;
    progress_.step();
  }
  return writer_.finish(walk != objectError && !progress_.cancelled());
}

void IEAsc::TableExport::writeObject(const KaldexObject& object) {
  writer_.out().append('\n');
  const QString label = object.label.trimmed();
  if (label.isEmpty() || label.startsWith(QLatin1String("//"))) ++unreadable_;
  asItStands(label);
  separate();
  value(object.name.trimmed());
  for (int i = 1; i < columns_.Size(); ++i) {
    if (i == serial_) continue;
    separate();
    value(i < cells_.Size() ? cells_.at(i)->value().trimmed() : QString());
  }
}

int IEAsc::TableExport::writeRecords() {
  const std::unique_ptr<RecordSet> records = base_.selectRecords(
      category_.attributeTable, QStringLiteral("*"), QString(), QString(), QString(), 1, 0);
  for (; !records->atEnd() && wantsMore(); records->next()) {
    writer_.out().append('\n');
    for (int i = 0; i < records->columnCount(); ++i) {
      if (i == serial_) continue;
      writer_.out().append(' ');
      value(records->text(i));
      writer_.out().append(' ');
      writer_.out().append(handler_.separator);
    }
    ++rows_;
    progress_.step();
  }
  return writer_.finish(!progress_.cancelled());
}

// Of all that is read, only a label keeps its decimal commas.
void IEAsc::TableExport::value(const QString& text) {
  if (handler_.separator[0] != ',' && kaldex::hasDecimalComma(text)) ++commas_;
  asItStands(text);
}

// A line end inside a value would make two rows of one.
void IEAsc::TableExport::asItStands(const QString& text) {
  const auto breaks = [](QChar c) { return c == QLatin1Char('\n') || c == QLatin1Char('\r'); };
  const bool broken = std::any_of(text.begin(), text.end(), breaks);
  if (broken || text.contains(QLatin1String(handler_.separator))) ++unreadable_;
  if (!broken) return writer_.text(text);
  QString joined = text;
  std::replace_if(joined.begin(), joined.end(), breaks, QLatin1Char(' '));
  writer_.text(joined);
}

int IEAsc::ExportTable(Category* category) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::ExportTable");
  return guarded([&] {
    if (category == nullptr) return invalidArgument("category");
    if (dataBase == nullptr) return invalidArgument("dataBase");
    if (!openFile("a+")) return 0;
    if (separator[0] == 0) SetSeparator(",");
    return TableExport(*this, *category).run();
  });
}

}  // namespace kaldex_v1
