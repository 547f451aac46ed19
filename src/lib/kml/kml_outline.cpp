#include <QFileInfo>
#include <QObject>
#include <cstring>
#include <unordered_set>
#include <vector>

#include "base/companion_file.h"
#include "base/tracer.h"
#include "kaldex/kml.h"
#include "lib/frame/shield.h"
#include "lib/kml/document_walk.h"
#include "ogckml/xml_decoder.h"

inline namespace kaldex_v1 {

using namespace KdxOgc;

KmlOutline::KmlOutline(const QString& path)
    : path_(QFileInfo(path).absoluteFilePath()), extent_(Box::inverted()) {
  const Tracer tracer(__FILE__, __LINE__, "KmlOutline::KmlOutline");
  const bool good = kaldex::shielded([this] {
    auto document = std::make_unique<OgKMLDocument>();
    SXMLDecoderQt decoder;
    decoder.setPath(kaldex::pathBytes(path_).toStdString());
    if (document->decode(decoder)) {
      document_ = std::move(document);
      survey();
    } else if (decoder.errorLine() > 0) {
      error_ = QObject::tr("%1 (linha %2, coluna %3)")
                   .arg(decoder.error())
                   .arg(decoder.errorLine())
                   .arg(decoder.errorColumn());
    } else {
      error_ = decoder.error();
    }
  });
  if (!good) error_ = QObject::tr("O documento não pôde ser lido");
}

KmlOutline::~KmlOutline() = default;

namespace {

void extend(Box& box, const OgKMLPositions& positions) {
  if (!positions.areGeographic()) return;
  thread_local std::vector<double> pairs;
  positions.copyTo(pairs);
  for (std::size_t i = 0; i < pairs.size(); i += 2) box.extend(pairs[i], pairs[i + 1]);
}

// Programs put the name onto the document in the file, or onto the only folder.
std::string_view nameOf(const OgKMLDocument& document) {
  const OgKMLAbstractContainer* container = &document;
  while (container->name().empty() && container->features().size() == 1) {
    container = dynamic_cast<const OgKMLAbstractContainer*>(container->features().front());
    if (container == nullptr) return {};
  }
  return container->name();
}

}  // namespace

void KmlOutline::survey() {
  const std::string_view name = nameOf(*document_);
  name_ = QString::fromUtf8(name.data(), static_cast<int>(name.size()));
  const auto take = [this](const OgKMLAbstractGeometry& geometry) {
    if (const auto* const point = dynamic_cast<const OgKMLPoint*>(&geometry)) {
      ++points_;
      if (point->isGeographic()) extent_.extend(point->place().x, point->place().y);
    } else if (const auto* const polygon = dynamic_cast<const OgKMLPolygon*>(&geometry)) {
      ++polygons_;
      extend(extent_, polygon->outer);
      for (const OgKMLPositions& ring : polygon->inner) extend(extent_, ring);
    } else if (std::strcmp(geometry.typeName(), "LineString") == 0) {
      ++lines_;
      extend(extent_, static_cast<const OgKMLLineString&>(geometry).positions);
    }
  };
  std::unordered_set<std::string_view> known;  // of the document's own texts
  kaldex::walkPlacemarks(*document_, [&](const OgKMLPlacemark& placemark) {
    placemark.eachDatum([&](std::string_view key, std::string_view) {
      if (known.insert(key).second) dataNames_ << QString::fromUtf8(key.data(), static_cast<int>(key.size()));
    });
    kaldex::walkGeometries(placemark, take);
    return true;
  });
}

}  // namespace kaldex_v1
