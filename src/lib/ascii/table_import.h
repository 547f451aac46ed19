#ifndef KALDEX_ASCII_TABLE_IMPORT_H
#define KALDEX_ASCII_TABLE_IMPORT_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kaldex/ascii.h"
#include "kaldex/model/database.h"
#include "kaldex/model/field.h"
#include "lib/frame/progress_scope.h"

inline namespace kaldex_v1 {

/// Reads the first TABLE section into the objects of a category and their attributes. The caller holds the
/// transaction.
class IEAsc::TableImport {
 public:
  TableImport(IEAsc& handler, Category& category);
  ~TableImport();

  int run();

 private:
  bool findTable();
  bool readHeader();
  bool readDeclarations();
  bool checkDeclarations() const;
  bool lacks(const char* what) const;

  bool readRows();
  enum class Row { found, ended, failed };
  Row nextRow();
  void countRow();
  bool readRow();
  bool splitRow();
  bool hasField(short column);
  bool findObject();
  bool createObject(const QString& label);
  void mend(std::string_view field);

  enum class Outcome { taken, skipRow, failed };
  Outcome takeValues();
  Outcome takeValue(const SField& column, std::string_view field);
  Outcome takeName(std::string_view field);
  Outcome offerToSkip(const SField& column, const char* reason);
  void storeCell(const SField& column);

  /// Tell the user of the row; false.
  bool malformed();
  static bool ignoreItem(const QString& detail);

  IEAsc& handler_;
  DataBase& base_;
  Category& category_;
  SFieldList columns_;
  short keyColumn_ = -1;
  short nameColumn_ = -1;
  std::optional<kaldex::ProgressScope> progress_;

  std::string_view row_;  ///< the row's text as it stands in the handler's line
  std::vector<std::string_view> fields_;
  KaldexObject object_;
  SCellList cells_;
  std::string value_;  ///< a field with a point for a decimal comma
  bool changed_ = false;

  long long rows_ = 0;
  long long stored_ = 0;
  long long created_ = 0;
  long long badValues_ = 0;
};

}  // namespace kaldex_v1

#endif
