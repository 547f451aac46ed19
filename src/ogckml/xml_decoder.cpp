#include "ogckml/xml_decoder.h"

#include <QFile>
#include <QObject>
#include <algorithm>

#include "kaldex/model/report.h"
#include "ogckml/kmz_archive.h"

namespace kaldex {

// Where the bytes of a document come from.
class ByteSource {
 public:
  virtual ~ByteSource() = default;
  // As KmzReader::read.
  virtual long long read(char* to, std::size_t count) = 0;
  virtual QString error() const = 0;
  // Bytes of the document, as far as that is known.
  virtual long long size() const = 0;
  virtual long long otherDocuments() const { return 0; }
  virtual std::string linkedEntry(const QString&) const { return {}; }
  virtual bool openEntry(const std::string&) { return false; }
  // Whether what comes behind the document is as it should be.
  virtual bool isWhole() { return true; }
};

namespace {

class PlainSource : public ByteSource {
 public:
  explicit PlainSource(const std::string& path) : file_(QFile::decodeName(path.c_str())) {}
  bool open() { return file_.open(QIODevice::ReadOnly | QIODevice::Unbuffered); }
  long long read(char* to, std::size_t count) override { return file_.read(to, static_cast<qint64>(count)); }
  QString error() const override { return file_.errorString(); }
  long long size() const override { return file_.size(); }

 private:
  QFile file_;
};

class ArchiveSource : public ByteSource {
 public:
  bool open(const std::string& path) { return archive_.open(path); }
  long long read(char* to, std::size_t count) override { return archive_.read(to, count); }
  QString error() const override { return archive_.error(); }
  long long size() const override { return archive_.size(); }
  long long otherDocuments() const override { return archive_.otherDocuments(); }
  std::string linkedEntry(const QString& link) const override { return archive_.linkedEntry(link); }
  bool openEntry(const std::string& name) override { return archive_.openEntry(name); }
  // The check sum is compared at the end of the entry.
  bool isWhole() override {
    char rest[1024];
    long long size = 0;
    do size = archive_.read(rest, sizeof rest);
    while (size > 0);
    return size == 0;
  }

