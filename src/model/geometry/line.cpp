#include "kaldex/model/line.h"

#include <algorithm>
#include <cmath>
#include <new>

#include "model/database/geometry_blob.h"
#include "model/vector/vector_store.h"

inline namespace kaldex_v1 {

namespace {

// Not hypot: coordinates are far from the ends of a double's range, and every import measures its lines.
double distance(const double* a, const double* b) {
  const double dx = b[0] - a[0], dy = b[1] - a[1];
  return std::sqrt(dx * dx + dy * dy);
}

double squareDistanceToSegment(const double* p, const double* a, const double* b) {
  const double dx = b[0] - a[0], dy = b[1] - a[1];
  const double length = dx * dx + dy * dy;
  double t = length > 0 ? ((p[0] - a[0]) * dx + (p[1] - a[1]) * dy) / length : 0.0;
  t = std::clamp(t, 0.0, 1.0);
  const double ex = p[0] - (a[0] + t * dx), ey = p[1] - (a[1] + t * dy);
  return ex * ex + ey * ey;
}

/// Marks the vertices that Douglas and Peucker keep, without recursion: a line may have millions.
std::vector<bool> keptVertices(const double* xy, int count, double tolerance) {
  std::vector<bool> keep(static_cast<size_t>(count), false);
  keep.front() = keep.back() = true;
  std::vector<std::pair<int, int>> spans{{0, count - 1}};
  while (!spans.empty()) {
    const auto [first, last] = spans.back();
    spans.pop_back();
    double worst = tolerance * tolerance;
    int at = -1;
    for (int i = first + 1; i < last; ++i) {
      const double square = squareDistanceToSegment(xy + 2 * i, xy + 2 * first, xy + 2 * last);
      if (square > worst) {
        worst = square;
        at = i;
      }
    }
    if (at < 0) continue;
    keep[static_cast<size_t>(at)] = true;
    spans.emplace_back(first, at);
    spans.emplace_back(at, last);
  }
  return keep;
}

bool equalForward(const double* a, const double* b, int count) {
  return std::equal(a, a + 2 * count, b);
}

bool equalBackward(const double* a, const double* b, int count) {
  for (int i = 0; i < count; ++i) {
    const double* other = b + 2 * (count - 1 - i);
    if (a[2 * i] != other[0] || a[2 * i + 1] != other[1]) return false;
  }
  return true;
}

/// Rings of `count` distinct vertices, compared from start vertex `start` of b in direction `step`.
bool equalRing(const double* a, const double* b, int count, int start, int step) {
  for (int i = 0, j = start; i < count; ++i, j = (j + step + count) % count) {
    if (a[2 * i] != b[2 * j] || a[2 * i + 1] != b[2 * j + 1]) return false;
  }
  return true;
}

}  // namespace

Line::Line() = default;

Line::~Line() {
  if (store_ != nullptr) store_->lineDies(*this);
}

void Line::load() const {
  if (!loaded_ && store_ != nullptr) store_->loadPoints(*this);
}

int Line::Size() const {
  load();
  return static_cast<int>(xy_.size() / 2);
}

Point* Line::at(int position) {
  if (position < 0 || position >= Size()) return nullptr;
  current_.x = xy_[2 * static_cast<size_t>(position)];
  current_.y = xy_[2 * static_cast<size_t>(position) + 1];
  return &current_;
}

Point* Line::First() {
  return at(cursor_ = 0);
}
Point* Line::Last() {
  return at(cursor_ = Size() - 1);
}

Point* Line::Next(Box* box) {
  while (cursor_ < Size()) {
    Point* point = at(++cursor_);
    if (point == nullptr || box == nullptr || box->Contains(*point)) return point;
  }
  return nullptr;
}

Point* Line::Prev() {
  if (cursor_ >= 0) --cursor_;
  return at(cursor_);
}

int Line::Append(const Point& point, bool dropRepeats) {
  load();
  if (dropRepeats && !xy_.empty() && xy_[xy_.size() - 2] == point.x && xy_.back() == point.y) return 1;
  try {
    xy_.push_back(point.x);
    xy_.push_back(point.y);
  } catch (const std::bad_alloc&) {
    if (xy_.size() % 2 != 0) xy_.pop_back();
    return 0;
  }
  pointsChanged_ = true;
  return 1;
}

double Line::CalcLength(const SProjection*) const {
  load();
  double length = 0.0;
  for (size_t i = 2; i < xy_.size(); i += 2) length += distance(&xy_[i - 2], &xy_[i]);
  return length;
}

void Line::UpdateBox() {
  load();
  box = xy_.empty() ? Box() : kaldex::boxOf(xy_.data(), xy_.size() / 2);
}

void Line::UpdateLabelPoint() {
  if (!labelPoint.isUnset() || Size() == 0) return;
  const double half = CalcLength() / 2;
  double walked = 0.0;
  for (size_t i = 2; i < xy_.size(); i += 2) {
    const double step = distance(&xy_[i - 2], &xy_[i]);
    if (walked + step >= half && step > 0) {
      const double t = (half - walked) / step;
      labelPoint = Point(xy_[i - 2] + t * (xy_[i] - xy_[i - 2]), xy_[i - 1] + t * (xy_[i + 1] - xy_[i - 1]));
      return;
    }
    walked += step;
  }
  labelPoint = Point(xy_[0], xy_[1]);
}

bool Line::isClosed() const {
  load();
  return xy_.size() >= 6 && xy_[0] == xy_[xy_.size() - 2] && xy_[1] == xy_.back();
}

bool Line::Equal(const Line& other) const {
  const int count = Size();
  if (count != other.Size()) return false;
  if (count == 0) return true;
  const double* a = coordinates();
  const double* b = other.coordinates();
  if (equalForward(a, b, count) || equalBackward(a, b, count)) return true;
  if (!isClosed() || !other.isClosed()) return false;
  const int distinct = count - 1;
  for (int start = 0; start < distinct; ++start) {
    if (b[2 * start] != a[0] || b[2 * start + 1] != a[1]) continue;
    if (equalRing(a, b, distinct, start, 1) || equalRing(a, b, distinct, start, -1)) return true;
  }
  return false;
}

int Line::Simplify(float tolerance, int keepClosed) {
  const int count = Size();
  if (count < 3) return count;
  const std::vector<bool> keep = keptVertices(xy_.data(), count, static_cast<double>(tolerance));
  const auto kept = std::count(keep.begin(), keep.end(), true);
  if (keepClosed != 0 && isClosed() && kept < 4) return count;
  size_t out = 0;
  for (size_t i = 0; i < keep.size(); ++i) {
    if (!keep[i]) continue;
    xy_[2 * out] = xy_[2 * i];
    xy_[2 * out + 1] = xy_[2 * i + 1];
    ++out;
  }
  pointsChanged_ = pointsChanged_ || out != keep.size();
  xy_.resize(2 * out);
  return static_cast<int>(out);
}

void Line::Free(short) {
  if (store_ != nullptr) return store_->giveBack(*this, true);
  std::vector<double>().swap(xy_);
}

void Line::FreeAll() {
  Free(1);
  if (store_ != nullptr) return;
  id = classId = leftPolygon = rightPolygon = 0;
  height = 0.0f;
  labelPoint = Point::unset();
  box = Box();
}

const double* Line::coordinates() const {
  load();
  return xy_.data();
}

void Line::assign(const double* xy, int count) {
  xy_.assign(xy, xy + 2 * static_cast<size_t>(count));
  loaded_ = true;
  pointsChanged_ = true;
}

void GetMiddlePoint(const Point& a, const Point& b, Point& middle, float) {
  middle = Point((a.x + b.x) / 2, (a.y + b.y) / 2);
}

int calcula_area(const Line* line, double* area) {
  *area = 0.0;
  if (line == nullptr || line->Size() < 3) return 0;
  const double* xy = line->coordinates();
  const int count = line->Size();
  // Relative to the first vertex: far from the origin the products would lose the digits that matter.
  double twice = 0.0;
  for (int i = 1; i + 1 < count; ++i) {
    twice +=
        (xy[2 * i] - xy[0]) * (xy[2 * i + 3] - xy[1]) - (xy[2 * i + 2] - xy[0]) * (xy[2 * i + 1] - xy[1]);
  }
  *area = twice / 2;
  return 1;
}

}  // namespace kaldex_v1
