#include "ascii/map_fixture.h"
#include "kaldex/model/tin.h"

namespace kaldex::test {

namespace {

/// What a file doesn't carry, or a reader changes on purpose: the second export differs from the first there.
class Asymmetry : public MapFixture {
 protected:
  struct Named {
    QString label;
    QString name;
    bool line = false;  ///< the place of a free line, not of a polygon
  };

  static std::vector<double> square(int i) {
    const double x = 400000 + 1000.0 * i;
    return {x, 7300000, x + 100, 7300000, x + 100, 7300100, x, 7300100, x, 7300000};
  }
  static std::vector<double> path(int i) {
    return {400000 + 1000.0 * i, 7310000, 400050 + 1000.0 * i, 7310000};
  }
  /// What stands behind the header that all sections have.
  QByteArray behindScale() const {
    const QByteArray text = read(fileName);
    return text.mid(text.indexOf('\n', text.indexOf("\nSCALE") + 1) + 1);
  }
  QByteArray labelsOf(InfoLayer& layer, const QString& name, const char* separator) {
    fileName = name;
    EXPECT_EQ(handler(&layer, 0, 0, nullptr, separator)
                  ->ExportLabelPoints(layer.vector(vectorLines), layer.category(), 0),
              1);
    return behindScale();
  }
  void importLabels(InfoLayer& layer) {
    const auto in = handler(&layer);
    ASSERT_EQ(HandlerFixture::importLabels(*in), 1);
    Vector* const vector = layer.vector(vectorLines);
    ASSERT_EQ(layer.model() == THEMATICMODEL ? in->Classify(vector) : in->ClassifyObj(vector), 1);
  }

  /// A square of each class, out and into an empty database.
  std::pair<QByteArray, QByteArray> classes(const QStringList& names, const char* separator) {
    openEmpty("empty");
    InfoLayer* const from = mapLayer(THEMATICMODEL);
    Category& its = *from->category();
    for (int i = 0; i < names.size(); ++i) {
      GeoClass* const fresh = addClass(its, names[i]);
      fresh->visual.SetPolygonColor(1, 2, 3);
      delete insertPolygon(*from->vector(vectorLines, true), square(i), fresh->id);
    }
    EXPECT_NE(dataBase->storeCategories(dataBase->categoryList()), 0);
    const QByteArray first = labelsOf(*from, "first", separator);
    cross();
    into_ = mapLayer(THEMATICMODEL);
    for (int i = 0; i < names.size(); ++i) delete insertPolygon(*into_->vector(vectorLines, true), square(i));
    importLabels(*into_);
    return {first, labelsOf(*into_, "second", separator)};
  }
  /// A place of each object, in a cadastral layer.
  std::pair<QByteArray, QByteArray> objects(const std::vector<Named>& all) {
    openEmpty("empty");
    QByteArray exports[2];
    for (const bool second : {false, true}) {
      into_ = mapLayer(CADASTRALMODEL);
      Vector& vector = *into_->vector(vectorLines, true);
      int i = 0;
      for (const Named& one : all) {
        Anchor anchor;
        if (one.line) {
          const std::unique_ptr<Line> line(insertLine(vector, path(i++)));
          anchor.InsertLine(nullptr, *line);
        } else {
          const std::unique_ptr<SPolygon> polygon(insertPolygon(vector, square(i++)));
          anchor.InsertPolygon(*polygon, nullptr);
        }
        if (second) continue;
        link(*into_, anchor, newObject(category(OBJECTMODEL, "Lotes"), one.label, one.name));
      }
      if (second) importLabels(*into_);
      exports[second ? 1 : 0] = labelsOf(*into_, second ? "second" : "first", ";");
      fileName = "first";
      if (!second) cross();
    }
    return {exports[0], exports[1]};
  }
  static QByteArray records(const QByteArray& text) {
    return text.mid(text.indexOf("INFO_END") + 9).replace("\nEND", "");
  }

