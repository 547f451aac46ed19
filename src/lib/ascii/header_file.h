#ifndef KALDEX_ASCII_HEADER_FILE_H
#define KALDEX_ASCII_HEADER_FILE_H

#include <QFile>
#include <QString>
#include <string_view>

namespace kaldex {

// The bytes of a file, to look for header lines in; not copied, since records by the million may follow a
// header.
class HeaderFile {
 public:
  explicit HeaderFile(const QString& path);

  bool isOpen() const { return file_.isOpen(); }
  // Empty when the file is, or can't be read.
  std::string_view text() const { return text_; }
  bool has(std::string_view word) const { return text_.find(word) != std::string_view::npos; }
  // Whether `second` stands anywhere behind a `first`, with a character between them.
  bool hasInOrder(std::string_view first, std::string_view second) const;

 private:
  QFile file_;
  std::string_view text_;
};

}  // namespace kaldex

#endif
