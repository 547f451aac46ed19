#ifndef KALDEX_CSV_TABLE_FILE_H
#define KALDEX_CSV_TABLE_FILE_H

#include <QByteArray>
#include <QString>
#include <cstdio>
#include <memory>
#include <string_view>

#include "base/text_output.h"
#include "kaldex/model/field.h"

namespace kaldex {

// A TABLE section of the ASCII format in the form that delimited tables are converted to. The file is made
// anew; write failures stick and show when it is closed.
class TableFile {
 public:
  explicit TableFile(const QByteArray& path);

  bool isOpen() const { return file_ != nullptr; }
  // The section's head, up to the name of the category.
  void begin(const QString& category);
  void line(std::string_view text);
  void column(const SField& column);
  void endHeader() { line("INFO_END"); }
  TextOutput& out() { return *out_; }
  bool ok() const { return out_->ok(); }
  // False if anything didn't reach the file.
  bool close();

 private:
  struct Closer {
    void operator()(FILE* file) const { std::fclose(file); }
  };

  std::unique_ptr<FILE, Closer> file_;
  std::unique_ptr<TextOutput> out_;
};

// The bytes of a path beside a file: in the encoding in which that one is found.
QByteArray pathBeside(const QString& neighbour, const QString& path);

}  // namespace kaldex

#endif
