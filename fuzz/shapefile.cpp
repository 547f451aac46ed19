// The importer of shapefiles with all their files; see ShapeContainer for the form of an input. What a .prj
// tells is left to projection_text: searching the registry of reference systems takes a thousand times as
// long as the rest.

#include <memory>

#include "fuzz/shape_container.h"
#include "fuzz/support/workplace.h"
#include "kaldex/shapeie.h"

namespace {

using kaldex::fuzz::ShapeContainer;
using kaldex::fuzz::Workplace;

constexpr const char* kEndings[ShapeContainer::files] = {".shp", ".shx", ".dbf", ".cpg"};

struct Job {
  int (SExtFormats::*import)(Vector*, SProjection*);
  Workplace::LayerKind layer;
  const char* name;  // of the file, without an ending; its objects go into a category that is called after it
};

constexpr Job kJobs[] = {
    {&SExtFormats::ImportLines, Workplace::thematic, "in"},
    {&SExtFormats::ImportLines, Workplace::cadastral, "known"},
    {&SExtFormats::ImportSamples, Workplace::samples, "in"},
    {&SExtFormats::ImportLines, Workplace::network, "in"},
    {&SExtFormats::ImportSamples, Workplace::contours, "in"},
};

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t limit,
                                               unsigned seed) {
  return kaldex::fuzz::mutateShapefile(data, size, limit, seed);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Workplace& workplace = Workplace::instance();
  workplace.needObjects();
  const ShapeContainer container = ShapeContainer::unpack(data, size);
  const Job& job = kJobs[container.job % (sizeof kJobs / sizeof *kJobs)];
  for (std::size_t i = 0; i < ShapeContainer::files; ++i) {
    workplace.write((std::string(job.name) + kEndings[i]).c_str(), container.file[i]);
  }
  workplace.undone(job.layer, container.answers, [&] {
    const auto handler = std::make_unique<IEShp>();
    const std::string mainFile = std::string(job.name) + kEndings[ShapeContainer::shp];
    workplace.init(*handler, job.layer, mainFile.c_str(), container.settings);
    if ((container.settings & 0x80) != 0) handler->setEncoding("CP850");
    (handler.get()->*job.import)(workplace.vector(job.layer), workplace.projection());
  });
  return 0;
}
