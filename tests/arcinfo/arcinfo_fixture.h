#ifndef KALDEX_TESTS_ARCINFO_FIXTURE_H
#define KALDEX_TESTS_ARCINFO_FIXTURE_H

#include "kaldex/arcinfo.h"
#include "support/handler_fixture.h"

namespace kaldex::test {

class OpenArcInfo : public IEArcInfo {
 public:
  using IEArcInfo::exportedRecords;
  using IEArcInfo::file;
  using IEArcInfo::labelPoints;
};

/// Handlers on the file "file.gen" of the fixture's folder.
class ArcInfoFixture : public HandlerFixture {
 protected:
  std::unique_ptr<OpenArcInfo> handler(InfoLayer* of, short coordFormat = 0, int units = 0) {
    return open<OpenArcInfo>("file.gen", of, coordFormat, units);
  }
};

}  // namespace kaldex::test

#endif
