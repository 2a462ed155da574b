// SPDX-License-Identifier: Apache-2.0
// Graphs as JSON.
#include <utility>

#include "tools/tarnmf/graph.h"
#include "tools/tarnmf/json_form.h"
#include "tools/tarnmf/text.h"

namespace tool {
namespace {

const char* KindName(GraphNode::Kind kind) {
  switch (kind) {
    case GraphNode::Kind::kModule:
    case GraphNode::Kind::kMissing:
      return "module";
    case GraphNode::Kind::kClass:
      return "class";
    case GraphNode::Kind::kService:
      return "service";
  }
  return "";
}

// A module that no manifest declares has no place either.
Json MissingJson(const GraphNode& node) {
  if (node.kind != GraphNode::Kind::kMissing) return {};
  return node.file.empty() ? "declaration" : "file";
}

Json NodeJson(const GraphNode& node) {
  const bool isDeclared = !node.file.empty();
  return {{"kind", KindName(node.kind)},
          {"name", node.name},
          {"id", node.id.empty() ? Json() : Json(node.id)},
          {"file", isDeclared ? Json(node.file) : Json()},
          {"line", isDeclared ? Json(node.at.line) : Json()},
          {"column", isDeclared ? Json(node.at.column) : Json()},
          {"loadpoint", node.loadpoint},
          {"missing", MissingJson(node)},
          {"label", node.label}};
}

}  // namespace

std::string GraphJson(const Graph& graph) {
  Json loadpoints = Json::array();
  for (const GraphLoadPoint& loadpoint : graph.loadpoints) {
    loadpoints.push_back({{"directory", loadpoint.directory},
                          {"scope", loadpoint.scope.empty() ? IdText({}) : loadpoint.scope}});
  }
  Json nodes = Json::array();
  for (const GraphNode& node : graph.nodes)
    nodes.push_back(NodeJson(node));
  Json edges = Json::array();
  for (const GraphEdge& edge : graph.edges)
    edges.push_back({{"kind", EdgeName(edge.kind)}, {"from", edge.from}, {"to", edge.to}});
  return FormText(json_format::kGraph, {{"loadpoints", std::move(loadpoints)},
                                        {"nodes", std::move(nodes)},
                                        {"edges", std::move(edges)}});
}

}  // namespace tool
