#ifndef KALDEX_MODEL_TEXT_H
#define KALDEX_MODEL_TEXT_H

#include <QString>

#include "kaldex/model/forward.h"
#include "kaldex/model/geometry.h"
#include "kaldex/model/list.h"
#include "kaldex/model/visual.h"

inline namespace kaldex_v1 {

/// Something drawn in a layer beside its data. `Own` tells whether it has a look of its own (1) or the layer's (0).
class KALDEX_MODEL_API Entitie : public SObject {
 public:
  short EntitieType() const { return type_; }
  void EntitieType(short type) { type_ = type; }
  short Own() const { return own_; }
  void Own(short own) { own_ = own; }
  const QString& LayerName() const { return layerName_; }
  void LayerName(const char* name) { layerName_ = QString::fromLatin1(name); }

  int id = 0;

 private:
  short type_ = 0;
  short own_ = 0;
  QString layerName_;
};

/// A text at a place: angle in degrees counter-clockwise, height in plane units.
class KALDEX_MODEL_API EText : public Entitie {
 public:
  const Point& Position() const { return position_; }
  void Position(const Point& position) { position_ = position; }
  const QString& String() const { return string_; }
  void String(const QString& string) { string_ = string; }
  float Angle() const { return look_.angle; }
  void Angle(float degrees) { look_.angle = degrees; }
  float Height() const { return look_.height; }
  void Height(float height) { look_.height = height; }
  float Thickness() const { return look_.thickness; }
  void Thickness(float thickness) { look_.thickness = thickness; }
  float Space() const { return look_.space; }
  void Space(float space) { look_.space = space; }
  float Expansion() const { return look_.expansion; }
  void Expansion(float expansion) { look_.expansion = expansion; }
  const QString& FontName() const { return look_.fontName; }
  void FontName(const QString& name) { look_.fontName = name; }
  Color* GetColor() { return &look_.color; }
  void SetColor(const Color* color) {
    if (color != nullptr) look_.color = *color;
  }
  void GetAlignment(short& horizontal, short& vertical) const {
    horizontal = look_.horizontalAlignment;
    vertical = look_.verticalAlignment;
  }
  void SetAlignment(short horizontal, short vertical) {
    look_.horizontalAlignment = horizontal;
    look_.verticalAlignment = vertical;
  }
  const TextVisual& look() const { return look_; }
  void look(const TextVisual& look) { look_ = look; }

 private:
  Point position_;
  QString string_;
  TextVisual look_;
};

class KALDEX_MODEL_API EntitieList : public TypedList<Entitie> {
 public:
  explicit EntitieList(Ownership ownership = Ownership::owns) : TypedList<Entitie>(ownership) {}
};

/// The text representation of a layer: its texts and the look of new ones.
class KALDEX_MODEL_API Text : public SObject {
 public:
  explicit Text(InfoLayer& layer) : layer_(layer) {}
  /// Append the stored texts, in ascending identifier, to the list; returns their count.
  int load(EntitieList& list);
  /// Store new texts (those without identifier) and changed looks; 0 on failure.
  int store(EntitieList& list);
  long long count();

  GeneralVisual visual;

 private:
  InfoLayer& layer_;
};

}  // namespace kaldex_v1

#endif
