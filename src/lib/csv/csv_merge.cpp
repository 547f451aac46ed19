#include <QFile>
#include <QObject>
#include <algorithm>
#include <cstdio>
#include <cstring>

#include "base/companion_file.h"
#include "base/strings.h"
#include "base/text_input.h"
#include "base/tracer.h"
#include "kaldex/model/catalog.h"
#include "kaldex/model/database.h"
#include "lib/csv/csv_reader.h"
#include "lib/csv/table_file.h"
#include "lib/frame/progress_scope.h"

inline namespace kaldex_v1 {

namespace {

constexpr int kTableEnding = 8;  // "_TAB.kdx"
constexpr int kBytesPerRow = 60;
constexpr int kLongestShown = 245;

bool begins(const char* text, const char* beginning) {
  return std::strncmp(text, beginning, std::strlen(beginning)) == 0;
}

// The lines of values that are put behind a table's rows. Blanks before a line, blank lines among them, are
// passed over.
class ValueLines {
 public:
  explicit ValueLines(const QString& path) : file_(std::fopen(kaldex::pathBytes(path).constData(), "r")) {}
  ~ValueLines() {
    if (file_ != nullptr) std::fclose(file_);
  }
  ValueLines(const ValueLines&) = delete;
  ValueLines& operator=(const ValueLines&) = delete;

  bool isOpen() const { return file_ != nullptr; }
  // Pass over the first word, the header; false when there is none.
  bool skipHeader() {
    std::string word(kLongestWord, 0);
    return kaldex::readWord(file_, word.data(), word.size()) != EOF;
  }
  // Read the next line; false for one that is too long for a record.
  bool next();
  // Empty behind the last line.
  const std::string& line() const { return line_; }

 private:
  static constexpr std::size_t kLongestWord = 32768;
  static constexpr std::size_t kLongestRecord = 28671;

  FILE* file_;
  std::string line_;
};

bool ValueLines::next() {
  line_.clear();
  int c = kaldex::readCharacter(file_);
  while (c == ' ' || (c >= '\t' && c <= '\r')) c = kaldex::readCharacter(file_);
  for (; c != EOF && c != '\n' && line_.size() <= kLongestRecord; c = kaldex::readCharacter(file_))
    line_ += static_cast<char>(c);
  return line_.size() <= kLongestRecord;
}

}  // namespace

/// Joins the handler's converted table with a file of further values, line by line, into a new one that takes
/// its place.
class SExtFormats::CsvMerge : private CsvReader {
 public:
  CsvMerge(SExtFormats& handler, Category& category) : CsvReader(handler), category_(category) {}

  /// Find the table column of each field: add those that there aren't, then join.
  int extendTable(SFieldList& fields, const QString& file);
  int join(const SFieldList& existing, const SFieldList& added, const QString& file);

 private:
  void addColumn(SField& field, short position);
  static void declare(kaldex::TableFile& out, const SField& column);
  bool skipHead(int columns);
  bool headEnded();
  bool isEnded(std::string_view row) const;
  bool joinRows(kaldex::TableFile& out, ValueLines& values);

  Category& category_;
  int declared_ = 0;  ///< columns of the old table
  SFieldList existing_;
  SFieldList added_;
  SFieldList columns_;
};

int SExtFormats::CsvMerge::extendTable(SFieldList& fields, const QString& file) {
  if (handler_.dataBase == nullptr) return invalidArgument("dataBase");
  const QString& table = category_.attributeTable;
  if (handler_.dataBase->loadTableFields(existing_, table) == 0 || existing_.Size() == 0) return 0;
  short position = 0;
  for (SField* field : fields) addColumn(*field, position++);
  if (added_.Size() > 0 && handler_.dataBase->addColumns(added_, table, 1, 0) == 0) return 0;
  if (handler_.UpdateCsvTable(&category_, existing_, added_, columns_, file) == 0) {
    return 0;
  }
  tellRenamed(oldNames(), newNames(), "  ");
  return 1;
}

void SExtFormats::CsvMerge::addColumn(SField& field, short position) {
  if (const SField* const known = existing_.find(field.name)) {
    return insert(columns_, *known, "Attlistalt.Insert(Attraux)");
  }
  std::string name = field.name.toLatin1().toStdString();
  const int changes = newNames().size();
  renameReserved(name);
  if (newNames().size() != changes) field.SetName(text(name));
  const SField column(field.name, field.type, field.size, field.decimals,
                      static_cast<short>(existing_.Size() + position), category_.attributeTable);
  insert(added_, column, "Attlistadd.Insert(Attraux)");
  insert(columns_, column, "Attlistalt.Insert(Attraux)");
}

int SExtFormats::CsvMerge::join(const SFieldList& existing, const SFieldList& added, const QString& file) {
  const QString path = QStringLiteral("%1/%2").arg(handler_.dataHome, handler_.dataFile);
  QString base = path;
  base.chop(kTableEnding);
  const QByteArray joined = kaldex::pathBeside(path, base + QStringLiteral("_tempupdate_TAB.kdx"));
  kaldex::TableFile out(joined);
  if (!out.isOpen()) return ioError();
  out.begin(category_.name);
  for (const SField* column : existing) declare(out, *column);
  for (const SField* column : added) out.column(*column);
  out.endHeader();
  if (!handler_.openFile("r")) return ioError();
  ValueLines values(file);
  if (!values.isOpen()) return ioError();
  if (!values.skipHeader()) return handler_.inconsistent("");
  if (!skipHead(existing.Size() + 1) || !joinRows(out, values)) return 0;
  out.line("END");
  const QByteArray table = handler_.openedPath();
  handler_.FileClose();
  if (!out.close() || std::rename(joined.constData(), table.constData()) != 0) return ioError();
  return 1;
}

void SExtFormats::CsvMerge::declare(kaldex::TableFile& out, const SField& column) {
  if (column.hasName(QStringLiteral("GEOID"))) {
    out.out().append("T_KEY ; TEXT ; 32 ; 0\nT_NAME ; TEXT ; 32 ; 0\n");
  } else {
    out.column(column);
  }
}

bool SExtFormats::CsvMerge::headEnded() {
  handler_.notePlace();
  show(QObject::tr("Arquivo INCONSISTENTE. Falta de informação ou erro nos parâmetros da seção INFO!") +
       "INFO_END ???");
  return false;
}

// A table that declares fewer columns than the database has must not lose rows for it.
bool SExtFormats::CsvMerge::skipHead(int columns) {
  do {
    handler_.clearLine();
    if (handler_.readLine() == 0) return headEnded();
  } while (!begins(handler_.line, "CATEGORY_OBJ"));
  for (int i = 0; i < columns && !begins(handler_.line, "INFO_END"); ++i) {
    handler_.clearLine();
    if (handler_.readLine() == 0) return headEnded();
    if (!begins(handler_.line, "INFO_END")) ++declared_;
  }
  return true;
}

// A separator behind the last value ends a row; one before a last value that is empty doesn't.
bool SExtFormats::CsvMerge::isEnded(std::string_view row) const {
  return !row.empty() && row.back() == ';' && std::count(row.begin(), row.end(), ';') >= declared_;
}

bool SExtFormats::CsvMerge::joinRows(kaldex::TableFile& out, ValueLines& values) {
  kaldex::ProgressScope progress(handler_.progressMaximum(kBytesPerRow));
  for (;;) {
    handler_.clearLine();
    const bool found = handler_.readLine() != 0;
    const std::string_view row = StrClean(handler_.line);
    if (handler_.lineRefused_ || progress.cancelled()) return false;
    if (!found || row == "END") return true;
    if (begins(handler_.line, "INFO_END")) continue;
    if (!values.next()) {
      show(QObject::tr("Arquivo INCONSISTENTE!") + text(values.line()).left(kLongestShown));
      return false;
    }
    out.out().append(row);
    out.out().append(isEnded(row) ? " " : " ; ");
    out.out().append(values.line());
    out.line(" ;");
    progress.step();
    if (out.ok()) continue;
    ioError();
    return false;
  }
}

int SExtFormats::UpdateCsvTable(Category* cat, SFieldList existing, SFieldList add, SFieldList,
                                QString file) {
  const Tracer tracer(__FILE__, __LINE__, "SExtFormats::UpdateCsvTable");
  return guarded([&] {
    if (cat == nullptr) return invalidArgument("cat");
    return CsvMerge(*this, *cat).join(existing, add, file);
  });
}

int SExtFormats::Import_CSV_TABUPDATE(Category* cat, SFieldList fields, QString file) {
  const Tracer tracer(__FILE__, __LINE__, "SExtFormats::Import_CSV_TABUPDATE");
  return guardedImport(nullptr, [&] {
    if (cat == nullptr) return invalidArgument("cat");
    return CsvMerge(*this, *cat).extendTable(fields, file);
  });
}

}  // namespace kaldex_v1
