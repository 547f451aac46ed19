// Readers of the sections of the ASCII format. The first byte chooses operation and layer, the second the
// settings, the third the answers to questions; what follows is the file.

#include <QFile>
#include <memory>

#include "fuzz/support/input.h"
#include "fuzz/support/workplace.h"
#include "kaldex/ascii.h"
#include "kaldex/model/text.h"

namespace {

using kaldex::fuzz::Workplace;

int lines(IEAsc& handler, Vector* vector, SProjection* target) {
  return handler.ImportLines(vector, target);
}

int contours(IEAsc& handler, Vector* vector, SProjection* target) {
  return handler.ImportContourout(vector, target);
}

int samples(IEAsc& handler, Vector* vector, SProjection* target) {
  return handler.ImportSamples(vector, target);
}

int points(IEAsc& handler, Vector* vector, SProjection* target) {
  return handler.ImportPoint2d(vector, target);
}

// What labels are for: the classes, or the objects, of what they stand on.
int labels(IEAsc& handler, Vector* vector, SProjection* target) {
  const int read =
      handler.ImportLabelPoints(target, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
  return read != 0 ? handler.ClassifyObj(vector) : 0;
}

int table(IEAsc& handler, Vector*, SProjection*) {
  return handler.ImportAttributes(Workplace::instance().objects("Lotes"));
}

int newTable(IEAsc& handler, Vector*, SProjection*) {
  return handler.ImportAttributes(Workplace::instance().objects("Objetos"));
}

int texts(IEAsc& handler, Vector*, SProjection* target) {
  EntitieList list;
  GeneralVisual look;
  handler.ImportText(&list, target, nullptr);
  return handler.ImportText(&list, target, &look);
}

int turns(IEAsc& handler, Vector* vector, SProjection*) {
  const int read = handler.ImportTurns(vector);
  const InfoLayer& layer = *Workplace::instance().layer(Workplace::network);
  QFile::remove(layer.directory + "/" + layer.fileName + ".turn");
  return read;
}

struct Job {
  int (*import)(IEAsc&, Vector*, SProjection*);
  Workplace::LayerKind layer;
};

constexpr Job kJobs[] = {
    {lines, Workplace::thematic},    {lines, Workplace::network},    {lines, Workplace::samples},
    {contours, Workplace::contours}, {contours, Workplace::samples}, {samples, Workplace::samples},
    {points, Workplace::thematic},   {points, Workplace::cadastral}, {labels, Workplace::thematic},
    {labels, Workplace::cadastral},  {labels, Workplace::network},   {table, Workplace::thematic},
    {newTable, Workplace::thematic}, {texts, Workplace::thematic},   {turns, Workplace::network},
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static constexpr char kFile[] = "in.txt";
  Workplace& workplace = Workplace::instance();
  workplace.needObjects();
  kaldex::fuzz::Input input(data, size);
  const Job& job = kJobs[input.byte() % (sizeof kJobs / sizeof *kJobs)];
  const std::uint8_t settings = input.byte();
  const std::uint8_t answers = input.byte();
  workplace.write(kFile, kaldex::fuzz::expandRuns(input.rest()));
  workplace.undone(job.layer, answers, [&] {
    // Objects, tables and classes are none of what the workplace counts.
    const DBTransactionBlock block(&workplace.dataBase());
    const auto handler = std::make_unique<IEAsc>();
    workplace.init(*handler, job.layer, kFile, settings);
    job.import(*handler, workplace.vector(job.layer), workplace.projection());
  });
  return 0;
}
