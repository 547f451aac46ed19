// The importer of shapefiles with all their files; see ShapeContainer for the form of an input. What a .prj
// tells is left to projection_text: searching the registry of reference systems takes a thousand times as
// long as the rest.

#include <algorithm>
#include <cstring>
#include <memory>
#include <random>

#include "fuzz/shape_container.h"
#include "fuzz/support/workplace.h"
#include "kaldex/shapeie.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t limit);

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

// Which file a mutation touches: mostly those with the most to get wrong.
ShapeContainer::File touched(std::minstd_rand& random) {
  static constexpr ShapeContainer::File kShares[] = {
      ShapeContainer::shp, ShapeContainer::shp, ShapeContainer::shp, ShapeContainer::shp, ShapeContainer::shp,
      ShapeContainer::shp, ShapeContainer::dbf, ShapeContainer::dbf, ShapeContainer::dbf, ShapeContainer::dbf,
      ShapeContainer::dbf, ShapeContainer::shx, ShapeContainer::shx, ShapeContainer::cpg};
  return kShares[random() % (sizeof kShares / sizeof *kShares)];
}

void mutateFile(std::string& file, std::size_t limit) {
  std::string room = file;
  room.resize(std::max(limit, file.size()));
  auto* bytes = reinterpret_cast<std::uint8_t*>(&room[0]);
  room.resize(LLVMFuzzerMutate(bytes, file.size(), room.size()));
  file = room;
}

std::size_t store(const ShapeContainer& container, std::uint8_t* data, std::size_t limit) {
  const std::vector<std::uint8_t> packed = container.pack(limit);
  std::copy(packed.begin(), packed.end(), data);
  return packed.size();
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t limit,
                                               unsigned seed) {
  std::minstd_rand random(seed);
  ShapeContainer container = ShapeContainer::unpack(data, size);
  if (random() % 16 == 0) container.job = static_cast<std::uint8_t>(random());
  if (random() % 16 == 0) container.settings = static_cast<std::uint8_t>(random());
  if (random() % 16 == 0) container.answers = static_cast<std::uint8_t>(random());
  const std::size_t used = container.pack(SIZE_MAX).size();
  std::string& file = container.file[touched(random)];
  const std::size_t room = limit > used ? limit - used : 0;
  mutateFile(file, std::min<std::size_t>(file.size() + room, 0xffff));
  if (random() % 2 == 0) mendLengths(container);
  const std::size_t stored = store(container, data, limit);
  return stored != 0 ? stored : LLVMFuzzerMutate(data, size, limit);
}

// One file from the other parent.
extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* one, std::size_t oneSize,
                                                 const std::uint8_t* other, std::size_t otherSize,
                                                 std::uint8_t* out, std::size_t limit, unsigned seed) {
  std::minstd_rand random(seed);
  ShapeContainer result = ShapeContainer::unpack(one, oneSize);
  const ShapeContainer::File which = touched(random);
  result.file[which] = ShapeContainer::unpack(other, otherSize).file[which];
  return store(result, out, limit);
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
