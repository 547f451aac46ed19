#include "lib/ascii/table_import.h"

#include <QObject>
#include <cstring>

#include "base/strings.h"
#include "base/text_input.h"
#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "lib/ascii/record_text.h"
#include "lib/frame/cell_text.h"
#include "lib/frame/delimited_record.h"

inline namespace kaldex_v1 {

namespace {

constexpr std::size_t kLongestRecord = 28671;
constexpr std::size_t kLongestValue = 4095;
constexpr std::size_t kLongestShown = 245;
constexpr int kHeaderSteps = 999;

QString fromLatin1(std::string_view text) {
  return QString::fromLatin1(text.data(), static_cast<int>(text.size()));
}

}  // namespace

IEAsc::TableImport::TableImport(IEAsc& handler, Category& category)
    : handler_(handler), base_(*handler.dataBase), category_(category) {}

IEAsc::TableImport::~TableImport() {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  if (rows_ > 0) job->countRead("rows", rows_);
  if (stored_ > 0) job->countWritten("rows", stored_);
  if (created_ > 0) job->countWritten("objects", created_);
  if (badValues_ > 0) job->countLeftOut("bad_value", badValues_);
}

int IEAsc::TableImport::run() {
  if (!findTable()) return 0;
  handler_.SetSeparator(",");
  progress_.emplace(kHeaderSteps);
  if (!readHeader() || !readDeclarations() || !readRows()) return 0;
  handler_.FileClose();
  tellRenamed(handler_.reservedNames.toList(), handler_.replacementNames.toList(), " ");
  return 1;
}

bool IEAsc::TableImport::findTable() {
  while (handler_.readWordIntoLine()) {
    if (kaldex::startsWith(handler_.line, "TABLE")) return true;
    kaldex::skipLine(handler_.file);
  }
  return false;
}

bool IEAsc::TableImport::readHeader() {
  do {
    if (handler_.readWordIntoLine()) continue;
    handler_.inconsistent("END ???");
    return false;
  } while (std::strcmp(handler_.line, "INFO") != 0);
  return true;
}

bool IEAsc::TableImport::readDeclarations() {
  short formatted = 0;
  if (handler_.InfoSection(nullptr, nullptr, nullptr, &category_, &formatted, &columns_, &keyColumn_,
                           &nameColumn_, nullptr, nullptr, nullptr, nullptr, nullptr) == 0) {
    return false;
  }
  if (keyColumn_ == 0 && nameColumn_ == -1) nameColumn_ = 0;
  return checkDeclarations();
}

bool IEAsc::TableImport::checkDeclarations() const {
  if (columns_.Size() == 0) return lacks("CATEGORY_OBJ");
  return keyColumn_ >= 0 || lacks("T_KEY");
}

bool IEAsc::TableImport::lacks(const char* what) const {
  handler_.notePlace();
  show(QObject::tr("Arquivo INCONSISTENTE. Falta de informação ou erro nos parâmetros da seção INFO!") +
       what);
  return false;
}

bool IEAsc::TableImport::readRows() {
  for (;;) {
    const Row row = nextRow();
    if (row != Row::found) return row == Row::ended;
    countRow();
    if (progress_->cancelled() || !readRow()) return false;
  }
}

// A row is a line, so that a comment among the rows is passed over whole.
IEAsc::TableImport::Row IEAsc::TableImport::nextRow() {
  handler_.clearLine();
  const bool complete = handler_.readLine() != 0;
  row_ = kaldex::stripped(handler_.line);
  if (row_ == "END") return Row::ended;
  if (complete) return Row::found;
  if (row_.empty()) {
    handler_.inconsistent("END ???");
  } else {
    handler_.endOfFileInRecord();
  }
  return Row::failed;
}

// How many rows there will be is known by the length of the first one.
void IEAsc::TableImport::countRow() {
  if (rows_++ == 0) {
    const int length = static_cast<int>(handler_.lineText().size()) + 1;
    SGError->ProgressInit(0, handler_.progressMaximum(length), 1);
  }
  progress_->step();
}

bool IEAsc::TableImport::malformed() {
  handler_.inconsistent(fromLatin1(row_.substr(0, kLongestShown)));
  return false;
}

bool IEAsc::TableImport::readRow() {
  if (!splitRow() || !findObject()) return false;
  base_.readObjectAttributes(columns_, cells_, category_.attributeTable, object_.id);
  changed_ = false;
  const Outcome outcome = takeValues();
  if (outcome != Outcome::taken) return outcome == Outcome::skipRow;
  if (!changed_) return lacks("");
  stored_ += base_.writeObjectAttributes(columns_, cells_, category_.attributeTable, object_.id);
  return true;
}

bool IEAsc::TableImport::splitRow() {
  if (row_.size() > kLongestRecord) return malformed();
  // Splitting loses an empty field at the very beginning, and all others would count as the one before.
  const bool beginsEmpty = !row_.empty() && std::strchr(handler_.separator, row_[0]) != nullptr;
  if (beginsEmpty) return malformed();
  fields_.clear();
  kaldex::DelimitedFields fields(row_, handler_.separator);
  std::string_view field;
  while (fields.next(field)) fields_.push_back(kaldex::stripped(field));
  return true;
}

bool IEAsc::TableImport::hasField(short column) {
  return static_cast<std::size_t>(column) < fields_.size() || malformed();
}

bool IEAsc::TableImport::findObject() {
  if (!hasField(keyColumn_)) return false;
  const std::string_view key = fields_[static_cast<std::size_t>(keyColumn_)];
  if (key.empty()) return malformed();
  const QString label = fromLatin1(key);
  if (base_.findObjectByLabel(label, category_, object_) != 0) return true;
  // An object that came with a label point had its decimal commas mended.
  mend(key);
  const bool mended = value_ != key && base_.findObjectByLabel(fromLatin1(value_), category_, object_) != 0;
  return mended || createObject(label);
}

bool IEAsc::TableImport::createObject(const QString& label) {
  ObjectDefinition definition;
  definition.category = &category_;
  definition.label = label;
  definition.name = label;
  if (nameColumn_ >= 0) {
    if (!hasField(nameColumn_)) return false;
    const std::string_view name = fields_[static_cast<std::size_t>(nameColumn_)];
    if (!name.empty()) definition.name = fromLatin1(name);
  }
  if (base_.createObject(definition, object_) == 0) return false;
  ++created_;
  return true;
}

IEAsc::TableImport::Outcome IEAsc::TableImport::takeValues() {
  for (short i = 0; i < columns_.Size(); ++i) {
    if (!hasField(i)) return Outcome::failed;
    const SField& column = *columns_.at(i);
    const std::string_view field = fields_[static_cast<std::size_t>(i)];
    Outcome outcome = Outcome::taken;
    if (column.index != 0) {
      outcome = takeValue(column, field);
    } else if (i == nameColumn_) {
      outcome = takeName(field);
    }
    if (outcome != Outcome::taken) return outcome;
  }
  return Outcome::taken;
}

void IEAsc::TableImport::mend(std::string_view field) {
  value_ = field;
  if (handler_.separator[0] != ',') kaldex::mendDecimalCommas(value_.data());
}

IEAsc::TableImport::Outcome IEAsc::TableImport::takeName(std::string_view field) {
  mend(field);
  const QString given = fromLatin1(value_);
  if (given == object_.name.trimmed()) return Outcome::taken;
  if (value_.empty()) return ignoreItem("T_NAME") ? Outcome::taken : Outcome::failed;
  object_.Name(given);
  return base_.updateObjectName(object_) != 0 ? Outcome::taken : Outcome::failed;
}

IEAsc::TableImport::Outcome IEAsc::TableImport::takeValue(const SField& column, std::string_view field) {
  if (field.size() > kLongestValue) {
    malformed();
    return Outcome::failed;
  }
  mend(field);
  char reason[kReasonCapacity] = {};
  if (!value_.empty() && TestDataType(value_.c_str(), column.type, reason) == 0) {
    ++badValues_;
    return offerToSkip(column, reason);
  }
  if (kaldex::fitToColumn(column, value_)) ++badValues_;
  storeCell(column);
  return Outcome::taken;
}

void IEAsc::TableImport::storeCell(const SField& column) {
  if (column.index < 0 || column.index >= cells_.Size()) return;
  cells_.at(column.index)->ChangeCell(value_.empty() ? QStringLiteral("") : fromLatin1(value_));
  changed_ = true;
}

IEAsc::TableImport::Outcome IEAsc::TableImport::offerToSkip(const SField& column, const char* reason) {
  const std::string_view key = fields_[static_cast<std::size_t>(keyColumn_)];
  QString detail =
      QStringLiteral("T_KEY = %1  %2 = %3 ").arg(fromLatin1(key), column.name, fromLatin1(value_));
  if (*reason != 0) detail += QStringLiteral("--> ") + QString::fromLatin1(reason);
  handler_.notePlace();
  return ignoreItem(detail) ? Outcome::skipRow : Outcome::failed;
}

bool IEAsc::TableImport::ignoreItem(const QString& detail) {
  return ask(QObject::tr("Arquivo INCONSISTENTE. Ignorar somente o item errado e continuar?") + detail);
}

int IEAsc::ImportAttributes(Category* category) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::ImportAttributes");
  return guardedImport(nullptr, [&] {
    if (category == nullptr) return invalidArgument("category");
    if (dataBase == nullptr) return invalidArgument("dataBase");
    if (!openFile("r")) return 0;
    // The declarations make columns, which stand or fall with the rows.
    DBTransactionBlock block(dataBase);
    if (TableImport(*this, *category).run() == 0) return 0;
    block.enableCommit();
    return 1;
  });
}

}  // namespace kaldex_v1
