#ifndef KALDEX_OGCKML_KML_READER_H
#define KALDEX_OGCKML_KML_READER_H

#include <QStringRef>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "ogckml/coordinate_text.h"
#include "ogckml/kml_feature.h"
#include "ogckml/xml_decoder.h"

namespace kaldex {

// Fills a document from the XML of a file. It goes by the names of elements alone, so that documents of every
// version, with any prefix or none, are read alike. Elements are kept on a stack of its own, whose height is
// bounded.
class KmlReader {
 public:
  KmlReader(KdxOgc::SXMLDecoderQt& decoder, KdxOgc::OgKMLDocument& document)
      : decoder_(decoder), document_(document) {}

  bool run();

 private:
  enum class Element : unsigned char {
    root,  // the file itself
    kml,
    container,
    placemark,
    name,
    description,
    extendedData,
    data,
    value,
    schemaData,
    datum,
    point,
    lineString,
    linearRing,
    polygon,
    outerBoundary,
    innerBoundary,
    multiGeometry,
    coordinates,
    otherGeometry,
    networkLink,
    link,
    href,
    other
  };

  bool readDocument();
  // Opens the next document that a link of those before has led to: the first that is still to be read.
  bool openLinked();
  bool begin(const QStringRef& name);
  void end();
  void append(const QStringRef& text);

  Element elementAt(Element parent, const QStringRef& name);
  Element rootElement(const QStringRef& name);
  Element inContainer(const QStringRef& name);
  Element inPlacemark(const QStringRef& name);
  static Element geometryElement(const QStringRef& name);
  void open(Element element, const QStringRef& name);
  static std::unique_ptr<KdxOgc::OgKMLAbstractGeometry> newGeometry(Element element, const QStringRef& name);

  void endContainerName();
  void endHref();
  void endPlacemark();
  void endCoordinates();
  void endGeometry();
  KdxOgc::OgKMLAbstractContainer& container() { return *containers_.back(); }

  KdxOgc::SXMLDecoderQt& decoder_;
  KdxOgc::OgKMLDocument& document_;
  std::vector<Element> elements_;
  std::vector<KdxOgc::OgKMLAbstractContainer*> containers_;
  std::vector<std::unique_ptr<KdxOgc::OgKMLAbstractGeometry>> geometries_;  // open ones, each in the last
  std::unique_ptr<KdxOgc::OgKMLPlacemark> placemark_;
  std::string name_;
  std::vector<KdxOgc::OgKMLDatum> data_;
  std::string key_;
  std::string text_;
  std::vector<double> pairs_;
  CoordinateTally tally_;
  std::deque<std::string> linked_;  // documents of the same archive that are still to be read
  bool followed_ = false;           // whether the link that is open leads to one
};

}  // namespace kaldex

#endif
