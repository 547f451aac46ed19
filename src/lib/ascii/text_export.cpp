#include <QObject>

#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/model/text.h"
#include "lib/ascii/header_writer.h"
#include "lib/ascii/section_writer.h"
#include "lib/ascii/text_scale.h"
#include "lib/frame/delimited_record.h"
#include "lib/frame/progress_scope.h"

inline namespace kaldex_v1 {

namespace {
constexpr int kSizeDecimals = 6;
}

/// Writes a list of texts as one section. The handler's file must be open.
class IEAsc::TextExport {
 public:
  TextExport(IEAsc& handler, EntitieList& texts);
  ~TextExport();

  int run();

 private:
  void writeHead();
  void write(const EText& text);
  void writeLook(const TextVisual& look, double thickness, double height);
  QString oneLine(const QString& text);

  IEAsc& handler_;
  EntitieList& texts_;
  SectionWriter writer_;
  kaldex::TextScale scale_;
  QString separator_;
  TextVisual layerLook_;
  long long written_ = 0;
  long long torn_ = 0;    ///< texts that hold a line end or the separator
  long long commas_ = 0;  ///< texts that come back with a point for their comma
};

IEAsc::TextExport::TextExport(IEAsc& handler, EntitieList& texts)
    : handler_(handler), texts_(texts), writer_(handler), scale_(handler.infoLayer, handler.projection) {
  if (handler_.separator[0] == 0) handler_.SetSeparator(";");
  separator_ = QString::fromLatin1(handler_.separator);
  Text* text = nullptr;
  if (handler_.infoLayer != nullptr && handler_.infoLayer->Get(text) != 0) layerLook_ = text->visual.text;
}

IEAsc::TextExport::~TextExport() {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  if (written_ > 0) job->countRead("texts", written_);
  if (written_ > 0) job->countWritten("texts", written_);
  if (torn_ > 0) {
    job->note(
        QObject::tr("Textos com o separador ou com fim de linha, que não voltarão como são: %1").arg(torn_));
  }
  if (commas_ > 0) {
    job->note(QObject::tr("Valores com uma vírgula entre dígitos, que a leitura troca por um ponto: %1")
                  .arg(commas_));
  }
}

int IEAsc::TextExport::run() {
  kaldex::ProgressScope progress(kaldex::progressSteps(texts_.Size()));
  writeHead();
  for (Entitie* const entity : texts_) {
    if (!writer_.ok() || progress.cancelled()) break;
    progress.step();
    if (const auto* const text = dynamic_cast<const EText*>(entity)) write(*text);
  }
  return writer_.finish(!progress.cancelled());
}

void IEAsc::TextExport::writeHead() {
  const QString& s = separator_;
  writer_.begin("TEXT", QObject::tr("//Textos"));
  writer_.text(QStringLiteral("\nSEPARATOR %1\n").arg(s));
  writer_.text(kaldex::filledIn(
      QObject::tr(
          "//Formato coordx %s coordy %s texto %s ang %s espessura %s altura %s cor-R %s cor-G %s cor-B %s "
          "alinha-H %s alinha-V %s fonte"),
      {s, s, s, s, s, s, s, s, s, s, s}));
  writer_.out().append('\n');
  writer_.text(kaldex::filledIn(QObject::tr("//Campos obrigatórios - coordx %s coordy %s texto"), {s, s}));
  writer_.endHeader();
}

void IEAsc::TextExport::write(const EText& text) {
  const bool angles = handler_.coordFormat == 1;
  double place[2] = {text.Position().x, text.Position().y};
  writer_.coordinateWriter().convert(place, 1);
  writer_.out().append(angles ? "\n " : "\n");
  const QByteArray separator = separator_.toLatin1();
  const QByteArray between = angles ? ' ' + separator + ' ' : "  " + separator + "  ";
  writer_.coordinateWriter().print(place, {between.constData(), static_cast<std::size_t>(between.size())});
  writer_.out().append(separator);
  writer_.text(oneLine(text.String()));
  // Only sizes of a text's own are at map scale: those of the layer's look are on paper as they stand.
  if (text.Own() != 0) {
    const TextVisual& own = text.look();
    writeLook(own, scale_.toPaper(own.thickness), scale_.toPaper(own.height));
  } else {
    writeLook(layerLook_, static_cast<double>(layerLook_.thickness), static_cast<double>(layerLook_.height));
  }
  ++written_;
}

void IEAsc::TextExport::writeLook(const TextVisual& look, double thickness, double height) {
  kaldex::TextOutput& out = writer_.out();
  const QByteArray separator = separator_.toLatin1();
  out.append(separator);
  for (const double size : {static_cast<double>(look.angle), thickness, height}) {
    out.append(' ');
    out.appendFixed(size, kSizeDecimals);
    out.append(' ');
    out.append(separator);
  }
  for (const short number : {look.color.red, look.color.green, look.color.blue, look.horizontalAlignment,
                             look.verticalAlignment}) {
    out.append(' ');
    out.appendInt(number);
    out.append(' ');
    out.append(separator);
  }
  out.append(' ');
  writer_.text(look.fontName);
}

// A line end within a text would begin a record of its own.
QString IEAsc::TextExport::oneLine(const QString& text) {
  QString line = text;
  line.replace(QLatin1Char('\n'), QLatin1Char(' ')).replace(QLatin1Char('\r'), QLatin1Char(' '));
  if (line != text || text.contains(separator_)) ++torn_;
  if (handler_.separator[0] != ',' && kaldex::hasDecimalComma(text)) ++commas_;
  return line;
}

int IEAsc::ExportText(EntitieList* texts) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::ExportText");
  return guarded([&] {
    if (texts == nullptr) return invalidArgument("list");
    return openFile("a+") ? TextExport(*this, *texts).run() : 0;
  });
}

}  // namespace kaldex_v1
