#ifndef KALDEX_ASCII_SECTION_WRITER_H
#define KALDEX_ASCII_SECTION_WRITER_H

#include "base/latin1.h"
#include "base/text_output.h"
#include "kaldex/ascii.h"
#include "kaldex/model/line.h"
#include "lib/ascii/coordinate_writer.h"

inline namespace kaldex_v1 {

/// What every section that is written has around its records. The handler's file must be open for appending;
/// write failures stick and are told at the end.
class IEAsc::SectionWriter {
 public:
  explicit SectionWriter(IEAsc& handler);

  kaldex::TextOutput& out() { return out_; }
  /// Translated or domain text, which goes out as Latin-1.
  void text(const QString& text);
  /// The keyword, the comment and the handler's header lines.
  void begin(const char* keyword, const QString& comment);
  void endHeader() { out_.append("\nINFO_END"); }
  void coordinates(const Line& line) { coordinates_.write(line.coordinates(), line.Size()); }
  void endRecord() { out_.append("\nEND"); }
  bool ok() const { return out_.ok(); }
  /// End the section and close the file: 1, or 0 after the user was told of a write that failed. The section
  /// is left without its end when `complete` is false.
  int finish(bool complete = true);

 private:
  void report() const;

  IEAsc& handler_;
  kaldex::TextOutput out_;
  kaldex::Latin1Loss loss_;
  kaldex::CoordinateWriter coordinates_;
};

}  // namespace kaldex_v1

#endif
