#include "cli/label_kinds.h"

#include "cli/ascii_kinds.h"
#include "cli/texts.h"
#include "kaldex/model/report.h"

namespace kaldex::cli {

namespace {

Vector* labelled(InfoLayer& layer) {
  return firstVector(layer, {vectorLines, vectorContours, vectorSamples});
}

// Labels name what a map shows and are no other form of it: nobody gets them who didn't ask for them.
bool onlyOnRequest(InfoLayer&) {
  return false;
}

bool hasPoints(InfoLayer& layer) {
  Vector* const vector = layer.vector(vectorLines);
  return vector != nullptr && vector->point2dCount() > 0;
}

int exportLabels(const ExportContext& context, Vector& vector) {
  return asciiExporter(context)->ExportLabelPoints(&vector, context.layer.category(),
                                                   context.options.usedClasses);
}

int exportGenerated(const ExportContext& context, Vector& vector) {
  return asciiExporter(context)->ExportLabelPointsAuto(&vector, context.layer.category());
}

int exportUnclassified(const ExportContext& context, Vector& vector) {
  return asciiExporter(context)->ExportLabelPointsSem(&vector, context.layer.category());
}

int exportMore(const ExportContext& context, Vector& vector) {
  return asciiExporter(context)->ExportLabelPointsMais(&vector, context.layer.category());
}

int exportSwapped(const ExportContext& context, Vector& vector) {
  const QString ending = QStringLiteral("_CADLAB.typ");
  if (context.layer.model() == THEMATICMODEL && !context.name.endsWith(ending)) {
    SMessageBox::Show(
        0, nullptr, QString(),
        Say::tr("O nome do arquivo deve terminar em %1, para que a tabela tenha o seu.").arg(ending));
    return 0;
  }
  const auto handler = asciiExporter(context);
  // The table's name is put behind the folder's as it stands.
  handler->DataHome(context.folder + QLatin1Char('/'));
  return handler->ExportLabelPointsTroca(&vector, context.layer.category(), context.options.usedClasses);
}

int exportPoints(const ExportContext& context, Vector& vector) {
  return asciiExporter(context)->ExportPoints(&vector, context.layer.category(), context.options.usedClasses);
}

int exportGeneratedPoints(const ExportContext& context, Vector& vector) {
  return asciiExporter(context)->ExportPointsAuto(&vector, context.layer.category());
}

}  // namespace

bool takesLabels(short model) {
  return model == THEMATICMODEL || model == CADASTRALMODEL || model == NETWORKMODEL || model == OBJECTMODEL;
}

int importLabels(const ImportContext& context) {
  const short model = context.layer.model();
  if (!takesLabels(model)) return 0;
  SProjection* const projection = context.project.projection();
  const auto handler = asciiImporter(context, context.projection);
  // This finds the classes by their names, too, and makes those that are missing.
  if (handler->ImportLabelPoints(projection, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr) ==
      0) {
    return 0;
  }
  Vector* const vector = context.layer.vector(vectorLines, true);
  return model == THEMATICMODEL ? handler->Classify(vector) : handler->ClassifyObj(vector);
}

QString missingLabels(const ImportContext& context) {
  const short model = context.layer.model();
  if (!takesLabels(model)) {
    return Say::tr("O plano %1 é de modelo %2, que não tem classes nem objetos.")
        .arg(context.layer.name, modelWord(model));
  }
  return Say::tr("Não há seção %1 em %2.")
      .arg(model == NETWORKMODEL ? QStringLiteral("NETWORK_OBJECTS") : QStringLiteral("POINTS"),
           context.options.file);
}

std::vector<ExportKind> labelExports() {
  return {{"labels", labelled, onlyOnRequest, exportLabels},
          {"labels-auto", labelled, onlyOnRequest, exportGenerated},
          {"labels-unclassified", labelled, onlyOnRequest, exportUnclassified},
          {"labels-more", labelled, onlyOnRequest, exportMore},
          {"labels-swapped", labelled, onlyOnRequest, exportSwapped},
          {"points", labelled, hasPoints, exportPoints},
          {"points-auto", labelled, onlyOnRequest, exportGeneratedPoints}};
}

}  // namespace kaldex::cli