  InfoLayer* into_ = nullptr;
};

TEST_F(Asymmetry, ClassesWithoutSeparatorLoseTheirColours) {
  const auto [first, second] = classes({"Mata"}, nullptr);
  EXPECT_EQ(second, first);
  const GeneralVisual fresh;
  EXPECT_EQ(into_->category()->classes.at(0)->visual.polygon.color, fresh.polygon.color);
}

TEST_F(Asymmetry, LongClassNamesAreCut) {
  const auto [first, second] = classes({QString(31, 'a') + "éb"}, ";");
  const QByteArray cut = QByteArray(31, 'a') + "\xE9";
  EXPECT_TRUE(first.contains(cut + "b\n"));
  EXPECT_EQ(second, QByteArray(first).replace(cut + "b", cut));
}

// The list of classes knows single blanks only, records know all.
TEST_F(Asymmetry, ClassNamesWithRunsOfBlanksBecomeTwoClasses) {
  const auto [first, second] = classes({"Mata  alta"}, ";");
  EXPECT_EQ(records(second), records(first));
  ASSERT_EQ(into_->category()->classes.Size(), 2);
  EXPECT_EQ(into_->category()->classes.at(0)->name, "Mata alta");
  EXPECT_EQ(into_->category()->classes.at(0)->visual.polygon.color, Color(1, 2, 3));
  EXPECT_EQ(into_->category()->classes.at(1)->name, "Mata  alta");
}

TEST_F(Asymmetry, NamesOfObjects) {
  const QString name = QString(40, 'n');
  const auto [first, second] =
      objects({{"L1", "Rua 1,5"}, {"label", "Dois"}, {"L3", ""}, {"L4", name}, {"L5", " a  b "}});
  const auto record = [](int i, const QByteArray& rest) {
    return QByteArray::number(400050 + 1000 * i) + ".000000  ;  7300050.000000 ; " + rest;
  };
  EXPECT_EQ(records(first), record(0, "L1 ; Rua 1,5 ; Lotes\n") + record(1, "Dois ; Dois ; Lotes\n") +
                                record(2, "L3 ;  ; Lotes\n") +
                                record(3, "L4 ; " + QByteArray(40, 'n') + " ; Lotes\n") +
                                record(4, "L5 ; a  b ; Lotes"));
  // A comma between digits is a decimal one, an object has a name, and names have 32 characters.
  EXPECT_EQ(records(second), record(0, "L1 ; Rua 1.5 ; Lotes\n") + record(1, "Dois ; Dois ; Lotes\n") +
                                 record(2, "L3 ; L3 ; Lotes\n") +
                                 record(3, "L4 ; " + QByteArray(32, 'n') + " ; Lotes\n") +
                                 record(4, "L5 ; a  b ; Lotes"));
}

// They are bound before polygons, and label points are written in the order of what was bound.
TEST_F(Asymmetry, LabelsOfLinesComeToStandBeforeThoseOfPolygons) {
  const auto [first, second] = objects({{"L1", "a"}, {"R1", "b", true}, {"L2", "c"}});
  QList<QByteArray> one = records(first).split('\n');
  const QList<QByteArray> other = records(second).split('\n');
  ASSERT_EQ(one.size(), 3);
  EXPECT_TRUE(one[1].contains("R1"));
  one.move(1, 0);
  EXPECT_EQ(other, one);
}

TEST_F(Asymmetry, NumbersOfTablesGetTheirSizesAnew) {
  openEmpty("empty");
  Category* lots = category(OBJECTMODEL, "Lotes");
  const SFieldList columns =
      fieldList({{"P", fieldInteger, 5, 0}, {"V", fieldReal, 12, 2}, {"T", fieldText, 12, 0}});
  ASSERT_EQ(dataBase->createAttributeTable(*lots, columns), 1);
  newObject(lots, "L1", "Um", {"1234567890", "2.50", "1,5 km"});
  QByteArray exports[3];
  for (int i = 0; i < 3; ++i) {
    fileName = QString("t%1").arg(i);
    ASSERT_EQ(handler(nullptr, 0, 0, nullptr, ";")->ExportTable(lots), 1);
    exports[i] = read(fileName);
    if (i == 0) {
      cross();
      lots = category(OBJECTMODEL, "Lotes");
    }
    ASSERT_EQ(handler(nullptr)->ImportAttributes(lots), 1);
  }
  EXPECT_TRUE(
      exports[0].endsWith("P ; INTEGER ; 5 ; 0\nV ; REAL ; 12 ; 2\nT ; TEXT ; 12 ; 0\nINFO_END\n"
                          "L1 ; Um ; 1234567890 ; 2.5 ; 1,5 km\nEND"))
      << exports[0].constData();
  EXPECT_TRUE(
      exports[1].endsWith("P ; INTEGER ; 10 ; 0\nV ; REAL ; 17 ; 8\nT ; TEXT ; 12 ; 0\nINFO_END\n"
                          "L1 ; Um ; 234567890 ; 2.5 ; 1.5 km\nEND"))
      << exports[1].constData();
  EXPECT_EQ(exports[2], exports[1]);
}

TEST_F(Asymmetry, BreakLinesLoseTheirHeights) {
  InfoLayer* const from = mapLayer(DIGITALMODEL);
  delete insertLine(*from->vector(vectorSamples, true), path(0), lineBreak, 0, 9.5f);
  EXPECT_EQ(handler(from)->ExportSample(from->vector(vectorSamples)), 1);
  openEmpty("empty");
  cross();
  Vector* const back = mapLayer(DIGITALMODEL)->vector(vectorSamples, true);
  EXPECT_EQ(handler(back->infoLayer())->ImportLines(back, project->projection()), 1);
  ASSERT_EQ(back->lineCount(), 1);
  EXPECT_EQ(back->FirstLine()->height, 0.0f);
}

TEST_F(Asymmetry, OutlinesAndTriangulationsAreNotRead) {
  InfoLayer* const from = mapLayer(THEMATICMODEL);
  delete insertPolygon(*from->vector(vectorLines, true), square(0));
  EXPECT_EQ(handler(from)->ExportPolygons(from->vector(vectorLines), 0), 1);
  InfoLayer* const relief = layer(DIGITALMODEL, "Relevo");
  Tin tin;
  tin.assign({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}, {{{{0, 1}}}}, {{0, 1, 2}});
  EXPECT_EQ(handler(relief)->ExportTIN(&tin), 1);
  EXPECT_EQ(handler(relief)->ExportTIN3D(&tin), 1);
  EXPECT_EQ(handler(relief)->ImportSamples(relief->vector(vectorSamples, true), project->projection()), 0);
  EXPECT_EQ(handler(from)->ImportLines(from->vector(vectorLines), project->projection()), 0);
  EXPECT_EQ(messages.take(), "");
}

}  // namespace

}  // namespace kaldex::test
