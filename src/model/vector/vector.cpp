#include "kaldex/model/vector.h"

#include "kaldex/model/catalog.h"
#include "model/vector/vector_store.h"

inline namespace kaldex_v1 {

namespace {

// A vector that Init has not made yet has no store: it is an empty one of lines.
const kaldex::VectorStore::Info& infoOf(const std::unique_ptr<kaldex::VectorStore>& store) {
  static const kaldex::VectorStore::Info none;
  return store != nullptr ? store->info() : none;
}

}  // namespace

int LineSet::LoadLines(LineList* list) {
  store_.loadAllLines(list);
  return 1;
}
void LineSet::DestroyLines() {
  store_.dropAllLines();
}
bool LineSet::keepsInMemory() const {
  return store_.keepOnMemory;
}

SPolygon* PolygonSet::Get(int id) {
  return store_.polygonCopy(id);
}

// Kept for callers that bracket a load: statements of the one file are always at hand.
void Point3dSet::KeepFilesOpen(short keep) {
  if (keep == 0) store_.releaseCursors();
}

Anchor* AnchorSet::Get(int id) {
  return store_.anchor(id);
}
int AnchorSet::Update(const Anchor& anchor) {
  return store_.update(anchor) ? 1 : 0;
}

Vector::Vector() = default;

Vector::Vector(std::unique_ptr<kaldex::VectorStore> store) : store_(std::move(store)) {
  if (store_ == nullptr) return;
  lineSet_ = std::make_unique<LineSet>(*store_);
  polygonSet_ = std::make_unique<PolygonSet>(*store_);
  point3dSet_ = std::make_unique<Point3dSet>(*store_);
  anchorSet_ = std::make_unique<AnchorSet>(*store_);
}

Vector::~Vector() = default;

int Vector::Init(SProjection* projection, const Box& box, short representation, int modelKind,
                 const QString& directory, const QString& name) {
  kaldex::VectorStore::Info info;
  info.projection = projection;
  info.box = box;
  info.kind = representation;
  info.modelKind = modelKind;
  info.directory = directory;
  info.name = name;
  try {
    Vector made(kaldex::VectorStore::standalone(info));
    store_ = std::move(made.store_);
    lineSet_ = std::move(made.lineSet_);
    polygonSet_ = std::move(made.polygonSet_);
    point3dSet_ = std::move(made.point3dSet_);
    anchorSet_ = std::move(made.anchorSet_);
  } catch (const SException&) {
    return 0;
  }
  return 1;
}

Line* Vector::FirstLine() {
  return store_ != nullptr ? store_->firstLine() : nullptr;
}
Line* Vector::NextLine() {
  return store_ != nullptr ? store_->nextLine() : nullptr;
}
SPolygon* Vector::FirstPolygon() {
  return store_ != nullptr ? store_->firstPolygon() : nullptr;
}
SPolygon* Vector::NextPolygon() {
  return store_ != nullptr ? store_->nextPolygon() : nullptr;
}
Point2d* Vector::FirstPoint2d() {
  return store_ != nullptr ? store_->firstPoint() : nullptr;
}
Point2d* Vector::NextPoint2d() {
  return store_ != nullptr ? store_->nextPoint() : nullptr;
}
Point3d* Vector::FirstPoint3d() {
  return store_ != nullptr ? store_->firstSample() : nullptr;
}
Point3d* Vector::NextPoint3d() {
  return store_ != nullptr ? store_->nextSample() : nullptr;
}
Anchor* Vector::FirstAnchor() {
  return store_ != nullptr ? store_->firstAnchor() : nullptr;
}
Anchor* Vector::NextAnchor() {
  return store_ != nullptr ? store_->nextAnchor() : nullptr;
}

Line* Vector::GetLine(int id) {
  return store_ != nullptr ? store_->line(id) : nullptr;
}
SPolygon* Vector::GetPolygon(int id) {
  return store_ != nullptr ? store_->polygonAt(id) : nullptr;
}
Point2d* Vector::GetPoint2d(int id) {
  return store_ != nullptr ? store_->point(id) : nullptr;
}
Anchor* Vector::GetAnchor(int id) {
  return store_ != nullptr ? store_->anchor(id) : nullptr;
}

int Vector::Insert(Line& line, int) {
  return store_ != nullptr && store_->adopt(line) ? 1 : 0;
}
int Vector::Insert(SPolygon& polygon) {
  return store_ != nullptr && store_->adopt(polygon) ? 1 : 0;
}
int Vector::Insert(Point2d& point) {
  return store_ != nullptr && store_->insert(point) ? 1 : 0;
}
int Vector::Insert(Point3d& point, short) {
  return store_ != nullptr && store_->insert(point) ? 1 : 0;
}
int Vector::Insert(Anchor& anchor) {
  return store_ != nullptr && store_->insert(anchor) ? 1 : 0;
}

void Vector::KeepFilesOpen(short keep) {
  if (store_ == nullptr) return;
  store_->keepFilesOpen = keep;
  if (keep == 0) store_->releaseCursors();
}
short Vector::KeepsFilesOpen() const {
  return store_ != nullptr ? store_->keepFilesOpen : short(0);
}
void Vector::KeepOnMemory(short keep) {
  if (store_ != nullptr) store_->keepOnMemory = keep != 0;
}
bool Vector::PolygonsInMemory() const {
  return store_ != nullptr && store_->keepOnMemory;
}
Box Vector::BoundingBox() const {
  return infoOf(store_).box;
}
Box Vector::dataExtent() {
  return store_ != nullptr ? store_->extent() : Box::inverted();
}

long long Vector::lineCount() {
  return store_ != nullptr ? store_->lineCount() : 0;
}
long long Vector::polygonCount() {
  return store_ != nullptr ? store_->polygonCount() : 0;
}
long long Vector::point2dCount() {
  return store_ != nullptr ? store_->pointCount() : 0;
}
long long Vector::point3dCount() {
  return store_ != nullptr ? store_->sampleCount() : 0;
}
long long Vector::anchorCount() {
  return store_ != nullptr ? store_->anchorCount() : 0;
}

void Vector::flush() {
  if (store_ != nullptr) store_->flush();
}

short Vector::representation() const {
  return infoOf(store_).kind;
}
int Vector::modelKind() const {
  return infoOf(store_).modelKind;
}
SProjection* Vector::projection() const {
  return infoOf(store_).projection;
}
InfoLayer* Vector::infoLayer() const {
  return infoOf(store_).layer;
}
QString Vector::directory() const {
  return infoOf(store_).directory;
}
QString Vector::name() const {
  return infoOf(store_).name;
}

float Vector::tolerance() const {
  // Half a millimetre at map scale, as label points are matched.
  const InfoLayer* layer = infoLayer();
  const double scale = layer != nullptr ? static_cast<double>(layer->scale) : 1.0;
  const double factor = projection() != nullptr ? projection()->MeterToDegreeMultFactor() : 1.0;
  return static_cast<float>(0.0005 * scale * factor);
}

LineSet* Vector::lineSet() {
  return lineSet_.get();
}
PolygonSet* Vector::polygonSet() {
  return polygonSet_.get();
}
Point3dSet* Vector::point3dSet() {
  return point3dSet_.get();
}
AnchorSet* Vector::anchorSet() {
  return anchorSet_.get();
}

}  // namespace kaldex_v1
