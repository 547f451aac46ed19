#ifndef KALDEX_FRAME_RESERVED_NAMES_H
#define KALDEX_FRAME_RESERVED_NAMES_H

#include <cstddef>
#include <string>
#include <string_view>

namespace kaldex {

// Whether a column's name is one that the tables of objects use themselves; these are in capitals.
bool isReservedName(std::string_view name);

// Gives names that have to change a number, which counts the changes of one table.
class NameNumbers {
 public:
  // A reserved word keeps seven characters, so that the number has room.
  static constexpr std::size_t kReservedRoom = 7;

  // Count a change, and cut the name to `room` characters, one less from the tenth change on.
  void cut(std::string& name, std::size_t room);
  // Put the number behind the name.
  void append(std::string& name) const;

 private:
  int changed_ = 0;
};

}  // namespace kaldex

#endif
