#include <QObject>
#include <map>
#include <memory>
#include <string_view>

#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/kml.h"
#include "kaldex/model/vector.h"
#include "lib/frame/progress_scope.h"
#include "lib/kml/document_walk.h"

inline namespace kaldex_v1 {

using namespace KdxOgc;

namespace {

long long featureCount(OgKMLDocument& document) {
  long long count = 0;
  kaldex::walkPlacemarks(document, [&](const OgKMLPlacemark&) { return ++count > 0; });
  return count;
}

QString text(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<int>(utf8.size()));
}

// Counts of texts that the document holds.
using Counts = std::map<std::string_view, long long>;

// "CODIGO (12), NOME (3)", of many the first.
QString listed(const Counts& counts) {
  constexpr std::size_t most = 30;
  QStringList words;
  for (const auto& [word, count] : counts) {
    if (static_cast<std::size_t>(words.size()) == most) break;
    words << QStringLiteral("%1 (%2)").arg(text(word)).arg(count);
  }
  if (counts.size() > most) words << QStringLiteral("...");
  return words.join(QStringLiteral(", "));
}

// What the document holds that no import takes.
class Remainder {
 public:
  Remainder(OgKMLDocument& document, const QStringList& taken);

  void report(JobReport& job) const;

 private:
  const OgKMLLosses& losses_;
  Counts others_;
  Counts data_;
  long long names_ = 0;
  long long withoutGeometry_ = 0;
};

Remainder::Remainder(OgKMLDocument& document, const QStringList& taken) : losses_(document.losses) {
  for (const auto& [type, count] : losses_.features) others_[type] += count;
  kaldex::walkPlacemarks(document, [&](const OgKMLPlacemark& placemark) {
    names_ += placemark.name().empty() ? 0 : 1;
    placemark.eachDatum([&](std::string_view key, std::string_view) { ++data_[key]; });
    withoutGeometry_ += placemark.getAbstractGeometry() == nullptr ? 1 : 0;
    kaldex::walkGeometries(placemark, [&](const OgKMLAbstractGeometry& geometry) {
      const char* const type = geometry.typeName();
      if (!taken.contains(QLatin1String(type))) ++others_[type];
    });
    return true;
  });
}

void Remainder::report(JobReport& job) const {
  long long others = 0;
  for (const auto& other : others_) others += other.second;
  if (others > 0) {
    job.countLeftOut("unsupported", others);
    job.note(QObject::tr("No documento, e não importado: %1").arg(listed(others_)));
  }
  if (withoutGeometry_ > 0) job.countLeftOut("null_shape", withoutGeometry_);
  if (losses_.badTuples > 0) {
    job.note(QObject::tr("Coordenadas que não puderam ser lidas: %1").arg(losses_.badTuples));
  }
  if (losses_.altitudes > 0) {
    job.note(QObject::tr("Coordenadas com altitude, que não é importada: %1").arg(losses_.altitudes));
  }
  if (names_ > 0) {
    job.note(QObject::tr("Nomes de placemarks, que o plano não guarda: %1").arg(names_));
  }
  if (!data_.empty()) {
    job.note(QObject::tr("Dados de placemarks, que o plano não guarda: %1").arg(listed(data_)));
  }
  if (losses_.descriptions > 0) {
    job.note(QObject::tr("Descrições, que o plano não guarda: %1").arg(losses_.descriptions));
  }
}

}  // namespace

/// Inserts the geometries of one type into a vector.
class IEKml::Fill {
 public:
  Fill(OgKMLDocument& document, Vector& vector, const SProjection* projection, std::string type)
      : document_(document),
        vector_(vector),
        projection_(projection),
        type_(std::move(type)),
        progress_(kaldex::progressSteps(featureCount(document))) {}
  ~Fill();

  /// Let go of placemarks with a geometry of the type, as they are taken: the layer's share of the memory
  /// grows while the document's goes.
  void consume() { consumes_ = true; }

  /// False when the user has cancelled.
  bool run();

 private:
  void take(const OgKMLAbstractGeometry& geometry);
  void takeLine(const OgKMLLineString& geometry);
  void takePoint(const OgKMLPoint& geometry);
  void takePolygon(const OgKMLPolygon& geometry);
  void insert(std::unique_ptr<Line> line);
  bool accept(bool isGeographic);

  OgKMLDocument& document_;
  Vector& vector_;
  const SProjection* projection_;
  std::string type_;
  kaldex::ProgressScope progress_;
  bool consumes_ = false;
  long long read_ = 0;
  long long lines_ = 0;
  long long points_ = 0;
  long long fewPoints_ = 0;
  long long refused_ = 0;
  long long notGeographic_ = 0;
};

IEKml::Fill::~Fill() {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  const char* const kind = type_ == "Point" ? "points" : type_ == "Polygon" ? "polygons" : "lines";
  if (read_ > 0) job->countRead(QString::fromLatin1(kind), read_);
  if (lines_ > 0) job->countWritten("lines", lines_);
  if (points_ > 0) job->countWritten("points", points_);
  if (fewPoints_ > 0) job->countLeftOut("few_points", fewPoints_);
  if (refused_ > 0) job->countLeftOut("refused", refused_);
  if (notGeographic_ > 0) {
    job->note(QObject::tr("Geometrias com coordenadas que não são graus (talvez metros), não importadas: %1")
                  .arg(notGeographic_));
  }
}

