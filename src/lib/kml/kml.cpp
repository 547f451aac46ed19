#include "kaldex/kml.h"

#include <QFileInfo>
#include <QObject>

#include "base/companion_file.h"
#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/model/report.h"
#include "kaldex/model/vector.h"
#include "ogckml/kml_feature.h"
#include "ogckml/xml_decoder.h"
#include "ogckml/xml_encoder.h"

inline namespace kaldex_v1 {

using KdxOgc::OgKMLDocument;

IEKml::IEKml() {
  updatePath();
}

IEKml::~IEKml() {
  dropDocument();
  shielded([this] { dropTemporaryVector(); });
}

void IEKml::updatePath() {
  if (!dataHome.isEmpty() && !dataFile.isEmpty()) filePath_ = dataHome + QLatin1Char('/') + dataFile;
}

void IEKml::dropDocument() {
  document_.reset();
  qDeleteAll(objects_);
  objects_.clear();
}

void IEKml::use(std::shared_ptr<KmlOutline> outline) {
  outline_ = std::move(outline);
}

int IEKml::InitDecoder(Vector* vec) {
  const Tracer tracer(__FILE__, __LINE__, "IEKml::InitDecoder");
  return guarded([&] {
    dropDocument();
    updatePath();
    held_ = vec != nullptr ? vec->projection() : nullptr;
    QString error;
    const std::shared_ptr<KmlOutline> known = std::move(outline_);
    if (known != nullptr && known->path_ == QFileInfo(filePath_).absoluteFilePath() &&
        known->document_ != nullptr) {
      document_ = std::move(known->document_);
      return 1;
    }
    document_ = std::make_unique<OgKMLDocument>();
    KdxOgc::SXMLDecoderQt decoder;
    decoder.setPath(kaldex::pathBytes(filePath_).toStdString());
    if (document_->decode(decoder)) return 1;
    dropDocument();
    document_ = std::make_unique<OgKMLDocument>();
    JobReport* const report = JobReport::current();
    if (report != nullptr && !SGError->cancelled()) {
      report->note(decoder.error());
      report->place = {filePath_, decoder.errorLine(), decoder.errorColumn()};
    }
    return 0;
  });
}

int IEKml::InitEncoder(Vector* vec) {
  const Tracer tracer(__FILE__, __LINE__, "IEKml::InitEncoder");
  return guarded([&] {
    if (document_ == nullptr) {
      updatePath();
      document_ = std::make_unique<OgKMLDocument>();
    }
    held_ = vec != nullptr ? vec->projection() : nullptr;
    return 1;
  });
}

int IEKml::WriteToFile() {
  const Tracer tracer(__FILE__, __LINE__, "IEKml::WriteToFile");
  return guarded([&] {
    FileClose();
    bool written = false;
    if (document_ != nullptr) {
      const QString path = filePath_ + QLatin1String(zipped_ ? ".kmz" : ".kml");
      const std::string name = kaldex::pathBytes(path).toStdString();
      KdxOgc::SXMLEncoderQt encoder;
      encoder.createDocument("kml");
      document_->encode(encoder);
      written = zipped_ ? encoder.saveZipped(name) : encoder.save(name);
      if (JobReport* const report = JobReport::current()) {
        if (written) report->files.append(path);
        if (!written) report->note(encoder.error());
        report->encoding = {QStringLiteral("UTF-8"), QStringLiteral("format")};
      }
    }
    dropTemporaryVector();
    return written ? 1 : 0;
  });
}

// What is not offered, and what only looks at the document.

int IEKml::ImportSamples(Vector* vec, SProjection*) {
  const Tracer tracer(__FILE__, __LINE__, "IEKml::ImportSamples");
  InitDecoder(vec);
  return 0;
}
int IEKml::ImportContourout(Vector* vec, SProjection*) {
  const Tracer tracer(__FILE__, __LINE__, "IEKml::ImportContourout");
  InitDecoder(vec);
  return 0;
}
int IEKml::ExportSample(Vector*) {
  return 0;
}
int IEKml::ExportContourout(Vector*) {
  return 0;
}
int IEKml::ExportTIN(Vector*) {
  return 0;
}
int IEKml::ExportTIN3D(Vector*) {
  return 0;
}

}  // namespace kaldex_v1
