#include "lib/ascii/column_block.h"

#include <QObject>
#include <cstring>
#include <memory>

#include "base/latin1.h"
#include "kaldex/job_report.h"
#include "kaldex/model/database.h"
#include "lib/ascii/record_text.h"

inline namespace kaldex_v1 {

namespace {

constexpr short kKeySize = 10;
constexpr short kLabelSize = 32;

QString fromLatin1(const std::string& text) {
  return QString::fromLatin1(text.data(), static_cast<int>(text.size()));
}

}  // namespace

IEAsc::ColumnBlock::ColumnBlock(IEAsc& handler, const InfoReader::Targets& targets)
    : handler_(handler),
      targets_(targets),
      category_(*targets.category),
      fields_(targets.fields != nullptr ? *targets.fields : ownFields_) {}

int IEAsc::ColumnBlock::run() {
  if (handler_.dataBase == nullptr) return invalidArgument("dataBase");
  if (targets_.formatted != nullptr && *targets_.formatted == 1) {
    return show(QObject::tr("Opção não disponível!") + "FORMATED");
  }
  if (!isCategorysOwn()) return handler_.inconsistent(handler_.line);
  return openTable() && readColumns() && (!newTable_ || createTable()) ? 1 : 0;
}

bool IEAsc::ColumnBlock::malformed() {
  handler_.inconsistent(handler_.line);
  return false;
}

// A file's text is Latin-1, so a name that isn't has come back with marks in the place of what was lost.
bool IEAsc::ColumnBlock::isCategorysOwn() const {
  const QString name = QString::fromLatin1(handler_.line + std::strlen("CATEGORY_OBJ")).trimmed();
  return name == category_.name || name == QString::fromLatin1(kaldex::toLatin1(category_.name)).trimmed();
}

bool IEAsc::ColumnBlock::openTable() {
  DataBase& base = *handler_.dataBase;
  newTable_ = !base.tableExists(category_.attributeTable);
  if (newTable_) {
    if (!ask(QObject::tr("Deseja inserir este(s) atributo(s)?"))) return false;
    tableFields_.Append(new SField("GEOID", fieldInteger, kKeySize, 0, 0, category_.attributeTable));
  } else {
    if (base.reloadCategory(category_) == 0) {
      show(QObject::tr("O objeto não foi encontrado no Banco de Dados!") + headOf(handler_.line));
      return false;
    }
    base.loadTableFields(tableFields_, category_.attributeTable);
  }
  base.tableExists(QStringLiteral("OJ%1").arg(category_.id, 6, 10, QLatin1Char('0')));
  return true;
}

bool IEAsc::ColumnBlock::readColumns() {
  for (;;) {
    if (!InfoReader::nextLine(handler_)) return false;
    if (kaldex::startsWith(handler_.line, "INFO_END")) return true;
    if (kaldex::startsWith(handler_.line, "UNFORMATED")) continue;
    if (!readColumn()) return false;
  }
}

bool IEAsc::ColumnBlock::readColumn() {
  const std::string spaced = kaldex::spacedDeclaration(handler_.line, handler_.separator[0]);
  const kaldex::ColumnDeclaration declaration = kaldex::parseDeclaration(spaced);
  if (kaldex::declaresKey(spaced) || kaldex::declaresName(spaced)) {
    addKeyOrName(spaced, declaration.name);
    return true;
  }
  std::string name = declaration.name;
  std::string cut;
  if (names_.replaceReserved(name, cut)) {
    handler_.reservedNames.append(fromLatin1(cut));
    handler_.replacementNames.append(fromLatin1(name));
  }
  kaldex::ColumnShape shape;
  if (!kaldex::columnShape(declaration, shape)) return malformed();
  if (!newTable_) return addTableColumn(name);
  name = names_.unique(kaldex::ColumnNames::cleaned(name), [&](const std::string& candidate) {
    return tableFields_.find(fromLatin1(candidate)) != nullptr;
  });
  JobReport* const job = JobReport::current();
  if (job != nullptr && name != declaration.name) {
    job->renamed.append({fromLatin1(declaration.name), fromLatin1(name)});
  }
  return addNewColumn(name, shape);
}

void IEAsc::ColumnBlock::addKeyOrName(const std::string& spaced, const std::string& name) {
  short* const position = kaldex::declaresKey(spaced) ? targets_.keyColumn : targets_.nameColumn;
  if (position != nullptr) *position = static_cast<short>(fields_.Size());
  fields_.Append(new SField(fromLatin1(name), fieldText, kLabelSize, 0, 0));
}

bool IEAsc::ColumnBlock::addNewColumn(const std::string& name, const kaldex::ColumnShape& shape) {
  const auto place = static_cast<short>(tableFields_.Size());
  const SField column(fromLatin1(name), shape.type, shape.size, shape.decimals, place,
                      category_.attributeTable);
  tableFields_.Append(new SField(column));
  fields_.Append(new SField(column));
  return true;
}

bool IEAsc::ColumnBlock::addTableColumn(const std::string& name) {
  const QString wanted = fromLatin1(name);
  for (int i = 1; i < tableFields_.Size(); ++i) {
    const SField& column = *tableFields_.at(i);
    if (!column.hasName(wanted)) continue;
    fields_.Append(new SField(column));
    return true;
  }
  return offerToIgnore();
}

bool IEAsc::ColumnBlock::offerToIgnore() {
  const QString text = headOf(handler_.line);
  handler_.inconsistentAs(QObject::tr("Não existe esse atributo na tabela!") + text);
  if (!ask(QObject::tr("Arquivo INCONSISTENTE. Ignorar somente o item errado e continuar?") + text)) {
    return false;
  }
  fields_.Append(new SField("IGNORARCOLUNA", fieldText, 1, 0, 0));
  if (JobReport* const job = JobReport::current()) job->countLeftOut("column_ignored");
  return true;
}

bool IEAsc::ColumnBlock::createTable() {
  constexpr int keyAlone = 1;
  if (tableFields_.Size() <= keyAlone) return true;
  if (handler_.dataBase->createAttributeTable(category_, tableFields_) != 0) return true;
  ioError();
  return false;
}

}  // namespace kaldex_v1
