#include "lib/csv/csv_reader.h"

#include <QObject>
#include <cstring>
#include <new>

#include "base/strings.h"
#include "base/tracer.h"
#include "kaldex/model/field.h"

inline namespace kaldex_v1 {

namespace {

constexpr std::size_t kLongestRecord = 28671;
constexpr std::size_t kLongestName = 8;

}  // namespace

bool SExtFormats::CsvReader::openAtHeader() {
  if (!handler_.openFile("r")) return false;
  handler_.clearLine();
  return handler_.readLine() != 0;
}

SExtFormats::CsvReader::Row SExtFormats::CsvReader::nextRow() {
  if (ended_) return Row::ended;
  handler_.clearLine();
  if (handler_.readLine() != 0) return Row::found;
  ended_ = true;
  if (handler_.lineRefused_) return Row::failed;
  return handler_.line[0] != 0 && !endsInComment() ? Row::found : Row::ended;
}

bool SExtFormats::CsvReader::endsInComment() const {
  return handler_.line[0] == '/' && handler_.line[1] == '/';
}

bool SExtFormats::CsvReader::split(LastField last) {
  std::string_view record = StrClean(handler_.line);
  const char* const separator = handler_.separator;
  if (record.size() > kLongestRecord) return malformed();
  if (separator[0] != ',' && record.find(',') != std::string_view::npos) {
    mended_ = record;
    kaldex::mendDecimalCommas(mended_.data());
    record = mended_;
  }
  const bool endsOpen = !record.empty() && std::strchr(separator, record.back()) != nullptr;
  if (last == LastField::dropped && endsOpen) record.remove_suffix(1);
  fields_.emplace(record, separator);
  std::string_view first;
  if (!fields_->next(first)) return malformed();
  first_ = first;
  return true;
}

bool SExtFormats::CsvReader::nextField(std::string_view& field) {
  if (first_) {
    field = *first_;
    first_.reset();
  } else if (!fields_->next(field)) {
    return false;
  }
  field = kaldex::stripped(field);
  return true;
}

bool SExtFormats::CsvReader::nextName(std::string& name) {
  std::string_view field;
  if (!nextField(field)) return false;
  name = field.substr(0, kLongestName);
  return true;
}

void SExtFormats::CsvReader::renameReserved(std::string& name) {
  if (kaldex::isReservedName(name) || name == "SPOSTGRESQL_ID") number(name);
}

void SExtFormats::CsvReader::number(std::string& name) {
  oldNames_.append(text(name));
  numbers_.cut(name, kaldex::NameNumbers::kReservedRoom);
  numbers_.append(name);
  newNames_.append(text(name));
}

void SExtFormats::CsvReader::insert(SFieldList& list, const SField& column, const char* expression) {
  if (list.Insert(new (std::nothrow) SField(column)) == 0) outOfMemory(expression);
}

bool SExtFormats::CsvReader::malformed() {
  handler_.inconsistent(handler_.line);
  return false;
}

bool SExtFormats::CsvReader::leavesValueOut() const {
  handler_.notePlace();
  return ask(QObject::tr("Arquivo INCONSISTENTE. Ignorar somente o item errado e continuar?") +
             headOf(handler_.line));
}

bool SExtFormats::CsvReader::proposeColumns(SFieldList& columns) {
  if (!split()) return false;
  std::string name;
  for (short index = 0; nextName(name); ++index) {
    renameReserved(name);
    insert(columns, SField(text(name), fieldText, kTextSize, kDecimals, index), "Attlistadd.Insert(Attraux)");
  }
  return true;
}

int SExtFormats::GetAttTab(SFieldList* list) {
  const Tracer tracer(__FILE__, __LINE__, "SExtFormats::GetAttTab");
  if (list == nullptr) return invalidArgument("list");
  bool proposed = false;
  shielded([&] {
    CsvReader reader(*this);
    proposed = reader.openAtHeader() && reader.proposeColumns(*list);
  });
  if (!proposed) FileClose();
  return proposed ? 1 : 0;
}

}  // namespace kaldex_v1
