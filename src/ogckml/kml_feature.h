#ifndef KALDEX_OGCKML_KML_FEATURE_H
#define KALDEX_OGCKML_KML_FEATURE_H

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ogckml/kml_geometry.h"

inline namespace kaldex_v1 {
namespace KdxOgc {

class SXMLDecoderQt;
class SXMLEncoderQt;

/// A name with its value. Texts of a document are UTF-8.
using OgKMLDatum = std::pair<std::string, std::string>;

class OgKMLAbstractFeature : public OgKMLAbstractObject {
 public:
  std::string_view name() const;
  void setName(std::string_view name) { setTexts(name, {}); }

 protected:
  /// The name and the data, in one piece of memory: most features are small, and there are many of them.
  void setTexts(std::string_view name, const std::vector<OgKMLDatum>& data);
  std::string_view texts() const { return {texts_.get(), size_}; }

 private:
  std::unique_ptr<char[]> texts_;  ///< each with a terminator
  std::uint32_t size_ = 0;
};

class OgKMLPlacemark : public OgKMLAbstractFeature {
 public:
  ~OgKMLPlacemark() override;
  const char* typeName() const override { return "Placemark"; }

  /// The geometry is borrowed, or taken over; either replaces what was there.
  void setAbstractGeometry(OgKMLAbstractGeometry* geometry);
  void adoptGeometry(std::unique_ptr<OgKMLAbstractGeometry> geometry);
  OgKMLAbstractGeometry* getAbstractGeometry() const { return geometry_; }
  /// Null when it is a borrowed one; there is none afterwards.
  std::unique_ptr<OgKMLAbstractGeometry> releaseGeometry();

  /// What it is called, and what is told of it.
  void describe(std::string_view name, const std::vector<OgKMLDatum>& data) { setTexts(name, data); }
  template <class Visit>
  void eachDatum(Visit visit) const {
    std::string_view rest = texts();
    for (next(rest); !rest.empty();) {
      const std::string_view key = next(rest);
      visit(key, next(rest));
    }
  }

 private:
  static std::string_view next(std::string_view& rest);

  OgKMLAbstractGeometry* geometry_ = nullptr;
  bool owns_ = false;
};

/// Holds features: borrowed ones, and ones of its own.
class OgKMLAbstractContainer : public OgKMLAbstractFeature {
 public:
  ~OgKMLAbstractContainer() override;

  void addAbstractFeature(OgKMLAbstractFeature* feature) { features_.push_back(feature); }
  void adoptFeature(std::unique_ptr<OgKMLAbstractFeature> feature);
  /// In the order in which they came; null where one was dropped.
  const std::vector<OgKMLAbstractFeature*>& features() const { return features_; }
  /// Let go of a feature of its own, a borrowed one stays.
  void dropFeature(std::size_t number);

 private:
  std::vector<OgKMLAbstractFeature*> features_;
  std::vector<std::unique_ptr<OgKMLAbstractFeature>> owned_;
};

class OgKMLFolder : public OgKMLAbstractContainer {
 public:
  const char* typeName() const override { return "Folder"; }
};

/// What a document held that its objects don't.
struct OgKMLLosses {
  std::map<std::string, long long> features;  ///< that are no placemarks, by their type name
  long long descriptions = 0;
  long long altitudes = 0;  ///< coordinates with one other than 0
  long long badTuples = 0;  ///< coordinates that are none
};

/// A document: the whole of a file, or a "Document" in it.
class OgKMLDocument : public OgKMLAbstractContainer {
 public:
  const char* typeName() const override { return "Document"; }

  /// Fill the document with what the decoder's file holds. False, and the document holds a part or nothing,
  /// when it is no KML; the decoder tells why.
  bool decode(SXMLDecoderQt& decoder);
  /// Have the encoder write this document when it saves; until then the document must live and stay.
  void encode(SXMLEncoderQt& encoder) const;

  OgKMLLosses losses;
};

}  // namespace KdxOgc
}  // namespace kaldex_v1

#endif
