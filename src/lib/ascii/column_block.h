#ifndef KALDEX_ASCII_COLUMN_BLOCK_H
#define KALDEX_ASCII_COLUMN_BLOCK_H

#include "kaldex/model/field.h"
#include "lib/ascii/column_text.h"
#include "lib/ascii/info_reader.h"

inline namespace kaldex_v1 {

/// Reads the declarations of an attribute table's columns, from the line that names the category up to the
/// header's end. The table is made when the category has none, otherwise the columns must be the table's.
class IEAsc::ColumnBlock {
 public:
  ColumnBlock(IEAsc& handler, const InfoReader::Targets& targets);
  int run();

 private:
  bool isCategorysOwn() const;
  bool openTable();
  bool readColumns();
  bool readColumn();
  void addKeyOrName(const std::string& spaced, const std::string& name);
  bool addNewColumn(const std::string& name, const kaldex::ColumnShape& shape);
  bool addTableColumn(const std::string& name);
  bool offerToIgnore();
  bool createTable();
  bool malformed();

  IEAsc& handler_;
  InfoReader::Targets targets_;
  Category& category_;
  bool newTable_ = false;
  SFieldList tableFields_;  ///< the columns of the table, existing or to be made; the first is the key
  SFieldList ownFields_;
  SFieldList& fields_;  ///< the file's columns in the file's order
  kaldex::ColumnNames names_;
};

}  // namespace kaldex_v1

#endif
