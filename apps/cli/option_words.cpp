#include "cli/option_words.h"

#include <QFile>
#include <QStringList>
#include <cmath>

#include "cli/texts.h"
#include "kaldex/model/field.h"

namespace kaldex::cli {

QString fromWord(const std::string& word) {
  const QByteArray bytes = QByteArray::fromStdString(word);
  const QString text = QFile::decodeName(bytes);
  return QFile::encodeName(text) == bytes ? text : QString::fromLatin1(bytes);
}

int choice(const std::string& value, const char* name, std::initializer_list<const char*> values) {
  int position = 0;
  for (const char* const known : values) {
    if (value == known) return position;
    ++position;
  }
  QStringList list;
  for (const char* const known : values) list << QString::fromLatin1(known);
  throw WrongUse(Say::tr("%1: %2 não é um destes: %3")
                     .arg(QString::fromLatin1(name), fromWord(value), list.join(QStringLiteral(", "))));
}

double number(const QString& text, const char* name) {
  bool good = false;
  const double value = text.trimmed().toDouble(&good);
  if (!good || !std::isfinite(value))
    throw WrongUse(Say::tr("%1: %2 não é um número").arg(QString::fromLatin1(name), text));
  return value;
}

Box boxOf(const std::string& value) {
  const QStringList parts = fromWord(value).split(QLatin1Char(','));
  if (parts.size() != 4) throw WrongUse(Say::tr("--box: espera-se X1,Y1,X2,Y2"));
  double corners[4];
  for (int i = 0; i < 4; ++i) corners[i] = number(parts[i], "--box");
  const Box box(corners[0], corners[1], corners[2], corners[3]);
  if (box.isInverted())
    throw WrongUse(Say::tr("--box: X1,Y1 é o canto inferior esquerdo, X2,Y2 o superior direito"));
  return box;
}

QSize sizeOf(const std::string& value) {
  constexpr int kSmallest = 64;
  constexpr int kLargest = 20000;
  const QStringList parts = fromWord(value).toLower().split(QLatin1Char('x'));
  bool goodWidth = false, goodHeight = false;
  const QSize size(parts.value(0).toInt(&goodWidth), parts.value(1).toInt(&goodHeight));
  const bool within = size.width() >= kSmallest && size.height() >= kSmallest && size.width() <= kLargest &&
                      size.height() <= kLargest;
  if (parts.size() != 2 || !goodWidth || !goodHeight || !within)
    throw WrongUse(Say::tr("--size: espera-se LARGURAxALTURA, de %1 a %2").arg(kSmallest).arg(kLargest));
  return size;
}

Answer answerOf(const std::string& value) {
  const QString text = fromWord(value);
  const int at = text.lastIndexOf(QLatin1Char('='));
  const QString answer = text.mid(at + 1).trimmed().toLower();
  const bool yes = QStringList{"yes", "y", "sim", "s", "si"}.contains(answer);
  const bool no = QStringList{"no", "n", "nao", "não"}.contains(answer);
  if (at <= 0 || (!yes && !no)) throw WrongUse(Say::tr("--answer: espera-se COMEÇO DA PERGUNTA=yes ou =no"));
  return {text.left(at), yes};
}

QString separatorOf(const std::string& value) {
  if (value.empty()) return QString();
  if (value == "none") return QStringLiteral("");
  if (value == "tab") return QStringLiteral("\t");
  const QString text = fromWord(value);
  if (text.size() != 1 || text.at(0).unicode() > 0xFF || text.at(0) < QLatin1Char(' '))
    throw WrongUse(Say::tr("--separator: espera-se um caractere, tab ou none em vez de %1").arg(text));
  return text;
}

ColumnType columnTypeOf(const QString& text) {
  static const struct {
    const char* word;
    short type;
  } words[] = {{"integer", fieldInteger}, {"real", fieldReal}, {"date", fieldDate}, {"text", fieldText}};
  const int at = text.lastIndexOf(QLatin1Char('='));
  const QString word = text.mid(at + 1).section(QLatin1Char(':'), 0, 0).trimmed().toLower();
  const QString size = text.mid(at + 1).section(QLatin1Char(':'), 1);
  for (const auto& known : words) {
    if (at <= 0 || word != QLatin1String(known.word)) continue;
    const bool goodSize = size.isEmpty() || (known.type == fieldText && size.toShort() > 0);
    if (goodSize) return {text.left(at), known.type, size.toShort()};
  }
  throw WrongUse(
      Say::tr("--types: espera-se COLUNA=integer, real, date, text ou text:TAMANHO em vez de %1").arg(text));
}

void takeMove(const std::string& value, Placement& placement) {
  const QStringList parts = fromWord(value).split(QLatin1Char(','));
  if (parts.size() != 2) throw WrongUse(Say::tr("--move: espera-se DX,DY"));
  placement.moveX = number(parts[0], "--move");
  placement.moveY = number(parts[1], "--move");
}

}  // namespace kaldex::cli
