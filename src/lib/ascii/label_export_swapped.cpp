#include <sys/stat.h>

#include <QFile>
#include <QObject>
#include <memory>

#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "lib/ascii/label_export.h"

inline namespace kaldex_v1 {

namespace {

constexpr int kBaseCapacity = 70;
constexpr char kLabelEnding[] = "_CADLAB.typ";
constexpr char kTableEnding[] = "_CADTAB.kdx";

struct CloseFile {
  void operator()(FILE* file) const { std::fclose(file); }
};

}  // namespace

/// Classes as objects with a table of their names, or names of objects as classes.
class IEAsc::LabelExport::Swapped : public LabelExport {
 public:
  using LabelExport::LabelExport;

  int run(bool onlyUsed);

 private:
  void writeHeader();
  bool openTable();
  void writeTableHeader();
  void writeClassesAsObjects();
  void writeClassAsObject(const Point& place, const GeoClass& geoClass);
  void writeObjectsAsClasses();
  void writeObjectAsClass(const Point& place, const Identity& identity);
  bool mayWrite();
  int finishAll(bool complete);

  QByteArray base_;
  QString tablePath_;
  std::unique_ptr<FILE, CloseFile> tableFile_;
  std::unique_ptr<kaldex::TextOutput> table_;
  kaldex::Latin1Loss tableLoss_;
  int key_ = 0;
  bool refused_ = false;
};

int IEAsc::LabelExport::Swapped::run(bool onlyUsed) {
  writeHeader();
  if (isThematic()) {
    chooseClasses(onlyUsed, false);
    if (!openTable()) return finishAll(false);
    writeTableHeader();
    writeClassesAsObjects();
  } else {
    writeObjectsAsClasses();
  }
  return finishAll(!refused_ && !progress_.cancelled());
}

void IEAsc::LabelExport::Swapped::writeHeader() {
  writer_.begin("POINTS", QObject::tr("//Identificadores dos Polígonos e das Linhas Classificadas"));
  if (isSeparated()) {
    writeSeparator();
    writeFormat(isThematic() ? "//Formato coordx %s coordy %s label %s name %s category_obj (PI_O)"
                             : "//Formato coordx %s coordy %s class_name (obj_name)");
  }
  writer_.endHeader();
}

bool IEAsc::LabelExport::Swapped::openTable() {
  base_ = baseName(kBaseCapacity) + "_O";
  // Under another name the table would take the place of the file that is being written.
  if (!handler_.dataFile.contains(QLatin1String(kLabelEnding))) return invalidArgument("dataFile") != 0;
  tablePath_ = QStringLiteral("%1%2").arg(handler_.dataHome, handler_.dataFile);
  tablePath_.replace(QLatin1String(kLabelEnding), QLatin1String(kTableEnding));
  const QByteArray name = QFile::encodeName(tablePath_);
  struct stat status {};
  if (stat(name.constData(), &status) == 0) {
    if (!ask(QObject::tr("Arquivo já existe. Sobrepor?") + tablePath_)) return false;
    QFile::remove(tablePath_);
  }
  tableFile_.reset(std::fopen(name.constData(), "a+"));
  if (tableFile_ == nullptr) return false;
  table_ = std::make_unique<kaldex::TextOutput>(tableFile_.get());
  return true;
}

void IEAsc::LabelExport::Swapped::writeTableHeader() {
  table_->append(
      "\nTABLE\nINFO\n//Tabela de Atributos ASCII gerada pelo Sistema KALDEX\nSEPARATOR ;\nUNFORMATED"
      "\nCATEGORY_OBJ   ");
  table_->append(base_);
  table_->append("\nT_KEY ; TEXT ; 32 ; 0\nKDXCLASSE ; TEXT ; 70 ; 0\nINFO_END");
}

void IEAsc::LabelExport::Swapped::writeClassesAsObjects() {
  visitPolygons([this](SPolygon& polygon) {
    const GeoClass* const geoClass = chosenClass(polygon.classId);
    if (geoClass == nullptr || refused_) return;
    ++polygonsRead_;
    Point place;
    if (labelOf(polygon, place)) {
      writeClassAsObject(place, *geoClass);
    } else {
      ++withoutPlace_;
    }
  });
  visitLines([this](Line& line) {
    const GeoClass* const geoClass = chosenClass(line.classId);
    if (geoClass == nullptr || refused_) return;
    ++linesRead_;
    writeClassAsObject(labelOf(line), *geoClass);
  });
}

bool IEAsc::LabelExport::Swapped::mayWrite() {
  if (!refused_ && !isSeparated()) refused_ = !needsSeparator();
  return !refused_;
}

void IEAsc::LabelExport::Swapped::writeClassAsObject(const Point& place, const GeoClass& geoClass) {
  if (!mayWrite()) return;
  constexpr int width = 8;
  const QByteArray key = QByteArray::number(++key_).rightJustified(width, '0');
  writePlace(place);
  writeField(key);
  // An empty name: the table has it.
  writeField(QByteArray());
  writer_.out().append("   ");
  writeField(base_);
  table_->append('\n');
  table_->append(key);
  table_->append(' ');
  table_->append(handler_.separator);
  table_->append(' ');
  table_->append(kaldex::toLatin1(geoClass.name, &tableLoss_));
}

void IEAsc::LabelExport::Swapped::writeObjectsAsClasses() {
  visitAnchors([this](const Anchor& anchor, const Identity& identity) {
    visitPolygons(anchor, [&](SPolygon& polygon) {
      if (refused_) return;
      ++polygonsRead_;
      Point place;
      if (labelOf(polygon, place)) {
        writeObjectAsClass(place, identity);
      } else {
        ++withoutPlace_;
      }
    });
    visitLines(anchor, [&](Line& line) {
      if (refused_) return;
      ++linesRead_;
      writeObjectAsClass(labelOf(line), identity);
    });
  });
}

void IEAsc::LabelExport::Swapped::writeObjectAsClass(const Point& place, const Identity& identity) {
  if (!mayWrite()) return;
  writePlace(place);
  writeField(identity.name);
}

int IEAsc::LabelExport::Swapped::finishAll(bool complete) {
  bool stored = true;
  if (table_ != nullptr) {
    if (complete) table_->append("\nEND");
    stored = table_->flush();
    stored = std::fclose(tableFile_.release()) == 0 && stored;
  }
  const int finished = writer_.finish(complete && stored);
  // The data file has told of its own trouble.
  if (!stored) return writer_.ok() ? ioError() : 0;
  JobReport* const job = JobReport::current();
  if (finished == 0 || job == nullptr || table_ == nullptr) return finished;
  job->files.append(tablePath_);
  if (tableLoss_.count() > 0) {
    job->note(QObject::tr("Caracteres que não existem em Latin-1 foram gravados como \"?\": %1")
                  .arg(tableLoss_.characters().join(QLatin1Char(' '))));
  }
  return finished;
}

int IEAsc::ExportLabelPointsTroca(Vector* vec, Category* category, short onlyUsedClasses) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::ExportLabelPointsTroca");
  return LabelExport::run<LabelExport::Swapped>(
      *this, vec, category, [&](LabelExport::Swapped& work) { return work.run(onlyUsedClasses != 0); });
}

}  // namespace kaldex_v1
