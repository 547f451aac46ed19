#ifndef KALDEX_TESTS_OPEN_HANDLER_H
#define KALDEX_TESTS_OPEN_HANDLER_H

#include <memory>

#include "kaldex/extforma.h"
#include "support/model_fixture.h"

namespace kaldex::test {

/// A handler whose inside can be looked at.
class OpenHandler : public SExtFormats {
 public:
  using SExtFormats::box;
  using SExtFormats::clearLine;
  using SExtFormats::dataFile;
  using SExtFormats::dataHome;
  using SExtFormats::file;
  using SExtFormats::guarded;
  using SExtFormats::guardedImport;
  using SExtFormats::inconsistent;
  using SExtFormats::labelPoints;
  using SExtFormats::layerList;
  using SExtFormats::line;
  using SExtFormats::line2;
  using SExtFormats::openFile;
  using SExtFormats::projection;
  using SExtFormats::readWordIntoLine;
  using SExtFormats::separator;
  using SExtFormats::setLine;
  using SExtFormats::units;
};

/// Handlers on files of a folder of their own; messages are recorded.
class FrameFixture : public FolderFixture {
 protected:
  /// A handler set up for a file of this content.
  std::unique_ptr<OpenHandler> handlerFor(const QByteArray& content, const char* separator = nullptr) {
    write("file.txt", content);
    auto handler = std::make_unique<OpenHandler>();
    EXPECT_EQ(init(*handler, "file.txt", separator), 1);
    return handler;
  }
  int init(OpenHandler& handler, const QString& name, const char* separator = nullptr, int units = 0,
           SProjection* projection = nullptr, short coordFormat = 0, Project* project = nullptr) {
    return handler.Init(folder(), units, name, project, nullptr, nullptr, projection, coordFormat, separator,
                        nullptr, nullptr);
  }

  RecordingPresenter messages;
};

}  // namespace kaldex::test

#endif
