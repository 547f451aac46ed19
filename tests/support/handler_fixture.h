#ifndef KALDEX_TESTS_HANDLER_FIXTURE_H
#define KALDEX_TESTS_HANDLER_FIXTURE_H

#include "kaldex/job_report.h"
#include "support/model_fixture.h"

namespace kaldex::test {

/// Handlers of formats on files of the fixture's folder; what they do is reported.
class HandlerFixture : public ModelFixture {
 protected:
  HandlerFixture() : reporting_(report) {}

  /// Without a projection the project's.
  template <class Handler>
  std::unique_ptr<Handler> open(const QString& file, InfoLayer* layer, short coordFormat = 0, int units = 0,
                                SProjection* projection = nullptr, const char* separator = nullptr) {
    auto made = std::make_unique<Handler>();
    EXPECT_EQ(made->Init(folder(), units, file, project, layer, dataBase.get(),
                         projection != nullptr ? projection : project->projection(), coordFormat, separator,
                         nullptr, nullptr),
              1);
    return made;
  }
  template <class Handler>
  int importLabels(Handler& in) {
    return in.ImportLabelPoints(project->projection(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                nullptr);
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

/// Summaries of what was bound to classes or objects, and of classes that were looked for.
inline QString boundText(int associated, int not_, int already = 0) {
  return QString("Sumário:Classes/Objetos: associados=%1, não associados=%2, já estavam associados=%3")
      .arg(associated)
      .arg(not_)
      .arg(already);
}
inline QString classesText(int missing, int added, int changed = 0) {
  return QString("Sumário:Classes não encontradas=%1 e classes adicionadas=%2 e visual alterados=%3 ")
      .arg(missing)
      .arg(added)
      .arg(changed);
}

}  // namespace kaldex::test

#endif
