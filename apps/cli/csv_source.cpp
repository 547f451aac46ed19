#include "cli/csv_source.h"

#include <QFile>
#include <QFileInfo>
#include <cstring>

#include "base/companion_file.h"
#include "cli/job.h"
#include "cli/texts.h"

namespace kaldex::cli {

namespace {

// Whether a file has a byte-order mark, a carriage return or a NUL: a quick look.
bool mayHoldMended(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return false;
  QByteArray block(1 << 16, Qt::Uninitialized);
  bool first = true;
  for (qint64 size = 0; (size = file.read(block.data(), block.size())) > 0; first = false) {
    const auto length = static_cast<std::size_t>(size);
    const bool marked = first && size > 1 && static_cast<unsigned char>(block[0]) >= 0xEF;
    if (marked || std::memchr(block.constData(), '\r', length) != nullptr ||
        std::memchr(block.constData(), '\0', length) != nullptr) {
      return true;
    }
  }
  return false;
}

}  // namespace

bool CsvSource::prepare() {
  name_ = QFileInfo(context_.options.file).fileName();
  if (context_.path != context_.options.file) tellMended();
  if (!(context_.options.quoted || needsSeparator() ? clean() : place())) return false;
  const QString path = folder_.filePath(name_);
  context_.job.conversation().nameFile(path, context_.options.file);
  survey_.emplace(path, question_);
  if (!survey_->isReadable()) {
    context_.job.fail(Say::tr("Não foi possível ler o arquivo %1.").arg(context_.options.file));
    return false;
  }
  return tellFindings();
}

// A reader that parts fields at certain characters finds none of another separator's.
bool CsvSource::needsSeparator() {
  const QString& separator = question_.separator;
  if (!question_.anySeparator || separator.isEmpty() || QStringLiteral(",;|").contains(separator))
    return false;
  question_.newSeparator = QStringLiteral(";");
  return true;
}

// What the preparation of every text has mended stood somewhere, too. Most files are mended in their encoding
// only: these need no second look.
void CsvSource::tellMended() {
  if (!mayHoldMended(context_.options.file)) return;
  const CsvSurvey original(context_.options.file, question_);
  for (const CsvFinding& finding : original.findings()) {
    if (finding.kind > CsvFinding::carriageReturn) continue;
    Job::report().note(Say::tr("Linha %1, coluna %2: %3 (%4 no arquivo); resolvido numa cópia.")
                           .arg(finding.line)
                           .arg(finding.column)
                           .arg(finding.text())
                           .arg(original.count(finding.kind)));
    if (finding.kind == CsvFinding::carriageReturn) return;
  }
}

bool CsvSource::clean() {
  CsvCleaner cleaner(question_);
  QString error;
  if (!folder_.isValid() || !cleaner.clean(context_.path, folder_.filePath(name_), error)) {
    context_.job.fail(context_.options.file + QStringLiteral(": ") + error);
    return false;
  }
  question_.quotes = false;
  if (!question_.newSeparator.isEmpty()) question_.separator = question_.newSeparator;
  if (cleaner.changedFields() + cleaner.changedRows() > 0) {
    Job::report().note(Say::tr("Limpeza: %1 campos mudados, %2 registros completados ou encurtados.")
                           .arg(cleaner.changedFields())
                           .arg(cleaner.changedRows()));
  }
  return true;
}

// A link does where there are links: nothing is written through it.
bool CsvSource::place() {
  const QByteArray target = pathBytes(QFileInfo(context_.path).absoluteFilePath());
  const QString copy = folder_.filePath(name_);
  const bool placed =
      folder_.isValid() && (QFile::link(QFile::decodeName(target), copy) || QFile::copy(context_.path, copy));
  if (!placed) context_.job.fail(Say::tr("Não foi possível criar uma pasta temporária."));
  return placed;
}

bool CsvSource::tellFindings() {
  const long long quoted = survey_->count(CsvFinding::quotedField);
  if (quoted > 0) {
    Job::report().note(Say::tr("%1 campos têm aspas, que ficam no valor; --quoted as retira.").arg(quoted));
  }
  if (survey_->isPlain()) return true;
  for (const CsvFinding& finding : survey_->findings()) {
    if (finding.kind == CsvFinding::quotedField) continue;
    Job::report().place = {folder_.filePath(name_), finding.line, finding.column};
    const long long count = survey_->count(finding.kind);
    const QString more = count > CsvSurvey::kListed ? Say::tr(" (%1 no arquivo)").arg(count) : QString();
    SMessageBox::Show(0, nullptr, QStringLiteral("KALDEX"), finding.text() + more);
  }
  if (!context_.options.quoted)
    context_.job.fail(Say::tr("Com --quoted o arquivo é limpo antes, numa cópia."));
  return false;
}

}  // namespace kaldex::cli
