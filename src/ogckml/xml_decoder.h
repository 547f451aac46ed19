#ifndef KALDEX_OGCKML_XML_DECODER_H
#define KALDEX_OGCKML_XML_DECODER_H

#include <QString>
#include <QXmlStreamReader>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace kaldex {
class ByteSource;
}

inline namespace kaldex_v1 {
namespace KdxOgc {

/// Reads the XML of a file, or of the document in a KMZ file, piece by piece. Each piece is a step of
/// SGError, whose wish to cancel ends the reading. What entities expand to is bounded, and so are the length
/// of a text, a tag or a comment and the count of an element's attributes. No other file or address is ever
/// looked at; a document that asks for that is refused. Prefixes of names need no declaration.
class SXMLDecoderQt {
 public:
  enum class Token { start, end, text, documentEnd, error };

  SXMLDecoderQt();
  ~SXMLDecoderQt();

  /// In the bytes of the file system.
  void setPath(const std::string& path) { path_ = path; }
  /// Begin with the file; false, with an error, when it can't be read.
  bool open();
  /// How many pieces the file that is open has, about.
  long long pieces() const;

  Token next();
  /// The name of the element that begins or ends, without its prefix. This and the next two only after a
  /// token.
  QStringRef name() const;
  QStringRef text() const { return xml_->text(); }
  QString attribute(const char* name) const;

  /// The document of the same archive that a link leads to; empty when it leads elsewhere.
  std::string linkedDocument(const QString& link) const;
  /// Go on with that document. False when it was read already, and with an error when it can't be.
  bool openLinked(const std::string& document);
  /// Documents in the archive that have not been opened.
  long long otherDocuments() const;

  /// End with an error, which stands where the reading is.
  void refuse(const QString& why);
  /// Put the name of the document in front of the error.
  void nameError(const std::string& document);
  /// Empty as long as all is well.
  const QString& error() const { return error_; }
  /// Where the error is, from 1; 0 when it is in no line.
  long long errorLine() const { return errorLine_; }
  long long errorColumn() const { return errorColumn_; }

 private:
  void begin();
  bool feed();
  void take(QByteArray piece);
  // Whether the parser would be busy for long with an element, or with a text.
  bool isTooMuch(std::string_view piece);
  void lookAtEntities();
  Token started();
  Token told();
  bool accounted(long long characters);
  Token ended();
  Token failed();

  std::string path_;
  std::unique_ptr<kaldex::ByteSource> source_;
  std::optional<QXmlStreamReader> xml_;  ///< one for each file: it would know the entities of the one before
  bool atStart_ = true;
  long long fed_ = 0;          ///< bytes
  long long fedForToken_ = 0;  ///< of these since the last token
  long long told_ = 0;         ///< characters of texts and attributes
  long long assignments_ = 0;  ///< since the last tag began
  long long references_ = 0;   ///< as well
  bool hasEntities_ = false;
  QString error_;
  long long errorLine_ = 0;
  long long errorColumn_ = 0;
};

}  // namespace KdxOgc
}  // namespace kaldex_v1

#endif
