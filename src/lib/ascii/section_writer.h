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
  /// The same without a comment.
  void begin(const char* keyword);
  /// The header lines alone, for sections of another frame.
  void header();
  void endHeader() { out_.append("\nINFO_END"); }
  void coordinates(const Line& line) { coordinates_.write(line.coordinates(), line.Size()); }
  /// Points with heights.
  void samples(const double* xy, const float* heights, int count) { coordinates_.write(xy, count, heights); }
  /// For records of other forms.
  kaldex::CoordinateWriter& coordinateWriter() { return coordinates_; }
  /// What stands before the coordinates of a contour.
  void contourHead(const Line& line);
  void endRecord() { out_.append("\nEND"); }
  bool ok() const { return out_.ok(); }
  /// How a section ends: with the usual word, with one that is written already, or not at all, since the user
  /// has cancelled.
  enum class End { word, own, none };

  /// End the section and close the file: 1, or 0 without an end or after the user was told of a write that
  /// failed.
  int finish(End end);
  int finish(bool complete = true) { return finish(complete ? End::word : End::none); }

 private:
  void begin(const char* keyword, const QString* comment);
  void report() const;

  IEAsc& handler_;
  kaldex::TextOutput out_;
  kaldex::Latin1Loss loss_;
  kaldex::CoordinateWriter coordinates_;
};

}  // namespace kaldex_v1

#endif
