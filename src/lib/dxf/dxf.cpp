#include "kaldex/dxf.h"

#include <cstring>
#include <string>

#include "base/number_text.h"
#include "base/strings.h"
#include "base/text_output.h"
#include "base/tracer.h"
#include "kaldex/model/line.h"
#include "lib/dxf/drawing_output.h"
#include "lib/dxf/drawing_reader.h"
#include "lib/dxf/layer_selection.h"

inline namespace kaldex_v1 {

namespace {

constexpr std::size_t kLongestLayer = 150;
constexpr char kForbidden[] = "!@#$%&*()+=|{}[];:\"'<>,.?/\\";

char* duplicate(const char* text) {
  return ::strdup(text);
}

std::string writableName(const char* name) {
  std::string text = std::string(name).substr(0, kLongestLayer);
  RemoveBlanks(text.data());
  text.resize(std::strlen(text.c_str()));
  for (char& character : text) {
    if (std::strchr(kForbidden, character) != nullptr) character = '_';
  }
  return text;
}

}  // namespace

IEDXF::IEDXF() : reader_(std::make_unique<kaldex::DrawingReader>()) {}
IEDXF::~IEDXF() = default;

// --- Pairs and sections ---

bool IEDXF::openDrawing() {
  reader_->restart();
  return openFile("r");
}

bool IEDXF::next() {
  return reader_->next(file);
}

int IEDXF::ReadLine() {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::ReadLine");
  const bool found = next();
  setLine(std::string(reader_->value()).c_str());
  return found ? 1 : 0;
}

int IEDXF::NextSection() {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::NextSection");
  const bool found = reader_->nextSection(file);
  setLine(std::string(reader_->value()).c_str());
  return found ? 1 : 0;
}

int IEDXF::SearchSection(short kind) {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::SearchSection");
  const bool found = reader_->searchSection(file, static_cast<kaldex::DrawingReader::Section>(kind));
  setLine(std::string(reader_->value()).c_str());
  return found ? 1 : 0;
}

char IEDXF::currentSection() const {
  return reader_->section();
}

int IEDXF::groupCode() const {
  return reader_->code();
}

long IEDXF::lineCount() const {
  return reader_->lines();
}

int IEDXF::badLine() {
  return inconsistent(QStringLiteral("%1 - linha %2").arg(dataFile, QString::number(reader_->lines())));
}

// --- Layer and transformation ---

void IEDXF::SetLayerName(const char* name) {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::SetLayerName");
  IEDlayer.reset();
  chosenLayer_.reset();
  if (name == nullptr) {
    IEDlayerok.reset();
    return;
  }
  const bool isDefault = std::strcmp(name, kaldex::kDefaultLayerShown) == 0;
  const char* const layer = isDefault ? kaldex::kDefaultLayer : name;
  IEDlayer.reset(duplicate(layer));
  chosenLayer_.reset(duplicate(layer));
  if (IEDlayer == nullptr || chosenLayer_ == nullptr) {
    outOfMemory(isDefault ? "IEDlayer = strdup" : "IEDlayer = strdup (LayerName)");
    return;
  }
  IEDlayerok.reset(duplicate(writableName(name).c_str()));
  if (IEDlayerok == nullptr) outOfMemory("IEDlayerok = strdup (LayerNameok)");
}

QStringList IEDXF::chosenNames() const {
  QStringList names;
  if (chosenLayer_ != nullptr) names << QString::fromLatin1(chosenLayer_.get());
  for (const SDataLayer* layer : layerList) names << kaldex::realLayer(layer->Label());
  return names;
}

void IEDXF::holdLayer(const char* name) {
  IEDlayer.reset(duplicate(name));
  if (IEDlayer == nullptr) outOfMemory("IEDlayer = strdup");
}

void IEDXF::SetTransf(double tx, double ty, double angle, double scale) {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::SetTransf");
  transform.Identity();
  transform.Rotation(angle);
  transform.Scale(scale, scale);
  transform.Translation(tx, ty);
}

void IEDXF::TransfDxf(Point& point) const {
  if ((units >= 0 && units <= 3) || units == 6) transform.Do(point, point);
}

// --- Pieces of output ---

int IEDXF::print(const std::function<void(kaldex::DrawingOutput&)>& write) {
  if (file == nullptr) return 0;
  kaldex::TextOutput text(file);
  kaldex::DrawingOutput out(text, IEDlayerok.get());
  write(out);
  return text.flush() ? 1 : 0;
}

int IEDXF::PrintDefaultHeader(short layers) {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::PrintDefaultHeader");
  return print([&](kaldex::DrawingOutput& out) { out.header(infoLayer, coordFormat, layers); });
}

int IEDXF::PrintEOF() {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::PrintEOF");
  return print([](kaldex::DrawingOutput& out) { out.end(); });
}

int IEDXF::PrintPoint2d(const Point* point, const char* format) {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::PrintPoint2d");
  if (point == nullptr) return 0;
  return print([&](kaldex::DrawingOutput& out) {
    out.setDecimals(kaldex::decimalsOf(format));
    out.point(point->x, point->y);
  });
}

int IEDXF::PrintPoint3d(const Point3d* point, const char* format) {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::PrintPoint3d");
  if (point == nullptr) return 0;
  return print([&](kaldex::DrawingOutput& out) {
    out.setDecimals(kaldex::decimalsOf(format));
    out.sample(point->x, point->y, point->z);
  });
}

int IEDXF::PrintPolyline(const Line* line, const char* format, const char* suffix) {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::PrintPolyline");
  if (line == nullptr) return 0;
  return print([&](kaldex::DrawingOutput& out) {
    out.setDecimals(kaldex::decimalsOf(format));
    out.polyline(line->coordinates(), line->Size(), line->height, suffix);
  });
}

}  // namespace kaldex_v1
