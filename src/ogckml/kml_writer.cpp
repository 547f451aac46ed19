#include "ogckml/kml_writer.h"

#include "base/number_text.h"

namespace kaldex {

using namespace KdxOgc;

namespace {

constexpr int kDecimals = 9;
const QLatin1String kNamespace("http://www.opengis.net/kml/2.2");
constexpr std::size_t kTextAtOnce = 64 * 1024;

// XML has no place for most control characters, not even escaped.
QString allowed(std::string_view utf8) {
  QString text = QString::fromUtf8(utf8.data(), static_cast<int>(utf8.size()));
  for (QChar& c : text) {
    const ushort unit = c.unicode();
    const bool control = unit < 0x20 && unit != '\t' && unit != '\n' && unit != '\r';
    if (control || unit == 0xFFFE || unit == 0xFFFF) c = QLatin1Char(' ');
  }
  return text;
}

}  // namespace

bool KmlWriter::write(const std::string& root, const OgKMLDocument& document) {
  xml_.writeStartDocument();
  xml_.writeCharacters(QStringLiteral("\n"));
  xml_.writeDefaultNamespace(kNamespace);
  xml_.writeStartElement(QString::fromStdString(root));
  container(document);
  end();
  xml_.writeEndDocument();
  return !xml_.hasError() && !failed_;
}

void KmlWriter::container(const OgKMLAbstractContainer& container) {
  start(container.typeName());
  if (!container.name().empty()) text("name", container.name());
  for (const OgKMLAbstractFeature* feature : container.features()) {
    if (xml_.hasError() || failed_) return;
    if (feature == nullptr) continue;
    xml_.writeCharacters(QStringLiteral("\n"));
    if (const auto* const inner = dynamic_cast<const OgKMLAbstractContainer*>(feature)) {
      this->container(*inner);
    } else if (const auto* const mark = dynamic_cast<const OgKMLPlacemark*>(feature)) {
      placemark(*mark);
    }
  }
  xml_.writeCharacters(QStringLiteral("\n"));
  end();
}

void KmlWriter::placemark(const OgKMLPlacemark& placemark) {
  start("Placemark");
  if (!placemark.name().empty()) text("name", placemark.name());
  bool extended = false;
  placemark.eachDatum([&](std::string_view key, std::string_view value) {
    if (!extended) start("ExtendedData");
    extended = true;
    start("Data");
    xml_.writeAttribute(QStringLiteral("name"), allowed(key));
    text("value", value);
    end();
  });
  if (extended) end();
  if (placemark.getAbstractGeometry() != nullptr) geometry(*placemark.getAbstractGeometry());
  end();
}

void KmlWriter::geometry(const OgKMLAbstractGeometry& geometry) {
  start(geometry.typeName());
  if (const auto* const point = dynamic_cast<const OgKMLPoint*>(&geometry)) {
    const double pair[] = {point->place().x, point->place().y};
    coordinates(pair, 1);
  } else if (const auto* const line = dynamic_cast<const OgKMLLineString*>(&geometry)) {
    coordinates(line->positions);
  } else if (const auto* const polygon = dynamic_cast<const OgKMLPolygon*>(&geometry)) {
    ring("outerBoundaryIs", polygon->outer);
    for (const OgKMLPositions& positions : polygon->inner) ring("innerBoundaryIs", positions);
  } else if (const auto* const several = dynamic_cast<const OgKMLMultiGeometry*>(&geometry)) {
    for (const auto& child : several->children) this->geometry(*child);
  }
  end();
}

void KmlWriter::ring(const char* boundary, const OgKMLPositions& positions) {
  start(boundary);
  start("LinearRing");
  coordinates(positions);
  end();
  end();
}

void KmlWriter::coordinates(const OgKMLPositions& positions) {
  positions.copyTo(pairs_);
  coordinates(pairs_.data(), positions.size());
}

// Digits need no escaping: they go past the stream writer, which takes texts character by character.
void KmlWriter::coordinates(const double* pairs, int count) {
  start("coordinates");
  xml_.writeCharacters(QString());  // ends the element's tag
  buffer_.clear();
  const auto flush = [this] {
    const auto size = static_cast<qint64>(buffer_.size());
    failed_ = failed_ || device_.write(buffer_.data(), size) != size;
    buffer_.clear();
  };
  char number[kNumberTextCapacity];
  for (int i = 0; i < 2 * count; ++i) {
    if (i > 0) buffer_.push_back(i % 2 == 0 ? ' ' : ',');
    const char* const last = appendFixed(number, pairs[i], kDecimals);
    buffer_.append(number, static_cast<std::size_t>(last - number));
    if (buffer_.size() > kTextAtOnce) flush();
  }
  flush();
  end();
}

void KmlWriter::text(const char* element, std::string_view utf8) {
  xml_.writeTextElement(QLatin1String(element), allowed(utf8));
}

}  // namespace kaldex
