#include "ogckml/kml_reader.h"

#include <QObject>
#include <algorithm>
#include <limits>

#include "kaldex/model/report.h"

namespace kaldex {

using namespace KdxOgc;

namespace {

// Higher than any program or person stacks folders, and low enough for taking a document down again.
constexpr std::size_t kMostNested = 10000;

bool is(const QStringRef& name, const char* known) {
  return name == QLatin1String(known);
}

std::string bytes(const QStringRef& text) {
  const QByteArray utf8 = text.toUtf8();
  return std::string(utf8.constData(), static_cast<std::size_t>(utf8.size()));
}

std::string trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  if (first == std::string::npos) return std::string();
  return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

// The progress of reading.
class Reading {
 public:
  explicit Reading(long long pieces) {
    SGError->ProgressInit(0, static_cast<int>(std::min<long long>(pieces, std::numeric_limits<int>::max())),
                          1);
  }
  ~Reading() { SGError->ProgressStop(true); }
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;
};

}  // namespace

bool KmlReader::run() {
  if (!decoder_.open()) return false;
  const Reading progress(decoder_.pieces());
  elements_.push_back(Element::root);
  containers_.push_back(&document_);
  bool good = readDocument();
  while (good && openLinked()) {
    const std::string document = linked_.front();
    linked_.pop_front();
    good = readDocument();
    if (!good) decoder_.nameError(document);
  }
  if (!good) return false;
  document_.losses.altitudes += tally_.altitudes;
  document_.losses.badTuples += tally_.bad;
  if (decoder_.otherDocuments() > 0) document_.losses.features["*.kml"] += decoder_.otherDocuments();
  return decoder_.error().isEmpty();
}

bool KmlReader::openLinked() {
  while (!linked_.empty()) {
    if (decoder_.openLinked(linked_.front())) return true;
    if (!decoder_.error().isEmpty()) return false;
    linked_.pop_front();
  }
  return false;
}

bool KmlReader::readDocument() {
  for (;;) {
    switch (decoder_.next()) {
      case SXMLDecoderQt::Token::start:
        if (!begin(decoder_.name())) return false;
        break;
      case SXMLDecoderQt::Token::end:
        end();
        break;
      case SXMLDecoderQt::Token::text:
        append(decoder_.text());
        break;
      case SXMLDecoderQt::Token::documentEnd:
        return true;
      case SXMLDecoderQt::Token::error:
        return false;
    }
  }
}

bool KmlReader::begin(const QStringRef& name) {
  if (elements_.size() > kMostNested) {
    decoder_.refuse(QObject::tr("Elementos aninhados demais"));
    return false;
  }
  const Element element = elementAt(elements_.back(), name);
  if (element == Element::root) {
    decoder_.refuse(QObject::tr("Não é um documento KML"));
    return false;
  }
  elements_.push_back(element);
  open(element, name);
  return true;
}

// --- What an element is, by its name and the element around it ---

KmlReader::Element KmlReader::elementAt(Element parent, const QStringRef& name) {
  switch (parent) {
    case Element::root:
      return rootElement(name);
    case Element::kml:
    case Element::container:
      return inContainer(name);
    case Element::placemark:
      return inPlacemark(name);
    case Element::extendedData:
      // Besides the standard's own forms, any element may stand here with a value.
      return is(name, "Data") ? Element::data : is(name, "SchemaData") ? Element::schemaData : Element::datum;
    case Element::data:
      return is(name, "value") ? Element::value : Element::other;
    case Element::schemaData:
      return is(name, "SimpleData") ? Element::datum : Element::other;
    case Element::point:
    case Element::lineString:
    case Element::linearRing:
      return is(name, "coordinates") ? Element::coordinates : Element::other;
    case Element::polygon:
      return is(name, "outerBoundaryIs")   ? Element::outerBoundary
             : is(name, "innerBoundaryIs") ? Element::innerBoundary
                                           : Element::other;
    case Element::outerBoundary:
    case Element::innerBoundary:
      return is(name, "LinearRing") ? Element::linearRing : Element::other;
    case Element::multiGeometry:
      return geometryElement(name);
    case Element::networkLink:
      // The second is what the first versions called it.
      return is(name, "Link") || is(name, "Url") ? Element::link : Element::other;
    case Element::link:
      return is(name, "href") ? Element::href : Element::other;
    default:
      return Element::other;
  }
}

KmlReader::Element KmlReader::rootElement(const QStringRef& name) {
  if (is(name, "kml")) return Element::kml;
  if (is(name, "Document") || is(name, "Folder")) return Element::container;
  return is(name, "Placemark") ? Element::placemark : Element::root;
}

KmlReader::Element KmlReader::inContainer(const QStringRef& name) {
  if (is(name, "Placemark")) return Element::placemark;
  if (is(name, "Document") || is(name, "Folder")) return Element::container;
  if (is(name, "name")) return Element::name;
  if (is(name, "NetworkLink")) return Element::networkLink;
  for (const char* feature :
       {"GroundOverlay", "ScreenOverlay", "PhotoOverlay", "Tour", "NetworkLinkControl"}) {
    if (is(name, feature)) ++document_.losses.features[feature];
  }
  return Element::other;
}

KmlReader::Element KmlReader::inPlacemark(const QStringRef& name) {
  if (is(name, "name")) return Element::name;
  if (is(name, "description")) return Element::description;
  if (is(name, "ExtendedData")) return Element::extendedData;
  return geometryElement(name);
}

KmlReader::Element KmlReader::geometryElement(const QStringRef& name) {
  if (is(name, "Point")) return Element::point;
  if (is(name, "LineString")) return Element::lineString;
  if (is(name, "LinearRing")) return Element::linearRing;
  if (is(name, "Polygon")) return Element::polygon;
  // The second is what the first versions called it.
  if (is(name, "MultiGeometry") || is(name, "GeometryCollection")) return Element::multiGeometry;
  const bool known = is(name, "Model") || is(name, "Track") || is(name, "MultiTrack");
  return known ? Element::otherGeometry : Element::other;
}

// --- Elements that begin ---

void KmlReader::open(Element element, const QStringRef& name) {
  switch (element) {
    case Element::container: {
      std::unique_ptr<OgKMLAbstractContainer> fresh;
      if (is(name, "Folder")) {
        fresh = std::make_unique<OgKMLFolder>();
      } else {
        fresh = std::make_unique<OgKMLDocument>();
      }
      OgKMLAbstractContainer* const made = fresh.get();
      container().adoptFeature(std::move(fresh));
      containers_.push_back(made);
      break;
    }
    case Element::placemark:
      placemark_ = std::make_unique<OgKMLPlacemark>();
      name_.clear();
      data_.clear();
      break;
    case Element::description:
      ++document_.losses.descriptions;
      break;
    case Element::data:
      key_ = decoder_.attribute("name").toStdString();
      break;
    case Element::datum: {
      const QString key = decoder_.attribute("name");
      key_ = key.isEmpty() ? bytes(name) : key.toStdString();
      text_.clear();
      break;
    }
    case Element::linearRing:
      if (elements_[elements_.size() - 2] == Element::outerBoundary ||
          elements_[elements_.size() - 2] == Element::innerBoundary) {
        break;
      }
      [[fallthrough]];
    case Element::point:
    case Element::lineString:
    case Element::polygon:
    case Element::multiGeometry:
    case Element::otherGeometry:
      geometries_.push_back(newGeometry(element, name));
      break;
    case Element::networkLink:
      followed_ = false;
      break;
    case Element::name:
    case Element::value:
    case Element::coordinates:
    case Element::href:
      text_.clear();
      break;
    default:
      break;
  }
}

std::unique_ptr<OgKMLAbstractGeometry> KmlReader::newGeometry(Element element, const QStringRef& name) {
  switch (element) {
    case Element::point:
      return std::make_unique<OgKMLPoint>();
    case Element::lineString:
      return std::make_unique<OgKMLLineString>();
    case Element::linearRing:
      return std::make_unique<OgKMLLinearRing>();
    case Element::polygon:
      return std::make_unique<OgKMLPolygon>();
    case Element::multiGeometry:
      return std::make_unique<OgKMLMultiGeometry>();
    default:
      return std::make_unique<OgKMLOtherGeometry>(bytes(name));
  }
}

// --- What stands in them ---

void KmlReader::append(const QStringRef& text) {
  switch (elements_.back()) {
    case Element::coordinates: {
      // Nothing but ASCII and the blank that doesn't break means anything here, and this is the bulk of a
      // document.
      const std::size_t before = text_.size();
      const QByteArray latin = text.toLatin1();
      text_.append(latin.constData(), static_cast<std::size_t>(latin.size()));
      for (std::size_t i = before; (i = text_.find('\xA0', i)) != std::string::npos;) text_[i] = ' ';
      break;
    }
    case Element::name:
    case Element::value:
    case Element::datum:
    case Element::href:
      text_ += bytes(text);
      break;
    default:
      break;
  }
}

// --- Elements that end ---

void KmlReader::end() {
  const Element element = elements_.back();
  elements_.pop_back();
  switch (element) {
    case Element::container:
      containers_.pop_back();
      break;
    case Element::placemark:
      endPlacemark();
      break;
    case Element::name:
      endContainerName();
      break;
    case Element::href:
      endHref();
      break;
    case Element::networkLink:
      if (!followed_) ++document_.losses.features["NetworkLink"];
      break;
    case Element::value:
    case Element::datum:
      data_.emplace_back(key_, trimmed(text_));
      break;
    case Element::coordinates:
      endCoordinates();
      break;
    case Element::linearRing:
      if (elements_.back() == Element::outerBoundary || elements_.back() == Element::innerBoundary) break;
      [[fallthrough]];
    case Element::point:
    case Element::lineString:
    case Element::polygon:
    case Element::multiGeometry:
    case Element::otherGeometry:
      endGeometry();
      break;
    default:
      break;
  }
}

// Only what lies in the same archive is followed.
void KmlReader::endHref() {
  std::string document = decoder_.linkedDocument(QString::fromStdString(trimmed(text_)));
  if (document.empty()) return;
  followed_ = true;
  linked_.push_back(std::move(document));
}

void KmlReader::endContainerName() {
  if (elements_.back() == Element::placemark) {
    name_ = trimmed(text_);
  } else {
    container().setName(trimmed(text_));
  }
}

void KmlReader::endPlacemark() {
  placemark_->describe(name_, data_);
  container().adoptFeature(std::move(placemark_));
}

void KmlReader::endCoordinates() {
  pairs_.clear();
  parseCoordinates(text_, pairs_, tally_);
  text_.clear();
  const int count = static_cast<int>(pairs_.size() / 2);
  if (count == 0) return;
  const Element around = elements_.back();
  OgKMLAbstractGeometry& geometry = *geometries_.back();
  if (around == Element::point) {
    static_cast<OgKMLPoint&>(geometry).setPlace(pairs_[0], pairs_[1]);
    tally_.bad += count - 1;
    return;
  }
  const Element boundary = elements_[elements_.size() - 2];
  const bool ofPolygon = boundary == Element::outerBoundary || boundary == Element::innerBoundary;
  if (!ofPolygon) {
    OgKMLPositions& positions = static_cast<OgKMLLineString&>(geometry).positions;
    tally_.bad += positions.size();
    positions.assign(pairs_.data(), count);
    if (around == Element::linearRing) positions.close();
    return;
  }
  auto& polygon = static_cast<OgKMLPolygon&>(geometry);
  OgKMLPositions ring;
  ring.assign(pairs_.data(), count);
  ring.close();
  // A second outer ring is no polygon's; it is kept as a hole would be, so that its line isn't lost.
  if (boundary == Element::outerBoundary && polygon.outer.size() == 0) {
    polygon.outer = std::move(ring);
  } else {
    polygon.inner.push_back(std::move(ring));
  }
}

void KmlReader::endGeometry() {
  std::unique_ptr<OgKMLAbstractGeometry> geometry = std::move(geometries_.back());
  geometries_.pop_back();
  if (!geometries_.empty()) {
    static_cast<OgKMLMultiGeometry&>(*geometries_.back()).children.push_back(std::move(geometry));
    return;
  }
  std::unique_ptr<OgKMLAbstractGeometry> before = placemark_->releaseGeometry();
  if (before == nullptr) {
    placemark_->adoptGeometry(std::move(geometry));
    return;
  }
  // A placemark has one geometry; programs that write several mean all of them.
  auto both = std::make_unique<OgKMLMultiGeometry>();
  both->children.push_back(std::move(before));
  both->children.push_back(std::move(geometry));
  placemark_->adoptGeometry(std::move(both));
}

}  // namespace kaldex
