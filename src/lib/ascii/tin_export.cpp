#include <QObject>
#include <algorithm>
#include <array>
#include <vector>

#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/model/tin.h"
#include "lib/ascii/section_writer.h"
#include "lib/frame/progress_scope.h"

inline namespace kaldex_v1 {

namespace {
constexpr int kPlaneDecimals = 3;
constexpr int kHeightDecimals = 6;
}  // namespace

/// Writes the edges or the triangles of a surface as one section. The handler's file must be open.
class IEAsc::TinExport {
 public:
  TinExport(IEAsc& handler, Tin& tin) : tin_(tin), writer_(handler) {}
  ~TinExport();

  int exportEdges();
  int exportTriangles();

 private:
  void begin(const char* keyword);
  /// Whether the node is there; one behind the last is told to the user.
  bool isNode(int node) const;
  bool hasHeight(int node) const;
  void writeVertex(int node);

  Tin& tin_;
  SectionWriter writer_;
  std::vector<double> places_;  ///< of the nodes, as they are printed
  const char* kind_ = "edges";
  long long read_ = 0;
  long long written_ = 0;
};

IEAsc::TinExport::~TinExport() {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  if (read_ > 0) job->countRead(kind_, read_);
  if (written_ > 0) job->countWritten(kind_, written_);
  if (read_ > written_) job->countLeftOut("no_geometry", read_ - written_);
}

void IEAsc::TinExport::begin(const char* keyword) {
  if (!tin_.isLoaded()) tin_.LoadTin();
  places_.reserve(2 * tin_.nodes().size());
  for (const TinNode& node : tin_.nodes()) {
    places_.push_back(node.x);
    places_.push_back(node.y);
  }
  writer_.coordinateWriter().convert(places_.data(), tin_.nodes().size());
  writer_.begin(keyword);
  writer_.endHeader();
}

bool IEAsc::TinExport::isNode(int node) const {
  if (node > tin_.nodeCount()) {
    show(QObject::tr("Ponteiro de arquivo inválido!") + "(tin->Line())[i].Node > (tin->Node())size");
  }
  return node >= 0 && node < tin_.nodeCount();
}

bool IEAsc::TinExport::hasHeight(int node) const {
  return tin_.nodes()[static_cast<std::size_t>(node)].height < static_cast<float>(kUnsetLimit);
}

void IEAsc::TinExport::writeVertex(int node) {
  const auto at = static_cast<std::size_t>(node);
  writer_.coordinateWriter().print(&places_[2 * at], "   ", kPlaneDecimals);
  writer_.out().append("   ");
  writer_.out().appendFixed(static_cast<double>(tin_.nodes()[at].height), kHeightDecimals);
}

int IEAsc::TinExport::exportEdges() {
  begin("TIN");
  kaldex::ProgressScope progress(tin_.lastEdge() + 1);
  for (const TinEdge& edge : tin_.edges()) {
    if (!writer_.ok() || progress.cancelled()) break;
    progress.step();
    ++read_;
    const bool whole = isNode(edge.Node[0]) && isNode(edge.Node[1]);
    if (!whole || !hasHeight(edge.Node[0]) || !hasHeight(edge.Node[1])) continue;
    writer_.out().append("\nEDGE ");
    for (const int node : edge.Node) {
      writer_.out().append('\n');
      writeVertex(node);
      writer_.out().append(' ');
    }
    writer_.endRecord();
    ++written_;
  }
  return writer_.finish(!progress.cancelled());
}

int IEAsc::TinExport::exportTriangles() {
  kind_ = "triangles";
  begin("TIN3D");
  kaldex::ProgressScope progress(tin_.triangleCount());
  for (int triangle = 1; triangle < tin_.triangleCount(); ++triangle) {
    if (!writer_.ok() || progress.cancelled()) break;
    progress.step();
    ++read_;
    std::array<int, 3> nodes{};
    tin_.NodesId(triangle, nodes.data());
    if (!std::all_of(nodes.begin(), nodes.end(), [&](int node) { return isNode(node) && hasHeight(node); }))
      continue;
    writer_.out().append("\nEDGE");
    for (const std::size_t corner : {0, 1, 2, 0}) {
      writer_.out().append('\n');
      writeVertex(nodes[corner]);
    }
    writer_.endRecord();
    ++written_;
  }
  return writer_.finish(!progress.cancelled());
}

int IEAsc::ExportTIN(Vector* vec) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::ExportTIN");
  return guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    auto* const tin = dynamic_cast<Tin*>(vec);
    if (tin == nullptr) return logicRestriction("No TIN in Vector");
    return openFile("a+") ? TinExport(*this, *tin).exportEdges() : 0;
  });
}

int IEAsc::ExportTIN3D(Vector* vec) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::ExportTIN3D");
  return guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    auto* const tin = dynamic_cast<Tin*>(vec);
    if (tin == nullptr) return logicRestriction("No TIN in Vector");
    return openFile("a+") ? TinExport(*this, *tin).exportTriangles() : 0;
  });
}

}  // namespace kaldex_v1
