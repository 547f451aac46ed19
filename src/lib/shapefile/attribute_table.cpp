#include "lib/shapefile/attribute_table.h"

#include <QObject>
#include <algorithm>
#include <cmath>

#include "base/latin1.h"
#include "base/number_text.h"
#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/shapefile.h"
#include "lib/shapefile/dbf_file.h"
#include "lib/shapefile/shape_layout.h"

namespace kaldex {

namespace {

constexpr int kMaxNameBytes = XBASE_FLDNAME_LEN_WRITE;
constexpr int kMaxTextWidth = XBASE_FLD_MAX_WIDTH;

DBFFieldType typeInTable(short type) {
  switch (type) {
    case fieldReal:
      return FTDouble;
    case fieldDate:
      return FTDate;
    case fieldText:
      return FTString;
    default:
      return FTInteger;
  }
}

QByteArray nameInTable(const SField& field) {
  return toLatin1(field.name).left(kMaxNameBytes);
}

bool addColumn(DBFHandle table, const SField& field) {
  const int width = field.type == fieldText ? std::min<int>(field.size, kMaxTextWidth) : field.size;
  return DBFAddField(table, nameInTable(field).constData(), typeInTable(field.type), width, field.decimals) !=
         -1;
}

// A cut name may meet another one; the table then has both, and its readers tell them apart by position only.
void reportNames(const SFieldList& columns) {
  JobReport* const report = JobReport::current();
  if (report == nullptr) return;
  QStringList names;
  for (const SField* field : columns) {
    const QString name = QString::fromLatin1(nameInTable(*field));
    if (name != field->name) report->renamed.append({field->name, name});
    if (names.contains(name, Qt::CaseInsensitive)) {
      report->note(QObject::tr("Mais de uma coluna da tabela se chama %1").arg(name));
    }
    names.append(name);
  }
}

}  // namespace

AttributeTable::~AttributeTable() {
  if (table_ != nullptr) abandonDbf(table_);
}

bool AttributeTable::open(const std::string& base, const SFieldList& columns) {
  if (!CreateDBaseTable(base.c_str(), columns)) return false;
  table_ = openDbf((base + ".dbf").c_str(), "rb+");
  if (table_ == nullptr) return false;
  reportNames(columns);
  for (int i = 0; i < columns.Size(); ++i) {
    columns_.push_back({columns.at(i)->name, table_->panFieldSize[i], table_->panFieldDecimals[i]});
  }
  // The mark behind the last row is written when the table is closed, not once a row.
  DBFSetWriteEndOfFileChar(table_, 0);
  return true;
}

// Numbers are printed here: the library prints with the process's locale, and several times slower, for the
// same bytes.
void AttributeTable::setReal(int column, double value) {
  char text[kNumberTextCapacity];
  const char* end = text + kNumberTextCapacity;
  if (std::isfinite(value))
    end = appendFixed(text, value, columns_[static_cast<std::size_t>(column)].decimals);
  putNumber(column, text, end);
}

void AttributeTable::setInteger(int column, int value) {
  setReal(column, value);
}

void AttributeTable::putNumber(int column, const char* begin, const char* end) {
  const Column& at = columns_[static_cast<std::size_t>(column)];
  char text[kMaxTextWidth + 1];
  const auto length = static_cast<std::size_t>(end - begin);
  const auto width = static_cast<std::size_t>(at.width);
  if (length > width) {
    losses_.badNumber(owner(), at.name);
    return put(column, "");
  }
  char* const digits = std::fill_n(text, width - length, ' ');
  *std::copy(begin, end, digits) = '\0';
  put(column, text);
}

void AttributeTable::setText(int column, const QString& text) {
  const Column& at = columns_[static_cast<std::size_t>(column)];
  Latin1Loss loss;
  QByteArray bytes = toLatin1(text, &loss);
  if (loss.count() != 0) losses_.characters(owner(), at.name, loss.characters().join(QString()));
  if (bytes.size() > at.width) {
    bytes.truncate(at.width);
    losses_.cutText(owner(), at.name, at.width);
  }
  setLatin1(column, bytes);
}

void AttributeTable::setLatin1(int column, const QByteArray& text) {
  put(column, text.constData());
}

// Without regard to the column's type: the library takes the text that it is given for a date as a number.
void AttributeTable::put(int column, const char* text) {
  DBFWriteAttributeDirectly(table_, row_, column, const_cast<char*>(text));
}

void AttributeTable::nextRow() {
  ++row_;
  owner_.clear();
}

QString AttributeTable::owner() const {
  return owner_.isEmpty() ? QObject::tr("registro %1").arg(row_ + 1) : owner_;
}

bool AttributeTable::ok() const {
  return table_ != nullptr && dbfWrites(table_);
}

bool AttributeTable::isFull() const {
  return !fitsTableFile(table_->nHeaderLength, table_->nRecordLength, static_cast<std::int64_t>(row_) + 1);
}

bool AttributeTable::close() {
  losses_.finish();
  if (table_ == nullptr) return true;
  DBFSetWriteEndOfFileChar(table_, 1);
  const bool whole = closeDbf(table_);
  table_ = nullptr;
  return whole;
}

}  // namespace kaldex

inline namespace kaldex_v1 {

bool CreateDBaseTable(const char* name, const SFieldList& fields) {
  const Tracer tracer(__FILE__, __LINE__, "CreateDBaseTable");
  if (name == nullptr) return false;
  const DBFHandle table = kaldex::createDbf((std::string(name) + ".dbf").c_str());
  if (table == nullptr) return false;
  for (const SField* field : fields) {
    if (!kaldex::addColumn(table, *field)) {
      kaldex::abandonDbf(table);
      return false;
    }
  }
  return kaldex::closeDbf(table);
}

}  // namespace kaldex_v1
