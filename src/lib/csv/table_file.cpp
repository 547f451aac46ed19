#include "lib/csv/table_file.h"

#include <unistd.h>

#include <QFile>
#include <QObject>

#include "base/companion_file.h"
#include "base/latin1.h"

namespace kaldex {

namespace {

const char* typeWord(short type) {
  switch (type) {
    case fieldInteger:
      return "INTEGER";
    case fieldReal:
      return "REAL";
    case fieldDate:
      return "DATE";
    default:
      return nullptr;
  }
}

}  // namespace

TableFile::TableFile(const QByteArray& path) {
  unlink(path.constData());
  file_.reset(std::fopen(path.constData(), "a+"));
  out_ = std::make_unique<TextOutput>(file_.get());
}

void TableFile::begin(const QString& category) {
  out_->append("\nTABLE\nINFO\n");
  out_->append(
      toLatin1(QObject::tr("//Tabela de Atributos ASCII convertido pelo Sistema KALDEX do arquivo CSV")));
  out_->append("\nSEPARATOR ;\nUNFORMATED\nCATEGORY_OBJ   ");
  out_->append(toLatin1(category));
  out_->append('\n');
}

void TableFile::line(std::string_view text) {
  out_->append(text);
  out_->append('\n');
}

void TableFile::column(const SField& column) {
  QByteArray name = toLatin1(column.name);
  // A reader would take the line for a comment, and the values for those of the next column. It makes an X of
  // such a character anyway.
  if (name.startsWith("//")) name[0] = 'X';
  out_->append(name);
  out_->append(" ; ");
  if (const char* const word = typeWord(column.type)) {
    out_->append(word);
  } else {
    out_->append("TEXT ; ");
    out_->appendInt(column.size);
  }
  out_->append(" ;\n");
}

bool TableFile::close() {
  const bool flushed = out_->flush();
  return std::fclose(file_.release()) == 0 && flushed;
}

QByteArray pathBeside(const QString& neighbour, const QString& path) {
  const QByteArray found = pathBytes(neighbour);
  return found == QFile::encodeName(neighbour) ? QFile::encodeName(path) : path.toLatin1();
}

}  // namespace kaldex
