#ifndef KALDEX_TESTS_DXF_FIXTURE_H
#define KALDEX_TESTS_DXF_FIXTURE_H

#include "kaldex/dxf.h"
#include "kaldex/model/text.h"
#include "support/handler_fixture.h"

namespace kaldex::test {

/// "0 LINE|8 A" as lines of a drawing: what is before the first blank of each piece is a code.
inline QByteArray pairs(const QByteArray& text) {
  QByteArray lines;
  for (const QByteArray& pair : text.split('|')) {
    const int blank = pair.indexOf(' ');
    lines += (blank < 0 ? pair : pair.left(blank)) + '\n' + (blank < 0 ? QByteArray() : pair.mid(blank + 1)) +
             '\n';
  }
  return lines;
}

/// A drawing with these entities, and what comes before their section.
inline QByteArray drawing(const QByteArray& entities, const QByteArray& before = {}) {
  return before + pairs("0 SECTION|2 ENTITIES") + (entities.isEmpty() ? QByteArray() : pairs(entities)) +
         pairs("0 ENDSEC|0 EOF");
}

class OpenDxf : public IEDXF {
 public:
  using IEDXF::file;
  using IEDXF::IEDlayerok;
  using IEDXF::labelPoints;
  using IEDXF::line;
};

/// Handlers on the file "in.dxf" of the fixture's folder.
class DxfFixture : public HandlerFixture {
 protected:
  std::unique_ptr<OpenDxf> handler(InfoLayer* layer, short coordFormat = 0, int units = 0) {
    return open<OpenDxf>("in.dxf", layer, coordFormat, units);
  }
  /// A new layer, which lines are taken into.
  void makeLayer(short model, short kind, const Box& box = {0, 0, 1e7, 1e8}) {
    into = layer(model, QString("layer %1").arg(++made_), box);
    vector = into->vector(kind, true);
  }
  /// Import the drawing's lines into a new layer of its own: the result.
  int importLines(const QByteArray& content, const Box& box = {0, 0, 1e7, 1e8}) {
    write("in.dxf", content);
    makeLayer(THEMATICMODEL, vectorLines, box);
    return handler(into)->ImportLines(vector, project->projection());
  }
  int importSamples(const QByteArray& content, short kind = vectorSamples) {
    write("in.dxf", content);
    makeLayer(DIGITALMODEL, kind);
    return handler(into)->ImportSamples(vector, project->projection());
  }
  /// "0,0 1,1; 2,2 3,3": the vector's lines.
  QString lines() {
    QStringList all;
    for (Line* line = vector->FirstLine(); line != nullptr; line = vector->NextLine()) {
      QStringList points;
      for (int i = 0; i < line->Size(); ++i)
        points << QString("%1,%2").arg(line->coordinates()[2 * i]).arg(line->coordinates()[2 * i + 1]);
      all << points.join(' ');
    }
    return all.join("; ");
  }
  QString points() {
    QStringList all;
    for (Point2d* point = vector->FirstPoint2d(); point != nullptr; point = vector->NextPoint2d())
      all << QString("%1,%2").arg(point->x).arg(point->y);
    return all.join(' ');
  }

  InfoLayer* into = nullptr;
  Vector* vector = nullptr;

 private:
  int made_ = 0;
};

}  // namespace kaldex::test

#endif
