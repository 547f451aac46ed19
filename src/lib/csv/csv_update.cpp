#include <QObject>
#include <limits>
#include <string>

#include "base/number_text.h"
#include "base/strings.h"
#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/model/catalog.h"
#include "kaldex/model/database.h"
#include "lib/csv/csv_reader.h"
#include "lib/frame/cell_text.h"
#include "lib/frame/progress_scope.h"

inline namespace kaldex_v1 {

namespace {
constexpr int kBytesPerRow = 60;
}

/// Updates rows of a category's table from the handler's delimited file, whose first column identifies the
/// objects. What was stored before a failure stays.
class SExtFormats::CsvUpdate : private CsvReader {
 public:
  /// `newType` is that of columns that the table lacks.
  CsvUpdate(SExtFormats& handler, const Category& category, short newType)
      : CsvReader(handler), base_(*handler.dataBase), category_(category), newType_(newType) {}
  ~CsvUpdate();

  int run();
  /// The database's last step with the columns.
  void finishColumns() { base_.finishColumns(columns_); }
  void tellRenamed() const { SExtFormats::tellRenamed(oldNames(), newNames(), "  "); }

 private:
  bool readHeader();
  void takeName(std::string name, bool wasCut);
  bool updateRows();
  bool updateRow();
  bool takeValues();
  bool takeValue(const SField& column, std::string_view field);

  DataBase& base_;
  const Category& category_;
  short newType_;
  SFieldList existing_;
  SFieldList added_;
  SFieldList columns_;  ///< one for each column of the file but the first
  short lastIndex_ = 0;
  SCellList cells_;
  std::string value_;
  long long rows_ = 0;
  long long updated_ = 0;
  long long unknown_ = 0;
  long long badValues_ = 0;
};

SExtFormats::CsvUpdate::~CsvUpdate() {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  if (rows_ > 0) job->countRead("rows", rows_);
  if (updated_ > 0) job->countWritten("rows", updated_);
  if (unknown_ > 0) job->countLeftOut("no_object", unknown_);
  if (badValues_ > 0) job->countLeftOut("bad_value", badValues_);
}

int SExtFormats::CsvUpdate::run() {
  if (!openAtHeader()) return 0;
  if (base_.loadTableFields(existing_, category_.attributeTable) == 0) return 0;
  lastIndex_ = static_cast<short>(existing_.Size() - 1);
  if (!readHeader()) return 0;
  if (added_.Size() > 0 && base_.addColumns(added_, category_.attributeTable, 1, 0) == 0) return 0;
  return updateRows() ? 1 : 0;
}

bool SExtFormats::CsvUpdate::readHeader() {
  if (!split()) return false;
  std::string_view field;
  nextField(field);  // the objects' identifiers, whatever the file calls them
  while (nextField(field)) {
    constexpr std::size_t longest = 8;
    takeName(std::string(field.substr(0, longest)), field.size() > longest);
  }
  return true;
}

void SExtFormats::CsvUpdate::takeName(std::string name, bool wasCut) {
  if (const SField* const known = existing_.find(text(name))) {
    return insert(columns_, *known, "Attlistalt.Insert(Attraux)");
  }
  renameReserved(name);
  // The column that an earlier update by the same file has made.
  if (const SField* const known = existing_.find(text(name))) {
    return insert(columns_, *known, "Attlistalt.Insert(Attraux)");
  }
  while (wasCut && added_.find(text(name)) != nullptr) number(name);
  const SField column(text(name), newType_, kTextSize, kDecimals, ++lastIndex_, category_.attributeTable);
  insert(added_, column, "Attlistadd.Insert(Attraux)");
  insert(columns_, column, "Attlistalt.Insert(Attraux)");
}

bool SExtFormats::CsvUpdate::updateRows() {
  kaldex::ProgressScope progress(handler_.progressMaximum(kBytesPerRow));
  for (;;) {
    const Row row = nextRow();
    if (row != Row::found) return row == Row::ended;
    if (progress.cancelled() || !updateRow()) return false;
    progress.step();
  }
}

// The row is stored once, with all its values: it need not be read again for each of them.
bool SExtFormats::CsvUpdate::updateRow() {
  if (!split()) return false;
  ++rows_;
  std::string_view field;
  nextField(field);
  const long id = kaldex::textToInteger(field);
  const bool possible = id > 0 && id <= std::numeric_limits<int>::max();
  const QString& table = category_.attributeTable;
  if (!possible || base_.readObjectAttributes(columns_, cells_, table, static_cast<int>(id)) == 0) {
    ++unknown_;
    return true;
  }
  const bool taken = takeValues();
  updated_ += base_.writeObjectAttributes(columns_, cells_, table, static_cast<int>(id));
  return taken;
}

bool SExtFormats::CsvUpdate::takeValues() {
  std::string_view field;
  for (const SField* column : columns_) {
    if (!nextField(field)) break;
    if (!takeValue(*column, field)) return false;
  }
  return true;
}

bool SExtFormats::CsvUpdate::takeValue(const SField& column, std::string_view field) {
  value_ = field;
  if (TestDataType(value_.c_str(), column.type, nullptr) == 0) {
    ++badValues_;
    return leavesValueOut();
  }
  if (kaldex::fitToColumn(column, value_)) ++badValues_;
  if (column.index >= 0 && column.index < cells_.Size()) cells_.at(column.index)->ChangeCell(text(value_));
  return true;
}

int SExtFormats::Import_CSV_TAB_UPDATE(Category* cat) {
  const Tracer tracer(__FILE__, __LINE__, "SExtFormats::Import_CSV_TAB_UPDATE");
  return guardedImport(nullptr, [&] {
    if (cat == nullptr) return invalidArgument("cat");
    if (dataBase == nullptr) return invalidArgument("dataBase");
    CsvUpdate update(*this, *cat, fieldText);
    if (update.run() == 0) return 0;
    update.finishColumns();
    update.tellRenamed();
    return 1;
  });
}

int SExtFormats::Import_SPACESTAT_TAB(Category* cat) {
  const Tracer tracer(__FILE__, __LINE__, "SExtFormats::Import_SPACESTAT_TAB");
  return guardedImport(nullptr, [&] {
    if (cat == nullptr) return invalidArgument("cat");
    if (dataBase == nullptr) return invalidArgument("dataBase");
    SetSeparator(",");
    CsvUpdate update(*this, *cat, fieldReal);
    if (update.run() == 0) return 0;
    update.tellRenamed();
    return 1;
  });
}

}  // namespace kaldex_v1
