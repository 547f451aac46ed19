#ifndef KALDEX_ASCII_COLUMN_TEXT_H
#define KALDEX_ASCII_COLUMN_TEXT_H

#include <functional>
#include <string>
#include <string_view>

#include "lib/frame/reserved_names.h"

namespace kaldex {

// The declaration of a column: name, type and size, parted by a separator. Texts are Latin-1.
struct ColumnDeclaration {
  std::string name;
  std::string type;
  std::string size;
};

// The line with blanks around each separator behind its first character, and none at its end.
std::string spacedDeclaration(std::string_view line, char separator);
// Of a spaced line; what is missing is empty.
ColumnDeclaration parseDeclaration(std::string_view spaced);
// Whether a spaced line declares the column of the objects' labels, or that of their names.
bool declaresKey(std::string_view spaced);
bool declaresName(std::string_view spaced);

struct ColumnShape {
  short type = 0;  // a FieldType
  short size = 0;
  short decimals = 0;
};
// False for an unknown type word, and for a text without a positive size.
bool columnShape(const ColumnDeclaration& declaration, ColumnShape& shape);

// Finds names that the tables of objects can take. One object serves a whole table: its changed names carry a
// number that counts them.
class ColumnNames {
 public:
  // A name that the system uses itself gets a number, and `cut` what was left of it; false for any other
  // name.
  bool replaceReserved(std::string& name, std::string& cut);
  // A name of at most ten letters, digits and low lines, which doesn't begin with a digit.
  static std::string cleaned(std::string name);
  // Cut to ten characters, and numbered if `taken` says that it is in use.
  std::string unique(std::string name, const std::function<bool(const std::string&)>& taken);

 private:
  NameNumbers numbers_;
};

}  // namespace kaldex

#endif
