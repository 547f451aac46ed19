#ifndef KALDEX_TESTS_INTAKE_FIXTURE_H
#define KALDEX_TESTS_INTAKE_FIXTURE_H

#include "kaldex/intake.h"
#include "kaldex/job_report.h"
#include "support/folder_fixture.h"

namespace kaldex::test {

/// A folder of its own, which temporary copies go into too.
class IntakeFixture : public FolderFixture {
 protected:
  IntakeFixture() : scope_(report) {
    QDir(folder()).mkdir("tmp");
    qputenv("TMPDIR", QFile::encodeName(path("tmp")));
  }
  ~IntakeFixture() override { qunsetenv("TMPDIR"); }

  QString write(const QByteArray& content, const QString& name = "in.txt") const {
    FolderFixture::write(name, content);
    return path(name);
  }
  QStringList temporaryFiles() const {
    return QDir(path("tmp")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
  }

  JobReport report;

 private:
  JobReportScope scope_;
};

}  // namespace kaldex::test

#endif
