#ifndef KALDEX_TESTS_MODEL_FIXTURE_H
#define KALDEX_TESTS_MODEL_FIXTURE_H

#include <QStringList>
#include <initializer_list>
#include <memory>
#include <utility>
#include <vector>

#include "kaldex/model/angle.h"
#include "kaldex/model/database.h"
#include "kaldex/model/projection.h"
#include "kaldex/model/report.h"
#include "kaldex/model/vector.h"
#include "support/folder_fixture.h"

namespace kaldex::test {

/// Records what is shown, and answers questions by their beginning. A question without an answer fails the
/// test.
class RecordingPresenter : public MessagePresenter {
 public:
  struct Shown {
    int kind;
    QString title;
    QString text;
  };

  RecordingPresenter() : previous_(SMessageBox::install(this)) {}
  ~RecordingPresenter() override { SMessageBox::install(previous_); }

  void answer(const QString& beginning, bool yes) { answers_.emplace_back(beginning, yes); }

  /// Drop the answers given so far.
  void forget() { answers_.clear(); }

  int present(int kind, QWidget*, const QString& title, const QString& text) override {
    shown.push_back({kind, title, text});
    if (kind == 0) return 0;
    for (const auto& [beginning, yes] : answers_) {
      if (text.startsWith(beginning)) return yes ? kAnswerYes : kAnswerNo;
    }
    ADD_FAILURE() << "question without an answer: " << text.toStdString();
    return kAnswerNo;
  }

  QStringList texts() const {
    QStringList list;
    for (const Shown& one : shown) list << one.text;
    return list;
  }
  /// All texts so far, one a line; forgets them.
  QString take() {
    const QString text = texts().join(QLatin1Char('\n'));
    shown.clear();
    return text;
  }

  std::vector<Shown> shown;

 private:
  std::vector<std::pair<QString, bool>> answers_;
  MessagePresenter* previous_;
};

/// Records the signals of the process-wide progress reporter; can cancel the operation at a value.
class ProgressRecorder : public QObject {
 public:
  ProgressRecorder() {
    connect(SGError, &SError::defineProgressMaximum, this, [this](int value) { maxima.push_back(value); });
    connect(SGError, &SError::defineProgressValue, this, [this](int value) {
      values.push_back(value);
      if (cancelAt >= 0 && value >= cancelAt) SGError->Cancel();
    });
    connect(SGError, &SError::progressStopped, this, [this](bool finished) { stops.push_back(finished); });
  }

  std::vector<int> maxima;
  std::vector<int> values;
  std::vector<bool> stops;
  int cancelAt = -1;
};

/// UTM zone 23 south; on SAD69, unless told, a datum that is not WGS84.
inline std::unique_ptr<SProjection> utmProjection(const char* datum = "SAD69") {
  ProjectionParameters parameters;
  parameters.type = ProjectionType::utm;
  parameters.name = QString("UTM/") + datum;
  parameters.datum = knownDatum(datum);
  parameters.hemisphere = -1;
  parameters.centralMeridian = Math_Deg_To_Rad(-45.0);
  parameters.falseEasting = 500000.0;
  parameters.falseNorthing = 10000000.0;
  parameters.scale = 0.9996;
  return projectionFromParameters(parameters);
}

inline std::unique_ptr<SProjection> latLongProjection(const char* datum = "WGS84") {
  ProjectionParameters parameters;
  parameters.type = ProjectionType::latLong;
  parameters.name = "LATLONG";
  parameters.datum = knownDatum(datum);
  return projectionFromParameters(parameters);
}

/// A new geographic database in a folder of its own, with one project, and a presenter in place. Layers are
/// made on demand.
class ModelFixture : public FolderFixture {
 protected:
  ModelFixture() {
    QString error;
    dataBase = DataBase::Create(path("base.gpkg"), &error);
    if (dataBase != nullptr) project = dataBase->createProject("Projeto", *utm());
    EXPECT_NE(project, nullptr) << error.toStdString();
  }

  static std::unique_ptr<SProjection> utm() { return utmProjection(); }
  static std::unique_ptr<SProjection> latLong(const char* datum = "WGS84") {
    return latLongProjection(datum);
  }

  /// The category of that model and name, made when it is missing.
  Category* category(short model, const QString& name) {
    if (Category* known = dataBase->categoryList().Select(name)) return known;
    CategoryList fresh(List::Ownership::owns);
    fresh.Append(new Category(-1, name, model, "", 0, nullptr));
    EXPECT_NE(dataBase->storeCategories(fresh), 0);
    return dataBase->categoryList().Select(name);
  }

