#ifndef KALDEX_FUZZ_SCRATCH_H
#define KALDEX_FUZZ_SCRATCH_H

#include <QTemporaryDir>
#include <string_view>

namespace kaldex::fuzz {

/// A folder for the files of a run, in memory where the machine has such a place; it goes with the process.
class Scratch {
 public:
  Scratch();
  QString folder() const { return folder_.path(); }
  QString path(const char* name) const;
  /// Make the file of that name; without content there is no file.
  void write(const char* name, std::string_view content) const;

 private:
  QTemporaryDir folder_;
};

/// Ends the process as a finding of the fuzzer.
[[noreturn]] void finding(const QString& what);

}  // namespace kaldex::fuzz

#endif
