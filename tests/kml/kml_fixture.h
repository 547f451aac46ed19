#ifndef KALDEX_TESTS_KML_FIXTURE_H
#define KALDEX_TESTS_KML_FIXTURE_H

#include <memory>

#include "kaldex/job_report.h"
#include "kaldex/kml.h"
#include "support/model_fixture.h"

namespace kaldex::test {

/// Handlers on files of the fixture's folder; what they do is reported.
class KmlFixture : public ModelFixture {
 protected:
  KmlFixture() : reporting_(report) {}

  /// For imports the projection has to be the layer's, for exports one on WGS84.
  std::unique_ptr<IEKml> handler(InfoLayer* of, const QString& file, SProjection* projection) {
    auto made = std::make_unique<IEKml>();
    EXPECT_EQ(
        made->Init(folder(), 0, file, project, of, dataBase.get(), projection, 0, nullptr, nullptr, nullptr),
        1);
    return made;
  }
  std::unique_ptr<IEKml> importer(InfoLayer* of, const QByteArray& content) {
    write("in.kml", content);
    return handler(of, "in.kml", of->projection());
  }
  Vector* lines(const QString& name) { return layer(THEMATICMODEL, name)->vector(vectorLines, true); }

  static QByteArray document(const QByteArray& features) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<kml xmlns=\"http://www.opengis.net/kml/2.2\">" +
           features + "</kml>\n";
  }
  static QByteArray placemark(const QByteArray& geometry) {
    return "<Placemark>" + geometry + "</Placemark>";
  }
  static QByteArray line(const QByteArray& coordinates) {
    return "<LineString><coordinates>" + coordinates + "</coordinates></LineString>";
  }

  JobReport report;
  std::unique_ptr<SProjection> wgs84 = latLong();

 private:
  JobReportScope reporting_;
};

}  // namespace kaldex::test

#endif
