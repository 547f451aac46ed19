#ifndef KALDEX_TESTS_INTAKE_FIXTURE_H
#define KALDEX_TESTS_INTAKE_FIXTURE_H

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <ostream>

#include "kaldex/intake.h"
#include "kaldex/job_report.h"

inline void PrintTo(const QString& text, std::ostream* stream) {
  *stream << '"' << text.toStdString() << '"';
}

namespace kaldex::test {

/// A folder of its own, which temporary copies go into too.
class IntakeFixture : public ::testing::Test {
 protected:
  IntakeFixture() : scope_(report) {
    QDir(folder_.path()).mkdir("tmp");
    qputenv("TMPDIR", QFile::encodeName(folder_.filePath("tmp")));
  }
  ~IntakeFixture() override { qunsetenv("TMPDIR"); }

  QString path(const QString& name) const { return folder_.filePath(name); }
  QString write(const QByteArray& content, const QString& name = "in.txt") const {
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(content), content.size());
    return path(name);
  }
  static QByteArray read(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
  }
  QStringList temporaryFiles() const {
    return QDir(path("tmp")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
  }

  JobReport report;

 private:
  QTemporaryDir folder_;
  JobReportScope scope_;
};

}  // namespace kaldex::test

#endif
