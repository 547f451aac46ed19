// The readers of header blocks, and of single records, of text formats. The first byte chooses which, the
// second the settings, the third the answers to questions; what follows is the file.

#include <iterator>
#include <memory>

#include "fuzz/support/input.h"
#include "fuzz/support/workplace.h"
#include "kaldex/ascii.h"
#include "kaldex/model/field.h"

namespace {

using kaldex::fuzz::Workplace;

constexpr char kFile[] = "in.txt";

class RecordHandler : public IEAsc {
 public:
  /// A header block that stands behind the file's first word, as an import meets it.
  void blockInSection(Category* category, unsigned mode) {
    if (openFile("r") && readWordIntoLine()) section(category, mode);
    FileClose();
  }
  /// InfoSection finds the file's grid by itself.
  void blockOfGrid(Category* category, unsigned mode) { section(category, mode); }
  void types() {
    if (!openFile("r")) return;
    const std::unique_ptr<short[]> found(LerTypes());
    FileClose();
  }
  void delimitedRecords() {
    static constexpr int kFields = 6;
    const auto texts = std::make_unique<char[]>(kFields * kFieldCapacity);
    char* field[kFields];
    for (int i = 0; i < kFields; ++i) field[i] = &texts[static_cast<std::size_t>(i) * kFieldCapacity];
    if (!openFile("r")) return;
    short count = 0;
    while (nextLine()) {
      if (LerComSeparator(&count, field[0], field[1], field[2], field[3], field[4], field[5]) == 0) break;
    }
    FileClose();
  }
  void coordinates(SProjection* target) {
    if (!openFile("r")) return;
    Point point;
    float z = 0.0f;
    while (nextLine()) {
      if (LerLatLong(target, point, z) != 0) TransfCoord(target, &point);
    }
    FileClose();
  }
  void names() {
    char name[40];
    if (!openFile("r")) return;
    while (file != nullptr && readWordIntoLine() && ExtraiNome(name) != 0) {
    }
    FileClose();
  }

 private:
  bool nextLine() {
    clearLine();
    return file != nullptr && LerLinha() != 0;
  }
  void section(Category* category, unsigned mode) {
    unsigned columns = 0;
    double noData = 0, x = 0, y = 0, classes = 0;
    short formatted = 0, key = -1, name = -1;
    float resX = 0, resY = 0;
    SFieldList fields;
    InfoSection(&mode, &columns, &noData, category, &formatted, &fields, &key, &name, &x, &y, &resX, &resY,
                &classes);
  }
};

void readOne(RecordHandler& handler, unsigned what, Workplace& workplace) {
  switch (what % 10) {
    case 0:
      return handler.blockInSection(workplace.objects("Objetos"), 7);
    case 1:
      return handler.blockInSection(workplace.objects("Lotes"), 4);
    case 2:
      return handler.blockOfGrid(nullptr, 4);
    case 3:
      handler.InfoTable(static_cast<short>(what % 3));
      return;
    case 4: {
      bool planar = false;
      IEAsc::GetBox(workplace.path(kFile), planar);
      return;
    }
    case 5: {
      const std::unique_ptr<SProjection> found(IEAsc::GetProjection(workplace.path(kFile)));
      Point point(0.1, 0.1);
      if (found != nullptr) found->geographicToPlane(point);
      return;
    }
    case 6:
      handler.SetSeparator(handler.GetSeparator());
      return handler.types();
    case 7:
      handler.SetSeparator(handler.GetSeparator());
      return handler.delimitedRecords();
    case 8:
      return handler.coordinates(workplace.projection());
    default:
      return handler.names();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Workplace& workplace = Workplace::instance();
  workplace.needObjects();
  kaldex::fuzz::Input input(data, size);
  const unsigned what = input.byte();
  const std::uint8_t settings = input.byte();
  const std::uint8_t answers = input.byte();
  workplace.write(kFile, kaldex::fuzz::expandRuns(input.rest()));
  workplace.undone(Workplace::thematic, answers, [&] {
    const auto handler = std::make_unique<RecordHandler>();
    workplace.init(*handler, Workplace::thematic, kFile, settings);
    readOne(*handler, what, workplace);
  });
  return 0;
}
