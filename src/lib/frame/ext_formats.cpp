#include "base/strings.h"
#include "base/tracer.h"
#include "kaldex/extforma.h"
#include "lib/frame/file_place.h"

inline namespace kaldex_v1 {

SExtFormats::SExtFormats() {
  line[0] = 0;
  line2[0] = 0;
}

SExtFormats::~SExtFormats() {
  // A stream that is still open is left to whoever opened it, and so is its buffer.
  if (file != nullptr) static_cast<void>(streamBuffer_.release());
}

int SExtFormats::Init(const QString& home, int unitCode, const QString& name, Project* currentProject,
                      InfoLayer* layer, DataBase* base, SProjection* fileProjection, short format,
                      const char* fieldSeparator, const Box* dataBox, SDataLayerList* layers) {
  const Tracer tracer(__FILE__, __LINE__, "SExtFormats::Init");
  if (home.isEmpty()) return invalidArgument("pDataHome");
  dataHome = home;
  DataFile(name);
  if (dataFile.isEmpty()) return 0;
  if (layers != nullptr) SetLayerList(layers);
  units = unitCode;
  project = currentProject;
  infoLayer = layer;
  dataBase = base;
  projection = fileProjection;
  coordFormat = format;
  separator[0] = 0;
  SetSeparator(fieldSeparator);
  clearLine();
  line2[0] = 0;
  if (dataBox != nullptr) box = *dataBox;
  return 1;
}

void SExtFormats::DataFile(const QString& name) {
  dataFile = name;
  if (name.isEmpty()) outOfMemory();
}

void SExtFormats::DataHome(const QString& home) {
  dataHome = home;
}

double SExtFormats::Units2Meter() const {
  switch (units) {
    case 1:
      return 1000.0;
    case 2:
      return 12 * 0.0254;
    case 3:
      return 0.0254;
    case 4:
      return 0.017453292519943295;
    case 5:
      return 4.84813681109536e-06;
    case 6:
      return 0.001;
    default:
      return 1.0;
  }
}

void SExtFormats::SetSeparator(const char* text) {
  if (text != nullptr) qstrncpy(separator, text, sizeof separator);
}

void SExtFormats::SetLayerList(SDataLayerList* list) {
  const Tracer tracer(__FILE__, __LINE__, "SExtFormats::SetLayerList");
  if (list == &layerList) return;
  layerList.Kill();
  for (const SDataLayer* layer : *list) layerList.Append(new SDataLayer(*layer));
}

void SExtFormats::GetLayerList(SDataLayerList* list) {
  const Tracer tracer(__FILE__, __LINE__, "SExtFormats::GetLayerList");
  const int count = layerList.Size();  // the list may be the handler's own
  for (int i = 0; i < count; ++i) list->Append(new SDataLayer(*layerList.at(i)));
}

// What a format doesn't offer.

int SExtFormats::LerCabGrade(unsigned*, unsigned*, double*, double*, double*, double*, float*, float*,
                             double*) {
  return 0;
}
int SExtFormats::ImportLines(Vector*, SProjection*) {
  return 0;
}
int SExtFormats::ImportLabelPoints(SProjection*, SProjection*, char*, short*, char*, char*, char*, char*) {
  return 0;
}
int SExtFormats::ImportPoint2d(Vector*, SProjection*) {
  return 0;
}
int SExtFormats::ImportSamples(Vector*, SProjection*) {
  return 0;
}
int SExtFormats::ImportContourout(Vector*, SProjection*) {
  return 0;
}
int SExtFormats::ImportGridReg(Image*, SProjection*) {
  return 0;
}
int SExtFormats::ImportImageThm(Image*) {
  return 0;
}
int SExtFormats::ImportAttributes(Category*) {
  return 0;
}
int SExtFormats::ImportText(EntitieList*, SProjection*, GeneralVisual*) {
  return 0;
}
int SExtFormats::ExportLines(Vector*, short) {
  return 0;
}
int SExtFormats::ExportLabelPoints(Vector*, Category*, short) {
  return 0;
}
int SExtFormats::ExportLabelPointsAuto(Vector*, Category*) {
  return 0;
}
int SExtFormats::ExportLabelPointsSem(Vector*, Category*) {
  return 0;
}
int SExtFormats::ExportLabelPointsMais(Vector*, Category*) {
  return 0;
}
int SExtFormats::ExportLabelPointsTroca(Vector*, Category*, short) {
  return 0;
}
int SExtFormats::ExportPoints(Vector*, Category*, short) {
  return 0;
}
int SExtFormats::ExportPointsAuto(Vector*, Category*) {
  return 0;
}
int SExtFormats::ExportSample(Vector*) {
  return 0;
}
int SExtFormats::ExportGridReg(Image*) {
  return 0;
}
int SExtFormats::ExportGridReg(Image*, short) {
  return 0;
}
int SExtFormats::ExportTable(Category*) {
  return 0;
}
int SExtFormats::ExportContourout(Vector*) {
  return 0;
}
int SExtFormats::ExportText(EntitieList*) {
  return 0;
}
int SExtFormats::ExportPolygons(Vector*, short) {
  return 0;
}
int SExtFormats::ExportTIN(Vector*) {
  return 0;
}
int SExtFormats::ExportTIN3D(Vector*) {
  return 0;
}

}  // namespace kaldex_v1
