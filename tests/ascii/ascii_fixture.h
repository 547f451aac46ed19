#ifndef KALDEX_TESTS_ASCII_FIXTURE_H
#define KALDEX_TESTS_ASCII_FIXTURE_H

#include "kaldex/ascii.h"
#include "support/handler_fixture.h"

namespace kaldex::test {

const QString kBadHeader = "Arquivo INCONSISTENTE. Falta de informação ou erro nos parâmetros da seção INFO!";
const QString kSkip = "Arquivo INCONSISTENTE. Ignorar somente o item errado e continuar?";
const QString kOldForm = "Dados de entrada no formato antigo (sem SEPARATOR). Continua ?";
const QString kAddAll = "Classe não encontrada. Adiciona TODAS as classes não encontradas ?";
const QString kNoClasses = "Categoria sem classes. Cria e continua ?";
const QString kNoCategory = "Categoria objeto inexistente Cria e continua ?";

class OpenAscii : public IEAsc {
 public:
  using IEAsc::file;
  using IEAsc::labelPoints;
  using IEAsc::line;
  using IEAsc::line2;
  using IEAsc::openFile;
  using IEAsc::readWordIntoLine;
  using IEAsc::replacementNames;
  using IEAsc::reservedNames;
  using IEAsc::separator;
};

/// Handlers on the file "file.txt" of the fixture's folder.
class AsciiFixture : public HandlerFixture {
 protected:
  std::unique_ptr<OpenAscii> handler(InfoLayer* layer, short coordFormat = 0, int units = 0,
                                     SProjection* projection = nullptr, const char* separator = nullptr) {
    return open<OpenAscii>(fileName, layer, coordFormat, units, projection, separator);
  }
  /// How to read the numbers of a file in that form: its header doesn't say so.
  static int unitsOf(short format) { return format == 2 ? 4 : format == 3 ? 5 : 0; }

  QString fileName = "file.txt";
};

}  // namespace kaldex::test

#endif
