#include <algorithm>
#include <iterator>

#include "data_tools.h"

// A table of eight columns as CSV, and the same as a section that creates an object for each row. No text is
// longer than the 17 characters that a table without declared types keeps, and no value is empty or 0, which
// such a table takes for missing.

namespace kaldex {

namespace {

constexpr const char* kKey = "CODIGO";

struct TableColumn {
  const char* name;
  const char* declaration;
};

constexpr TableColumn kColumns[] = {
    {kKey, "INTEGER ; 10 ; 0"}, {"LOTE", "TEXT ; 17 ; 0"},   {"ANDARES", "INTEGER ; 10 ; 0"},
    {"VALOR", "REAL ; 17 ; 8"}, {"FRENTE", "REAL ; 17 ; 8"}, {"VISTORIA", "DATE ; 8 ; 0"},
    {"USO", "TEXT ; 17 ; 0"},   {"BAIRRO", "TEXT ; 17 ; 0"},
};
static_assert(std::size(kColumns) == 8);

std::string decimal(int hundredths) {
  std::string text = std::to_string(hundredths);
  return text.insert(text.size() - 2, ".");
}

std::vector<std::string> row(int index) {
  return {std::to_string(index + 1),
          "Q" + std::to_string(100 + index / 60) + "-L" + std::to_string(10 + index % 60),
          std::to_string(1 + index % 30),
          decimal(8500000 + 123456 * (index % 5003)),
          decimal(500 + 25 * (index % 93)),
          std::to_string(surveyDate(index)),
          landUse(index),
          placeName(index) + " " + std::to_string(1 + index % 97)};
}

std::string joined(const std::vector<std::string>& values, std::string_view separator) {
  std::string text;
  for (const std::string& value : values) {
    if (!text.empty()) text += separator;
    text += value;
  }
  return text;
}

}  // namespace

void makeRows(const Options& options) {
  TextFile csv(options.folder / "rows.csv");
  TextFile ascii(options.folder / "rows.txt");
  ascii << "\nTABLE\nINFO\n//Tabela de Atributos ASCII gerada pelo Sistema KALDEX\n"
           "SEPARATOR ;\nUNFORMATED\nCATEGORY_OBJ   imoveis\nT_KEY ; TEXT ; 32 ; 0";
  std::vector<std::string> names;
  for (const TableColumn& column : kColumns) {
    names.emplace_back(column.name);
    ascii << "\n" << column.name << " ; " << column.declaration;
  }
  ascii << "\nINFO_END";
  csv << joined(names, ",") << "\n";
  for (int i = 0; i < options.records(); ++i) {
    const std::vector<std::string> values = row(i);
    csv << joined(values, ",") << "\n";
    std::string key = std::to_string(i + 1);
    key.insert(0, 8 - std::min<std::size_t>(8, key.size()), '0');
    ascii << "\n" << key << " ; " << latin1(joined(values, " ; "));
  }
  ascii << "\nEND";
  ascii.close();
  csv.close();
}

}  // namespace kaldex
