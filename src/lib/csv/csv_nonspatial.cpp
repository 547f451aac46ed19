#include <QObject>
#include <string>
#include <vector>

#include "base/strings.h"
#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/model/catalog.h"
#include "kaldex/model/database.h"
#include "lib/csv/column_cells.h"
#include "lib/csv/csv_reader.h"
#include "lib/frame/cell_text.h"
#include "lib/frame/progress_scope.h"

inline namespace kaldex_v1 {

namespace {
constexpr int kBytesPerRow = 60;
constexpr long long kRowsAtOnce = 4096;
}  // namespace

/// Makes the table of a category from the handler's delimited file. The rows gather in the columns and are
/// stored some thousand at a time, all of them or none.
class SExtFormats::CsvNonSpatial : private CsvReader {
 public:
  CsvNonSpatial(SExtFormats& handler, const Category& category)
      : CsvReader(handler), base_(*handler.dataBase), category_(category) {}
  ~CsvNonSpatial();

  int run();

 private:
  bool tableIsEmpty() const;
  bool readHeader();
  bool readRows();
  bool readRow();
  bool store();
  bool takeValue(kaldex::ColumnCells& cells, std::string_view field);

  DataBase& base_;
  const Category& category_;
  SFieldList columns_;
  std::vector<kaldex::ColumnCells> cells_;  ///< of each column
  std::string value_;
  long long rows_ = 0;
  long long stored_ = 0;
  long long badValues_ = 0;
};

SExtFormats::CsvNonSpatial::~CsvNonSpatial() {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  if (rows_ > 0) job->countRead("rows", rows_);
  if (stored_ > 0) job->countWritten("rows", stored_);
  if (badValues_ > 0) job->countLeftOut("bad_value", badValues_);
}

int SExtFormats::CsvNonSpatial::run() {
  if (!openAtHeader()) return 0;
  if (!tableIsEmpty()) return show(QObject::tr("Esta Categoria contém uma tabela que não está vazia!"));
  if (!readHeader()) return 0;
  for (SField* column : columns_) cells_.emplace_back(*column, category_.attributeTable);
  // With the rows the table goes, too: an empty one would stand in the way of the next try.
  DBTransactionBlock block(&base_);
  if (columns_.Size() > 0 && base_.createTable(category_.attributeTable, columns_) == 0) {
    handler_.FileClose();
    return show(QObject::tr("Erro ao tentar criar atributos na tabela"));
  }
  if (!readRows() || !store()) return 0;
  block.enableCommit();
  stored_ = cells_.empty() ? 0 : rows_;
  return 1;
}

bool SExtFormats::CsvNonSpatial::tableIsEmpty() const {
  SFieldList existing;
  return base_.loadTableFields(existing, category_.attributeTable) == 0;
}

bool SExtFormats::CsvNonSpatial::readHeader() {
  if (!split()) return false;
  std::string name;
  for (short index = 0; nextName(name) && !name.empty() && name != "0"; ++index) {
    renameReserved(name);
    insert(columns_, SField(text(name), fieldText, kTextSize, kDecimals, index, category_.attributeTable),
           "Attlistadd.Insert(Attraux)");
  }
  return true;
}

bool SExtFormats::CsvNonSpatial::readRows() {
  kaldex::ProgressScope progress(handler_.progressMaximum(kBytesPerRow));
  for (;;) {
    const Row row = nextRow();
    if (row != Row::found) return row == Row::ended;
    if (progress.cancelled() || !readRow()) return false;
    if (rows_ % kRowsAtOnce == 0 && !store()) return false;
    progress.step();
  }
}

bool SExtFormats::CsvNonSpatial::store() {
  if (base_.finishColumns(columns_) == 0) return false;
  for (kaldex::ColumnCells& cells : cells_) cells.clear();
  return true;
}

// A row that lacks values gets empty ones: the columns' cells must stay side by side.
bool SExtFormats::CsvNonSpatial::readRow() {
  if (!split(LastField::dropped)) return false;
  ++rows_;
  std::string_view field;
  bool more = true;
  for (kaldex::ColumnCells& cells : cells_) {
    more = more && nextField(field);
    if (!more) {
      cells.addNothing();
    } else if (!takeValue(cells, field)) {
      return false;
    }
  }
  return true;
}

bool SExtFormats::CsvNonSpatial::takeValue(kaldex::ColumnCells& cells, std::string_view field) {
  const SField& column = cells.column();
  value_ = field.empty() || field == "0" ? "XXX" : field;
  if (column.type != fieldText && TestDataType(value_.c_str(), column.type, nullptr) == 0) {
    ++badValues_;
    if (!leavesValueOut()) return false;
    cells.addNothing();
    return true;
  }
  if (column.type == fieldDate || column.type == fieldText) {
    // An apostrophe ends a text for programs that read such tables.
    const std::size_t apostrophe = value_.rfind('\'');
    if (apostrophe != std::string::npos) value_[apostrophe] = '_';
  }
  if (kaldex::fitToColumn(column, value_)) ++badValues_;
  cells.add(value_);
  return true;
}

int SExtFormats::Import_CSV_TAB_NOTSPACIAL(Category* cat) {
  const Tracer tracer(__FILE__, __LINE__, "SExtFormats::Import_CSV_TAB_NOTSPACIAL");
  return guardedImport(nullptr, [&] {
    if (cat == nullptr) return invalidArgument("cat");
    if (dataBase == nullptr) return invalidArgument("dataBase");
    return CsvNonSpatial(*this, *cat).run();
  });
}

}  // namespace kaldex_v1
