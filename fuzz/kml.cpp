// The reader of KML documents, plain and zipped. The first byte chooses the import, the second the settings;
// what follows is the file.

#include "kaldex/kml.h"

#include <memory>

#include "fuzz/support/input.h"
#include "fuzz/support/workplace.h"

namespace {

using kaldex::fuzz::Workplace;

constexpr int (IEKml::*kImports[])(Vector*, SProjection*) = {&IEKml::ImportAll, &IEKml::ImportLines,
                                                             &IEKml::ImportPoint2d, &IEKml::ImportPolygons};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static constexpr char kFile[] = "in.kml";
  Workplace& workplace = Workplace::instance();
  kaldex::fuzz::Input input(data, size);
  const auto import = kImports[input.byte() % (sizeof kImports / sizeof *kImports)];
  const std::uint8_t settings = input.byte();
  workplace.write(kFile, kaldex::fuzz::expandRuns(input.rest()));
  workplace.undone(Workplace::thematic, 0, [&] {
    const auto handler = std::make_unique<IEKml>();
    workplace.init(*handler, Workplace::thematic, kFile, settings);
    if ((settings & 1) != 0) handler->use(std::make_shared<KmlOutline>(workplace.path(kFile)));
    (handler.get()->*import)(workplace.vector(Workplace::thematic), workplace.projection());
  });
  return 0;
}
