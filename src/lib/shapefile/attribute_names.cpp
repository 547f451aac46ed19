#include "lib/shapefile/attribute_names.h"

#include <algorithm>
#include <iterator>
#include <new>

namespace kaldex {

namespace {

constexpr int kLongestName = 10;
constexpr short kDateWidth = 8;

bool isReserved(const QString& name) {
  static const char* const kReserved[] = {
      "NID",       "ID",      "NOME",       "ROTULO",    "VISID",     "DATA",
      "HORA",      "GEOID",   "CATEGORIA",  "GANCHORID", "GVISID",    "AREA",
      "PERIMETRO", "DEMANDA", "IMPEDANCIA", "MYSQL_ID",  "KALDEX_ID", "SPOSTGRESQL_ID SERIAL",
      "DBID",      "LONG",    "STRING",
  };
  const QString upper = name.toUpper();
  return std::any_of(std::begin(kReserved), std::end(kReserved),
                     [&](const char* word) { return upper == QLatin1String(word); });
}

QString withoutForbidden(QString name) {
  static const QString kForbidden = QStringLiteral("!@#$%&*()-_+=|\\{}[]';:\"<>,.?/");
  for (int i = 0; i < name.size(); ++i) {
    if (kForbidden.contains(name[i])) name[i] = QLatin1Char(i == 0 ? 'X' : '_');
  }
  return name;
}

bool beginsWithDigit(const QString& name) {
  return !name.isEmpty() && name[0] >= QLatin1Char('0') && name[0] <= QLatin1Char('9');
}

}  // namespace

AttributeNames::AttributeNames(const SFieldList& existing) : existing_(existing) {}

bool AttributeNames::add(const SField& column) {
  int suffix = 0;
  QString name = withoutForbidden(withoutReservedWord(column.name, suffix));
  if (beginsWithDigit(name)) name.prepend(QLatin1Char('X'));
  name = name.left(kLongestName);
  QString candidate = name;
  while (isTaken(candidate)) {
    ++suffix;
    candidate = name.left(suffix < 10 ? 9 : 8) + QString::number(suffix);
  }
  const SField* known = existing_.find(candidate);
  const bool usable =
      known != nullptr ? insert(columns_, *known, "Attlistalt.Insert(Attraux)") : addNew(column, candidate);
  const QString& chosen = known != nullptr ? known->name : candidate;
  if (usable && chosen != column.name) renamed_.append(qMakePair(column.name, chosen));
  return usable;
}

QString AttributeNames::withoutReservedWord(const QString& name, int& suffix) {
  if (!isReserved(name)) return name;
  const QString cut = name.left(7);
  suffix = 1;
  reserved_.append(cut);
  replacements_.append(cut + QString::number(suffix));
  return replacements_.last();
}

// Whether an earlier column of the file has the name, be its table column old or new: two names that became
// equal must not write over each other.
bool AttributeNames::isTaken(const QString& name) const {
  return columns_.find(name) != nullptr;
}

bool AttributeNames::insert(SFieldList& list, const SField& field, const char* expression) {
  if (list.Insert(new (std::nothrow) SField(field)) != 0) return true;
  failure_ = expression;
  return false;
}

bool AttributeNames::addNew(const SField& column, const QString& name) {
  short size = column.size;
  short decimals = column.decimals;
  switch (column.type) {
    case fieldReal:
    case fieldText:
      break;
    case fieldInteger:
      decimals = 0;
      break;
    case fieldDate:
      size = kDateWidth;
      decimals = 0;
      break;
    default:
      insert(columns_, SField(name, column.type, size, decimals, -1), "Attlistalt.Insert(Attraux)");
      return false;
  }
  const int first = existing_.Size() > 0 ? existing_.Size() : 1;
  const auto index = static_cast<short>(first + newColumns_.Size());
  const SField field(name, column.type, size, decimals, index);
  return insert(newColumns_, field, "Attlistadd.Insert(Attraux)") &&
         insert(columns_, field, "Attlistalt.Insert(Attraux)");
}

}  // namespace kaldex
