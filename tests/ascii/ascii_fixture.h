#ifndef KALDEX_TESTS_ASCII_FIXTURE_H
#define KALDEX_TESTS_ASCII_FIXTURE_H

#include <memory>

#include "kaldex/ascii.h"
#include "kaldex/job_report.h"
#include "support/model_fixture.h"

namespace kaldex::test {

class OpenAscii : public IEAsc {
 public:
  using IEAsc::file;
  using IEAsc::line;
  using IEAsc::line2;
  using IEAsc::openFile;
  using IEAsc::readWordIntoLine;
  using IEAsc::replacementNames;
  using IEAsc::reservedNames;
  using IEAsc::separator;
};

/// Handlers on the file "file.txt" of the fixture's folder; what they do is reported.
class AsciiFixture : public ModelFixture {
 protected:
  AsciiFixture() : reporting_(report) {}

  std::unique_ptr<OpenAscii> handler(InfoLayer* layer, short coordFormat = 0, int units = 0,
                                     SProjection* projection = nullptr, const char* separator = nullptr) {
    auto made = std::make_unique<OpenAscii>();
    EXPECT_EQ(made->Init(folder(), units, fileName, project, layer, dataBase.get(),
                         projection != nullptr ? projection : project->projection(), coordFormat, separator,
                         nullptr, nullptr),
              1);
    return made;
  }

  static int lineCount(Vector& vector) { return static_cast<int>(vector.lineCount()); }
  /// All points of all lines, as x, y pairs.
  static std::vector<double> allPoints(Vector& vector) {
    std::vector<double> points;
    for (Line* line = vector.FirstLine(); line != nullptr; line = vector.NextLine()) {
      const double* const xy = line->coordinates();
      points.insert(points.end(), xy, xy + 2 * line->Size());
    }
    return points;
  }

  QString fileName = "file.txt";
  JobReport report;

 private:
  JobReportScope reporting_;
};

}  // namespace kaldex::test

#endif