bool IEKml::Fill::run() {
  vector_.KeepFilesOpen(1);
  kaldex::consumePlacemarks(document_, [this](const OgKMLPlacemark& placemark) {
    progress_.step();
    kaldex::walkGeometries(placemark, [this](const OgKMLAbstractGeometry& geometry) {
      if (type_ == geometry.typeName()) take(geometry);
    });
    if (progress_.cancelled()) return kaldex::WalkStep::stop;
    const OgKMLAbstractGeometry* const own = placemark.getAbstractGeometry();
    const bool done = consumes_ && own != nullptr && type_ == own->typeName();
    return done ? kaldex::WalkStep::drop : kaldex::WalkStep::goOn;
  });
  return !progress_.cancelled();
}

void IEKml::Fill::take(const OgKMLAbstractGeometry& geometry) {
  if (type_ == "LineString") {
    ++read_;
    takeLine(static_cast<const OgKMLLineString&>(geometry));
  } else if (type_ == "Point") {
    ++read_;
    takePoint(static_cast<const OgKMLPoint&>(geometry));
  } else if (type_ == "Polygon") {
    ++read_;
    takePolygon(static_cast<const OgKMLPolygon&>(geometry));
  }
}

bool IEKml::Fill::accept(bool isGeographic) {
  if (isGeographic) return true;
  ++notGeographic_;
  ++refused_;
  return false;
}

void IEKml::Fill::takeLine(const OgKMLLineString& geometry) {
  if (geometry.positions.size() < 2) {
    ++fewPoints_;
    return;
  }
  if (!accept(geometry.positions.areGeographic())) return;
  auto line = std::make_unique<Line>();
  if (geometry.getTeLine2D(*line, projection_)) {
    insert(std::move(line));
  } else {
    ++refused_;
  }
}

void IEKml::Fill::takePoint(const OgKMLPoint& geometry) {
  if (geometry.place().isUnset()) {
    ++fewPoints_;
    return;
  }
  if (!accept(geometry.isGeographic())) return;
  Point2d point;
  const bool inserted = geometry.getTePoint(point, projection_) && vector_.Insert(point) != 0;
  ++(inserted ? points_ : refused_);
}

// Polygons enter as lines, from which the user builds them anew.
void IEKml::Fill::takePolygon(const OgKMLPolygon& geometry) {
  if (geometry.outer.size() < 2) {
    ++fewPoints_;
    return;
  }
  if (!accept(geometry.outer.areGeographic())) return;
  for (const OgKMLPositions& ring : geometry.inner) {
    if (!accept(ring.areGeographic())) return;
  }
  const std::unique_ptr<OgKMLDetachedPolygon> polygon = geometry.getSPolygon(projection_);
  if (polygon == nullptr) {
    ++refused_;
    return;
  }
  polygon->SetPoints(nullptr);
  insert(std::move(polygon->lines.front()));
  for (const auto& son : polygon->sons) {
    son->SetPoints(nullptr);
    insert(std::move(son->lines.front()));
  }
}

void IEKml::Fill::insert(std::unique_ptr<Line> line) {
  if (line->Size() < 2) {
    ++fewPoints_;
  } else if (vector_.Insert(*line, 1) == 0) {
    ++refused_;
  } else {
    ++lines_;
    giveBack(vector_, line.release());
  }
}

// --- The operations ---

int IEKml::FillVector(Vector* vec, std::string geometryType) {
  const Tracer tracer(__FILE__, __LINE__, "IEKml::FillVector");
  return guardedImport(vec, [&] {
    if (vec == nullptr || document_ == nullptr) return 0;
    return Fill(*document_, *vec, projection, std::move(geometryType)).run() ? 1 : 0;
  });
}

int IEKml::import(Vector* vec, const QStringList& types) {
  return guardedImport(vec, [&] {
    if (vec == nullptr || InitDecoder(vec) == 0) return 0;
    // Before the document goes.
    JobReport* const job = JobReport::current();
    if (job != nullptr) Remainder(*document_, types).report(*job);
    for (const QString& type : types) {
      Fill fill(*document_, *vec, projection, type.toStdString());
      fill.consume();
      if (!fill.run()) return 0;
    }
    return 1;
  });
}

int IEKml::ImportLines(Vector* vec, SProjection*) {
  const Tracer tracer(__FILE__, __LINE__, "IEKml::ImportLines");
  return import(vec, {QStringLiteral("LineString")});
}

int IEKml::ImportPoint2d(Vector* vec, SProjection*) {
  const Tracer tracer(__FILE__, __LINE__, "IEKml::ImportPoint2d");
  return import(vec, {QStringLiteral("Point")});
}

int IEKml::ImportPolygons(Vector* vec, SProjection*) {
  const Tracer tracer(__FILE__, __LINE__, "IEKml::ImportPolygons");
  return import(vec, {QStringLiteral("Polygon")});
}

int IEKml::ImportAll(Vector* vec, SProjection*) {
  const Tracer tracer(__FILE__, __LINE__, "IEKml::ImportAll");
  return import(vec, {QStringLiteral("Point"), QStringLiteral("LineString"), QStringLiteral("Polygon")});
}

}  // namespace kaldex_v1
