#include "kaldex/model/polygon.h"

#include <algorithm>
#include <deque>

#include "model/geometry/scan_line.h"
#include "model/vector/vector_store.h"

inline namespace kaldex_v1 {

SPolygon::SPolygon() = default;

SPolygon::~SPolygon() {
  if (store_ != nullptr && registered_) store_->polygonDies(*this);
}

Line* SPolygon::CreatePoints(Point*) {
  if (lent_ != nullptr) return lent_;
  if (outline_ != nullptr) return outline_.get();
  if (store_ == nullptr) return nullptr;
  auto outline = std::make_unique<Line>();
  const bool found =
      hasRow_ ? store_->loadOutline(id, outline->xy_) : store_->chainLines(lines_, outline->xy_);
  if (!found || outline->xy_.empty()) return nullptr;
  outline->box = box;
  outline_ = std::move(outline);
  return outline_.get();
}

void SPolygon::DeletePoints() {
  outline_.reset();
}

void SPolygon::SetPoints(Line* outline) {
  lent_ = outline;
}

void SPolygon::KeepPoints(short keep) {
  keep_ = keep != 0;
  if (!keep_) DeletePoints();
}

int SPolygon::AppendLine(Line* line) {
  if (line == nullptr || line->id == 0 || line->store_ == nullptr) return 0;
  if (store_ != nullptr && store_ != line->store_) return 0;
  store_ = line->store_;
  lines_.push_back(line->id);
  geometryChanged_ = true;
  return 1;
}

Line* SPolygon::FirstLine() {
  lineCursor_ = 0;
  return NextLine();
}

Line* SPolygon::NextLine() {
  if (store_ == nullptr || lineCursor_ >= lines_.size()) return nullptr;
  return store_->line(lines_[lineCursor_++]);
}

int SPolygon::AppendSon(SPolygon* son, short setParent) {
  if (son == nullptr || son == this || son->id == 0 || son->id == id) return 0;
  if (son->parentId > 0 && son->parentId != id) return 0;
  if (std::find(sons_.begin(), sons_.end(), son->id) == sons_.end()) sons_.push_back(son->id);
  geometryChanged_ = true;
  if (setParent != 0 && son->parentId != id) {
    son->parentId = id;
    if (son->hasRow_) son->changed = stateChanged;
  }
  return 1;
}

int SPolygon::NumSons() const {
  return static_cast<int>(sons_.size());
}

SPolygon* SPolygon::FirstSon() {
  sonCursor_ = 0;
  return NextSon();
}

SPolygon* SPolygon::NextSon() {
  if (store_ == nullptr || sonCursor_ >= sons_.size()) return nullptr;
  return store_->polygon(sons_[sonCursor_++]);
}

/// The outline for a short look: what is there, a lone line of the layer whose points are in memory, or one
/// made now.
const Line* SPolygon::outlineForUse() {
  if (Points() != nullptr) return Points();
  if (store_ != nullptr && lines_.size() == 1) {
    const Line* line = store_->loadedLine(lines_.front());
    if (line != nullptr) return line;
  }
  return CreatePoints();
}

void SPolygon::doneWithOutline() {
  if (!keep_) DeletePoints();
}

short SPolygon::Inside(const Point& point, float tolerance, double*, double*) {
  const bool had = outline_ != nullptr;
  const Line* outline = outlineForUse();
  short place = 0;
  if (outline != nullptr && outline->Size() >= 3) {
    place = kaldex::placeInRing(outline->coordinates(), static_cast<size_t>(outline->Size()), point.x,
                                point.y, static_cast<double>(tolerance));
  }
  if (!had) doneWithOutline();
  return place;
}

short SPolygon::Orientation() {
  const bool had = outline_ != nullptr;
  const Line* outline = outlineForUse();
  double signedArea = 0.0;
  const int measured = calcula_area(outline, &signedArea);
  if (!had) doneWithOutline();
  if (measured == 0 || signedArea == 0.0) return 0;
  return signedArea < 0 ? 1 : 2;
}

void SPolygon::UpdateArea(const SProjection*) {
  const bool had = outline_ != nullptr;
  double signedArea = 0.0;
  calcula_area(outlineForUse(), &signedArea);
  area = signedArea < 0 ? -signedArea : signedArea;
  if (!had) doneWithOutline();
}

void SPolygon::UpdatePerimeter(const SProjection* projection) {
  const bool had = outline_ != nullptr;
  const Line* outline = outlineForUse();
  perimeter = outline != nullptr ? outline->CalcLength(projection) : 0.0;
  if (!had) doneWithOutline();
}

/// Reads a son's outline without making a shell of it when there is none.
bool SPolygon::sonOutline(int son, std::vector<double>& xy) {
  if (store_ == nullptr) return false;
  SPolygon* live = store_->livePolygon(son);
  if (live == nullptr) return store_->loadOutline(son, xy);
  const bool had = live->outline_ != nullptr;
  const Line* outline = live->outlineForUse();
  if (outline != nullptr) xy.assign(outline->coordinates(), outline->coordinates() + 2 * outline->Size());
  if (!had) live->doneWithOutline();
  return !xy.empty();
}

int SPolygon::LabelPointGeneration() {
  const bool had = outline_ != nullptr;
  const Line* outline = outlineForUse();
  labelPoint = Point::unset();
  if (changed == stateStored) changed = stateChanged;
  if (outline == nullptr || outline->Size() < 3) return 0;
  kaldex::InteriorPointFinder finder;
  finder.addRing(outline->coordinates(), static_cast<size_t>(outline->Size()));
  std::deque<std::vector<double>> holes;
  for (int son : sons_) {
    holes.emplace_back();
    if (sonOutline(son, holes.back())) finder.addRing(holes.back().data(), holes.back().size() / 2);
  }
  const bool found = finder.find(labelPoint);
  if (!had) doneWithOutline();
  return found ? 1 : 0;
}

void SPolygon::Free() {
  if (store_ != nullptr && registered_) store_->giveBack(*this);
  keep_ = false;
  outline_.reset();
}

}  // namespace kaldex_v1
