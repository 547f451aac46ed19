#include <QDir>
#include <QFileInfo>
#include <QObject>
#include <QTemporaryDir>
#include <algorithm>
#include <cstring>
#include <optional>

#include "base/companion_file.h"
#include "base/disk_room.h"
#include "base/text_encoding.h"
#include "base/tracer.h"
#include "kaldex/intake.h"
#include "kaldex/job_report.h"
#include "lib/intake/text_mender.h"
#include "lib/intake/text_survey.h"

inline namespace kaldex_v1 {

namespace {

using kaldex::FileWindow;
using kaldex::Latin1Converter;
using kaldex::LineMender;
using kaldex::TextSurvey;

constexpr char kLatin1[] = "ISO-8859-1";

struct StreamCloser {
  void operator()(FILE* stream) const { std::fclose(stream); }
};

constexpr char kBinaryDrawing[] = "AutoCAD Binary DXF";

bool isBinaryDrawing(FileWindow& file) {
  constexpr std::size_t size = sizeof kBinaryDrawing - 1;
  const unsigned char* const head = file.view(0, size);
  return head != nullptr && std::memcmp(head, kBinaryDrawing, size) == 0;
}

// The codec that has to be gone through, empty if the bytes are Latin-1 already or are to be taken for it.
QByteArray codecOf(const TextSurvey& survey, TextForm form, const QByteArray& override) {
  switch (survey.unicode) {
    case TextSurvey::Unicode::utf16Little:
      return "UTF-16LE";
    case TextSurvey::Unicode::utf16Big:
      return "UTF-16BE";
    default:
      break;
  }
  if (!survey.nonAscii || form == TextForm::drawing) return QByteArray();
  if (!override.isEmpty()) return override == kLatin1 ? QByteArray() : override;
  return survey.unicode == TextSurvey::Unicode::utf8 ? QByteArray("UTF-8") : QByteArray();
}

// The last "END" of a section needs no line end: files of this system end so.
bool endNeedsMending(const TextSurvey& survey, TextForm form) {
  if (survey.size == survey.markLength) return false;
  if (survey.endsWithControlZ) return true;
  return form == TextForm::delimitedTable ? survey.endsWithLineFeed || survey.endsWithBlanks
                                          : !survey.endsWithLineFeed && !survey.endsWithEnd;
}

void note(const QString& text) {
  if (JobReport* const report = JobReport::current()) report->note(text);
}

void tellMended(const LineMender& lines, TextForm form) {
  if (lines.dosEnds() != 0)
    note(QObject::tr("Preparação: %1 finais de linha DOS convertidos.").arg(lines.dosEnds()));
  if (lines.macEnds() != 0)
    note(QObject::tr("Preparação: %1 finais de linha Mac convertidos.").arg(lines.macEnds()));
  if (lines.controlZDropped()) note(QObject::tr("Preparação: marca DOS de fim de arquivo retirada."));
  if (!lines.endMended()) return;
  note(form == TextForm::delimitedTable
           ? QObject::tr("Preparação: final da última linha retirado, para não formar uma linha vazia.")
           : QObject::tr("Preparação: a última linha não tinha final; acrescentado."));
}

void tellLoss(const kaldex::Latin1Loss& loss) {
  if (loss.count() == 0) return;
  note(QObject::tr("Preparação: %1 caracteres sem lugar em Latin-1 viraram \"?\": %2")
           .arg(loss.count())
           .arg(loss.characters().join(QLatin1Char(' '))));
}

}  // namespace

struct TextIntake::Copy {
  QString original;
  QString copy;
  QString error;
  std::optional<QTemporaryDir> folder;

  void prepare(TextForm form, const QString& encoding);

 private:
  bool make(FileWindow& file, const TextSurvey& survey, TextForm form, const QByteArray& codec);
  bool fill(FileWindow& file, const TextSurvey& survey, LineMender& lines, Latin1Converter* converter);
};

void TextIntake::Copy::prepare(TextForm form, const QString& encoding) {
  const QByteArray override = kaldex::encodingName(encoding.toLatin1());
  // UTF-16 shows in the bytes and needs no word of the caller.
  const bool wide = encoding.startsWith(QLatin1String("UTF-16"), Qt::CaseInsensitive);
  if (!encoding.isEmpty() && !wide && override.isEmpty()) {
    error = QObject::tr("Codificação desconhecida: ") + encoding;
    return;
  }
  FileWindow file(kaldex::pathBytes(original));
  if (!file.isOpen()) {
    error = QObject::tr("Não foi possível ler o arquivo: ") + original;
    return;
  }
  if (form == TextForm::drawing && isBinaryDrawing(file)) {
    error = QObject::tr("O desenho está em DXF binário; só se lê o DXF de texto (ASCII): ") + original;
    return;
  }
  const TextSurvey survey = kaldex::surveyText(file);
  if (form == TextForm::drawing && survey.binary) {
    const FileGuess guess = guessFile(original);
    if (guess.format != FileFormat::drawing) {
      error = QObject::tr("O arquivo não é um desenho DXF de texto (%1): ").arg(guess.description) + original;
      return;
    }
  }
  const QByteArray codec = codecOf(survey, form, override);
  JobReport* const report = JobReport::current();
  // Whoever reads a drawing finds out, and tells, what its bytes mean.
  if (report != nullptr && (form != TextForm::drawing || !codec.isEmpty())) {
    const QByteArray name = codec.isEmpty() ? QByteArray(kLatin1) : codec;
    const char* const reason = !override.isEmpty()                   ? kaldex::kEncodingFromOverride
                               : codec.isEmpty() && !survey.nonAscii ? kaldex::kEncodingByDefault
                                                                     : kaldex::kEncodingFromBytes;
    report->encoding = {QString::fromLatin1(name), QString::fromLatin1(reason)};
  }
  const bool mend =
      survey.carriageReturns || survey.markLength != 0 || !codec.isEmpty() || endNeedsMending(survey, form);
  if (survey.binary || !mend || survey.size == 0) return;
  if (!make(file, survey, form, codec)) {
    error = QObject::tr("Não foi possível gravar a cópia temporária do arquivo: ") + original;
    if (kaldex::isDiskFull(QDir::tempPath()))
      error += QLatin1Char('\n') + QObject::tr("O disco de %1 está cheio.").arg(QDir::tempPath());
    folder.reset();
    copy.clear();
  }
}

bool TextIntake::Copy::make(FileWindow& file, const TextSurvey& survey, TextForm form,
                            const QByteArray& codec) {
  folder.emplace();
  if (!folder->isValid()) return false;
  copy = folder->filePath(QFileInfo(original).fileName());
  const std::unique_ptr<FILE, StreamCloser> out(std::fopen(QFile::encodeName(copy).constData(), "wb"));
  if (out == nullptr) return false;
  LineMender lines(out.get(), form);
  std::optional<Latin1Converter> converter;
  if (!codec.isEmpty()) converter.emplace(codec);
  if (converter && !converter->isValid()) return false;
  if (!fill(file, survey, lines, converter ? &*converter : nullptr)) return false;
  if (survey.markLength != 0) note(QObject::tr("Preparação: marca de ordem de bytes (BOM) retirada."));
  if (converter) {
    note(QObject::tr("Preparação: texto convertido de %1 para Latin-1.").arg(QString::fromLatin1(codec)));
    tellLoss(converter->loss());
  }
  tellMended(lines, form);
  return true;
}

bool TextIntake::Copy::fill(FileWindow& file, const TextSurvey& survey, LineMender& lines,
                            Latin1Converter* converter) {
  const auto add = [&lines](const QByteArray& bytes) {
    lines.add({bytes.constData(), static_cast<std::size_t>(bytes.size())});
  };
  for (auto offset = static_cast<std::uint64_t>(survey.markLength); offset < file.size();) {
    const auto count =
        static_cast<std::size_t>(std::min<std::uint64_t>(FileWindow::kCapacity, file.size() - offset));
    const unsigned char* block = file.view(offset, count);
    if (block == nullptr) return false;
    const std::string_view bytes(reinterpret_cast<const char*>(block), count);
    if (converter != nullptr) {
      add(converter->convert(bytes));
    } else {
      lines.add(bytes);
    }
    offset += count;
  }
  if (converter != nullptr) add(converter->finish());
  return lines.finish();
}

TextIntake::TextIntake(const QString& path, TextForm form, bool strict, const QString& encoding)
    : copy_(std::make_unique<Copy>()) {
  const Tracer tracer(__FILE__, __LINE__, "TextIntake::TextIntake");
  copy_->original = path;
  if (!strict) copy_->prepare(form, encoding);
}

TextIntake::~TextIntake() = default;

bool TextIntake::isReady() const {
  return copy_->error.isEmpty();
}

QString TextIntake::error() const {
  return copy_->error;
}

QString TextIntake::path() const {
  return copy_->copy.isEmpty() ? copy_->original : copy_->copy;
}

bool TextIntake::isCopy() const {
  return !copy_->copy.isEmpty();
}

}  // namespace kaldex_v1
