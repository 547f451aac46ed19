#ifndef KALDEX_TESTS_ASCII_EXAMPLES_H
#define KALDEX_TESTS_ASCII_EXAMPLES_H

#include <QMap>

#include "ascii/ascii_fixture.h"

namespace kaldex::test {

/// Small layers, and the files that are made of them: the examples of the page on the ASCII format.
class AsciiExamples : public AsciiFixture {
 protected:
  AsciiExamples();

  /// Name of an example to its text, as a page shows it: without the line ends around it, and with "..." for
  /// the lines that all headers have.
  QMap<QString, QString> examples();

  /// A layer of its own, with the classes "Mata" and "Água" if it is thematic.
  InfoLayer* exampleLayer(short model, const QString& name);
  Category* lots() { return category(OBJECTMODEL, "Lotes"); }

 private:
  enum class Header { whole, fromBox, hidden };
  void keep(const QString& name, Header header = Header::hidden);
  template <class Export>
  void make(const QString& name, InfoLayer* layer, Export run, const char* separator = nullptr,
            short format = 0);

  void makeLines();
  void makeThematic();
  void makeCadastral();
  void makeNetwork();
  void makeNumeric();
  void makeTables();
  void makeTexts();
  void addObject(InfoLayer& layer, Anchor anchor, const QString& name, const QString& label, Category* of);

  QMap<QString, QString> made_;
};

}  // namespace kaldex::test

#endif
