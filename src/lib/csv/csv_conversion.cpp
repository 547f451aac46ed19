#include <QFile>

#include "base/number_text.h"
#include "base/strings.h"
#include "base/tracer.h"
#include "kaldex/model/catalog.h"
#include "lib/csv/csv_reader.h"
#include "lib/csv/table_file.h"
#include "lib/frame/progress_scope.h"

inline namespace kaldex_v1 {

namespace {

constexpr int kEnding = 4;  // characters of the file's name that go
constexpr int kBytesPerRow = 60;
constexpr std::size_t kNumberWidth = 7;

QString convertedName(QString file) {
  file.chop(kEnding);
  return file + QStringLiteral("_TAB.kdx");
}

}  // namespace

/// Writes the handler's delimited file as a TABLE section into a file beside it.
class SExtFormats::CsvConversion : private CsvReader {
 public:
  CsvConversion(SExtFormats& handler, const Category& category, const SFieldList& fields, short key)
      : CsvReader(handler),
        category_(category),
        fields_(fields),
        key_(fields.Size() > 0 && fields.at(0)->name == QLatin1String("T_KEY") ? kHasKey : key),
        name_(convertedName(handler.dataFile)),
        table_(kaldex::pathBeside(inFolder(handler, handler.dataFile), inFolder(handler, name_))) {}

  int run();

 private:
  static constexpr short kHasKey = -1;
  static QString inFolder(const SExtFormats& handler, const QString& name) {
    return QStringLiteral("%1/%2").arg(handler.dataHome, name);
  }

  void writeHead();
  bool convertRows();
  bool writeRow();
  bool writeKey();
  void writeNumber();

  const Category& category_;
  const SFieldList& fields_;
  short key_;
  QString name_;
  kaldex::TableFile table_;
  std::string row_;
  long long rows_ = 0;
};

int SExtFormats::CsvConversion::run() {
  if (!table_.isOpen()) return ioError();
  writeHead();
  if (!handler_.openFile("r")) return ioError();
  // The header's names stand in the list of columns already.
  handler_.clearLine();
  handler_.readLine();
  const bool converted = convertRows();
  if (converted) table_.out().append("\nEND");
  const bool written = table_.close();
  handler_.FileClose();
  if (!converted) return 0;
  if (!written) return ioError();
  handler_.DataFile(name_);
  return 1;
}

void SExtFormats::CsvConversion::writeHead() {
  table_.begin(category_.name);
  if (key_ != kHasKey) table_.line("T_KEY ; TEXT ; 32 ;");
  for (const SField* column : fields_) table_.column(*column);
  table_.endHeader();
}

// What the last, failing read has left is a row too, even when it is nothing, unless it is a comment.
bool SExtFormats::CsvConversion::convertRows() {
  kaldex::ProgressScope progress(handler_.progressMaximum(kBytesPerRow));
  for (bool more = true; more;) {
    handler_.clearLine();
    more = handler_.readLine() != 0;
    if (handler_.lineRefused_ || progress.cancelled()) return false;
    if (!more && endsInComment()) break;
    if (!writeRow()) return false;
    progress.step();
  }
  return true;
}

bool SExtFormats::CsvConversion::writeRow() {
  row_ = StrClean(handler_.line);
  for (std::size_t i = 1; i < row_.size(); ++i) {
    if (row_[i] == ',' || row_[i] == '|') row_[i] = ';';
  }
  if (key_ == 0) {
    writeNumber();
  } else if (key_ > 0 && !writeKey()) {
    return false;
  }
  table_.line(row_);
  if (table_.ok()) return true;
  ioError();
  return false;
}

void SExtFormats::CsvConversion::writeNumber() {
  std::string number;
  kaldex::appendInt(number, ++rows_);
  for (std::size_t i = number.size(); i < kNumberWidth; ++i) table_.out().append('0');
  table_.out().append(number);
  table_.out().append(" ;");
}

bool SExtFormats::CsvConversion::writeKey() {
  kaldex::DelimitedFields fields(row_, ";");
  std::string_view field;
  // Splitting misses an empty first field, but not the columns behind it.
  const short first = !row_.empty() && row_[0] == ';' ? 1 : 0;
  for (short i = first; i < key_; ++i) {
    if (fields.next(field)) continue;
    if (i > 0) return malformed();
    ioError();
    return false;
  }
  field = kaldex::stripped(field);
  // A reader would take the row for a comment.
  if (field.substr(0, 2) == "//") return malformed();
  table_.out().append(field);
  table_.out().append(" ;");
  return true;
}

int SExtFormats::ConvertCsvToAscii(Category* cat, SFieldList fields, short key) {
  const Tracer tracer(__FILE__, __LINE__, "SExtFormats::ConvertCsvToAscii");
  return guarded([&] {
    if (cat == nullptr) return invalidArgument("cat");
    return CsvConversion(*this, *cat, fields, key).run();
  });
}

int SExtFormats::Import_CSV_TABCREATE(Category* cat, SFieldList fields, short key) {
  const Tracer tracer(__FILE__, __LINE__, "SExtFormats::Import_CSV_TABCREATE");
  ConvertCsvToAscii(cat, fields, key);
  return 1;
}

}  // namespace kaldex_v1
