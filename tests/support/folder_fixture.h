#ifndef KALDEX_TESTS_FOLDER_FIXTURE_H
#define KALDEX_TESTS_FOLDER_FIXTURE_H

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <ostream>

// Qt's texts print themselves in failed expectations.
inline void PrintTo(const QString& text, std::ostream* stream) {
  *stream << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QByteArray& text, std::ostream* stream) {
  *stream << '"' << text.toStdString() << '"';
}

namespace kaldex::test {

/// A folder of its own, which goes in the end.
class FolderFixture : public ::testing::Test {
 protected:
  QString folder() const { return folder_.path(); }
  QString path(const QString& name) const { return QDir(folder_.path()).filePath(name); }
  void write(const QString& name, const QByteArray& content) const {
    QFile out(path(name));
    ASSERT_TRUE(out.open(QIODevice::WriteOnly)) << name.toStdString();
    ASSERT_EQ(out.write(content), content.size());
  }
  QByteArray read(const QString& name) const {
    QFile in(path(name));
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
  }

 private:
  QTemporaryDir folder_;
};

}  // namespace kaldex::test

#endif
