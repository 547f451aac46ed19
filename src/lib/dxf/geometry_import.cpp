#include "lib/dxf/geometry_import.h"

#include <QObject>
#include <cmath>
#include <memory>

#include "kaldex/job_report.h"

inline namespace kaldex_v1 {

namespace {

using kaldex::GroupCode;

// Flags of polylines and vertices.
constexpr int kClosed = 1;
constexpr int kClosedSpline = 9;
constexpr int kGrid = 16;
constexpr int kMesh = 64;
constexpr int kLineTypeGoesOn = 128;
constexpr int kSplineFrame = 16;
constexpr int kSplineVertex = 32;
constexpr int kFace = 128;

}  // namespace

IEDXF::GeometryImport::GeometryImport(IEDXF& handler, Vector& vector, SProjection* target,
                                      const Result& result)
    : EntityImport(handler, target),
      vector_(vector),
      result_(result),
      takesLines_(vector.representation() == result.representation),
      box_(vector.BoundingBox()) {}

IEDXF::GeometryImport::~GeometryImport() {
  report();
}

// --- Entities ---

void IEDXF::GeometryImport::begin(Kind kind) {
  x_ = y_ = 0.0;
  if (kind == Kind::vertex) {
    vertexFlags_ = 0;
    active_ = sequence_ == Sequence::open;
    return;
  }
  if (sequence_ == Sequence::open) ++incomplete_;
  sequence_ = Sequence::none;
  active_ = false;
  endX_ = endY_ = 0.0;
  height_ = 0.0f;
  arc_ = kaldex::ArcShape();
  xy_.clear();
  if (kind == Kind::polyline) beginSequence();
}

void IEDXF::GeometryImport::beginSequence() {
  sequence_ = Sequence::ignored;
  mesh_.clear();
  corners_ = {};
  polylineFlags_ = 0;
}

void IEDXF::GeometryImport::enter(bool chosen) {
  switch (kind()) {
    case Kind::vertex:
      active_ = chosen && sequence_ != Sequence::ignored;
      if (!chosen && sequence_ == Sequence::open) ++otherVertices_;
      break;
    case Kind::point:
      active_ = chosen;
      break;
    case Kind::polyline:
      active_ = chosen && takesLines_;
      // Without a line its vertices have nowhere to go.
      sequence_ = active_ ? Sequence::open : chosen ? Sequence::none : Sequence::ignored;
      break;
    default:
      active_ = chosen && takesLines_;
      break;
  }
}

IEDXF::EntityImport::Step IEDXF::GeometryImport::take(int code) {
  if (usesHeights() && kind() != Kind::point && (code == GroupCode::height || code == GroupCode::elevation)) {
    const auto height = static_cast<float>(real());
    const bool inMesh = kind() == Kind::vertex && isMesh();
    if (!inMesh || height != 0.0f) height_ = height;
    return Step::goOn;
  }
  switch (kind()) {
    case Kind::point:
      return takePoint(code);
    case Kind::line:
      return takeLine(code);
    case Kind::polyline:
      if (code == GroupCode::flags) polylineFlags_ = integer();
      return Step::goOn;
    case Kind::vertex:
      isMesh() ? takeMeshVertex(code) : takeVertex(code);
      return Step::goOn;
    case Kind::arc:
      return takeArc(code);
    case Kind::circle:
      return takeCircle(code);
    default:
      return Step::goOn;
  }
}

bool IEDXF::GeometryImport::finishEntity() {
  if (kind() == Kind::vertex) return finishVertex();
  // What was complete has been left before.
  if (kind() != Kind::polyline && active_) ++incomplete_;
  return true;
}

bool IEDXF::GeometryImport::takeCoordinates(int code) {
  switch (code) {
    case GroupCode::x:
      x_ = real();
      return true;
    case GroupCode::y:
      y_ = real();
      return true;
    case GroupCode::endX:
      endX_ = real();
      return true;
    case GroupCode::endY:
      endY_ = real();
      return true;
    default:
      return false;
  }
}

// --- Points and lines of two points ---

bool IEDXF::GeometryImport::placePoint(Point& point) {
  leave();
  active_ = false;
  ++pointsRead_;
  double xy[] = {x_, y_};
  place(xy, 1);
  point = Point(xy[0], xy[1]);
  if (box_.Contains(point)) return true;
  ++outside_;
  // A block at the origin is an anchor of the drawing more often than a place.
  if (x_ != 0.0 || y_ != 0.0) outsideTold_ = true;
  return false;
}

IEDXF::EntityImport::Step IEDXF::GeometryImport::inserted(int result) {
  if (result == 0) {
    ++refused_;
    return refused();
  }
  ++pointsWritten_;
  return Step::goOn;
}

IEDXF::EntityImport::Step IEDXF::GeometryImport::withoutHeight() {
  ++refused_;
  return Step::goOn;
}

IEDXF::EntityImport::Step IEDXF::GeometryImport::insertLineOfTwo() {
  xy_.assign({x_, y_, endX_, endY_});
  return insertPoints();
}

// --- Arcs and circles ---

IEDXF::EntityImport::Step IEDXF::GeometryImport::takeArc(int code) {
  if (takeCoordinates(code)) return Step::goOn;
  if (code == GroupCode::size) arc_.radius = real();
  if (code == GroupCode::startAngle) arc_.startAngle = real();
  if (code != GroupCode::endAngle) return Step::goOn;
  arc_.endAngle = real();
  arc_.x = x_;
  arc_.y = y_;
  if (!kaldex::appendArc(arc_, xy_)) ++oddArcs_;
  return insertPoints();
}

IEDXF::EntityImport::Step IEDXF::GeometryImport::takeCircle(int code) {
  if (takeCoordinates(code) || code != GroupCode::size) return Step::goOn;
  arc_.radius = real();
  arc_.x = x_;
  arc_.y = y_;
  kaldex::appendCircle(arc_, xy_);
  return insertPoints();
}

// --- Polylines ---

bool IEDXF::GeometryImport::isMesh() const {
  return (polylineFlags_ & ~kLineTypeGoesOn) == kMesh;
}

bool IEDXF::GeometryImport::isClosed() const {
  const int flags = polylineFlags_ & ~kLineTypeGoesOn;
  return flags == kClosed || (flags == kClosedSpline && vertexFlags_ == kSplineVertex);
}

void IEDXF::GeometryImport::takeVertex(int code) {
  if (!takeCoordinates(code) && code == GroupCode::flags) vertexFlags_ = integer();
}

void IEDXF::GeometryImport::takeMeshVertex(int code) {
  if (takeCoordinates(code)) return;
  if (code == GroupCode::flags) {
    vertexFlags_ = integer();
    if (vertexFlags_ >= kMesh) mesh_.addVertex(x_, y_);
    return;
  }
  if ((vertexFlags_ & kFace) == 0 || code < GroupCode::corner1 || code > GroupCode::corner4) return;
  if (code == GroupCode::corner1) mesh_.beginFace();
  corners_[static_cast<std::size_t>(code - GroupCode::corner1)] = integer();
}

bool IEDXF::GeometryImport::finishVertex() {
  if (!active_) return true;
  if (sequence_ != Sequence::open) {
    handler_.badLine();
    return false;
  }
  if (isMesh()) {
    if ((vertexFlags_ & kFace) != 0) mesh_.addFace(corners_);
    return true;
  }
  if (vertexFlags_ == kSplineFrame) return true;
  // A vertex that lacks a coordinate must not take the line to the origin.
  if (x_ == 0.0 || y_ == 0.0) {
    ++droppedVertices_;
    return true;
  }
  xy_.push_back(x_);
  xy_.push_back(y_);
  return true;
}

bool IEDXF::GeometryImport::finishSequence() {
  const bool open = sequence_ == Sequence::open;
  sequence_ = Sequence::none;
  if (!open) return true;
  if (isMesh()) {
    looseEdges_ += static_cast<long long>(mesh_.join(xy_));
  } else if (isClosed()) {
    if (xy_.size() > 2) xy_.insert(xy_.end(), {xy_[0], xy_[1]});
  } else {
    countOddForms();
  }
  const bool good = insertPoints() == Step::goOn;
  height_ = 0.0f;
  return good;
}

void IEDXF::GeometryImport::countOddForms() {
  if ((polylineFlags_ & kGrid) != 0) {
    ++grids_;
  } else if ((polylineFlags_ & kClosed) != 0) {
    ++leftOpen_;
  }
}

// --- Lines ---

IEDXF::EntityImport::Step IEDXF::GeometryImport::insertPoints() {
  leave();
  active_ = false;
  ++linesRead_;
  if (xy_.size() < 4) {
    ++fewPoints_;
  } else if (!std::isfinite(height_)) {
    ++refused_;
  } else if (!place(xy_.data(), xy_.size() / 2)) {
    ++unplaced_;
  } else if (!insertLine()) {
    return refused();
  }
  return Step::goOn;
}

bool IEDXF::GeometryImport::insertLine() {
  auto line = std::make_unique<Line>();
  line->Type(result_.lineType);
  line->height = height_;
  line->assign(xy_.data(), static_cast<int>(xy_.size() / 2));
  if (vector_.Insert(*line, 1) == 0) {
    ++refused_;
    return false;
  }
  ++linesWritten_;
  // Given back at once, so that memory stays flat however long the drawing is.
  giveBack(vector_, line.release());
  return true;
}

// --- The end ---

int IEDXF::GeometryImport::finish() {
  if (sequence_ == Sequence::open) ++incomplete_;
  finishSet();
  if (linesWritten_ + pointsWritten_ == 0) return emptyFile("Plano");
  if (outsideTold_) show(QObject::tr("Existem dados fora da área do projeto!") + "POINTS");
  return 1;
}

void IEDXF::GeometryImport::report() const {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  const auto leftOut = [job](const char* reason, long long count) {
    if (count > 0) job->countLeftOut(QString::fromLatin1(reason), count);
  };
  const auto note = [job](const QString& text, long long count) {
    if (count > 0) job->note(text.arg(count));
  };
  if (linesRead_ > 0) job->countRead(QString::fromLatin1(result_.lineKind), linesRead_);
  if (pointsRead_ > 0) job->countRead(QString::fromLatin1(result_.pointKind), pointsRead_);
  if (linesWritten_ > 0) job->countWritten(QString::fromLatin1(result_.lineKind), linesWritten_);
  if (pointsWritten_ > 0) job->countWritten(QString::fromLatin1(result_.pointKind), pointsWritten_);
  leftOut("outside_box", outside_);
  leftOut("few_points", fewPoints_);
  leftOut("refused", unplaced_ + refused_);
  leftOut("null_shape", incomplete_);
  note(QObject::tr("Linhas com coordenadas sem lugar na projeção de destino não foram importadas: %1"),
       unplaced_);
  note(QObject::tr("Entidades sem uma das coordenadas que a importação quer, ou polilinhas sem fim: %1"),
       incomplete_);
  note(QObject::tr("Arcos com ângulos impossíveis: %1"), oddArcs_);
  note(QObject::tr("Vértices com x ou y igual a zero, que não se tomam: %1"), droppedVertices_);
  note(QObject::tr("Vértices em planos não pedidos, que faltam em suas polilinhas: %1"), otherVertices_);
  note(QObject::tr("Polilinhas marcadas como fechadas e com curva ajustada, que ficam abertas: %1"),
       leftOpen_);
  note(QObject::tr("Malhas em grade, lidas como uma linha por seus vértices: %1"), grids_);
  note(QObject::tr("Arestas de malhas que não continuam a primeira linha delas: %1"), looseEdges_);
}

}  // namespace kaldex_v1