  /// A new layer with a box that holds everything near the test's coordinates, unless one is given.
  InfoLayer* layer(short model, const QString& name, const Box& box = {0, 0, 1e7, 1e8},
                   Project* of = nullptr) {
    LayerDefinition definition;
    definition.name = name;
    definition.category = category(model, "Categoria " + QString::number(model));
    definition.box = box;
    definition.scale = 25000.0;
    InfoLayer* made = dataBase->createLayer(of != nullptr ? *of : *project, definition);
    EXPECT_NE(made, nullptr);
    return made;
  }

  /// Insert a line of these x, y pairs; the vector's own.
  static Line* insertLine(Vector& vector, const std::vector<double>& xy, char type = linePlain,
                          int classId = 0, float height = 0.0f) {
    auto line = std::make_unique<Line>();
    line->Type(type);
    line->classId = classId;
    line->height = height;
    line->assign(xy.data(), static_cast<int>(xy.size() / 2));
    EXPECT_NE(vector.Insert(*line, 1), 0);
    return line.release();
  }

  /// Insert a polygon bounded by one closed line of these x, y pairs (first and last equal); the vector's
  /// own.
  static SPolygon* insertPolygon(Vector& vector, const std::vector<double>& xy, int classId = 0) {
    Line* boundary = insertLine(vector, xy);
    auto polygon = std::make_unique<SPolygon>();
    polygon->classId = classId;
    polygon->AppendLine(boundary);
    EXPECT_NE(vector.Insert(*polygon), 0);
    boundary->leftPolygon = polygon->id;
    boundary->state = stateChanged;
    boundary->Free(1);
    return polygon.release();
  }

  /// A class in the category's list, as handlers put it there: not stored. Its number is drawn unless given.
  static GeoClass* addClass(Category& to, const QString& name, int id = -1) {
    auto* const fresh = new GeoClass(id, name, to.model, to.name, to.classes.Size() + 1, &to);
    to.classes.Append(fresh);
    return fresh;
  }

  struct Column {
    const char* name;
    short type, size, decimals;
  };
  /// Columns in this order, numbered from 1.
  static SFieldList fieldList(std::initializer_list<Column> columns) {
    SFieldList list;
    for (const Column& one : columns) {
      const auto index = static_cast<short>(list.Size() + 1);
      list.Append(new SField(one.name, one.type, one.size, one.decimals, index));
    }
    return list;
  }

  /// "name:type:size:decimals" of each.
  static QStringList columnsTold(const SFieldList& columns) {
    QStringList told;
    for (const SField* one : columns) {
      told << QString("%1:%2:%3:%4").arg(one->name).arg(one->type).arg(one->size).arg(one->decimals);
    }
    return told;
  }
  QStringList columnsOf(const QString& table) {
    SFieldList columns;
    dataBase->loadTableFields(columns, table);
    return columnsTold(columns);
  }

  /// A new object, with the values of its attributes if there are any.
  KaldexObject newObject(Category* of, const QString& label, const QString& name,
                         const QStringList& values = {}) {
    KaldexObject made;
    EXPECT_NE(dataBase->createObject({of, name, label, STime()}, made), 0);
    if (!values.isEmpty()) setValues(*of, made, values);
    return made;
  }
  void setValues(const Category& of, const KaldexObject& object, const QStringList& values) {
    SCellList cells;
    EXPECT_NE(dataBase->readObjectAttributes(SFieldList(), cells, of.attributeTable, object.id), 0);
    for (int i = 0; i < values.size(); ++i) cells.at(i + 1)->ChangeCell(values[i]);
    EXPECT_NE(dataBase->writeObjectAttributes(SFieldList(), cells, of.attributeTable, object.id), 0);
  }
  std::vector<KaldexObject> objectsOf(Category& category) {
    std::vector<KaldexObject> all;
    KaldexObject object;
    for (int walk = dataBase->firstObject(category, object); walk == objectFound;
         walk = dataBase->nextObject(category, object)) {
      all.push_back(object);
    }
    return all;
  }
  /// The values of the object's attributes, "|" between them.
  QString valuesOf(const Category& category, const KaldexObject& object) {
    SCellList cells;
    dataBase->readObjectAttributes(SFieldList(), cells, category.attributeTable, object.id);
    QStringList values;
    for (int i = 1; i < cells.Size(); ++i) values << cells.at(i)->value();
    return values.join('|');
  }
  /// Insert the anchor into the layer's lines, as that of the object.
  void link(InfoLayer& layer, Anchor& anchor, const KaldexObject& object) {
    EXPECT_NE(layer.vector(vectorLines)->Insert(anchor), 0);
    EXPECT_NE(dataBase->linkAnchor(layer, anchor, object), 0);
  }

  RecordingPresenter messages;
  std::unique_ptr<DataBase> dataBase;
  Project* project = nullptr;
};

}  // namespace kaldex::test

#endif
