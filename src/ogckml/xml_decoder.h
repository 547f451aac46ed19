#ifndef KALDEX_OGCKML_XML_DECODER_H
#define KALDEX_OGCKML_XML_DECODER_H

#include <QString>
#include <QXmlStreamReader>
#include <memory>
#include <string>

namespace kaldex {
class ByteSource;
}

inline namespace kaldex_v1 {
namespace KdxOgc {

/// Reads the XML of a file, or of the document in a KMZ file, piece by piece. What entities expand to is
/// bounded, and no other file or address is ever looked at. Prefixes of names need no declaration.
class SXMLDecoderQt {
 public:
  enum class Token { start, end, text, documentEnd, error };

  SXMLDecoderQt();
  ~SXMLDecoderQt();

  /// In the bytes of the file system.
  void setPath(const std::string& path) { path_ = path; }
  /// Begin with the file; false, with an error, when it can't be read.
  bool open();

  Token next();
  /// The name of the element that begins or ends, without its prefix.
  QStringRef name() const;
  QStringRef text() const { return xml_.text(); }
  QString attribute(const char* name) const;

  /// End with an error, which stands where the reading is.
  void refuse(const QString& why);
  /// Empty as long as all is well.
  const QString& error() const { return error_; }
  /// Where the error is, from 1; 0 when it is in no line.
  long long errorLine() const { return errorLine_; }
  long long errorColumn() const { return errorColumn_; }

 private:
  bool feed();
  Token failed();

  std::string path_;
  std::unique_ptr<kaldex::ByteSource> source_;
  QXmlStreamReader xml_;
  bool atStart_ = true;
  QString error_;
  long long errorLine_ = 0;
  long long errorColumn_ = 0;
};

}  // namespace KdxOgc
}  // namespace kaldex_v1

#endif
