// Delimited tables: what is looked at and cleaned before a handler sees them, and the operations that read
// them. The first byte chooses the operation and what the question wants, the second the separator and
// whether the file is cleaned first, the third the answers to questions; what follows is the file. A byte 2
// parts off a second file, of further values.

#include "kaldex/csv.h"

#include <QFile>
#include <memory>

#include "fuzz/support/input.h"
#include "fuzz/support/workplace.h"
#include "kaldex/ascii.h"
#include "kaldex/job_report.h"
#include "kaldex/model/field.h"

namespace {

using kaldex::fuzz::Workplace;

constexpr char kFile[] = "in.csv";
constexpr char kClean[] = "clean.csv";
constexpr char kMore[] = "more.csv";

CsvQuestion questionOf(unsigned wishes, unsigned form) {
  static const QString kSeparators[] = {QString(), ";", ",", "|", "\t", ""};
  static const QString kKeys[] = {QString(), "1", "2", "NOME"};
  CsvQuestion question;
  question.separator = kSeparators[(form & 7) % 6];
  question.key = kKeys[(form >> 3) & 3];
  question.anySeparator = (wishes & 0x10) != 0;
  question.shortNames = (wishes & 0x20) != 0;
  question.needsFirst = (wishes & 0x40) != 0;
  question.wholeWords = (wishes & 0x80) != 0;
  return question;
}

// What no cleaning can mend: marks of another encoding, values without a column, no value for the key, and
// empty fields before a separator that is a blank.
bool staysInPlace(CsvFinding::Kind kind) {
  return kind == CsvFinding::byteOrderMark || kind == CsvFinding::utf16 || kind == CsvFinding::ragged ||
         kind == CsvFinding::emptyKey || kind == CsvFinding::longLine;
}

void cleanAndLook(const QString& from, const QString& to, CsvQuestion question) {
  QString error;
  if (!CsvCleaner(question).clean(from, to, error)) return;
  question.quotes = false;
  // Readers that part fields at any of three separators are given one of these.
  if (question.anySeparator && question.separator == "\t") question.separator = ";";
  const CsvSurvey clean(to, question);
  for (const CsvFinding& found : clean.findings()) {
    if (staysInPlace(found.kind)) continue;
    kaldex::fuzz::finding(QString("line %1, column %2 of a cleaned file: %3")
                              .arg(found.line)
                              .arg(found.column)
                              .arg(found.text()));
  }
}

// A table that nothing is found in has as many rows as the survey counts.
void countRows(int imported, const CsvSurvey& survey) {
  if (imported == 0 || !survey.isPlain()) return;
  const long long rows = JobReport::current()->read["rows"];
  if (rows != survey.rows()) {
    kaldex::fuzz::finding(QString("%1 rows were read, %2 counted").arg(rows).arg(survey.rows()));
  }
}

void readOne(unsigned what, SExtFormats& handler, const CsvSurvey& survey) {
  Workplace& workplace = Workplace::instance();
  Category* const lots = workplace.objects("Lotes");
  Category* const objects = workplace.objects("Objetos");
  SFieldList columns;
  switch (what % 5) {
    case 0:
      if (handler.GetAttTab(&columns) != 0) {
        handler.FileClose();
        for (SField* column : columns) column->type = static_cast<short>((what >> 4) & 3);
        if (handler.ConvertCsvToAscii(objects, columns, static_cast<short>(survey.keyColumn())) != 0) {
          handler.ImportAttributes(objects);
        }
      }
      QFile::remove(workplace.path("in_TAB.kdx"));
      QFile::remove(workplace.path("clean_TAB.kdx"));
      return;
    case 1:
      return countRows(handler.Import_CSV_TAB_UPDATE(lots), survey);
    case 2:
      handler.Import_SPACESTAT_TAB(lots);
      return;
    case 3:
      return countRows(handler.Import_CSV_TAB_NOTSPACIAL(workplace.objects("Tabela")), survey);
    default:
      columns.Append(new SField("NOVA", 3, 17, 8, 0));
      columns.Append(new SField("AREA_M2", 1, 17, 8, 1));
      if (handler.Import_CSV_TABUPDATE(lots, columns, workplace.path(kMore)) != 0) {
        handler.ImportAttributes(lots);
      }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Workplace& workplace = Workplace::instance();
  workplace.needObjects();
  kaldex::fuzz::Input input(data, size);
  const unsigned what = input.byte();
  const unsigned form = input.byte();
  const std::uint8_t answers = input.byte();
  std::string_view table = input.rest();
  const std::size_t end = std::min(table.find('\2'), table.size());
  workplace.write(kMore, kaldex::fuzz::expandRuns(table.substr(std::min(end + 1, table.size()))));
  workplace.write(kFile, kaldex::fuzz::expandRuns(table.substr(0, end)));
  CsvQuestion question = questionOf(what, form);
  cleanAndLook(workplace.path(kFile), workplace.path(kClean), question);
  const bool cleaned = (form & 0x80) != 0;
  question.quotes = !cleaned;
  const char* const name = cleaned ? kClean : kFile;
  if (what % 5 == 3) question.shortNames = question.needsFirst = true;
  const CsvSurvey survey(workplace.path(name), question);
  workplace.undone(Workplace::thematic, answers, [&] {
    const DBTransactionBlock block(&workplace.dataBase());
    const auto handler = std::make_unique<IEAsc>();
    workplace.init(*handler, Workplace::thematic, name, 0);
    handler->SetSeparator(survey.separator().toLatin1().constData());
    readOne(what, *handler, survey);
  });
  return 0;
}
