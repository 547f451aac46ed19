#ifndef KALDEX_JOB_REPORT_H
#define KALDEX_JOB_REPORT_H

#include <QMap>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

#include "kaldex/api.h"

inline namespace kaldex_v1 {

/// What an import or export did, for whoever started it to show: a command, a dialog, a test. Operations
/// write to the report that a JobReportScope has made current, and to none when there is none; it never
/// changes what they do.
///
/// Kinds are "lines", "polygons", "points", "samples", "contours", "labels", "texts", "turns", "edges",
/// "triangles", "objects", "rows", "columns". Reasons of what was left out are stable codes, listed here:
///   few_points        a line or ring with too few points
///   degenerate        a line of two equal points, a ring without area
///   outside_box       outside the layer's declared box
///   null_shape        a record without geometry
///   refused           the layer refused it (an unclosed ring, coordinates that are no numbers)
///   duplicate         inner polygon that stood in the file twice
///   class_filter      of a class that was not wanted
///   unplaced_hole     a hole without an outer ring (kept as a polygon of its own)
///   bad_value         an attribute value that did not fit its column
///   column_ignored    a column that the table doesn't have
///   no_object         a row for an object that the category doesn't have
///   no_geometry       an object without geometry in the layer
///   no_label_point    a feature without a place for a label
///   not_associated    a label that found nothing in the layer
///   unsupported       a kind of record that the operation doesn't take
///   other_kind        taken from the source of a conversion, but the kind that was asked for doesn't hold it
class KALDEX_API JobReport {
 public:
  struct Place {
    QString file;
    long long line = 0;    ///< from 1; 0: not known
    long long column = 0;  ///< from 1, in bytes
  };
  struct Choice {
    QString name;
    QString reason;
  };

  void countRead(const QString& kind, long long count = 1) { read[kind] += count; }
  void countWritten(const QString& kind, long long count = 1) { written[kind] += count; }
  void countLeftOut(const QString& reason, long long count = 1) { leftOut[reason] += count; }
  /// Something that the user should know and that no message of the operation says; of a long text the head.
  void note(const QString& text);

  QMap<QString, long long> read;
  QMap<QString, long long> written;
  QMap<QString, long long> leftOut;
  QVector<QPair<QString, QString>> renamed;
  Choice encoding;
  Choice projection;
  QStringList files;
  QStringList notes;
  /// Where in a file the last inconsistency was found; set just before its message is shown, cleared by who
  /// shows it.
  Place place;

  /// The current report, or null.
  static JobReport* current();

 private:
  friend class JobReportScope;
};

/// Makes a (borrowed) report the current one of this thread while it lives.
class KALDEX_API JobReportScope {
 public:
  explicit JobReportScope(JobReport& report);
  JobReportScope(const JobReportScope&) = delete;
  JobReportScope& operator=(const JobReportScope&) = delete;
  ~JobReportScope();

 private:
  JobReport* previous_;
};

}  // namespace kaldex_v1

#endif