 private:
  KmzReader archive_;
};

constexpr int kPiece = 64 * 1024;
constexpr int kMostExpanded = 1024;  // characters that one entity may stand for
constexpr long long kMostExpandedInAll = 1 << 20;
constexpr long long kMostExpandedByteWise = 8;
constexpr long long kMostForToken = 64 << 20;  // of a text, a tag or a comment
constexpr int kMostAttributes = 1000;
// In a stretch without a tag, where a text may hold some, too.
constexpr long long kMostAssignments = 20000;
constexpr long long kMostReferences = 10000;

// With what a document of two bytes a character begins that has no mark to tell their order, which the parser
// needs.
QByteArray missingMark(const QByteArray& head) {
  if (head.startsWith(QByteArray("\0<\0?", 4))) return "\xFE\xFF";
  if (head.startsWith(QByteArray("<\0?\0", 4))) return "\xFF\xFE";
  return {};
}

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

void SXMLDecoderQt::begin() {
  error_.clear();
  errorLine_ = errorColumn_ = 0;
  atStart_ = true;
  fed_ = fedForToken_ = told_ = assignments_ = references_ = 0;
  hasEntities_ = false;
  xml_.emplace();
  xml_->setNamespaceProcessing(false);
  xml_->setEntityExpansionLimit(kaldex::kMostExpanded);
}

bool SXMLDecoderQt::open() {
  source_.reset();
  begin();
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

long long SXMLDecoderQt::pieces() const {
  return source_ != nullptr ? source_->size() / kaldex::kPiece + 1 : 0;
}

std::string SXMLDecoderQt::linkedDocument(const QString& link) const {
  return source_ != nullptr ? source_->linkedEntry(link) : std::string();
}

bool SXMLDecoderQt::openLinked(const std::string& document) {
  begin();
  const bool good = source_ != nullptr && source_->openEntry(document);
  if (!good && source_ != nullptr) error_ = source_->error();
  return good;
}

long long SXMLDecoderQt::otherDocuments() const {
  return source_ != nullptr ? source_->otherDocuments() : 0;
}

// False at the end of the file, and with an error.
bool SXMLDecoderQt::feed() {
  if (SGError->cancelled()) {
    refuse(QObject::tr("Cancelado."));
    return false;
  }
  const long long room = kaldex::kMostForToken - fedForToken_;
  if (room <= 0) {
    refuse(QObject::tr("Texto, elemento ou comentário longo demais"));
    return false;
  }
  // The parser begins anew with a comment that has no end yet: pieces that grow make that a fixed number of
  // times its length.
  const auto wanted = static_cast<int>(std::min(room, std::max<long long>(kaldex::kPiece, fedForToken_)));
  QByteArray piece(wanted, Qt::Uninitialized);
  const long long size = source_->read(piece.data(), static_cast<std::size_t>(wanted));
  if (size <= 0) {
    if (size < 0) error_ = source_->error();
    return false;
  }
  piece.truncate(static_cast<int>(size));
  SGError->ProgressStep();
  take(std::move(piece));
  return error_.isEmpty();
}

void SXMLDecoderQt::take(QByteArray piece) {
  fed_ += piece.size();
  fedForToken_ += piece.size();
  if (atStart_) {
    kaldex::mendDeclaration(piece);
    piece.prepend(kaldex::missingMark(piece));
  }
  atStart_ = false;
  if (isTooMuch({piece.constData(), static_cast<std::size_t>(piece.size())})) return;
  xml_->addData(piece);
}

bool SXMLDecoderQt::isTooMuch(std::string_view piece) {
  // What both begins and ends in so little is looked at when it is there.
  for (; !piece.empty(); piece.remove_prefix(std::min<std::size_t>(kaldex::kPiece, piece.size()))) {
    std::string_view part = piece.substr(0, kaldex::kPiece);
    const std::size_t tag = part.rfind('<');
    if (tag != std::string_view::npos) {
      assignments_ = references_ = 0;
      part.remove_prefix(tag);
    }
    assignments_ += std::count(part.begin(), part.end(), '=');
    references_ += hasEntities_ ? std::count(part.begin(), part.end(), '&') : 0;
    if (assignments_ > kaldex::kMostAssignments) refuse(QObject::tr("Elemento com atributos demais"));
    if (references_ > kaldex::kMostReferences) refuse(QObject::tr("Entidades demais"));
  }
  return !error_.isEmpty();
}

SXMLDecoderQt::Token SXMLDecoderQt::next() {
  if (source_ == nullptr || !error_.isEmpty()) return Token::error;
  fedForToken_ = 0;
  while (error_.isEmpty()) {
    switch (xml_->readNext()) {
      case QXmlStreamReader::DTD:
        lookAtEntities();
        break;
      case QXmlStreamReader::StartElement:
        return started();
      case QXmlStreamReader::EndElement:
        return Token::end;
      case QXmlStreamReader::Characters:
        return told();
      case QXmlStreamReader::EntityReference:
        refuse(QObject::tr("A entidade %1 não está no documento").arg(xml_->name().toString()));
        break;
      case QXmlStreamReader::EndDocument:
        return ended();
      case QXmlStreamReader::Invalid:
        if (xml_->error() == QXmlStreamReader::PrematureEndOfDocumentError && feed()) break;
        return failed();
      default:
        break;
    }
  }
  return Token::error;
}

// The parser would leave out in silence what an entity takes from another file.
void SXMLDecoderQt::lookAtEntities() {
  for (const QXmlStreamEntityDeclaration& entity : xml_->entityDeclarations()) {
    hasEntities_ = true;
    if (entity.systemId().isEmpty() || !entity.notationName().isEmpty()) continue;
    refuse(QObject::tr("A entidade %1 não está no documento").arg(entity.name().toString()));
  }
}

SXMLDecoderQt::Token SXMLDecoderQt::started() {
  const QXmlStreamAttributes attributes = xml_->attributes();
  // All are compared with each other, so that a tag of a hundred thousand would take minutes.
  if (attributes.size() > kaldex::kMostAttributes) refuse(QObject::tr("Elemento com atributos demais"));
  long long characters = 0;
  if (hasEntities_) {
    for (const QXmlStreamAttribute& attribute : attributes) characters += attribute.value().size();
  }
  return accounted(characters) ? Token::start : Token::error;
}

SXMLDecoderQt::Token SXMLDecoderQt::told() {
  return accounted(xml_->text().size()) ? Token::text : Token::error;
}

// A character takes a byte at least, unless an entity stands for it.
bool SXMLDecoderQt::accounted(long long characters) {
  told_ += characters;
  if (told_ > fed_ * kaldex::kMostExpandedByteWise + kaldex::kMostExpandedInAll) {
    refuse(QObject::tr("Entidades demais"));
  }
  return error_.isEmpty();
}

SXMLDecoderQt::Token SXMLDecoderQt::ended() {
  if (source_->isWhole()) return Token::documentEnd;
  error_ = source_->error();
  return Token::error;
}

SXMLDecoderQt::Token SXMLDecoderQt::failed() {
  if (error_.isEmpty()) refuse(xml_->errorString());
  return Token::error;
}

void SXMLDecoderQt::refuse(const QString& why) {
  error_ = why.isEmpty() ? QObject::tr("XML inválido") : why;
  if (!xml_.has_value()) return;
  errorLine_ = xml_->lineNumber();
  errorColumn_ = xml_->columnNumber() + 1;
}

void SXMLDecoderQt::nameError(const std::string& document) {
  error_.prepend(QString::fromStdString(document) + QStringLiteral(": "));
}

QStringRef SXMLDecoderQt::name() const {
  const QStringRef qualified = xml_->qualifiedName();
  return qualified.mid(qualified.lastIndexOf(QLatin1Char(':')) + 1);
}

QString SXMLDecoderQt::attribute(const char* name) const {
  return xml_->attributes().value(QLatin1String(name)).toString();
}

}  // namespace KdxOgc
}  // namespace kaldex_v1
