#include "cli/table_kind.h"

#include "cli/job.h"
#include "cli/texts.h"

namespace kaldex::cli {

namespace {

std::unique_ptr<IEAsc> handlerFor(const TableContext& context) {
  return tableHandler(context, context.folder, context.name, context.options.separator);
}

// Why the file's table is none for that category; the reader would only call the file inconsistent.
QString objection(const TableContext& context) {
  const AsciiOutline outline(context.path);
  const AsciiSection* const section = outline.find(QStringLiteral("TABLE"));
  const AsciiHeader header = section != nullptr ? outline.header(*section) : AsciiHeader();
  if (header.category.isEmpty()) return QString();
  if (!header.spatial) {
    return Say::tr("A tabela de %1 é de categoria não espacial, que só de um csv se importa.")
        .arg(context.options.file);
  }
  if (header.category == context.category.name) return QString();
  return Say::tr("A tabela de %1 é da categoria %2, não de %3.")
      .arg(context.options.file, header.category, context.category.name);
}

int runImport(const TableContext& context) {
  const QString trouble = objection(context);
  if (trouble.isEmpty()) return handlerFor(context)->ImportAttributes(&context.category);
  context.job.fail(trouble);
  return 0;
}

int runExport(const TableContext& context) {
  return handlerFor(context)->ExportTable(&context.category);
}

QString missing(const TableContext& context) {
  return Say::tr("Não há seção %1 em %2.").arg(QStringLiteral("TABLE"), context.options.file);
}

}  // namespace

std::unique_ptr<IEAsc> tableHandler(const TableContext& context, const QString& folder, const QString& name,
                                    const QString& separator) {
  auto handler = std::make_unique<IEAsc>();
  handler->Init(folder, 0, name, nullptr, nullptr, &context.dataBase, nullptr, 0,
                separator.toLatin1().constData(), nullptr, nullptr);
  return handler;
}

TableImportKind tableImport() {
  return {"table", OBJECTMODEL, true, runImport, missing};
}

TableExportKind tableExport() {
  return {"table", runExport};
}

}  // namespace kaldex::cli
