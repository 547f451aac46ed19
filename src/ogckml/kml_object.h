#ifndef KALDEX_OGCKML_KML_OBJECT_H
#define KALDEX_OGCKML_KML_OBJECT_H

inline namespace kaldex_v1 {
namespace KdxOgc {

/// Anything that a KML document holds.
class OgKMLAbstractObject {
 public:
  OgKMLAbstractObject() = default;
  OgKMLAbstractObject(const OgKMLAbstractObject&) = delete;
  OgKMLAbstractObject& operator=(const OgKMLAbstractObject&) = delete;
  virtual ~OgKMLAbstractObject();

  /// The name of its element, without a prefix: "Placemark", "LineString".
  virtual const char* typeName() const = 0;
};

}  // namespace KdxOgc
}  // namespace kaldex_v1

#endif
