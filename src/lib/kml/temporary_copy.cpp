#include <QDir>
#include <QFileInfo>
#include <unordered_map>

#include "base/tracer.h"
#include "kaldex/kml.h"
#include "kaldex/model/catalog.h"
#include "kaldex/model/database.h"
#include "kaldex/model/vector.h"

inline namespace kaldex_v1 {

namespace {
const QString kFolder = QStringLiteral("tempkml");
}  // namespace

/// Fills a vector with a copy of another one, in degrees.
class IEKml::TemporaryCopy {
 public:
  TemporaryCopy(IEKml& handler, Vector& from, Vector& to) : handler_(handler), from_(from), to_(to) {}

  void run() {
    copyPoints();
    copyLines();
    copyPolygons();
    linkSons();
    linkLines();
    to_.flush();
  }

 private:
  void copyPoints();
  void copyLines();
  void copyPolygons();
  void linkSons();
  void linkLines();
  int polygonOf(int source) const;

  IEKml& handler_;
  Vector& from_;
  Vector& to_;
  std::unordered_map<int, int> lines_;  ///< identifier of the copy by that of the original
  std::unordered_map<int, int> polygons_;
};

void IEKml::TemporaryCopy::copyPoints() {
  for (Point2d* point = from_.FirstPoint2d(); point != nullptr; point = from_.NextPoint2d()) {
    Point2d copy(*point);
    const std::unique_ptr<Point> degrees(handler_.ToWGS84(static_cast<Point*>(point)));
    copy.SetPoint(degrees.get());
    to_.Insert(copy);
  }
}

void IEKml::TemporaryCopy::copyLines() {
  for (Line* line = from_.FirstLine(); line != nullptr; line = from_.NextLine()) {
    std::unique_ptr<Line> copy(handler_.ToWGS84(line));
    if (to_.Insert(*copy, 1) != 0) {
      lines_[line->id] = copy->id;
      giveBack(to_, copy.release());
    }
    giveBack(from_, line);
  }
}

void IEKml::TemporaryCopy::copyPolygons() {
  for (SPolygon* polygon = from_.FirstPolygon(); polygon != nullptr; polygon = from_.NextPolygon()) {
    auto copy = std::make_unique<SPolygon>();
    copy->classId = polygon->classId;
    for (const int id : polygon->lineIds()) {
      const auto line = lines_.find(id);
      if (line != lines_.end()) copy->AppendLine(to_.GetLine(line->second));
    }
    if (to_.Insert(*copy) != 0) {
      polygons_[polygon->id] = copy->id;
      giveBack(to_, copy.release());
    }
    giveBack(from_, polygon);
  }
}

void IEKml::TemporaryCopy::linkSons() {
  for (const auto& [source, copy] : polygons_) {
    SPolygon* const original = from_.GetPolygon(source);
    SPolygon* const father = to_.GetPolygon(copy);
    for (const int id : original->sonIds()) {
      SPolygon* const son = to_.GetPolygon(polygonOf(id));
      if (father->AppendSon(son, 1) != 0) father->changed = stateChanged;
    }
    giveBack(to_, father);
    giveBack(from_, original);
  }
}

int IEKml::TemporaryCopy::polygonOf(int source) const {
  const auto found = polygons_.find(source);
  return found != polygons_.end() ? found->second : 0;
}

void IEKml::TemporaryCopy::linkLines() {
  if (polygons_.empty()) return;
  for (const auto& [source, copy] : lines_) {
    Line* const original = from_.GetLine(source);
    Line* const line = to_.GetLine(copy);
    line->leftPolygon = polygonOf(original->leftPolygon);
    line->rightPolygon = polygonOf(original->rightPolygon);
    line->state = stateChanged;
    giveBack(to_, line);
    giveBack(from_, original);
  }
}

Vector* IEKml::ToWGS84(Vector* vec) {
  const Tracer tracer(__FILE__, __LINE__, "IEKml::ToWGS84");
  const int made = guarded([&] {
    if (vec == nullptr) return 0;
    dropTemporaryVector();
    held_ = vec->projection();
    const InfoLayer* const layer = vec->infoLayer() != nullptr ? vec->infoLayer() : infoLayer;
    const DataBase* const base = layer != nullptr ? layer->dataBase() : dataBase;
    // A database is named by its path, which is no name of a folder.
    const QString name = base != nullptr ? QFileInfo(base->name()).completeBaseName() : QStringLiteral("-");
    temporaryFolder_ = QStringLiteral("%1/.Kaldex/%2/").arg(QDir::homePath(), name);
    const QString folder = temporaryFolder_ + kFolder;
    if (!QDir(folder).exists() && !QDir().mkpath(folder)) return 0;
    const Box box = layer != nullptr ? layer->box : vec->BoundingBox();
    double corners[] = {box.x1, box.y1, box.x2, box.y2};
    toDegrees(corners, 2);
    auto copy = std::make_unique<Vector>();
    if (copy->Init(projection, Box(corners[0], corners[1], corners[2], corners[3]), vec->representation(),
                   vec->modelKind(), folder, vec->name()) == 0) {
      return 0;
    }
    TemporaryCopy(*this, *vec, *copy).run();
    temporaryVector_ = std::move(copy);
    return 1;
  });
  return made != 0 ? temporaryVector_.get() : nullptr;
}

void IEKml::dropTemporaryVector() {
  if (temporaryVector_ == nullptr) return;
  temporaryVector_->KeepOnMemory(1);
  temporaryVector_->KeepFilesOpen(0);
  QDir folder(temporaryFolder_ + kFolder);
  for (const QString& name : folder.entryList(QDir::Files | QDir::Hidden)) folder.remove(name);
  QDir(temporaryFolder_).rmdir(kFolder);
  temporaryVector_.reset();
}

}  // namespace kaldex_v1
