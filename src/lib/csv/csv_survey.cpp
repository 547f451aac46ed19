#include <QObject>
#include <QSet>
#include <algorithm>

#include "base/character_class.h"
#include "base/tracer.h"
#include "kaldex/csv.h"
#include "lib/csv/csv_line.h"
#include "lib/csv/line_source.h"

inline namespace kaldex_v1 {

namespace {

using kaldex::CsvLine;
using kaldex::LineSource;

constexpr char kTexts[CsvFinding::kinds][64] = {
    QT_TRANSLATE_NOOP("QObject", "marca de ordem de bytes (BOM)"),
    QT_TRANSLATE_NOOP("QObject", "texto em UTF-16"),
    QT_TRANSLATE_NOOP("QObject", "retorno de carro (CR)"),
    QT_TRANSLATE_NOOP("QObject", "caractere nulo (NUL)"),
    QT_TRANSLATE_NOOP("QObject", "separador dentro de um campo entre aspas"),
    QT_TRANSLATE_NOOP("QObject", "aspas que não se fecham na linha"),
    QT_TRANSLATE_NOOP("QObject", "campo entre aspas, que ficariam no valor"),
    QT_TRANSLATE_NOOP("QObject", "outro separador (, ; ou |) dentro de um campo"),
    QT_TRANSLATE_NOOP("QObject", "número de campos diferente do cabeçalho"),
    QT_TRANSLATE_NOOP("QObject", "coluna sem nome"),
    QT_TRANSLATE_NOOP("QObject", "nome de coluna repetido em 8 letras"),
    QT_TRANSLATE_NOOP("QObject", "registro sem chave"),
    QT_TRANSLATE_NOOP("QObject", "primeiro campo vazio, que a leitura não vê"),
    QT_TRANSLATE_NOOP("QObject", "linha longa demais"),
};

constexpr int kShortName = 8;

}  // namespace

QString CsvFinding::text() const {
  return QObject::tr(kTexts[kind]);
}

class CsvSurvey::Walk {
 public:
  Walk(CsvSurvey& survey, const QString& path, const CsvQuestion& question)
      : survey_(survey), question_(question), source_(path) {}

  void run();

 private:
  bool readMark(std::string_view& line);
  void trim(std::string_view& line);
  void lookAtBytes(std::string_view line);
  void lookAtQuotes(std::size_t columns);
  void readHeader(std::string_view line);
  int findKey() const;
  void lookAtNames(std::string_view line);
  void readRow(std::string_view line);
  std::size_t columnOf(std::string_view line, std::string_view field) const;
  void found(CsvFinding::Kind kind, std::size_t at);

  CsvSurvey& survey_;
  const CsvQuestion& question_;
  LineSource source_;
  char separator_ = 0;
  std::size_t shift_ = 0;  ///< bytes of the line before what is looked at
  CsvLine parts_;
};

void CsvSurvey::Walk::run() {
  survey_.readable_ = source_.isOpen();
  std::string_view line;
  bool header = true;
  bool rest = false;  // of a line that is too long
  while (source_.next(line)) {
    shift_ = 0;
    const bool first = source_.number() == 1 && !rest;
    if (first && !readMark(line)) return;
    const bool isRest = rest;
    rest = source_.isCut();
    if (isRest) continue;
    lookAtBytes(line);
    trim(line);
    if (line.substr(0, 2) == "//") continue;
    if (rest || line.size() > LineSource::kLongestRecord) found(CsvFinding::longLine, 0);
    if (line.empty()) continue;
    if (header) {
      readHeader(line);
    } else {
      readRow(line);
    }
    header = false;
  }
  if (source_.hasFailed()) survey_.readable_ = false;
}

bool CsvSurvey::Walk::readMark(std::string_view& line) {
  const auto begins = [&](std::string_view mark) { return line.substr(0, mark.size()) == mark; };
  const bool zeros = line.size() > 1 && (line[0] == 0) != (line[1] == 0);
  if (begins("\xff\xfe") || begins("\xfe\xff") || zeros) {
    found(CsvFinding::utf16, 0);
    return false;
  }
  constexpr std::size_t markSize = 3;
  if (begins("\xef\xbb\xbf")) {
    found(CsvFinding::byteOrderMark, 0);
    line.remove_prefix(markSize);
    shift_ = markSize;
  }
  return true;
}

// As readers do, even if blanks part the fields.
void CsvSurvey::Walk::trim(std::string_view& line) {
  const std::size_t blanks = std::min(line.find_first_not_of(" \t"), line.size());
  line.remove_prefix(blanks);
  shift_ += blanks;
  while (!line.empty() && kaldex::isBlankCharacter(static_cast<unsigned char>(line.back())))
    line.remove_suffix(1);
}

void CsvSurvey::Walk::lookAtBytes(std::string_view line) {
  const std::size_t zero = line.find('\0');
  if (zero != std::string_view::npos) found(CsvFinding::nul, zero);
  const std::size_t carriageReturn = line.find('\r');
  if (carriageReturn != std::string_view::npos) found(CsvFinding::carriageReturn, carriageReturn);
}

void CsvSurvey::Walk::found(CsvFinding::Kind kind, std::size_t at) {
  if (survey_.counts_[kind]++ >= kListed) return;
  CsvFinding finding;
  finding.kind = kind;
  finding.line = source_.number();
  finding.column = static_cast<long long>(shift_ + at) + 1;
  survey_.findings_.push_back(finding);
}

// Where quotes show why a line has the wrong number of fields, they are what is told.
void CsvSurvey::Walk::lookAtQuotes(std::size_t columns) {
  const auto tell = [this](CsvFinding::Kind kind, std::size_t at) {
    if (at != CsvLine::npos) found(kind, at);
    return at != CsvLine::npos;
  };
  const bool separators = tell(CsvFinding::quotedSeparator, parts_.quotedSeparator);
  const bool open = tell(CsvFinding::openQuote, parts_.openQuote);
  if (!separators && !open) tell(CsvFinding::quotedField, parts_.quotedField);
  if (!separators) tell(CsvFinding::foreignSeparator, parts_.foreignSeparator);
  if (!separators && !open && parts_.fields.size() != columns) found(CsvFinding::ragged, 0);
}

void CsvSurvey::Walk::readHeader(std::string_view line) {
  if (question_.separator.isNull()) {
    const char shown = kaldex::shownSeparator(line, question_.quotes);
    survey_.separator_ = shown != 0 ? QString(QLatin1Char(shown)) : QStringLiteral("");
  } else {
    survey_.separator_ = question_.separator;
  }
  const QByteArray separator = survey_.separator_.toLatin1();
  separator_ = separator.isEmpty() ? '\0' : separator[0];
  kaldex::takeApart(line, separator_, question_.anySeparator, question_.quotes, parts_);
  for (const std::string_view field : parts_.fields) {
    survey_.columns_.push_back({QString::fromLatin1(field.data(), static_cast<int>(field.size())), 0});
  }
  survey_.keyColumn_ = findKey();
  lookAtQuotes(parts_.fields.size());
  // The last name of a header that goes on is no whole one.
  if (!source_.isCut()) lookAtNames(line);
}

int CsvSurvey::Walk::findKey() const {
  const auto count = static_cast<int>(survey_.columns_.size());
  for (int i = 0; i < count; ++i) {
    const QString& name = survey_.columns_[static_cast<std::size_t>(i)].name;
    if (!question_.key.isEmpty() && name.compare(question_.key, Qt::CaseInsensitive) == 0) return i + 1;
  }
  const int number = question_.key.toInt();
  return number >= 1 && number <= count ? number : 0;
}

void CsvSurvey::Walk::lookAtNames(std::string_view line) {
  QSet<QString> seen;
  for (std::size_t i = 0; i < parts_.fields.size(); ++i) {
    const std::string_view field = parts_.fields[i];
    const std::size_t at = columnOf(line, field);
    if (field.empty() || (field == "0" && question_.shortNames)) found(CsvFinding::emptyName, at);
    const QString name = survey_.columns_[i].name.left(kShortName).toUpper();
    if (question_.shortNames && !field.empty() && seen.contains(name)) found(CsvFinding::repeatedName, at);
    seen.insert(name);
  }
}

std::size_t CsvSurvey::Walk::columnOf(std::string_view line, std::string_view field) const {
  return static_cast<std::size_t>(field.data() - line.data());
}

void CsvSurvey::Walk::readRow(std::string_view line) {
  kaldex::takeApart(line, separator_, question_.anySeparator, question_.quotes, parts_);
  ++survey_.rows_;
  const std::size_t columns = survey_.columns_.size();
  lookAtQuotes(columns);
  for (std::size_t i = 0; i < std::min(columns, parts_.fields.size()); ++i) {
    int& longest = survey_.columns_[i].longestValue;
    longest = std::max(longest, static_cast<int>(parts_.fields[i].size()));
  }
  if (question_.needsFirst && parts_.fields[0].empty()) found(CsvFinding::emptyFirst, 0);
  const auto key = static_cast<std::size_t>(survey_.keyColumn_);
  if (key == 0 || key > parts_.fields.size() || !parts_.fields[key - 1].empty()) return;
  found(CsvFinding::emptyKey, columnOf(line, parts_.fields[key - 1]));
}

CsvSurvey::CsvSurvey(const QString& path, const CsvQuestion& question) {
  const Tracer tracer(__FILE__, __LINE__, "CsvSurvey::CsvSurvey");
  Walk(*this, path, question).run();
}

bool CsvSurvey::isPlain() const {
  for (int kind = 0; kind < CsvFinding::kinds; ++kind) {
    if (kind != CsvFinding::quotedField && counts_[kind] > 0) return false;
  }
  return true;
}

}  // namespace kaldex_v1
