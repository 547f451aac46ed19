#include "cli/texts.h"

#include <QLocale>
#include <cmath>
#include <cstdio>
#include <iterator>

#include "kaldex/model/catalog.h"

namespace kaldex::cli {

namespace {

struct Word {
  const char* code;
  const char* text;
};

constexpr Word kKinds[] = {
    {"lines", QT_TRANSLATE_NOOP("kaldex", "linhas")},
    {"polygons", QT_TRANSLATE_NOOP("kaldex", "polígonos")},
    {"points", QT_TRANSLATE_NOOP("kaldex", "pontos")},
    {"samples", QT_TRANSLATE_NOOP("kaldex", "amostras")},
    {"contours", QT_TRANSLATE_NOOP("kaldex", "isolinhas")},
    {"texts", QT_TRANSLATE_NOOP("kaldex", "textos")},
    {"turns", QT_TRANSLATE_NOOP("kaldex", "restrições de direção")},
    {"edges", QT_TRANSLATE_NOOP("kaldex", "arestas")},
    {"triangles", QT_TRANSLATE_NOOP("kaldex", "triângulos")},
    {"labels", QT_TRANSLATE_NOOP("kaldex", "identificadores")},
    {"objects", QT_TRANSLATE_NOOP("kaldex", "objetos")},
    {"rows", QT_TRANSLATE_NOOP("kaldex", "registros")},
    {"columns", QT_TRANSLATE_NOOP("kaldex", "colunas")},
};

constexpr Word kLeftOut[] = {
    {"few_points", QT_TRANSLATE_NOOP("kaldex", "pontos de menos")},
    {"degenerate", QT_TRANSLATE_NOOP("kaldex", "sem comprimento ou área")},
    {"outside_box", QT_TRANSLATE_NOOP("kaldex", "fora da caixa do plano")},
    {"null_shape", QT_TRANSLATE_NOOP("kaldex", "registro sem geometria")},
    {"refused",
     QT_TRANSLATE_NOOP("kaldex", "recusado pelo plano (anel aberto, coordenada que não é número)")},
    {"duplicate", QT_TRANSLATE_NOOP("kaldex", "polígono interno duplicado")},
    {"class_filter", QT_TRANSLATE_NOOP("kaldex", "classe não pedida")},
    {"unplaced_hole", QT_TRANSLATE_NOOP("kaldex", "buraco sem polígono externo (ficou como polígono)")},
    {"bad_value", QT_TRANSLATE_NOOP("kaldex", "valor que não cabe na coluna")},
    {"column_ignored", QT_TRANSLATE_NOOP("kaldex", "coluna ignorada")},
    {"no_object", QT_TRANSLATE_NOOP("kaldex", "registro de objeto que não existe")},
    {"no_geometry", QT_TRANSLATE_NOOP("kaldex", "objeto sem geometria no plano")},
    {"no_label_point", QT_TRANSLATE_NOOP("kaldex", "polígono sem lugar para um identificador")},
    {"not_associated", QT_TRANSLATE_NOOP("kaldex", "identificador que não encontrou nada no plano")},
    {"unsupported", QT_TRANSLATE_NOOP("kaldex", "tipo que esta operação não trata")},
    {"other_kind", QT_TRANSLATE_NOOP("kaldex", "lido, mas de outro tipo que o pedido na saída")},
};

constexpr Word kChoices[] = {
    {"override", QT_TRANSLATE_NOOP("kaldex", "pedido na linha de comando")},
    {"cpg", QT_TRANSLATE_NOOP("kaldex", "arquivo .cpg")},
    {"ldid", QT_TRANSLATE_NOOP("kaldex", "byte de língua do .dbf")},
    {"bytes", QT_TRANSLATE_NOOP("kaldex", "pelos próprios textos")},
    {"default", QT_TRANSLATE_NOOP("kaldex", "nada indica outra")},
    {"format", QT_TRANSLATE_NOOP("kaldex", "própria do formato")},
    {"crs-from", QT_TRANSLATE_NOOP("kaldex", "pedido na linha de comando")},
    {"crs", QT_TRANSLATE_NOOP("kaldex", "o arquivo não diz; a mesma do projeto pedido")},
    {"prj", QT_TRANSLATE_NOOP("kaldex", "arquivo .prj")},
    {"header", QT_TRANSLATE_NOOP("kaldex", "cabeçalho do arquivo")},
    {"project", QT_TRANSLATE_NOOP("kaldex", "a do projeto")},
    {"layer", QT_TRANSLATE_NOOP("kaldex", "a do plano")},
    {"unknown", QT_TRANSLATE_NOOP("kaldex", "nada a indica; coordenadas tomadas como estão")},
    {"coordinates", QT_TRANSLATE_NOOP("kaldex", "das coordenadas")},
    {"coords", QT_TRANSLATE_NOOP("kaldex", "pelas coordenadas pedidas")},
};

struct ModelWord {
  short model;
  const char* word;
};
constexpr ModelWord kModels[] = {
    {THEMATICMODEL, "thematic"},     {DIGITALMODEL, "numeric"}, {NETWORKMODEL, "network"},
    {CADASTRALMODEL, "cadastral"},   {OBJECTMODEL, "object"},   {IMAGEMODEL, "image"},
    {NOTSPACIALMODEL, "nonspatial"},
};

template <std::size_t Size>
QString wordOf(const Word (&words)[Size], const QString& code) {
  for (const Word& word : words) {
    if (code == QLatin1String(word.code)) return Say::tr(word.text);
  }
  return code;
}

}  // namespace

QString kindText(const QString& kind) {
  return wordOf(kKinds, kind);
}

QString leftOutText(const QString& reason) {
  return wordOf(kLeftOut, reason);
}

QString choiceText(const QString& reason) {
  return wordOf(kChoices, reason);
}

QString modelWord(short model) {
  for (const ModelWord& one : kModels) {
    if (one.model == model) return QString::fromLatin1(one.word);
  }
  return modelName(model);
}

short modelOfWord(const QString& word) {
  for (const ModelWord& one : kModels) {
    if (word == QLatin1String(one.word)) return one.model;
  }
  return 0;
}

QString numberText(double value) {
  // Exponents only where the digits alone would be mostly zeros.
  constexpr double kSmallest = 1e-4;
  constexpr double kLargest = 1e15;
  const double size = std::abs(value);
  const bool plain = size == 0.0 || (size >= kSmallest && size < kLargest);
  return QString::number(value, plain ? 'f' : 'g', QLocale::FloatingPointShortest);
}

QString boxText(double x1, double y1, double x2, double y2) {
  return QStringLiteral("%1,%2,%3,%4").arg(numberText(x1), numberText(y1), numberText(x2), numberText(y2));
}

QString countText(long long count) {
  QString digits = QString::number(count);
  for (int at = digits.size() - 3; at > (count < 0 ? 1 : 0); at -= 3) digits.insert(at, QLatin1Char(' '));
  return digits;
}

void printLine(FILE* stream, const QString& text) {
  const QByteArray bytes = text.toLocal8Bit() + '\n';
  std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
}

}  // namespace kaldex::cli
