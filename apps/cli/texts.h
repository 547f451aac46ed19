#ifndef KALDEX_CLI_TEXTS_H
#define KALDEX_CLI_TEXTS_H

#include <QCoreApplication>
#include <QString>

namespace kaldex::cli {

/// All texts of the command itself: Say::tr("Portuguese source").
struct Say {
  Q_DECLARE_TR_FUNCTIONS(kaldex)
};

/// Words for the codes of a job report: kinds ("lines"), reasons of what was left out ("few_points"), and
/// reasons of an encoding or a projection ("cpg"). An unknown code stands for itself.
QString kindText(const QString& kind);
QString leftOutText(const QString& reason);
QString choiceText(const QString& reason);

/// Names of category models as the command takes them ("thematic"), and back: 0 for an unknown name.
QString modelWord(short model);
short modelOfWord(const QString& word);

/// "X1,Y1,X2,Y2" with as few digits as tell the numbers apart.
QString numberText(double value);
QString boxText(double x1, double y1, double x2, double y2);
/// A count with its digits in groups of three.
QString countText(long long count);

/// Text for the terminal, in its encoding.
void printLine(FILE* stream, const QString& text);

}  // namespace kaldex::cli

#endif
