#include "docs/ascii_examples.h"

#include "kaldex/model/text.h"
#include "kaldex/model/tin.h"

namespace kaldex::test {

namespace {

const std::vector<double> kSquare = {500000,  7400000, 500100,  7400000, 500100,
                                     7400050, 500000,  7400050, 500000,  7400000};
const std::vector<double> kPath = {500200, 7400000, 500250.5, 7400020.25, 500300, 7400000};

QString withoutEnds(QString text) {
  if (text.startsWith('\n')) text.remove(0, 1);
  if (text.endsWith('\n')) text.chop(1);
  return text;
}

}  // namespace

AsciiExamples::AsciiExamples() {
  project = dataBase->createProject("Vale", *utm());
}

QMap<QString, QString> AsciiExamples::examples() {
  makeLines();
  makeThematic();
  makeCadastral();
  makeNetwork();
  makeNumeric();
  makeTables();
  makeTexts();
  EXPECT_EQ(messages.take(), "");
  return made_;
}

InfoLayer* AsciiExamples::exampleLayer(short model, const QString& name) {
  InfoLayer* const made = layer(model, name, {499000, 7399000, 501000, 7401000}, project);
  Category& its = *made->category();
  if (model != THEMATICMODEL || its.classes.Size() > 0) return made;
  for (const char* const one : {"Mata", "Água"}) {
    auto* const fresh = new GeoClass(-1, one, model, its.name, its.classes.Size() + 1, &its);
    fresh->visual.SetPolygonColor(0, 128, 0);
    fresh->visual.SetPointColor(255, 0, 7);
    its.classes.Append(fresh);
  }
  EXPECT_NE(dataBase->storeCategories(dataBase->categoryList()), 0);
  return made;
}

void AsciiExamples::keep(const QString& name, Header header) {
  QString text = withoutEnds(QString::fromLatin1(read(fileName)));
  int at = 0;
  while (header != Header::whole && (at = text.indexOf("//Arquivo ASCII", at)) >= 0) {
    int end = text.indexOf(header == Header::hidden ? "\nSCALE" : "\nOFFSETX", at) + 1;
    end = text.indexOf('\n', end);
    text.replace(at, end - at, "...");
  }
  made_.insert(name, text);
}

template <class Export>
void AsciiExamples::make(const QString& name, InfoLayer* layer, Export run, const char* separator,
                         short format) {
  if (!fileName.startsWith(name + '_')) fileName = name + ".txt";
  QFile::remove(path(fileName));
  const auto out = handler(layer, format, 0, nullptr, separator);
  out->DataHome(folder() + '/');
  EXPECT_EQ(run(*out), 1) << name.toStdString();
  keep(name, name == "lines"                  ? Header::whole
             : format != 0 && name != "turns" ? Header::fromBox
                                              : Header::hidden);
}

void AsciiExamples::makeLines() {
  InfoLayer* const layer = exampleLayer(THEMATICMODEL, "Trilhas");
  Vector* const vector = layer->vector(vectorLines, true);
  delete insertLine(*vector, kPath);
  const auto run = [&](IEAsc& out) { return out.ExportLines(vector, 0); };
  make("lines", layer, run);
  make("lines-gms", layer, run, nullptr, 1);
  make("lines-deg", layer, run, nullptr, 2);
  make("lines-seg", layer, run, nullptr, 3);
}

void AsciiExamples::makeThematic() {
  InfoLayer* const layer = exampleLayer(THEMATICMODEL, "Uso");
  Vector* const vector = layer->vector(vectorLines, true);
  Category* const its = layer->category();
  const int forest = its->classes.at(0)->id;
  std::unique_ptr<SPolygon> polygon(insertPolygon(*vector, kSquare, forest));
  polygon->UpdateArea();
  polygon->UpdatePerimeter();
  polygon->changed = stateChanged;
  polygon.reset();
  delete insertLine(*vector, kPath, linePlain, its->classes.at(1)->id);
  for (const int classId : {forest, 0}) {
    Point2d point(500010 + 10 * classId, 7400200);
    point.classId = classId;
    ASSERT_NE(vector->Insert(point), 0);
  }
  make("polygons", layer, [&](IEAsc& out) { return out.ExportPolygons(vector, 0); });
  const auto labels = [&](IEAsc& out) { return out.ExportLabelPoints(vector, its, 0); };
  make("labels-of-classes", layer, labels, ";");
  make("labels-of-classes-by-keywords", layer, labels);
  const auto points = [&](IEAsc& out) { return out.ExportPoints(vector, its, 0); };
  make("points-of-classes", layer, points, ";");
  make("points-of-classes-by-keywords", layer, points);
  fileName = "center_CEN.kdx";
  make(
      "center", layer, [&](IEAsc& out) { return out.ExportLabelPointsAuto(vector, its); }, ";");
  fileName = "swapped_CADLAB.typ";
  make(
      "swapped", layer, [&](IEAsc& out) { return out.ExportLabelPointsTroca(vector, its, 0); }, ";");
  fileName = "swapped_CADTAB.kdx";
  keep("swapped-table");
}

void AsciiExamples::addObject(InfoLayer& layer, Anchor anchor, const QString& name, const QString& label,
                              Category* of) {
  KaldexObject object;
  ASSERT_NE(dataBase->createObject({of, name, label, STime()}, object), 0);
  ASSERT_NE(layer.vector(vectorLines)->Insert(anchor), 0);
  ASSERT_NE(dataBase->linkAnchor(layer, anchor, object), 0);
}

void AsciiExamples::makeCadastral() {
  InfoLayer* const layer = exampleLayer(CADASTRALMODEL, "Cadastro");
  Vector* const vector = layer->vector(vectorLines, true);
  Category* const its = layer->category();
  std::unique_ptr<SPolygon> polygon(insertPolygon(*vector, kSquare));
  std::unique_ptr<Line> line(insertLine(*vector, kPath));
  Point2d post(500010, 7400200), stray(500020, 7400200);
  ASSERT_NE(vector->Insert(post), 0);
  ASSERT_NE(vector->Insert(stray), 0);
  Anchor lot, path, light;
  lot.InsertPolygon(*polygon, nullptr);
  path.InsertLine(nullptr, *line);
  light.InsertPoint(post);
  polygon.reset();
  line.reset();
  addObject(*layer, lot, "Sítio da Serra", "L1", lots());
  addObject(*layer, path, "Trilha", "L2", lots());
  addObject(*layer, light, "Poste", "L3", lots());
  const auto labels = [&](IEAsc& out) { return out.ExportLabelPoints(vector, its, 0); };
  make("labels-of-objects", layer, labels, ";");
  make("labels-of-objects-by-keywords", layer, labels);
  const auto points = [&](IEAsc& out) { return out.ExportPoints(vector, its, 0); };
  make("points-of-objects", layer, points, ";");
  make("points-of-objects-by-keywords", layer, points);
}

void AsciiExamples::makeNetwork() {
  InfoLayer* const layer = exampleLayer(NETWORKMODEL, "Ruas");
  Vector* const vector = layer->vector(vectorLines, true);
  std::unique_ptr<Line> first(insertLine(*vector, kPath));
  first->impedancePositive = 1.5f;
  first->impedanceNegative = -1.0f;
  first->demand = 20.0f;
  first->state = stateChanged;
  delete insertLine(*vector, {500300, 7400000, 500400, 7400000});
  Point2d node(500300, 7400000);
  ASSERT_NE(vector->Insert(node), 0);
  Anchor street, crossing;
  street.InsertLine(nullptr, *first);
  crossing.InsertPoint(node);
  first.reset();
  Category* const streets = category(OBJECTMODEL, "Vias");
  addObject(*layer, street, "Rua Direita", "R1", streets);
  addObject(*layer, crossing, "Largo", "N1", streets);
  RestrictionList turns((layer->directory + "/" + layer->fileName + ".turn").toStdString());
  turns.Append(new Restriction(1, 2));
  ASSERT_EQ(turns.Save(), 1);
  make(
      "network", layer, [&](IEAsc& out) { return out.ExportLines(vector, 0); }, ";");
  const auto labels = [&](IEAsc& out) { return out.ExportLabelPoints(vector, layer->category(), 0); };
  make("network-objects", layer, labels, ";");
  make(
      "turns", layer, [&](IEAsc& out) { return out.ExportTurns(vector); }, nullptr, 1);
}

void AsciiExamples::makeNumeric() {
  InfoLayer* const layer = exampleLayer(DIGITALMODEL, "Relevo");
  Vector* const samples = layer->vector(vectorSamples, true);
  for (const double x : {500000, 500100}) {
    Point3d point(x, 7400000, 612.5f);
    ASSERT_NE(samples->Insert(point, 0), 0);
  }
  delete insertLine(*samples, kPath, linePlain, 0, 620.0f);
  delete insertLine(*samples, {500000, 7400100, 500100, 7400100}, lineBreak);
  make("samples", layer, [&](IEAsc& out) { return out.ExportSample(samples); });
  Vector* const contours = layer->vector(vectorContours, true);
  delete insertLine(*contours, kPath, lineMaster, 0, 600.0f);
  make("contours", layer, [&](IEAsc& out) { return out.ExportContourout(contours); });
  Tin tin;
  tin.assign({{500000, 7400000, 600}, {500100, 7400000, 610}, {500000, 7400100, 620.5f}},
             {{{{0, 1}}}, {{{1, 2}}}, {{{2, 0}}}}, {{0, 1, 2}});
  make("tin", layer, [&](IEAsc& out) { return out.ExportTIN(&tin); });
  make("tin3d", layer, [&](IEAsc& out) { return out.ExportTIN3D(&tin); });
}

void AsciiExamples::makeTables() {
  Category* const objects = lots();
  SFieldList columns;
  columns.Append(new SField("MORADORES", fieldInteger, 10, 0, 1, objects->attributeTable));
  columns.Append(new SField("VALOR", fieldReal, 17, 8, 2, objects->attributeTable));
  columns.Append(new SField("VISTORIA", fieldDate, 8, 0, 3, objects->attributeTable));
  columns.Append(new SField("RUA", fieldText, 40, 0, 4, objects->attributeTable));
  ASSERT_EQ(dataBase->createAttributeTable(*objects, columns), 1);
  KaldexObject lot;
  ASSERT_NE(dataBase->findObjectByLabel("L1", *objects, lot), 0);
  SFieldList stored;
  dataBase->loadTableFields(stored, objects->attributeTable);
  SCellList cells;
  dataBase->readObjectAttributes(stored, cells, objects->attributeTable, lot.id);
  const char* const values[] = {"4", "1250.5", "20010312", "Rua das Águas"};
  for (int i = 0; i < 4; ++i) cells.at(i + 1)->ChangeCell(values[i]);
  ASSERT_NE(dataBase->writeObjectAttributes(stored, cells, objects->attributeTable, lot.id), 0);
  make(
      "table", nullptr, [&](IEAsc& out) { return out.ExportTable(objects); }, ";");

  Category* const plain = category(NOTSPACIALMODEL, "Bairros");
  SFieldList fields;
  fields.Append(new SField("SIGLA", fieldText, 5, 0, 0, plain->attributeTable));
  fields.Append(new SField("POPULACAO", fieldInteger, 10, 0, 1, plain->attributeTable));
  ASSERT_EQ(dataBase->createTable(plain->attributeTable, fields), 1);
  for (SField* const field : fields) {
    const QString value = field->type == fieldText ? "CEN" : "12000";
    auto* const cell = new SCell(field->table, field->type, value);
    cell->setModify(cellInserted);
    field->cells.Append(cell);
  }
  ASSERT_EQ(dataBase->finishColumns(fields), 1);
  make(
      "table-without-places", nullptr, [&](IEAsc& out) { return out.ExportTable(plain); }, ";");
}

void AsciiExamples::makeTexts() {
  InfoLayer* const layer = exampleLayer(THEMATICMODEL, "Nomes");
  layer->makeText()->visual.text.height = 3.0f;
  EntitieList texts;
  for (const short own : {0, 1}) {
    auto text = std::make_unique<EText>();
    text->Position(Point(500000, 7400000 + 50 * own));
    text->String(own == 0 ? "Córrego" : "Serra");
    text->Own(own);
    text->Angle(30.0f);
    text->Height(75.0f);
    const Color green(0, 128, 0);
    text->SetColor(&green);
    texts.Append(text.release());
  }
  make("texts", layer, [&](IEAsc& out) { return out.ExportText(&texts); });
}

}  // namespace kaldex::test
