#include "lib/legacy/polygon_ring.h"

#include <algorithm>
#include <cmath>

namespace kaldex {

namespace {

constexpr std::size_t kMostPoints = 1004;
// A few lines listed again and again would make a ring of any size from a small file.
constexpr std::size_t kMostRingPoints = 65535;

class Ring {
 public:
  Ring(std::vector<float>& x, std::vector<float>& y) : x_(x), y_(y) {
    x_.clear();
    y_.clear();
  }

  void append(const std::vector<float>& x, const std::vector<float>& y, bool forward, bool whole) {
    const std::size_t skipped = whole ? 0 : 1;
    for (std::size_t i = skipped; i < x.size(); ++i) {
      const std::size_t at = forward ? i : x.size() - 1 - i;
      x_.push_back(x[at]);
      y_.push_back(y[at]);
    }
  }
  bool endsAt(float x, float y) const { return x_.back() == x && y_.back() == y; }

 private:
  std::vector<float>& x_;
  std::vector<float>& y_;
};

// Whether the first line runs towards the second one.
int firstRunsForward(LineFiles& files, LineRecord& record, const std::int16_t* ids, bool& forward) {
  if (linha_le_head(files, record, ids[0]) == 0) return 0;
  const float x = record.lastX;
  const float y = record.lastY;
  if (linha_le_head(files, record, ids[1]) == 0) return 0;
  forward = (x == record.firstX && y == record.firstY) || (x == record.lastX && y == record.lastY);
  return 1;
}

}  // namespace

int monta_poligono(LineFiles& files, LineRecord& record, int count, std::vector<float>& x,
                   std::vector<float>& y, const std::int16_t* ids) {
  Ring ring(x, y);
  if (count < 1) return 1;
  bool forward = false;
  if (count > 1 && firstRunsForward(files, record, ids, forward) == 0) return 0;
  std::vector<float> lineX, lineY;
  for (int i = 0; i < count; ++i) {
    if (linha_le(files, record, ids[i], lineX, lineY) == 0) return 0;
    if (lineX.empty() || lineX.size() > kMostPoints) return 0;
    if (i > 0) forward = ring.endsAt(lineX.front(), lineY.front());
    ring.append(lineX, lineY, forward, i == 0);
    if (x.size() > kMostRingPoints) return 0;
  }
  return 1;
}

int corta_poli(double y, std::vector<double>& xs, int count, const float* px, const float* py) {
  xs.clear();
  const int edges = count - 1;
  if (edges < 2) return 1;
  const auto side = [&](int i) {
    const double at = static_cast<double>(py[i % edges]);
    return at > y ? 1 : at < y ? -1 : 0;
  };
  // A file may hold what is no number, which can't be sorted.
  const auto add = [&](double x) {
    if (!std::isnan(x)) xs.push_back(x);
  };
  for (int i = 0; i < edges; ++i) {
    const int here = side(i);
    if (here != 0) {
      if (here + side(i + 1) != 0) continue;
      // One end above, one below.
      const int next = (i + 1) % edges;
      const double x = static_cast<double>(px[i]);
      const double dx = static_cast<double>(px[next]) - x;
      const double dy = static_cast<double>(py[next]) - static_cast<double>(py[i]);
      const double m = dx != 0.0 ? dy / dx : 0.0;
      add(dx != 0.0 ? (x * m + y - static_cast<double>(py[i])) / m : x);
      continue;
    }
    const int before = side(i + edges - 1);
    if (before == 0) continue;  // in a run along the line, which is looked at where it begins
    int end = i + 1;
    while (end < i + edges && side(end) == 0) ++end;
    if (side(end) != before) add(static_cast<double>(px[i]));
  }
  std::sort(xs.begin(), xs.end());
  return 1;
}

}  // namespace kaldex
