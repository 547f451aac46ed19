#ifndef KALDEX_ASCII_CLASS_BLOCK_H
#define KALDEX_ASCII_CLASS_BLOCK_H

#include "kaldex/ascii.h"
#include "kaldex/model/catalog.h"
#include "lib/ascii/class_text.h"

inline namespace kaldex_v1 {

/// Reads a list of classes with their colours, up to the header's end, into the layer's thematic category:
/// known classes take the colours, unknown ones are added if the user agrees.
class IEAsc::ClassBlock {
 public:
  /// What the lines' colours are for.
  enum Mode : unsigned { points = 4, polygonsAndLines = 7 };

  ClassBlock(IEAsc& handler, unsigned mode) : handler_(handler), points_(mode == points) {}
  int run();

 private:
  bool readClasses();
  bool take(const kaldex::ClassLine& line);
  bool add(const kaldex::ClassLine& line);
  void colour(GeneralVisual& visual, const kaldex::ClassLine& line) const;
  void store();
  void tell() const;

  IEAsc& handler_;
  bool points_;
  Category* category_ = nullptr;
  bool addAll_ = false;
  int notFound_ = 0;
  int added_ = 0;
  int changed_ = 0;
};

}  // namespace kaldex_v1

#endif
