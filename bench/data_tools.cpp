#include "data_tools.h"

#include <charconv>
#include <stdexcept>

namespace kaldex {

void fail(const std::string& what) {
  throw std::runtime_error(what);
}

std::string latin1(std::string_view utf8) {
  std::string text;
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    const auto lead = static_cast<unsigned char>(utf8[i]);
    if (lead < 0x80) {
      text += utf8[i];
      continue;
    }
    if (lead > 0xC3 || i + 1 == utf8.size()) fail("not Latin-1: " + std::string(utf8));
    const auto trail = static_cast<unsigned char>(utf8[++i]);
    text += static_cast<char>((lead & 0x03) << 6 | (trail & 0x3F));
  }
  return text;
}

TextFile::TextFile(const std::filesystem::path& path)
    : path_(path.string()), file_(std::fopen(path_.c_str(), "wb")) {
  if (file_ == nullptr) fail("cannot make " + path_);
  block_.reserve(kBlock + 4096);
}

TextFile::~TextFile() {
  if (file_ != nullptr) std::fclose(file_);
}

TextFile& TextFile::operator<<(double value) {
  char text[64];
  const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, 6).ptr;
  return *this << std::string_view(text, static_cast<std::size_t>(end - text));
}

void TextFile::close() {
  flush();
  const int result = std::fclose(file_);
  file_ = nullptr;
  if (result != 0) fail("cannot write " + path_);
}

void TextFile::flush() {
  if (std::fwrite(block_.data(), 1, block_.size(), file_) != block_.size()) fail("cannot write " + path_);
  block_.clear();
}

void writeHeader(TextFile& file, std::string_view section, std::string_view comment, std::string_view layer,
                 std::string_view model, const Extent& extent) {
  file << "\n" << section << "\nINFO\n" << comment << "\n//Arquivo ASCII gerado pelo Sistema KALDEX\n";
  file << "//Projeto: bench - Plano de informa\xe7\xe3o: " << layer << "\n//Categoria: " << layer;
  file << " - Modelo: " << model
       << "\n"
          "PROJECTION\tUTM, HEMIS -1, ORIG.LAT N 0 0 0.00000, ORIG.LONG O 45 0 0.00000, "
          "LAT1 N 0 0 0.00000, LAT2 N 0 0 0.00000\n"
          "DATUM\tWGS84, Prd 6378137.000000, Pflt 0.003352810665, Pdx 0.00000000, Pdy 0.00000000, "
          "Pdz 0.00000000\n"
          "OFFSETX  500000.000000   OFFSETY  10000000.000000   SCALEFACTOR  0.999600\nBOX\t";
  file << extent.x1 << ", " << extent.y1 << ", " << extent.x2 << ", " << extent.y2;
  file << "\nUNITS Metros\nSCALE\t" << 25000.0;
}

std::string landUse(int index) {
  static const char* const kUses[] = {"residencial", "comércio", "indústria", "área verde",
                                      "serviço público"};
  return kUses[index % 5];
}

std::string placeName(int index) {
  static const char* const kNames[] = {"das Acácias", "São João",   "da Conceição", "dos Ipês",
                                       "Araçá",       "do Açude",   "João Galvão",  "Três Irmãos",
                                       "Água Branca", "dos Órgãos", "Paraíba"};
  return kNames[index % 11];
}

int surveyDate(int index) {
  return (1990 + index % 33) * 10000 + (1 + index % 12) * 100 + 1 + index % 28;
}

}  // namespace kaldex
