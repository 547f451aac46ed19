#include "ogckml/xml_decoder.h"

#include <QFile>
#include <QObject>

#include "ogckml/kmz_archive.h"

namespace kaldex {

// Where the bytes of a document come from.
class ByteSource {
 public:
  virtual ~ByteSource() = default;
  // As KmzReader::read.
  virtual long long read(char* to, std::size_t count) = 0;
  virtual QString error() const = 0;
};

namespace {

class PlainSource : public ByteSource {
 public:
  explicit PlainSource(const std::string& path) : file_(QFile::decodeName(path.c_str())) {}
  bool open() { return file_.open(QIODevice::ReadOnly | QIODevice::Unbuffered); }
  long long read(char* to, std::size_t count) override { return file_.read(to, static_cast<qint64>(count)); }
  QString error() const override { return file_.errorString(); }

 private:
  QFile file_;
};

class ArchiveSource : public ByteSource {
 public:
  bool open(const std::string& path) { return archive_.open(path); }
  long long read(char* to, std::size_t count) override { return archive_.read(to, count); }
  QString error() const override { return archive_.error(); }

 private:
  KmzReader archive_;
};

constexpr int kPiece = 64 * 1024;
constexpr int kMostExpanded = 4096;  // characters that one entity may stand for

// A document that says to be of two bytes a character while it is of one was converted by a program that left
// the words alone. What it says is blanked out.
void mendDeclaration(QByteArray& head) {
  if (!head.startsWith("<?xml")) return;
  const int end = head.indexOf("?>");
  const int begin = head.indexOf("encoding");
  if (begin < 0 || begin > end) return;
  const QByteArray said = head.mid(begin, end - begin);
  if (!said.toLower().contains("utf-16") && !said.toLower().contains("ucs-2")) return;
  head.replace(begin, end - begin, QByteArray(end - begin, ' '));
}

}  // namespace

}  // namespace kaldex

inline namespace kaldex_v1 {
namespace KdxOgc {

SXMLDecoderQt::SXMLDecoderQt() = default;
SXMLDecoderQt::~SXMLDecoderQt() = default;

bool SXMLDecoderQt::open() {
  source_.reset();
  error_.clear();
  errorLine_ = errorColumn_ = 0;
  atStart_ = true;
  xml_.clear();
  xml_.setNamespaceProcessing(false);
  xml_.setEntityExpansionLimit(kaldex::kMostExpanded);
  if (kaldex::KmzReader::isArchive(path_)) {
    auto archive = std::make_unique<kaldex::ArchiveSource>();
    const bool good = archive->open(path_);
    error_ = archive->error();
    if (good) source_ = std::move(archive);
    return good;
  }
  auto plain = std::make_unique<kaldex::PlainSource>(path_);
  if (!plain->open()) {
    error_ = plain->error();
    return false;
  }
  source_ = std::move(plain);
  return true;
}

bool SXMLDecoderQt::feed() {
  QByteArray piece(kaldex::kPiece, Qt::Uninitialized);
  const long long size = source_->read(piece.data(), kaldex::kPiece);
  if (size <= 0) {
    if (size < 0) error_ = source_->error();
    return false;
  }
  piece.truncate(static_cast<int>(size));
  if (atStart_) kaldex::mendDeclaration(piece);
  atStart_ = false;
  xml_.addData(piece);
  return true;
}

SXMLDecoderQt::Token SXMLDecoderQt::next() {
  if (source_ == nullptr || !error_.isEmpty()) return Token::error;
  for (;;) {
    switch (xml_.readNext()) {
      case QXmlStreamReader::StartElement:
        return Token::start;
      case QXmlStreamReader::EndElement:
        return Token::end;
      case QXmlStreamReader::Characters:
        return Token::text;
      case QXmlStreamReader::EndDocument:
        return Token::documentEnd;
      case QXmlStreamReader::Invalid:
        if (xml_.error() == QXmlStreamReader::PrematureEndOfDocumentError && feed()) break;
        return failed();
      default:
        break;
    }
  }
}

SXMLDecoderQt::Token SXMLDecoderQt::failed() {
  if (error_.isEmpty()) refuse(xml_.errorString());
  return Token::error;
}

void SXMLDecoderQt::refuse(const QString& why) {
  error_ = why.isEmpty() ? QObject::tr("XML inválido") : why;
  errorLine_ = xml_.lineNumber();
  errorColumn_ = xml_.columnNumber() + 1;
}

QStringRef SXMLDecoderQt::name() const {
  const QStringRef qualified = xml_.qualifiedName();
  return qualified.mid(qualified.lastIndexOf(QLatin1Char(':')) + 1);
}

QString SXMLDecoderQt::attribute(const char* name) const {
  return xml_.attributes().value(QLatin1String(name)).toString();
}

}  // namespace KdxOgc
}  // namespace kaldex_v1
