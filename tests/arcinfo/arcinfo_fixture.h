#ifndef KALDEX_TESTS_ARCINFO_FIXTURE_H
#define KALDEX_TESTS_ARCINFO_FIXTURE_H

#include <memory>

#include "kaldex/arcinfo.h"
#include "kaldex/job_report.h"
#include "support/model_fixture.h"

namespace kaldex::test {

class OpenArcInfo : public IEArcInfo {
 public:
  using IEArcInfo::exportedRecords;
  using IEArcInfo::file;
  using IEArcInfo::labelPoints;
};

/// Handlers on the file "file.gen" of the fixture's folder; what they do is reported.
class ArcInfoFixture : public ModelFixture {
 protected:
  ArcInfoFixture() : reporting_(report) {}

  std::unique_ptr<OpenArcInfo> handler(InfoLayer* of, short coordFormat = 0, int units = 0) {
    auto made = std::make_unique<OpenArcInfo>();
    EXPECT_EQ(made->Init(folder(), units, "file.gen", project, of, dataBase.get(), project->projection(),
                         coordFormat, nullptr, nullptr, nullptr),
              1);
    return made;
  }

  /// All points of all lines, as x, y pairs.
  static std::vector<double> allPoints(Vector& vector) {
    std::vector<double> points;
    for (Line* line = vector.FirstLine(); line != nullptr; line = vector.NextLine()) {
      const double* const xy = line->coordinates();
      points.insert(points.end(), xy, xy + 2 * line->Size());
    }
    return points;
  }

  const QString kBad = "Arquivo INCONSISTENTE!";
  JobReport report;

 private:
  JobReportScope reporting_;
};

}  // namespace kaldex::test

#endif
