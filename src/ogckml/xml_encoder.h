#ifndef KALDEX_OGCKML_XML_ENCODER_H
#define KALDEX_OGCKML_XML_ENCODER_H

#include <QString>
#include <string>

inline namespace kaldex_v1 {
namespace KdxOgc {

class OgKMLDocument;

/// Writes a document as XML. The text is made while it is saved, so that it is never held whole.
class SXMLEncoderQt {
 public:
  /// The name of the root element.
  void createDocument(const std::string& root) { root_ = root; }
  /// See OgKMLDocument::encode.
  void setDocument(const OgKMLDocument& document) { document_ = &document; }

  /// Make the file, given in the bytes of the file system: plain, or as the only document of a KMZ file.
  /// False after a failure, whose reason is the error; what was written is removed.
  bool save(const std::string& path);
  bool saveZipped(const std::string& path);
  const QString& error() const { return error_; }

 private:
  bool write(const QString& path);

  std::string root_ = "kml";
  const OgKMLDocument* document_ = nullptr;
  QString error_;
};

}  // namespace KdxOgc
}  // namespace kaldex_v1

#endif
