// Readers of the sections of the ASCII format. The first byte chooses operation and layer, the second the
// settings, the third the answers to questions; what follows is the file.

#include <memory>

#include "fuzz/support/input.h"
#include "fuzz/support/workplace.h"
#include "kaldex/ascii.h"

namespace {

using kaldex::fuzz::Workplace;

struct Job {
  int (SExtFormats::*import)(Vector*, SProjection*);
  Workplace::LayerKind layer;
};

constexpr Job kJobs[] = {
    {&SExtFormats::ImportLines, Workplace::thematic},
    {&SExtFormats::ImportLines, Workplace::network},
    {&SExtFormats::ImportLines, Workplace::samples},
    {&SExtFormats::ImportContourout, Workplace::contours},
    {&SExtFormats::ImportContourout, Workplace::samples},
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static constexpr char kFile[] = "in.txt";
  Workplace& workplace = Workplace::instance();
  kaldex::fuzz::Input input(data, size);
  const Job& job = kJobs[input.byte() % (sizeof kJobs / sizeof *kJobs)];
  const std::uint8_t settings = input.byte();
  const std::uint8_t answers = input.byte();
  workplace.write(kFile, kaldex::fuzz::expandRuns(input.rest()));
  workplace.undone(job.layer, answers, [&] {
    const auto handler = std::make_unique<IEAsc>();
    workplace.init(*handler, job.layer, kFile, settings);
    (handler.get()->*job.import)(workplace.vector(job.layer), workplace.projection());
  });
  return 0;
}
