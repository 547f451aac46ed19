// Reads the lines of an ASCII file into a layer of a new geographic database: what a dialog does behind its
// "Import" button, without the dialog.
//
//   import_lines rivers.txt rivers.gpkg

#include <QCoreApplication>
#include <QFileInfo>
#include <cstdio>
#include <memory>

#include "kaldex/ascii.h"
#include "kaldex/model/database.h"
#include "kaldex/model/exception.h"
#include "kaldex/model/report.h"
#include "kaldex/model/vector.h"

namespace {

/// Whatever the library has to tell or to ask comes here; without a presenter it would open a window.
class Console : public MessagePresenter {
 public:
  int present(int kind, QWidget*, const QString& title, const QString& text) override {
    std::fprintf(stderr, "%s: %s\n", qPrintable(title), qPrintable(text));
    return kind == 1 ? kAnswerNo : 0;
  }
};

int fail(const QString& reason) {
  std::fprintf(stderr, "%s\n", qPrintable(reason));
  return 1;
}

/// A layer for lines, in a project with the file's projection. All that it needs belongs to the database.
InfoLayer* makeLayer(DataBase& dataBase, const SProjection& projection, const Box& box) {
  CategoryList categories(List::Ownership::owns);
  categories.Append(new Category(-1, "Rivers", THEMATICMODEL, "", 0, nullptr));
  if (dataBase.storeCategories(categories) == 0) return nullptr;

  Project* project = dataBase.createProject("Example", projection);
  if (project == nullptr) return nullptr;
  LayerDefinition definition;
  definition.name = "rivers";
  definition.category = dataBase.categoryList().Select("Rivers");
  definition.box = box;
  definition.scale = 25000;
  return dataBase.createLayer(*project, definition);
}

/// 1, or 0 when the library has told why not.
int importLines(const QFileInfo& file, InfoLayer& layer, Vector& vector) {
  // A handler holds its line buffers, which are too large for a stack.
  const auto handler = std::make_unique<IEAsc>();
  const int metres = 0;
  const short plane = 0;
  if (handler->Init(file.path(), metres, file.fileName(), layer.project(), &layer, layer.dataBase(),
                    layer.projection(), plane, nullptr, nullptr, nullptr) == 0) {
    return 0;
  }
  return handler->ImportLines(&vector, layer.projection());
}

void tell(Vector& vector) {
  int vertices = 0;
  double length = 0.0;
  for (Line* line = vector.FirstLine(); line != nullptr; line = vector.NextLine()) {
    vertices += line->Size();
    length += line->CalcLength();
    line->Free();  // drops the points; the line stays the vector's
  }
  std::printf("%lld lines, %d vertices, %.1f km\n", vector.lineCount(), vertices, length / 1000.0);
}

int run(const QFileInfo& file, const QString& dataBaseName) {
  const std::unique_ptr<SProjection> projection(IEAsc::GetProjection(file.filePath()));
  if (projection == nullptr) return fail("The file's header tells no projection.");
  bool plane = false;
  const Box box = IEAsc::GetBox(file.filePath(), plane);
  if (!plane) return fail("This example takes plane coordinates only.");

  QString error;
  const std::unique_ptr<DataBase> dataBase = DataBase::Create(dataBaseName, &error);
  if (dataBase == nullptr) return fail(error);
  InfoLayer* layer = makeLayer(*dataBase, *projection, box);
  if (layer == nullptr) return fail("The layer could not be made.");
  Vector* vector = layer->vector(vectorLines, true);

  // All or nothing: what a failed import had read so far goes with the block.
  DBTransactionBlock block(dataBase.get());
  if (importLines(file, *layer, *vector) == 0) return 1;
  block.enableCommit();
  tell(*vector);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  if (argc != 3) return fail("usage: import_lines FILE DATABASE");
  Console console;
  SMessageBox::install(&console);
  try {
    return run(QFileInfo(QString::fromLocal8Bit(argv[1])), QString::fromLocal8Bit(argv[2]));
  } catch (const SException& exception) {  // the database's own operations throw, those of handlers never do
    return fail(exception.GetMsg());
  }
}
