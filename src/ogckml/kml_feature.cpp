#include "ogckml/kml_feature.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "ogckml/kml_reader.h"
#include "ogckml/xml_decoder.h"
#include "ogckml/xml_encoder.h"

inline namespace kaldex_v1 {
namespace KdxOgc {

std::string_view OgKMLAbstractFeature::name() const {
  return texts_ != nullptr ? std::string_view(texts_.get()) : std::string_view();
}

void OgKMLAbstractFeature::setTexts(std::string_view name, const std::vector<OgKMLDatum>& data) {
  std::string all;
  // A terminator inside would make two texts of one.
  const auto append = [&all](std::string_view text) {
    all.append(text.substr(0, text.find('\0')));
    all.push_back('\0');
  };
  if (!name.empty() || !data.empty()) append(name);
  for (const auto& [key, value] : data) {
    append(key);
    append(value);
  }
  if (all.size() > std::numeric_limits<std::uint32_t>::max()) all.resize(0);
  texts_.reset(all.empty() ? nullptr : new char[all.size()]);
  size_ = static_cast<std::uint32_t>(all.size());
  std::copy(all.begin(), all.end(), texts_.get());
}

std::string_view OgKMLPlacemark::next(std::string_view& rest) {
  const std::string_view text = rest.substr(0, rest.find('\0'));
  rest.remove_prefix(std::min(text.size() + 1, rest.size()));
  return text;
}

OgKMLPlacemark::~OgKMLPlacemark() {
  if (owns_) delete geometry_;
}

void OgKMLPlacemark::setAbstractGeometry(OgKMLAbstractGeometry* geometry) {
  if (owns_ && geometry != geometry_) delete geometry_;
  geometry_ = geometry;
  owns_ = false;
}

void OgKMLPlacemark::adoptGeometry(std::unique_ptr<OgKMLAbstractGeometry> geometry) {
  setAbstractGeometry(geometry.release());
  owns_ = true;
}

std::unique_ptr<OgKMLAbstractGeometry> OgKMLPlacemark::releaseGeometry() {
  std::unique_ptr<OgKMLAbstractGeometry> released(owns_ ? geometry_ : nullptr);
  geometry_ = nullptr;
  owns_ = false;
  return released;
}

OgKMLAbstractContainer::~OgKMLAbstractContainer() = default;

void OgKMLAbstractContainer::adoptFeature(std::unique_ptr<OgKMLAbstractFeature> feature) {
  features_.push_back(feature.get());
  owned_.push_back(std::move(feature));
}

void OgKMLAbstractContainer::dropFeature(std::size_t number) {
  // The two lists are alike as long as no feature was borrowed.
  if (number >= owned_.size() || owned_[number].get() != features_[number]) return;
  features_[number] = nullptr;
  owned_[number].reset();
}

bool OgKMLDocument::decode(SXMLDecoderQt& decoder) {
  return kaldex::KmlReader(decoder, *this).run();
}

void OgKMLDocument::encode(SXMLEncoderQt& encoder) const {
  encoder.setDocument(*this);
}

}  // namespace KdxOgc
}  // namespace kaldex_v1
