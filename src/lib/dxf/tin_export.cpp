#include <QObject>
#include <algorithm>
#include <array>
#include <vector>

#include "base/tracer.h"
#include "kaldex/model/tin.h"
#include "lib/dxf/drawing_export.h"

inline namespace kaldex_v1 {

/// Writes the edges or the triangles of a surface.
class IEDXF::TinExport : private IEDXF::DrawingExport {
 public:
  TinExport(IEDXF& handler, Tin& tin);
  ~TinExport();

  /// The operation as a whole: what `write` writes of a vector that has to be a surface.
  static int run(IEDXF& handler, Vector* vec, int (TinExport::*write)());

  int exportEdges();
  int exportTriangles();

 private:
  /// Whether the node is there and has a height; one behind the last is told to the user.
  bool isUsable(int node) const;
  kaldex::DrawingOutput::Vertex vertex(int node) const;

  kaldex::ProgressScope progress_;
  Tin& tin_;
  std::vector<double> places_;  ///< of the nodes, as they are printed
  const char* kind_ = "edges";
  long long read_ = 0;
  long long written_ = 0;
};

IEDXF::TinExport::TinExport(IEDXF& handler, Tin& tin)
    : DrawingExport(handler),
      progress_(kaldex::progressSteps(static_cast<long long>(tin.lastEdge()) + 1)),
      tin_(tin) {
  places_.reserve(2 * tin.nodes().size());
  for (const TinNode& node : tin.nodes()) places_.insert(places_.end(), {node.x, node.y});
  convert(places_.data(), tin.nodes().size());
}

IEDXF::TinExport::~TinExport() {
  kaldex::reportRead(kind_, read_);
  kaldex::reportWritten(kind_, written_);
  kaldex::reportLeftOut("no_geometry", read_ - written_);
}

bool IEDXF::TinExport::isUsable(int node) const {
  if (node > tin_.nodeCount())
    show(QObject::tr("Ponteiro de arquivo inválido!") + "(tin->Line())[i].Node > (tin->Node())size");
  if (node < 0 || node >= tin_.nodeCount()) return false;
  return tin_.nodes()[static_cast<std::size_t>(node)].height < static_cast<float>(kUnsetLimit);
}

kaldex::DrawingOutput::Vertex IEDXF::TinExport::vertex(int node) const {
  const auto at = static_cast<std::size_t>(node);
  return {places_[2 * at], places_[2 * at + 1], tin_.nodes()[at].height};
}

int IEDXF::TinExport::exportEdges() {
  begin();
  for (const TinEdge& edge : tin_.edges()) {
    if (!wantsMore()) break;
    progress_.step();
    ++read_;
    if (edge.Node[0] < 0 || edge.Node[1] < 0) continue;
    const bool first = isUsable(edge.Node[0]);
    const bool second = isUsable(edge.Node[1]);
    if (!first || !second) continue;
    out_.edge(vertex(edge.Node[0]), vertex(edge.Node[1]));
    ++written_;
  }
  return finish();
}

int IEDXF::TinExport::exportTriangles() {
  kind_ = "triangles";
  begin();
  for (int triangle = 1; triangle < tin_.triangleCount() && wantsMore(); ++triangle) {
    progress_.step();
    ++read_;
    std::array<int, 3> nodes{};
    tin_.NodesId(triangle, nodes.data());
    if (!std::all_of(nodes.begin(), nodes.end(), [this](int node) { return isUsable(node); })) continue;
    out_.face({vertex(nodes[0]), vertex(nodes[1]), vertex(nodes[2])});
    ++written_;
  }
  return finish();
}

int IEDXF::TinExport::run(IEDXF& handler, Vector* vec, int (TinExport::*write)()) {
  return handler.guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    auto* const tin = dynamic_cast<Tin*>(vec);
    if (tin == nullptr) return logicRestriction("No TIN in Vector");
    if (!handler.openFile("w+")) return 0;
    if (!tin->isLoaded()) tin->LoadTin();
    TinExport work(handler, *tin);
    return (work.*write)();
  });
}

int IEDXF::ExportTIN(Vector* vec) {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::ExportTIN");
  return TinExport::run(*this, vec, &TinExport::exportEdges);
}

int IEDXF::ExportTIN3D(Vector* vec) {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::ExportTIN3D");
  return TinExport::run(*this, vec, &TinExport::exportTriangles);
}

}  // namespace kaldex_v1
