#ifndef KALDEX_OGCKML_KML_WRITER_H
#define KALDEX_OGCKML_KML_WRITER_H

#include <QIODevice>
#include <QXmlStreamWriter>
#include <string>
#include <vector>

#include "ogckml/kml_feature.h"

namespace kaldex {

// Writes a document onto a device, which must be open: KML 2.2, UTF-8, coordinates to a tenth of a
// millimetre.
class KmlWriter {
 public:
  explicit KmlWriter(QIODevice& device) : device_(device), xml_(&device) {}

  // False when a write failed.
  bool write(const std::string& root, const KdxOgc::OgKMLDocument& document);

 private:
  void container(const KdxOgc::OgKMLAbstractContainer& container);
  void placemark(const KdxOgc::OgKMLPlacemark& placemark);
  void geometry(const KdxOgc::OgKMLAbstractGeometry& geometry);
  void ring(const char* boundary, const KdxOgc::OgKMLPositions& positions);
  void coordinates(const KdxOgc::OgKMLPositions& positions);
  void coordinates(const double* pairs, int count);
  void text(const char* element, std::string_view utf8);
  void start(const char* element) { xml_.writeStartElement(QLatin1String(element)); }
  void end() { xml_.writeEndElement(); }

  QIODevice& device_;
  QXmlStreamWriter xml_;
  std::string buffer_;
  std::vector<double> pairs_;
  bool failed_ = false;
};

}  // namespace kaldex

#endif
