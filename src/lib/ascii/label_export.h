#ifndef KALDEX_ASCII_LABEL_EXPORT_H
#define KALDEX_ASCII_LABEL_EXPORT_H

#include <functional>
#include <optional>
#include <unordered_map>
#include <vector>

#include "kaldex/model/database.h"
#include "kaldex/model/vector.h"
#include "lib/ascii/section_writer.h"
#include "lib/frame/anchor_objects.h"
#include "lib/frame/progress_scope.h"

inline namespace kaldex_v1 {

/// What the exports of label points have in common: the forms of a record, the walks over polygons, lines and
/// anchors, and what says which class or object something is. One export an object; the handler's file must
/// be open.
class IEAsc::LabelExport {
 public:
  class Plain;
  class Generated;
  class Doubtful;
  class Swapped;
  class Points;

  /// The frame of every export: looks at the arguments, opens the file, and has `export` written.
  template <class Export, class Run>
  static int run(IEAsc& handler, Vector* vec, Category* category, Run run) {
    return handler.guarded([&] {
      if (!accepts(vec, category) || !handler.openFile("a+")) return 0;
      Export work(handler, *vec, *category);
      return run(work);
    });
  }

 protected:
  struct Identity {
    QString label;
    QString name;
    QString category;
  };

  LabelExport(IEAsc& handler, Vector& vector, Category& category);
  ~LabelExport();

  bool isThematic() const { return category_.model == THEMATICMODEL; }
  bool isNetwork() const { return category_.model == NETWORKMODEL; }
  bool isSeparated() const { return handler_.separator[0] != 0; }
  const char* sectionName() const { return isNetwork() ? "NETWORK_OBJECTS" : "POINTS"; }
  bool wantsMore() const { return writer_.ok() && !progress_.cancelled(); }
  int finish() { return writer_.finish(!progress_.cancelled()); }
  /// A separator is needed, and there is none: tells the user; false.
  bool needsSeparator();
  /// The handler's file name up to its last underscore, of which `capacity` - 1 characters are looked at;
  /// without an underscore up to its ending.
  QByteArray baseName(int capacity) const;

  // Header
  void writeSeparator();
  /// "//" and the words, each "%s" being the separator.
  void writeFormat(const char* words);
  void writeFields();
  void writeRow(std::initializer_list<const Color*> colours, const QString& name);

  // Records
  void writePlace(const Point& place);
  void writeField(const QString& value);
  void writeField(const QByteArray& value);
  void writeKeyword(const char* keyword, const QString& value);
  /// A class name in either form.
  void writeClass(const Point& place, const QString& name);

  // Walks. Each ends early when writing failed or the user has cancelled; what was visited is given back.
  void visitPolygons(const std::function<void(SPolygon&)>& visit);
  /// Lines of two points or more.
  void visitLines(const std::function<void(Line&)>& visit);
  void visitAnchors(const std::function<void(const Anchor&, const Identity&)>& visit);
  void visitPolygons(const Anchor& anchor, const std::function<void(SPolygon&)>& visit);
  void visitLines(const Anchor& anchor, const std::function<void(Line&)>& visit);

  // Label points
  /// The polygon's label point, made when it has none; false when that can't be. The polygon is left as it
  /// is stored.
  bool labelOf(SPolygon& polygon, Point& place);
  /// The same with the first vertex as the last resort, and the words that mark it so.
  Point labelOrVertex(SPolygon& polygon, const char*& mark);
  static Point labelOf(Line& line);

  // Classes
  /// The classes that are written: all, or of those in use the ones that the header lists.
  void chooseClasses(bool onlyUsed, bool listed);
  const std::vector<const GeoClass*>& chosen() const { return chosen_; }
  const GeoClass* chosenClass(int id) const;

  // Objects
  void loadObjects();
  bool identify(int anchorId, Identity& identity);

  IEAsc& handler_;
  Vector& vector_;
  Category& category_;
  SectionWriter writer_;
  kaldex::ProgressScope progress_;
  long long polygonsRead_ = 0;
  long long linesRead_ = 0;
  long long pointsRead_ = 0;

 private:
  static bool accepts(const Vector* vec, const Category* category);

  std::vector<const GeoClass*> chosen_;
  std::unordered_map<int, const GeoClass*> byId_;
  std::optional<kaldex::AnchorObjects> objects_;
  long long written_ = 0;
  long long withoutPlace_ = 0;
};

}  // namespace kaldex_v1

#endif
