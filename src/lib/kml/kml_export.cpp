#include <QObject>
#include <memory>

#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/kml.h"
#include "kaldex/model/vector.h"
#include "lib/frame/progress_scope.h"
#include "lib/kml/feature_describer.h"

inline namespace kaldex_v1 {

using namespace KdxOgc;

/// Adds the lines or points of a vector to the handler's document.
class IEKml::Export {
 public:
  Export(IEKml& handler, Vector& vector, long long features)
      : handler_(handler),
        vector_(vector),
        describer_(handler.dataBase, vector),
        progress_(kaldex::progressSteps(features)) {
    if (vector.infoLayer() != nullptr) {
      handler.document_->setName(vector.infoLayer()->name.toUtf8().toStdString());
    }
  }
  ~Export();

  int lines();
  int points();

 private:
  template <class Feature>
  void add(std::unique_ptr<OgKMLAbstractGeometry> geometry, const Feature& feature);
  int done() const { return progress_.cancelled() ? 0 : 1; }

  IEKml& handler_;
  Vector& vector_;
  kaldex::FeatureDescriber describer_;
  kaldex::ProgressScope progress_;
  long long linesRead_ = 0;
  long long linesWritten_ = 0;
  long long pointsRead_ = 0;
  long long pointsWritten_ = 0;
  long long fewPoints_ = 0;
  long long refused_ = 0;
};

IEKml::Export::~Export() {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  if (linesRead_ > 0) job->countRead("lines", linesRead_);
  if (linesWritten_ > 0) job->countWritten("lines", linesWritten_);
  if (pointsRead_ > 0) job->countRead("points", pointsRead_);
  if (pointsWritten_ > 0) job->countWritten("points", pointsWritten_);
  const SProjection* const own = vector_.projection();
  if (linesWritten_ + pointsWritten_ > 0 && (own == nullptr || own->type() == ProjectionType::none)) {
    job->note(QObject::tr("O plano não tem projeção: suas coordenadas foram escritas como graus."));
  }
  if (fewPoints_ > 0) job->countLeftOut("few_points", fewPoints_);
  if (refused_ > 0) {
    job->countLeftOut("refused", refused_);
    job->note(QObject::tr("Coordenadas sem valor geográfico: %1").arg(refused_));
  }
  if (describer_.severalObjects() > 0) {
    job->note(QObject::tr("Feições de mais de um objeto, escritas com o primeiro deles: %1")
                  .arg(describer_.severalObjects()));
  }
}

template <class Feature>
void IEKml::Export::add(std::unique_ptr<OgKMLAbstractGeometry> geometry, const Feature& feature) {
  auto placemark = std::make_unique<OgKMLPlacemark>();
  describer_.describe(feature, *placemark);
  placemark->setAbstractGeometry(geometry.get());
  handler_.document_->addAbstractFeature(placemark.get());
  handler_.objects_.append(placemark.release());
  handler_.objects_.append(geometry.release());
}

int IEKml::Export::lines() {
  for (Line* line = vector_.FirstLine(); line != nullptr && !progress_.cancelled();
       line = vector_.NextLine()) {
    progress_.step();
    ++linesRead_;
    if (line->Size() < 2) {
      ++fewPoints_;
    } else {
      const std::unique_ptr<Line> degrees(handler_.ToWGS84(line));
      auto geometry = std::make_unique<OgKMLLineString>(*degrees);
      if (geometry->positions.areGeographic()) {
        add(std::move(geometry), *line);
        ++linesWritten_;
      } else {
        ++refused_;
      }
    }
    giveBack(vector_, line);
  }
  return done();
}

int IEKml::Export::points() {
  for (Point2d* point = vector_.FirstPoint2d(); point != nullptr && !progress_.cancelled();
       point = vector_.NextPoint2d()) {
    progress_.step();
    ++pointsRead_;
    const std::unique_ptr<Point> degrees(handler_.ToWGS84(static_cast<Point*>(point)));
    auto geometry = std::make_unique<OgKMLPoint>(*degrees);
    if (geometry->isGeographic()) {
      add(std::move(geometry), *point);
      ++pointsWritten_;
    } else {
      ++refused_;
    }
  }
  return done();
}

// --- The operations ---

int IEKml::ExportLines(Vector* vec, short) {
  const Tracer tracer(__FILE__, __LINE__, "IEKml::ExportLines");
  return guarded([&] {
    InitEncoder(vec);
    return vec != nullptr ? Export(*this, *vec, vec->lineCount()).lines() : 0;
  });
}

int IEKml::ExportPoints(Vector* vec, Category*, short) {
  const Tracer tracer(__FILE__, __LINE__, "IEKml::ExportPoints");
  return guarded([&] {
    InitEncoder(vec);
    return vec != nullptr ? Export(*this, *vec, vec->point2dCount()).points() : 0;
  });
}

int IEKml::ExportPolygons(Vector* vec, short unused) {
  const Tracer tracer(__FILE__, __LINE__, "IEKml::ExportPolygons");
  return ExportLines(vec, unused);
}

int IEKml::ExportAll(Vector* vec, short unused) {
  const Tracer tracer(__FILE__, __LINE__, "IEKml::ExportAll");
  return guarded([&] { return ExportPoints(vec, nullptr, unused) != 0 ? ExportLines(vec, unused) : 0; });
}

}  // namespace kaldex_v1
