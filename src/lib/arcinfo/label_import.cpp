#include <QObject>
#include <memory>
#include <unordered_set>

#include "base/number_text.h"
#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/model/catalog.h"
#include "lib/arcinfo/ungenerate_reader.h"
#include "lib/arcinfo/ungenerate_record.h"
#include "lib/ascii/record_text.h"

inline namespace kaldex_v1 {

/// Reads a file of points into the handler's label points.
class IEArcInfo::LabelImport : private IEArcInfo::Reader {
 public:
  LabelImport(IEArcInfo& handler, SProjection* target);
  ~LabelImport();

  int run();

 private:
  static constexpr int kBytesPerRecord = 40;

  bool take(const kaldex::PointRecord& record);
  short classOf(std::string_view identifier) const;

  std::unordered_set<long> classes_;
  long long read_ = 0;
  long long withoutClass_ = 0;
};

IEArcInfo::LabelImport::LabelImport(IEArcInfo& handler, SProjection* target)
    : Reader(handler, target, kBytesPerRecord) {
  if (handler.infoLayer == nullptr || handler.infoLayer->category() == nullptr) return;
  for (const GeoClass* geoClass : handler.infoLayer->category()->classes) classes_.insert(geoClass->id);
}

IEArcInfo::LabelImport::~LabelImport() {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  if (read_ > 0) job->countRead("labels", read_);
  if (withoutClass_ > 0) {
    job->note(
        QObject::tr("Identificadores que não são de classes da categoria do plano: %1").arg(withoutClass_));
  }
}

int IEArcInfo::LabelImport::run() {
  if (!nextLine()) return 0;
  if (!kaldex::startsLikeNumber(handler_.line)) return handler_.inconsistent(handler_.line);
  kaldex::PointRecord record;
  for (;;) {
    const kaldex::PointResult result = kaldex::parsePointRecord(handler_.lineText(), 2, record);
    if (result == kaldex::PointResult::malformed) return handler_.inconsistent(handler_.line);
    if (result == kaldex::PointResult::end) return finish();
    if (!take(record) || !nextLine()) return 0;
  }
}

bool IEArcInfo::LabelImport::take(const kaldex::PointRecord& record) {
  auto label = std::make_unique<SExtLabelPoint>();
  auto place = std::make_unique<Point>(record.x * factor_, record.y * factor_);
  transfer_.apply(*place);
  label->Coordinate(place.release());
  label->Iclass = classOf(record.identifier);
  withoutClass_ += label->Iclass == 0 ? 1 : 0;
  ++read_;
  return handler_.labelPoints.InsertLabel(label.release()) != 0;
}

short IEArcInfo::LabelImport::classOf(std::string_view identifier) const {
  const long number = kaldex::textToInteger(identifier);
  return classes_.count(number) != 0 ? static_cast<short>(number) : short{0};
}

int IEArcInfo::ImportLabelPoints(SProjection* target, SProjection*, char*, short*, char*, char*, char*,
                                 char*) {
  const Tracer tracer(__FILE__, __LINE__, "IEArcInfo::ImportLabelPoints");
  return guarded([&] { return openFile("r") ? LabelImport(*this, target).run() : 0; });
}

}  // namespace kaldex_v1
