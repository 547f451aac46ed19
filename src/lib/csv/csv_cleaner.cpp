#include <QFile>
#include <QObject>
#include <QSet>
#include <algorithm>
#include <cstdio>
#include <memory>

#include "base/number_text.h"
#include "base/text_output.h"
#include "base/tracer.h"
#include "kaldex/csv.h"
#include "lib/csv/csv_line.h"
#include "lib/csv/line_source.h"
#include "lib/frame/delimited_record.h"

inline namespace kaldex_v1 {

namespace {

struct Closer {
  void operator()(FILE* file) const { std::fclose(file); }
};

constexpr std::size_t kShortName = 8;

QString shortName(const std::string& name) {
  return QString::fromLatin1(name.data(), static_cast<int>(std::min(name.size(), kShortName))).toUpper();
}

}  // namespace

class CsvCleaner::Walk {
 public:
  Walk(CsvCleaner& cleaner, const QString& from, FILE* out)
      : cleaner_(cleaner), question_(cleaner.question_), source_(from), out_(out), record_(0) {}

  bool run(QString& error);

 private:
  bool addLines(std::string_view line, QString& error);
  void chooseSeparator(std::string_view header);
  void takeHeader();
  void nameColumn(std::string& name);
  void fitRow();
  void writeRecord();
  void cleanField(std::string& field);
  bool isUnwanted(char c) const;

  CsvCleaner& cleaner_;
  const CsvQuestion& question_;
  kaldex::LineSource source_;
  kaldex::TextOutput out_;
  kaldex::QuotedRecord record_;
  char separator_ = 0;
  char newSeparator_ = 0;
  std::size_t columns_ = 0;
  QSet<QString> names_;
  bool anything_ = false;  ///< whether a record was written
};

bool CsvCleaner::Walk::run(QString& error) {
  if (!source_.isOpen()) {
    error = QObject::tr("Não foi possível ler o arquivo: ");
    return false;
  }
  std::string_view line;
  while (source_.next(line)) {
    if (line.find_first_not_of(" \t\r") == std::string_view::npos) continue;
    const bool header = columns_ == 0;
    if (header) chooseSeparator(line);
    record_.clear();
    if (!addLines(line, error)) return false;
    if (header) {
      takeHeader();
    } else {
      fitRow();
    }
    writeRecord();
  }
  if (out_.flush()) return true;
  error = QObject::tr("Erro de I/O.");
  return false;
}

bool CsvCleaner::Walk::addLines(std::string_view line, QString& error) {
  const long long first = source_.number();
  for (bool more = true; more && !source_.isCut() && record_.size() <= kaldex::LineSource::kLongestRecord;
       more = source_.next(line)) {
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (record_.add(line)) return true;
  }
  error = QObject::tr("Aspas ou linha sem fim, que começam na linha %1").arg(first);
  return false;
}

void CsvCleaner::Walk::chooseSeparator(std::string_view header) {
  if (question_.separator.isNull()) {
    const char* const shown = kaldex::detectSeparator(kaldex::stripped(header));
    separator_ = shown != nullptr ? shown[0] : '\0';
  } else {
    const QByteArray separator = question_.separator.toLatin1();
    separator_ = separator.isEmpty() ? '\0' : separator[0];
  }
  record_ = kaldex::QuotedRecord(separator_);
  const QByteArray wanted = question_.newSeparator.toLatin1();
  newSeparator_ = wanted.isEmpty() ? separator_ : wanted[0];
}

void CsvCleaner::Walk::takeHeader() {
  columns_ = record_.fields().size();
  for (std::string& name : record_.fields()) {
    cleanField(name);
    if (question_.wholeWords) std::replace(name.begin(), name.end(), ' ', '_');
    nameColumn(name);
  }
}

void CsvCleaner::Walk::nameColumn(std::string& name) {
  const bool nameless = name.empty() || name == "0";
  const std::string wanted = nameless ? "COL" : name.substr(0, kShortName);
  if (nameless) name.clear();
  for (int number = 1; name.empty() || names_.contains(shortName(name)); ++number) {
    std::string suffix;
    kaldex::appendInt(suffix, number);
    name = wanted.substr(0, kShortName - suffix.size()) + suffix;
    if (number == 1) ++cleaner_.changedFields_;
  }
  names_.insert(shortName(name));
}

void CsvCleaner::Walk::fitRow() {
  std::vector<std::string>& fields = record_.fields();
  const std::size_t before = fields.size();
  for (std::string& field : fields) cleanField(field);
  while (fields.size() > columns_ && fields.back().empty()) fields.pop_back();
  if (fields.size() < columns_) fields.resize(columns_);
  if (fields.size() != before) ++cleaner_.changedRows_;
  if (!question_.needsFirst || !fields.front().empty()) return;
  fields.front() = "0";
  ++cleaner_.changedFields_;
}

// The characters that part fields, besides the separator itself, and what no line can hold.
bool CsvCleaner::Walk::isUnwanted(char c) const {
  const bool parts = question_.anySeparator && (c == ',' || c == ';' || c == '|');
  // Without a separator both are 0, which no line can hold either.
  return c == separator_ || c == newSeparator_ || parts || c == '\r' || c == '\0';
}

void CsvCleaner::Walk::cleanField(std::string& field) {
  bool changed = false;
  for (char& c : field) {
    if (!isUnwanted(c)) continue;
    c = ' ';
    changed = true;
  }
  field = std::string(kaldex::stripped(field));
  if (changed) ++cleaner_.changedFields_;
}

// No line end behind the last record: readers would take it for one more, empty row.
void CsvCleaner::Walk::writeRecord() {
  if (anything_) out_.append('\n');
  anything_ = true;
  bool first = true;
  for (const std::string& field : record_.fields()) {
    if (!first) out_.append(newSeparator_);
    out_.append(field);
    first = false;
  }
}

bool CsvCleaner::clean(const QString& from, const QString& to, QString& error) {
  const Tracer tracer(__FILE__, __LINE__, "CsvCleaner::clean");
  const std::unique_ptr<FILE, Closer> out(std::fopen(QFile::encodeName(to).constData(), "wb"));
  if (out == nullptr) {
    error = QObject::tr("Erro de I/O.");
    return false;
  }
  return Walk(*this, from, out.get()).run(error);
}

}  // namespace kaldex_v1
