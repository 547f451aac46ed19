#include "lib/ascii/header_file.h"

#include <QObject>
#include <memory>
#include <string>
#include <vector>

#include "base/number_text.h"
#include "base/tracer.h"
#include "kaldex/ascii.h"
#include "kaldex/model/angle.h"
#include "kaldex/model/database.h"
#include "kaldex/model/projection.h"
#include "lib/ascii/header_pattern.h"
#include "lib/ascii/record_text.h"

namespace kaldex {

HeaderFile::HeaderFile(const QString& path) : file_(path) {
  if (!file_.open(QIODevice::ReadOnly)) return;
  const qint64 size = file_.size();
  const uchar* const bytes = size > 0 ? file_.map(0, size) : nullptr;
  if (bytes != nullptr) text_ = {reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(size)};
}

bool HeaderFile::hasInOrder(std::string_view first, std::string_view second) const {
  const std::size_t at = text_.find(first);
  return at != std::string_view::npos && text_.find(second, at + first.size() + 1) != std::string_view::npos;
}

}  // namespace kaldex

inline namespace kaldex_v1 {

namespace {

using kaldex::HeaderFile;
using kaldex::HeaderPattern;

double real(const std::string& text) {
  std::size_t used = 0;
  const double value = kaldex::textToReal(text, &used);
  return used == text.size() ? value : 0.0;
}

QString latin1(const std::string& text) {
  return QString::fromLatin1(text.data(), static_cast<int>(text.size()));
}

double angle(const std::string& text, short kind) {
  short degrees = 0;
  short minutes = 0;
  double seconds = 0.0;
  return Decode(latin1(text), kind, degrees, minutes, seconds);
}

Box planeBox(const HeaderFile& file) {
  const HeaderPattern pattern({"BOX\t", ",~", ",~", ",~", "\nUNITS"});
  const std::vector<std::string> values = pattern.match(file.text());
  return {real(values[0]), real(values[1]), real(values[2]), real(values[3])};
}

Box angularBox(const HeaderFile& file, bool& planar) {
  const HeaderPattern pattern({"BOX\tX1~", ",~Y1~", ",~X2~", ",~Y2~", "\nUNITS"});
  const std::vector<std::string> values = pattern.match(file.text());
  const bool degrees = file.hasInOrder("UNITS", "DEG");
  const bool seconds = !degrees && file.hasInOrder("UNITS", "SEG");
  const bool texts = !degrees && !seconds && file.hasInOrder("UNITS", "GMS");
  planar = !degrees && !seconds && !texts;
  if (planar) return {};
  const auto radians = [&](std::size_t i, short kind) {
    if (texts) return angle(values[i], kind);
    const double value = seconds ? real(values[i]) / 3600 : real(values[i]);
    return value / 180 * kPi;
  };
  return {radians(0, kLongitudeKind), radians(1, kLatitudeKind), radians(2, kLongitudeKind),
          radians(3, kLatitudeKind)};
}

// The type by the first of these words that a projection's name holds.
short projectionType(const QString& name) {
  static const struct {
    const char* word;
    short type;
  } words[] = {{"UTM", ProjectionType::utm},
               {"MERCATOR", ProjectionType::mercator},
               {"GAUSS", ProjectionType::gaussTm},
               {"MILLION", ProjectionType::lambertMillion},
               {"LAMBERT", ProjectionType::lambert},
               {"POLYCONIC", ProjectionType::polyconic},
               {"CYLINDRICAL", ProjectionType::cylindrical},
               {"STEREOGRAPHIC", ProjectionType::stereographic},
               {"BIPOLAR", ProjectionType::bipolar},
               {"ALBERS", ProjectionType::albers},
               {"MILLER", ProjectionType::miller},
               {"LATLONG", ProjectionType::latLong},
               {"SINUSOIDAL", ProjectionType::sinusoidal}};
  for (const auto& entry : words) {
    if (name.contains(QLatin1String(entry.word))) return entry.type;
  }
  return ProjectionType::none;
}

Datum datumOf(const std::vector<std::string>& values) {
  return {0,
          latin1(values[0]),
          real(values[1]),
          real(values[2]),
          static_cast<float>(real(values[3])),
          static_cast<float>(real(values[4])),
          static_cast<float>(real(values[5])),
          true};
}

std::unique_ptr<SProjection> projectionOf(const HeaderFile& file) {
  const std::vector<std::string> values = HeaderPattern({"PROJECTION~", ",~HEMIS~", ",~ORIG?LAT~",
                                                         ",~ORIG?LONG~", ",~LAT1~", ",~LAT2~", "\nDATUM"})
                                              .match(file.text());
  const Datum datum = datumOf(HeaderPattern({"DATUM\t", ",~Prd~", ",~Pflt~", ",~Pdx~", ",~Pdy~", ",~Pdz~"},
                                            HeaderPattern::Tail::number)
                                  .match(file.text()));
  const std::vector<std::string> offsets =
      HeaderPattern({"OFFSETX~~", "~~~OFFSETY~~", "~~~SCALEFACTOR~~"}, HeaderPattern::Tail::number)
          .match(file.text());

  const QString name = latin1(values[0]);
  std::unique_ptr<SProjection> projection(GetNewInstance(projectionType(name)));
  projection->Init(projectionType(name), name, datum);
  if (auto* const general = dynamic_cast<GeneralProjection*>(projection.get())) {
    general->Init(&datum, static_cast<short>(latin1(values[1]).toInt()), angle(values[2], kLatitudeKind),
                  angle(values[3], kLongitudeKind), angle(values[4], kLatitudeKind),
                  angle(values[5], kLatitudeKind), real(offsets[0]), real(offsets[1]), real(offsets[2]));
  }
  return projection;
}

}  // namespace

Box IEAsc::GetBox(const QString& path, bool& planar) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::GetBox");
  Box box;
  shielded([&] {
    const HeaderFile file(path);
    if (!file.has("BOX")) return;
    if (file.has("BOX\tX1")) {
      box = angularBox(file, planar);
    } else {
      box = planeBox(file);
      planar = !file.hasInOrder("UNITS", "DEG");
    }
  });
  return box;
}

SProjection* IEAsc::GetProjection(const QString& path) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::GetProjection");
  std::unique_ptr<SProjection> projection;
  shielded([&] {
    const HeaderFile file(path);
    for (const char* word : {"PROJECTION", "DATUM", "HEMIS", "Prd"}) {
      if (!file.has(word)) return;
    }
    projection = projectionOf(file);
  });
  return projection.release();
}

}  // namespace kaldex_v1
