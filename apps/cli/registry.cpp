#include "cli/registry.h"

#include <algorithm>

namespace kaldex::cli {

namespace {

template <class Kind>
const Kind* findKind(const std::vector<Kind>& kinds, const QString& name) {
  const auto found = std::find_if(kinds.begin(), kinds.end(),
                                  [&](const Kind& kind) { return name == QLatin1String(kind.name); });
  return found == kinds.end() ? nullptr : &*found;
}

template <class Fits>
const Format* firstFormat(Fits fits) {
  const auto found = std::find_if(formats().begin(), formats().end(), fits);
  return found == formats().end() ? nullptr : &*found;
}

}  // namespace

const std::vector<Format>& formats() {
  static const std::vector<Format> all = {asciiFormat(), shapefileFormat(), csvFormat(), dxfFormat(),
                                          arcinfoFormat(), kmlFormat()};
  return all;
}

const ImportKind* Format::importKind(const QString& kind) const {
  return findKind(imports, kind);
}

const ExportKind* Format::exportKind(const QString& kind) const {
  return findKind(exports, kind);
}

const TableImportKind* Format::tableImport(const QString& kind) const {
  return findKind(tableImports, kind);
}

const TableExportKind* Format::tableExport(const QString& kind) const {
  return findKind(tableExports, kind);
}

const Format* findFormat(const QString& name) {
  return firstFormat([&](const Format& format) { return name == QLatin1String(format.name); });
}

const Format* formatOfName(const QString& path) {
  return firstFormat([&](const Format& format) {
    return std::any_of(format.endings.begin(), format.endings.end(),
                       [&](const QString& ending) { return path.endsWith(ending, Qt::CaseInsensitive); });
  });
}

const Format* formatOfContent(FileFormat content) {
  return firstFormat([&](const Format& format) { return format.content == content; });
}

Vector* firstVector(InfoLayer& layer, std::initializer_list<short> kinds) {
  for (const short kind : kinds) {
    if (Vector* const vector = layer.vector(kind)) return vector;
  }
  return nullptr;
}

}  // namespace kaldex::cli
