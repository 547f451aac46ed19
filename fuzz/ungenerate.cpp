// Readers of ArcInfo's text form of lines and points. The first byte chooses operation and layer, the second
// the settings; what follows is the file.

#include <memory>

#include "fuzz/support/input.h"
#include "fuzz/support/workplace.h"
#include "kaldex/arcinfo.h"

namespace {

using kaldex::fuzz::Workplace;

int importLabels(IEArcInfo& handler, Vector*, SProjection* target) {
  return handler.ImportLabelPoints(target, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
}

int importLines(IEArcInfo& handler, Vector* vector, SProjection* target) {
  return handler.ImportLines(vector, target);
}

int importSamples(IEArcInfo& handler, Vector* vector, SProjection* target) {
  return handler.ImportSamples(vector, target);
}

struct Job {
  int (*import)(IEArcInfo&, Vector*, SProjection*);
  Workplace::LayerKind layer;
};

constexpr Job kJobs[] = {
    {importLines, Workplace::thematic},  {importLines, Workplace::samples},
    {importSamples, Workplace::samples}, {importSamples, Workplace::contours},
    {importLabels, Workplace::thematic},
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static constexpr char kFile[] = "in.gen";
  Workplace& workplace = Workplace::instance();
  kaldex::fuzz::Input input(data, size);
  const Job& job = kJobs[input.byte() % (sizeof kJobs / sizeof *kJobs)];
  const std::uint8_t settings = input.byte();
  workplace.write(kFile, kaldex::fuzz::expandRuns(input.rest()));
  const UngenerateOutline outline(workplace.path(kFile));
  outline.extent(nullptr, workplace.projection(), 0);
  workplace.undone(job.layer, 0, [&] {
    const auto handler = std::make_unique<IEArcInfo>();
    workplace.init(*handler, job.layer, kFile, settings);
    job.import(*handler, workplace.vector(job.layer), workplace.projection());
  });
  return 0;
}
