#include <sys/stat.h>

#include <QFile>
#include <QHash>
#include <QObject>
#include <QSet>
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>

#include "base/character_class.h"
#include "base/companion_file.h"
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

bool isComment(std::string_view line) {
  return line.substr(0, 2) == "//";
}

// A first line "sep=;" tells spreadsheets the separator, and is none of the table's; 0 for any other line.
char toldSeparator(std::string_view line) {
  constexpr std::string_view word = "sep=";
  while (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  const bool quoted = line.size() > 2 && line.front() == '"' && line.back() == '"';
  if (quoted) line = line.substr(1, line.size() - 2);
  const bool tells = line.size() == word.size() + 1 && qstrnicmp(line.data(), word.data(), word.size()) == 0;
  return tells ? line.back() : '\0';
}

bool areOneFile(const QByteArray& one, const QByteArray& other) {
  struct stat ofOne {};
  struct stat ofOther {};
  return ::stat(one.constData(), &ofOne) == 0 && ::stat(other.constData(), &ofOther) == 0 &&
         ofOne.st_dev == ofOther.st_dev && ofOne.st_ino == ofOther.st_ino;
}

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
  /// Whether a line is no record: blank, a comment or what tells the separator.
  bool passesOver(std::string_view line);
  bool takesSeparator(std::string_view line);
  bool addLines(std::string_view line, QString& error);
  void chooseSeparator(std::string_view header);
  void takeHeader();
  void nameColumn(std::string& name);
  void fitRow();
  void keepFirst(std::string& field);
  void writeRecord();
  void cleanField(std::string& field);
  bool isUnwanted(char c) const;
  bool isDecimalComma(const std::string& field, std::size_t at) const;

  CsvCleaner& cleaner_;
  const CsvQuestion& question_;
  kaldex::LineSource source_;
  kaldex::TextOutput out_;
  kaldex::QuotedRecord record_;
  char told_ = 0;
  char separator_ = 0;
  char newSeparator_ = 0;
  std::size_t columns_ = 0;
  bool inHeader_ = false;
  QSet<QString> names_;
  QHash<QString, int> numbers_;  ///< the last one that a name got
  bool anything_ = false;        ///< whether a record was written
};

bool CsvCleaner::Walk::run(QString& error) {
  std::string_view line;
  while (source_.next(line)) {
    if (passesOver(line)) continue;
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
  if (out_.flush() && !source_.hasFailed()) return true;
  error = QObject::tr("Erro de I/O.");
  return false;
}

bool CsvCleaner::Walk::passesOver(std::string_view line) {
  const std::string_view text = line.substr(std::min(line.find_first_not_of(" \t\r"), line.size()));
  if (takesSeparator(text)) return true;
  if (!isComment(text)) return text.empty() && !source_.isCut();
  while (source_.isCut() && source_.next(line)) {
  }
  return true;
}

bool CsvCleaner::Walk::takesSeparator(std::string_view line) {
  if (source_.number() != 1 || !question_.separator.isNull()) return false;
  told_ = toldSeparator(line);
  return told_ != 0;
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
    separator_ = told_ != 0 ? told_ : kaldex::shownSeparator(header, true);
  } else {
    const QByteArray separator = question_.separator.toLatin1();
    separator_ = separator.isEmpty() ? '\0' : separator[0];
  }
  record_ = kaldex::QuotedRecord(separator_);
  const QByteArray wanted = question_.newSeparator.toLatin1();
  // Who parts fields at any of three separators doesn't know a fourth.
  const bool known = separator_ == 0 || std::strchr(",;|", separator_) != nullptr;
  const char usual = known || !question_.anySeparator ? separator_ : ';';
  newSeparator_ = wanted.isEmpty() ? usual : wanted[0];
}

void CsvCleaner::Walk::takeHeader() {
  columns_ = record_.fields().size();
  inHeader_ = true;
  for (std::string& name : record_.fields()) {
    cleanField(name);
    if (question_.wholeWords) {
      std::replace_if(
          name.begin(), name.end(),
          [](char c) { return kaldex::isBlankCharacter(static_cast<unsigned char>(c)); }, '_');
    }
    nameColumn(name);
  }
  inHeader_ = false;
}

void CsvCleaner::Walk::nameColumn(std::string& name) {
  // A declaration begins with the name.
  if (isComment(name)) {
    name[1] = '_';
    ++cleaner_.changedFields_;
  }
  const bool nameless = name.empty() || name == "0";
  const std::string wanted = nameless ? "COL" : name.substr(0, kShortName);
  if (nameless) name.clear();
  const bool changes = nameless || names_.contains(shortName(name));
  if (changes) ++cleaner_.changedFields_;
  int& number = numbers_[shortName(wanted)];
  while (name.empty() || names_.contains(shortName(name))) {
    std::string suffix;
    kaldex::appendInt(suffix, ++number);
    name = wanted.substr(0, kShortName - suffix.size()) + suffix;
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
  keepFirst(fields.front());
}

// What a line begins with must not hide from readers what follows: they miss an empty field there, and take
// what begins "//" for a comment.
void CsvCleaner::Walk::keepFirst(std::string& field) {
  if (isComment(field)) {
    field[1] = ' ';
  } else if (question_.needsFirst && field.empty()) {
    field = "0";
  } else {
    return;
  }
  ++cleaner_.changedFields_;
}

// The characters that part fields, besides the separator itself, and what no line can hold.
bool CsvCleaner::Walk::isUnwanted(char c) const {
  // What is to be found by the header must not be hidden by its names.
  const bool all = question_.anySeparator || (inHeader_ && question_.separator.isNull());
  const bool parts = all && (c == ',' || c == ';' || c == '|');
  // Without a separator both are 0, which no line can hold either.
  return c == separator_ || c == newSeparator_ || parts || c == '\r' || c == '\0';
}

// As the readers of delimited lines see it.
bool CsvCleaner::Walk::isDecimalComma(const std::string& field, std::size_t at) const {
  const auto digitAt = [&](std::size_t i) { return i < field.size() && kaldex::isDecimalDigit(field[i]); };
  return field[at] == ',' && separator_ != ',' && at > 0 && digitAt(at - 1) && digitAt(at + 1);
}

void CsvCleaner::Walk::cleanField(std::string& field) {
  bool changed = false;
  for (std::size_t i = 0; i < field.size(); ++i) {
    if (!isUnwanted(field[i])) continue;
    field[i] = isDecimalComma(field, i) ? '.' : ' ';
    changed = true;
  }
  const std::string_view inside = kaldex::stripped(field);
  if (inside.size() != field.size()) field = std::string(inside);
  if (changed) ++cleaner_.changedFields_;
}

// No line end behind the last record: readers would take it for one more, empty row. Nor is an empty line
// one.
void CsvCleaner::Walk::writeRecord() {
  if (record_.fields().size() == 1 && record_.fields().front().empty()) {
    ++cleaner_.changedRows_;
    return;
  }
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
  changedFields_ = changedRows_ = 0;
  if (!kaldex::LineSource(from).isOpen()) {
    error = QObject::tr("Não foi possível ler o arquivo: ") + from;
    return false;
  }
  const QByteArray target = QFile::encodeName(to);
  const bool same = areOneFile(kaldex::pathBytes(from), target);
  const std::unique_ptr<FILE, Closer> out(same ? nullptr : std::fopen(target.constData(), "wb"));
  if (out == nullptr) {
    error = QObject::tr("Erro de I/O.");
    return false;
  }
  return Walk(*this, from, out.get()).run(error);
}

}  // namespace kaldex_v1
