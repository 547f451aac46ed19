// The reader of dBASE tables alone: rows and columns at any speed that a database would not allow. The first
// byte chooses the encoding, the second a row to go to; what follows is the .dbf.

#include "kaldex/model/dbf.h"

#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"

namespace {

constexpr char kFile[] = "in.dbf";
constexpr long long kRowsRead = 64;

void readRow(const DbfImpExp& table) {
  for (int column = -1; column <= table.NumFields(); ++column) table.GetFieldValue(column);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static constexpr const char* kEncodings[] = {"", "UTF-8", "CP1252", "CP850", "UTF-16", "nonsense"};
  static const kaldex::fuzz::Scratch scratch;
  kaldex::fuzz::Input input(data, size);
  const char* encoding = kEncodings[input.byte() % (sizeof kEncodings / sizeof *kEncodings)];
  const int row = input.byte();
  scratch.write(kFile, input.rest());

  DbfImpExp table(scratch.path(kFile), OpenMode::read, QString::fromLatin1(encoding));
  SFieldList fields;
  table.ReadAttr(scratch.path(kFile), &fields);
  const auto rowLimit = static_cast<long long>(input.rest().size());
  if (table.NumRows() > rowLimit) kaldex::fuzz::finding("more rows than the file has bytes");
  table.Go(row);
  readRow(table);
  table.First();
  for (long long i = 0; i < kRowsRead && !table.IsEOF(); ++i) {
    readRow(table);
    table.Next();
  }
  table.Go(table.NumRows() - 1);
  readRow(table);
  table.Go(table.NumRows());
  readRow(table);
  return 0;
}
