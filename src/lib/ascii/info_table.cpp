#include <QObject>
#include <cstring>

#include "base/tracer.h"
#include "kaldex/ascii.h"
#include "kaldex/model/database.h"
#include "lib/ascii/record_text.h"

inline namespace kaldex_v1 {

Category* IEAsc::InfoTable(short mode) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::InfoTable");
  Category* category = nullptr;
  const int outcome = guardedImport(nullptr, [&] {
    if (dataBase == nullptr) return invalidArgument("dataBase");
    if (!openFile("r") || !findCategoryLine()) return 0;
    const QString name = QString::fromLatin1(line + std::strlen("CATEGORY_OBJ")).trimmed();
    category = dataBase->GetKaldexObjCategory().Select(name);
    if (category == nullptr) {
      offerToMakeCategory(name, category);
    } else if (mode == 2) {
      category = nullptr;
      show(QObject::tr("Esta Categoria/Classe já existe!") + headOf(line));
    }
    return 1;
  });
  return outcome != 0 ? category : nullptr;
}

bool IEAsc::findCategoryLine() {
  do {
    clearLine();
    if (readLine() == 0) return false;
  } while (!kaldex::startsWith(line, "CATEGORY_OBJ"));
  return true;
}

}  // namespace kaldex_v1
