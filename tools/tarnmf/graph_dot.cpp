// SPDX-License-Identifier: Apache-2.0
// Graphs in the language of graphviz.
#include <fmt/format.h>
#include <iterator>

#include "tools/tarnmf/graph.h"

namespace tool {
namespace {

// By GraphNode::Kind.
constexpr const char* kNodeStyles[] = {"shape=box", R"(shape=box, style=dashed, color=red)",
                                       "shape=ellipse", "shape=hexagon"};
static_assert(std::size(kNodeStyles) == static_cast<std::size_t>(GraphNode::Kind::kService) + 1);

// By GraphEdge::Kind. Edges that say nothing about the order are not followed by it.
constexpr const char* kEdgeStyles[] = {
    "", "", "", ", style=bold", "", ", style=dotted", ", style=dashed, color=red, constraint=false",
};
static_assert(std::size(kEdgeStyles) == static_cast<std::size_t>(GraphEdge::Kind::kHiddenBy) + 1);

std::string Quoted(const std::string& text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') quoted += '\\';
    if (c == '\n') {
      quoted += "\\n";
    } else {
      quoted += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
    }
  }
  return quoted + '"';
}

std::string NodeId(const GraphNode& node) {
  return Quoted(fmt::format("{} {}", node.loadpoint, node.key));
}

std::string NodeLine(const GraphNode& node) {
  std::string attributes = fmt::format("label={}, {}", Quoted(node.label),
                                       kNodeStyles[static_cast<std::size_t>(node.kind)]);
  if (!node.file.empty()) {
    attributes += fmt::format(", URL={0}, tooltip={0}",
                              Quoted(fmt::format("{}:{}", node.file, node.at.line)));
  }
  return fmt::format("    {} [{}];\n", NodeId(node), attributes);
}

}  // namespace

std::string DotText(const Graph& graph) {
  std::vector<std::string> clusters(graph.loadpoints.size());
  for (const GraphNode& node : graph.nodes)
    clusters[node.loadpoint] += NodeLine(node);
  std::string text =
      "digraph tarnmf {\n"
      "  rankdir=LR;\n"
      "  node [fontname=\"sans-serif\", fontsize=11];\n"
      "  edge [fontname=\"sans-serif\", fontsize=9];\n";
  for (std::size_t i = 0; i < clusters.size(); ++i) {
    if (clusters[i].empty()) continue;
    const GraphLoadPoint& loadpoint = graph.loadpoints[i];
    const std::string label =
        loadpoint.directory + (loadpoint.scope.empty() ? "" : "\nscope " + loadpoint.scope);
    text += fmt::format("  subgraph cluster_{} {{\n    label={};\n{}  }}\n", i, Quoted(label),
                        clusters[i]);
  }
  for (const GraphEdge& edge : graph.edges) {
    text += fmt::format("  {} -> {} [label=\"{}\"{}];\n", NodeId(graph.nodes[edge.from]),
                        NodeId(graph.nodes[edge.to]), EdgeName(edge.kind),
                        kEdgeStyles[static_cast<std::size_t>(edge.kind)]);
  }
  return text + "}\n";
}

}  // namespace tool
