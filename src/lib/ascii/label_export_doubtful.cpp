#include <memory>

#include "base/tracer.h"
#include "lib/ascii/label_export.h"

inline namespace kaldex_v1 {

/// Polygons to be looked at: those without a class or an object, or with more than one object.
class IEAsc::LabelExport::Doubtful : public LabelExport {
 public:
  using LabelExport::LabelExport;

  int exportUnclassified();
  int exportMore();

 private:
  void writeHeader();
  void countObjects();
  int objectsOf(const SPolygon& polygon) const;
  bool hasNeighbours(const SPolygon& polygon);
  void writeRecord(SPolygon& polygon, const QByteArray& words);
  void writeMoreRecord(SPolygon& polygon, const QByteArray& words);
  void writeMoreClasses();
  void writeMoreObjects();

  std::vector<int> objects_;  ///< how many anchors hold a polygon, by its identifier
  bool refused_ = false;
};

int IEAsc::LabelExport::Doubtful::exportUnclassified() {
  writeHeader();
  if (!isThematic()) countObjects();
  visitPolygons([this](SPolygon& polygon) {
    const bool claimed = isThematic() ? polygon.classId != 0 : objectsOf(polygon) > 0;
    if (!claimed) writeRecord(polygon, QByteArray());
  });
  return finish();
}

int IEAsc::LabelExport::Doubtful::exportMore() {
  writeHeader();
  if (isThematic()) {
    writeMoreClasses();
  } else {
    writeMoreObjects();
  }
  if (!refused_) return finish();
  writer_.finish(false);
  return 0;
}

void IEAsc::LabelExport::Doubtful::writeHeader() {
  writer_.begin("POINT2D");
  if (isSeparated()) {
    writeSeparator();
    writeFields();
  }
  writer_.endHeader();
}

// One walk over the anchors instead of a search for each polygon: an anchor that holds a polygon is always
// among those of its box.
void IEAsc::LabelExport::Doubtful::countObjects() {
  if (vector_.anchorSet() == nullptr) return;
  for (Anchor* next = vector_.FirstAnchor(); next != nullptr; next = vector_.NextAnchor()) {
    const std::unique_ptr<Anchor> anchor(next);
    if (!wantsMore()) return;
    for (const int id : anchor->polygons) {
      if (id <= 0) continue;
      const auto place = static_cast<std::size_t>(id);
      if (place >= objects_.size()) objects_.resize(place + 1, 0);
      ++objects_[place];
    }
  }
}

int IEAsc::LabelExport::Doubtful::objectsOf(const SPolygon& polygon) const {
  const auto place = static_cast<std::size_t>(polygon.id);
  return place < objects_.size() ? objects_[place] : 0;
}

bool IEAsc::LabelExport::Doubtful::hasNeighbours(const SPolygon& polygon) {
  AnchorList list(List::Ownership::owns);
  return vector_.Anchors(polygon.box, list, 0, 0, 1, 0, 0) > 0;
}

void IEAsc::LabelExport::Doubtful::writeRecord(SPolygon& polygon, const QByteArray& words) {
  ++polygonsRead_;
  const char* mark = "";
  writePlace(labelOrVertex(polygon, mark));
  if (isSeparated()) writeField(words + mark);
}

void IEAsc::LabelExport::Doubtful::writeMoreRecord(SPolygon& polygon, const QByteArray& words) {
  if (refused_) return;
  if (isSeparated()) return writeRecord(polygon, words);
  refused_ = !needsSeparator();
}

void IEAsc::LabelExport::Doubtful::writeMoreClasses() {
  visitPolygons([this](SPolygon& polygon) {
    if (polygon.classId > 0) writeMoreRecord(polygon, QByteArray());
  });
}

// A polygon without any object around it goes by the count of the one before it: what reads these files
// counts on that.
void IEAsc::LabelExport::Doubtful::writeMoreObjects() {
  countObjects();
  int count = 0;
  int number = 0;
  visitPolygons([&](SPolygon& polygon) {
    const int own = objectsOf(polygon);
    if (own > 0 || (count > 0 && hasNeighbours(polygon))) count = own;
    if (count <= 1) return;
    const QString words = QStringLiteral(" %1 ;  ; pol_objs ;     //num.objs %2")
                              .arg(++number, 7, 10, QLatin1Char('0'))
                              .arg(count, 7, 10, QLatin1Char('0'));
    writeMoreRecord(polygon, words.toLatin1());
  });
}

int IEAsc::ExportLabelPointsSem(Vector* vec, Category* category) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::ExportLabelPointsSem");
  return LabelExport::run<LabelExport::Doubtful>(
      *this, vec, category, [](LabelExport::Doubtful& work) { return work.exportUnclassified(); });
}

int IEAsc::ExportLabelPointsMais(Vector* vec, Category* category) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::ExportLabelPointsMais");
  return LabelExport::run<LabelExport::Doubtful>(
      *this, vec, category, [](LabelExport::Doubtful& work) { return work.exportMore(); });
}

}  // namespace kaldex_v1
