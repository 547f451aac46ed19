// Readers of drawings. The first byte chooses operation and layer, the second the settings, the third the
// answers to questions and which layers are taken; what follows is the file.

#include "kaldex/dxf.h"

#include <memory>

#include "fuzz/support/input.h"
#include "fuzz/support/workplace.h"
#include "kaldex/model/text.h"

namespace {

using kaldex::fuzz::Workplace;

struct Job {
  int (*run)(IEDXF& handler, Vector* vector, SProjection* target);
  Workplace::LayerKind layer;
};

int lines(IEDXF& handler, Vector* vector, SProjection* target) {
  return handler.ImportLines(vector, target);
}

int samples(IEDXF& handler, Vector* vector, SProjection* target) {
  return handler.ImportSamples(vector, target);
}

int labels(IEDXF& handler, Vector*, SProjection* target) {
  char category[] = "Objetos";
  char prefix[] = "Q";
  short kind = 3;
  return handler.ImportLabelPoints(target, nullptr, category, &kind, prefix, nullptr, nullptr, prefix);
}

int texts(IEDXF& handler, Vector* vector, SProjection* target) {
  vector->infoLayer()->makeText();
  EntitieList list;
  return handler.ImportText(&list, target, nullptr);
}

int layers(IEDXF& handler, Vector*, SProjection*) {
  const std::unique_ptr<SDataLayerList> list(handler.GetLayers());
  if (list != nullptr) handler.SetLayerList(list.get());
  int counts[4];
  return handler.GetLayerContents(counts[0], counts[1], counts[2], counts[3]);
}

constexpr Job kJobs[] = {{lines, Workplace::thematic},    {lines, Workplace::samples},
                         {samples, Workplace::samples},   {samples, Workplace::contours},
                         {labels, Workplace::thematic},   {labels, Workplace::cadastral},
                         {texts, Workplace::thematic},    {layers, Workplace::thematic}};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static constexpr char kFile[] = "in.dxf";
  Workplace& workplace = Workplace::instance();
  kaldex::fuzz::Input input(data, size);
  const Job& job = kJobs[input.byte() % (sizeof kJobs / sizeof *kJobs)];
  const std::uint8_t settings = input.byte();
  const std::uint8_t answers = input.byte();
  workplace.write(kFile, kaldex::fuzz::expandRuns(input.rest()));
  const DxfOutline outline(workplace.path(kFile));
  outline.box();
  workplace.undone(job.layer, answers, [&] {
    const auto handler = std::make_unique<IEDXF>();
    workplace.init(*handler, job.layer, kFile, settings);
    if ((answers & 1) != 0) handler->SetLayerName("A");
    if ((answers & 2) != 0) handler->SetTransf(10, 20, 0.5, 2);
    job.run(*handler, workplace.vector(job.layer), workplace.projection());
  });
  return 0;
}
