#include "frame/open_handler.h"
#include "support/handler_fixture.h"

namespace kaldex::test {

namespace {

std::vector<double> square(double x, double y, double side = 10) {
  return {x, y, x + side, y, x + side, y + side, x, y + side, x, y};
}

/// Layers of squares, and handlers with label points made here.
class Classification : public HandlerFixture {
 protected:
  std::unique_ptr<OpenHandler> handler(InfoLayer* layer) { return open<OpenHandler>("x", layer); }

  static SExtLabelPoint* add(OpenHandler& handler, double x, double y, short iclass,
                             const QString& label = QString(), const QString& category = "Lotes",
                             short nodes = 0) {
    auto* const point = new SExtLabelPoint;
    point->Coordinate(new Point(x, y));
    point->Iclass = iclass;
    point->Label(label);
    point->Name(label);
    point->Nclass(category);
    point->Nodes = nodes;
    handler.labelPoints.InsertLabel(point);
    return point;
  }

  QStringList rows(InfoLayer& layer) {
    QStringList list;
    const auto records = dataBase->selectRecords(layer.associationTable(), "*", "", "", "");
    for (; !records->atEnd(); records->next()) {
      QStringList row;
      for (int i = 2; i < records->columnCount(); ++i) row << records->text(i);
      list << row.join(',');
    }
    return list;
  }
};

TEST_F(Classification, ClassesAreFoundByNameOrIdentifierAndMadeOnRequest) {
  Category& thematic = *category(THEMATICMODEL, "T");
  const auto in = handler(layer(THEMATICMODEL, "Plano"));
  short addAll = 0;
  EXPECT_EQ(in->CategorizeLabelPoints(&thematic, 0, &addAll), 1) << "no label, no question";
  EXPECT_EQ(messages.take(), "");

  SExtLabelPoint* const mata = add(*in, 1, 1, 0, "Mata");
  messages.answer("Categoria sem classes. Cria e continua ?", false);
  EXPECT_EQ(in->CategorizeLabelPoints(&thematic, 0, &addAll), 0);
  EXPECT_EQ(addAll, 0);
  messages.take();

  const int campo = addClass(thematic, "Campo")->id;
  SExtLabelPoint* const known = add(*in, 2, 2, 0, "Campo");
  messages.answer("Classe não encontrada. Adiciona TODAS", false);
  EXPECT_EQ(in->CategorizeLabelPoints(&thematic, 0, &addAll), 1);
  EXPECT_EQ(messages.take(),
            "Classe não encontrada. Adiciona TODAS as classes não encontradas ?Mata\n" + classesText(1, 0));
  EXPECT_EQ(mata->Iclass, 0);
  EXPECT_EQ(known->Iclass, campo);

  // By identifiers a class that is made stays apart from its label.
  addAll = 1;
  mata->Iclass = 77;
  EXPECT_EQ(in->CategorizeLabelPoints(&thematic, 1, &addAll), 1);
  EXPECT_EQ(mata->Iclass, 0);
  EXPECT_EQ(known->Iclass, campo);
  ASSERT_EQ(thematic.classes.Size(), 2);
  EXPECT_EQ(thematic.classes.at(1)->name, "Mata");
  EXPECT_EQ(thematic.classes.at(1)->position, 2);
  EXPECT_EQ(messages.take(), classesText(1, 1));
  EXPECT_EQ(in->CategorizeLabelPoints(&thematic, 0, &addAll), 1);
  EXPECT_EQ(mata->Iclass, thematic.classes.at(1)->id);
  EXPECT_EQ(messages.take(), "");
}

TEST_F(Classification, LabelsOfClasses) {
  InfoLayer* const into = layer(THEMATICMODEL, "Plano");  // half a millimetre are 12.5 m
  Vector& vector = *into->vector(vectorLines, true);
  const int id = insertPolygon(vector, square(1000, 1000, 100))->id;
  const int freeId = insertLine(vector, {1050, 1050, 1052, 1052})->id;
  const auto in = handler(into);
  add(*in, 1001, 1030, 5);                               // near the boundary: meant for the polygon
  add(*in, 1080, 1010, 6);                               // a second one wins
  add(*in, 1055, 1052, 7);                               // near the free line, in the polygon
  add(*in, 1090, 1090, 0);                               // has no class
  SExtLabelPoint* const lost = add(*in, 5000, 5000, 8);  // nowhere
  EXPECT_EQ(in->Classify(&vector), 1);
  EXPECT_EQ(messages.take(), boundText(3, 2, 1));
  EXPECT_EQ(lost->Iclass, 8);
  EXPECT_EQ(in->labelPoints.at(0)->Iclass, 0);
  const Line* const free = vector.GetLine(freeId);
  EXPECT_EQ(free->classId, 7);
  EXPECT_EQ(free->labelPoint, Point(1055, 1052));
  const SPolygon* const polygon = vector.GetPolygon(id);
  EXPECT_EQ(polygon->classId, 6);
  EXPECT_EQ(polygon->labelPoint, Point(1080, 1010));

  // Only the leftover is still there to be used.
  EXPECT_EQ(in->Classify(&vector), 1);
  EXPECT_EQ(messages.take(), boundText(0, 5, 0));
  EXPECT_EQ(in->Classify(nullptr), 0);
  EXPECT_EQ(messages.take(), "");
}

TEST_F(Classification, TolerancesFollowTheProjection) {
  Project* const degrees = dataBase->createProject("Graus", *latLong());
  InfoLayer* const into = layer(CADASTRALMODEL, "Plano", {-50, -30, -40, -20}, degrees);
  Vector& vector = *into->vector(vectorLines, true);
  SPolygon* const polygon = insertPolygon(vector, square(-45, -23, 0.01));
  polygon->area = 1e-4;
  polygon->perimeter = 0.04;
  polygon->changed = stateChanged;
  delete polygon;
  delete insertLine(vector, {-44.9, -22.9, -44.8, -22.9});
  const auto in = handler(into);
  const double metre = 1 / latLong()->DegreeToMeterMultFactor();
  messages.answer("Categoria objeto inexistente", true);
  add(*in, -44.85, -22.9 + 12 * metre, -999, "near");
  add(*in, -44.85, -22.9 + 13 * metre, -999, "far");
  add(*in, -44.995, -22.995, -999, "lot");
  EXPECT_EQ(in->ClassifyObj(&vector), 1);
  EXPECT_EQ(messages.take(), "Categoria objeto inexistente Cria e continua ?Lotes\n" + boundText(2, 1, 0));
  const double factor = latLong()->DegreeToMeterMultFactor();
  const QStringList table = rows(*into);
  ASSERT_EQ(table.size(), 2);
  const QStringList measures = table[1].split(',');
  const auto sixDigits = [](double value) { return QString("%1").arg(value).toDouble(); };
  EXPECT_EQ(measures[2].toDouble(), sixDigits(1e-4 * factor * factor)) << "square metres";
  EXPECT_EQ(measures[3].toDouble(), sixDigits(0.04 * factor));
}

TEST_F(Classification, ObjectsOfACadastralLayer) {
  InfoLayer* const into = layer(CADASTRALMODEL, "Plano");
  Vector& vector = *into->vector(vectorLines, true);
  const int one = insertPolygon(vector, square(1000, 1000, 100))->id;
  const int two = insertPolygon(vector, square(2000, 1000, 100))->id;
  Line* const free = insertLine(vector, {3000, 3000, 3100, 3000});
  const int freeId = free->id;
  Category& lots = *category(OBJECTMODEL, "Lotes");
  const auto in = handler(into);
  add(*in, 1001, 1050, -999, "A");  // on a boundary
  add(*in, 2050, 1050, -999, "A");  // the same object once more
  add(*in, 1050, 1050, -999, "A");  // and where it is already
  add(*in, 3050, 3001, -999, "B");
  add(*in, 9000, 9000, -999, "C");
  EXPECT_EQ(in->ClassifyObj(&vector), 1);
  EXPECT_EQ(messages.take(), boundText(3, 1, 1));
  KaldexObject object;
  ASSERT_NE(dataBase->findObjectByLabel("A", lots, object), 0);
  EXPECT_EQ(object.name, "A");
  const std::unique_ptr<Anchor> anchor(vector.GetAnchor(dataBase->anchorOfObject(object.id, *into)));
  ASSERT_NE(anchor, nullptr);
  EXPECT_EQ(anchor->polygons, (std::vector<int>{one, two}));
  EXPECT_EQ(anchor->visualId, lots.visual.id);
  ASSERT_NE(dataBase->findObjectByLabel("B", lots, object), 0);
  const std::unique_ptr<Anchor> other(vector.GetAnchor(dataBase->anchorOfObject(object.id, *into)));
  EXPECT_EQ(other->lines, std::vector<int>{freeId});
  EXPECT_EQ(dataBase->findObjectByLabel("C", lots, object), 0);
  EXPECT_EQ(rows(*into).size(), 2);

  // What is known by then is found again: by a new handler, from the stored table.
  const auto again = handler(into);
  add(*again, 1050, 1050, -999, "A");
  EXPECT_EQ(again->ClassifyObj(&vector), 1);
  EXPECT_EQ(messages.take(), boundText(0, 0, 1));
}

// Labels that go back and forth between objects, known and new ones, add to the same anchors and rows.
TEST_F(Classification, ObjectsByTurns) {
  InfoLayer* const into = layer(CADASTRALMODEL, "Plano");
  Vector& vector = *into->vector(vectorLines, true);
  std::vector<int> ids[3];
  for (int i = 0; i < 30; ++i) {
    SPolygon* const polygon = insertPolygon(vector, square(1000 * i, 1000, 100));
    ids[i % 3].push_back(polygon->id);
    polygon->area = 10;
    polygon->perimeter = i;
    polygon->changed = stateChanged;
    delete polygon;
  }
  category(OBJECTMODEL, "Lotes");
  const auto bind = [&](int from, int to) {
    const auto in = handler(into);
    for (int i = from; i < to; ++i) add(*in, 1000 * i + 50, 1050, -999, QString::number(i % 3));
    EXPECT_EQ(in->ClassifyObj(&vector), 1);
  };
  bind(0, 12);
  bind(9, 30);
  EXPECT_EQ(messages.take(), boundText(12, 0, 0) + "\n" + boundText(18, 0, 3));
  const QStringList table = rows(*into);
  ASSERT_EQ(table.size(), 3);
  for (int i = 0; i < 3; ++i) {
    const std::unique_ptr<Anchor> anchor(vector.GetAnchor(i + 1));
    EXPECT_EQ(anchor->polygons, ids[i]);
    EXPECT_EQ(table[i].section(',', 2, 3), QString("100,%1").arg(135 + 10 * i)) << "area and perimeter";
  }
  // A label that ends it all leaves what came before.
  const auto in = handler(into);
  add(*in, 50, 1050, -999, "1");
  add(*in, 1050, 1050, -999, "0");
  add(*in, 2050, 1050, -999, "1");
  add(*in, 3050, 1050, -999, "x", "Unknown");
  messages.answer("Categoria objeto inexistente", false);
  EXPECT_EQ(in->ClassifyObj(&vector), 0);
  EXPECT_EQ(std::unique_ptr<Anchor>(vector.GetAnchor(1))->polygons.size(), 11u);
  EXPECT_EQ(std::unique_ptr<Anchor>(vector.GetAnchor(2))->polygons.size(), 12u);
  EXPECT_EQ(rows(*into)[1].section(',', 2, 2), "120");
}

TEST_F(Classification, NodesAndLinesOfANetwork) {
  InfoLayer* const into = layer(NETWORKMODEL, "Rede");
  Vector& vector = *into->vector(vectorLines, true);
  delete insertLine(vector, {1000, 1000, 1100, 1000});
  insertPolygon(vector, square(2000, 2000, 100));
  category(OBJECTMODEL, "Lotes");
  const auto in = handler(into);
  add(*in, 1000.009, 1000, -999, "no", "Lotes", 1);
  add(*in, 1000.02, 1000, -999, "longe", "Lotes", 1);  // no node within a centimetre
  add(*in, 1050, 1010, -999, "arco");
  add(*in, 2001, 2050, -999, "borda");   // a boundary is a line like any other
  add(*in, 2050, 2050, -999, "dentro");  // polygons take no part
  EXPECT_EQ(in->ClassifyObj(&vector), 1);
  EXPECT_EQ(messages.take(), boundText(3, 2, 0));
  EXPECT_EQ(vector.point2dCount(), 1);
  EXPECT_EQ(rows(*into), (QStringList{"1,2,0,0,0,0", "2,2,0,100,0,0", "3,2,0,400,0,0"}))
      << "anchor, visual, area, perimeter, impedance, demand";
}

TEST_F(Classification, FailuresOfTheBinding) {
  InfoLayer* const into = layer(CADASTRALMODEL, "Plano");
  Vector& vector = *into->vector(vectorLines, true);
  insertPolygon(vector, square(1000, 1000, 100));
  const int second = insertPolygon(vector, square(2000, 1000, 100))->id;
  ProgressRecorder progress;
  EXPECT_EQ(handler(into)->ClassifyObj(nullptr), 0);
  EXPECT_EQ(messages.take(), "Um argumento inválido foi passado!arg : vec");

  messages.answer("Categoria objeto inexistente", false);
  auto in = handler(into);
  add(*in, 1050, 1050, -999, "A");
  EXPECT_EQ(in->ClassifyObj(&vector), 0);
  EXPECT_EQ(messages.take(), "Categoria objeto inexistente Cria e continua ?Lotes");
  EXPECT_EQ(progress.stops.size(), 1u);

  category(OBJECTMODEL, "Lotes");
  EXPECT_EQ(in->ClassifyObj(&vector), 1);
  EXPECT_EQ(messages.take(), boundText(1, 0, 0));
  EXPECT_EQ(progress.stops.size(), 2u);

  const auto spoil = [&](int column, const QString& value) {
    const auto records = dataBase->selectRecords(into->associationTable(), "*", "", "", "");
    records->edit();
    records->setText(column, value);
    EXPECT_EQ(records->post(), 1);
  };
  in = handler(into);
  SExtLabelPoint* const label = add(*in, 2050, 1050, -999, "A");
  const QString visual = rows(*into)[0].section(',', 1, 1);
  spoil(3, "4711");
  EXPECT_EQ(in->ClassifyObj(&vector), 0);
  EXPECT_EQ(messages.take(), "Erro de I/O.Erro ao carregar visual do objeto (âncora)!");
  spoil(3, visual);
  spoil(2, "4711");
  EXPECT_EQ(in->ClassifyObj(&vector), 0);
  EXPECT_EQ(messages.take(), "Erro de I/O.Erro ao carregar âncora!");
  EXPECT_EQ(progress.stops.size(), 2u) << "the bar is left where it was";
  EXPECT_EQ(label->Iclass, -999);

  // A transaction of the caller's takes the objects back.
  spoil(2, "1");
  {
    DBTransactionBlock block(dataBase.get());
    EXPECT_EQ(in->ClassifyObj(&vector), 1);
  }
  const std::unique_ptr<Anchor> anchor(vector.GetAnchor(1));
  EXPECT_EQ(anchor->SelectPolygon(second), 0);
}

}  // namespace

}  // namespace kaldex::test
