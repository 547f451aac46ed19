#include "cli/map_painter.h"

#include <QPainterPath>
#include <algorithm>
#include <memory>

#include "cli/interrupt.h"
#include "cli/map_colors.h"
#include "kaldex/model/text.h"

namespace kaldex::cli {

namespace {

constexpr short kVectors[] = {vectorLines, vectorContours, vectorSamples};
constexpr double kThin = 0.7;
constexpr double kPlain = 1.1;
constexpr double kThick = 1.8;
constexpr double kDotRadius = 3.2;
constexpr double kSampleRadius = 1.4;
const QColor kBorder(0x5A, 0x60, 0x68);
const QColor kLine(0x2B, 0x6C, 0xA3);
const QColor kContour(0x9A, 0x6A, 0x3A);
const QColor kPoint(0xC0, 0x39, 0x2B);
const QColor kSample(0x6A, 0x4C, 0x93);

const GeoClass* classOf(const InfoLayer& layer, int id) {
  return id > 0 ? layer.category()->classes.SelectFromIndex(id) : nullptr;
}

// What a cursor hands out stands in memory until it is deleted; what is stored stays.
template <class Item>
using Shell = std::unique_ptr<Item>;

}  // namespace

bool MapPainter::draw(const std::vector<InfoLayer*>& layers) {
  for (InfoLayer* const layer : layers) drawPolygons(*layer);
  for (InfoLayer* const layer : layers) {
    for (const short kind : kVectors) drawLines(*layer, kind);
  }
  for (InfoLayer* const layer : layers) drawSamples(*layer);
  for (InfoLayer* const layer : layers) drawPoints(*layer);
  for (InfoLayer* const layer : layers) drawTexts(*layer);
  return !interrupted();
}

void MapPainter::findObjects(Vector& vector) {
  objects_.clear();
  for (Shell<Anchor> anchor(vector.FirstAnchor()); anchor != nullptr; anchor.reset(vector.NextAnchor())) {
    for (const int polygon : anchor->polygons) {
      const auto at = static_cast<std::size_t>(std::max(polygon, 0));
      if (objects_.size() <= at) objects_.resize(at + 1, {0, 0});
      objects_[at] = {anchor->id, anchor->visualId};
    }
  }
}

void MapPainter::drawPolygons(InfoLayer& layer) {
  Vector* const vector = layer.vector(vectorLines);
  if (vector == nullptr || vector->polygonCount() == 0) return;
  findObjects(*vector);
  for (SPolygon* polygon = vector->FirstPolygon(); polygon != nullptr && !interrupted();
       polygon = vector->NextPolygon()) {
    const Shell<SPolygon> shell(polygon);
    if (!isHole(*polygon)) drawPolygon(*polygon, layer);
  }
}

// A polygon in another one that nothing is said of is no area of its own.
bool MapPainter::isHole(const SPolygon& polygon) const {
  const auto at = static_cast<std::size_t>(polygon.id);
  const bool object = at < objects_.size() && objects_[at].anchor != 0;
  return polygon.parentId > 0 && polygon.classId <= 0 && !object;
}

void MapPainter::addRing(QPainterPath& path, SPolygon& polygon) {
  const Line* const outline = polygon.CreatePoints(nullptr);
  if (outline != nullptr) {
    view_.trace(outline->coordinates(), outline->Size(), path_);
    path.addPolygon(path_);
    path.closeSubpath();
  }
  polygon.DeletePoints();
}

void MapPainter::drawPolygon(SPolygon& polygon, const InfoLayer& layer) {
  QPainterPath path;
  path.setFillRule(Qt::OddEvenFill);
  addRing(path, polygon);
  for (SPolygon* son = polygon.FirstSon(); son != nullptr; son = polygon.NextSon()) {
    const Shell<SPolygon> shell(son);
    addRing(path, *son);
  }
  painter_.fillPath(path, fill(polygon, layer));
}

QColor MapPainter::fill(const SPolygon& polygon, const InfoLayer& layer) {
  if (const GeoClass* const geoClass = classOf(layer, polygon.classId))
    return fillOf(geoClass->visual, paletteFill(geoClass->id));
  const auto at = static_cast<std::size_t>(polygon.id);
  const Object object = at < objects_.size() ? objects_[at] : Object{0, 0};
  const QColor own = paletteFill(object.anchor != 0 ? object.anchor : polygon.id);
  if (object.visual != stored_.id) {
    stored_ = StoredVisual{object.visual, false, GeneralVisual()};
    stored_.known = object.visual > 0 && dataBase_.loadVisual(object.visual, stored_.visual) != 0;
  }
  return stored_.known ? fillOf(stored_.visual, own) : own;
}

void MapPainter::drawLines(InfoLayer& layer, short kind) {
  Vector* const vector = layer.vector(kind);
  if (vector == nullptr) return;
  for (Line* line = vector->FirstLine(); line != nullptr && !interrupted(); line = vector->NextLine()) {
    const Shell<Line> shell(line);
    drawLine(*line, layer, kind);
  }
}

void MapPainter::drawLine(Line& line, const InfoLayer& layer, short kind) {
  view_.trace(line.coordinates(), line.Size(), path_);
  painter_.setPen(pen(line, layer, kind));
  painter_.drawPolyline(path_);
}

QPen MapPainter::pen(const Line& line, const InfoLayer& layer, short kind) const {
  const GeoClass* const geoClass = classOf(layer, line.classId);
  if (kind == vectorContours || (kind == vectorSamples && line.Type() != lineBreak))
    return {kContour, line.Type() == lineMaster ? kThick : kThin};
  if (geoClass != nullptr) return {strokeOf(geoClass->visual, paletteStroke(geoClass->id)), kPlain};
  const bool border = line.leftPolygon > 0 || line.rightPolygon > 0;
  return border ? QPen(kBorder, kThin) : QPen(kLine, kPlain);
}

void MapPainter::dot(const QPointF& place, double radius, const QColor& color) {
  painter_.setPen(QPen(Qt::white, radius / 3));
  painter_.setBrush(color);
  painter_.drawEllipse(place, radius, radius);
  painter_.setBrush(Qt::NoBrush);
}

void MapPainter::drawPoints(InfoLayer& layer) {
  Vector* const vector = layer.vector(vectorLines);
  if (vector == nullptr) return;
  for (const Point2d* point = vector->FirstPoint2d(); point != nullptr && !interrupted();
       point = vector->NextPoint2d()) {
    const GeoClass* const geoClass = classOf(layer, point->classId);
    const QColor color = geoClass != nullptr ? dotOf(geoClass->visual, paletteStroke(geoClass->id)) : kPoint;
    dot(view_.place(point->x, point->y), kDotRadius, color);
  }
}

void MapPainter::drawSamples(InfoLayer& layer) {
  for (const short kind : {vectorContours, vectorSamples}) {
    Vector* const vector = layer.vector(kind);
    if (vector == nullptr) continue;
    for (Shell<Point3d> point(vector->FirstPoint3d()); point != nullptr && !interrupted();
         point.reset(vector->NextPoint3d()))
      dot(view_.place(point->x, point->y), kSampleRadius, kSample);
  }
}

void MapPainter::drawTexts(InfoLayer& layer) {
  constexpr double kSmallestText = 4.0;  // points of the picture
  Text* text = nullptr;
  if (layer.Get(text) == 0) return;
  EntitieList texts;
  text->load(texts);
  for (Entitie* const entity : texts) {
    const auto* const one = static_cast<const EText*>(entity);
    const double height = one->Height() * (view_.place(0, 0).y() - view_.place(0, 1).y());
    if (height < kSmallestText) continue;
    QFont font = painter_.font();
    font.setPixelSize(static_cast<int>(height));
    painter_.save();
    painter_.setFont(font);
    painter_.setPen(QColor(one->look().color.red, one->look().color.green, one->look().color.blue));
    painter_.translate(view_.place(one->Position().x, one->Position().y));
    painter_.rotate(-static_cast<double>(one->Angle()));
    painter_.drawText(QPointF(0, 0), one->String());
    painter_.restore();
  }
}

}  // namespace kaldex::cli
