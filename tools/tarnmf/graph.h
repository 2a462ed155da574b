// SPDX-License-Identifier: Apache-2.0
// The load points of a process as a graph.
#ifndef TOOLS_TARNMF_GRAPH_H
#define TOOLS_TARNMF_GRAPH_H

#include <cstddef>
#include <string>
#include <vector>

#include "check/source.h"
#include "tools/tarnmf/checked_process.h"

namespace tool {

struct GraphNode {
  enum class Kind { kModule, kMissing, kClass, kService };  // missing: a module without a file
  Kind kind;
  std::size_t loadpoint;
  std::string key;   // in its load point
  std::string id;    // of what it stands for; empty: none
  std::string name;  // that people know it by
  std::string file;  // where it is declared; empty: nowhere
  tarnmf::check::Position at;
  std::string label;  // lines
};

struct GraphEdge {
  enum class Kind { kClient, kService, kAgent, kHostedBy, kRuns, kPreloadedWith, kHiddenBy };
  Kind kind;
  std::size_t from;  // numbers of nodes
  std::size_t to;
};

struct GraphLoadPoint {
  std::string directory;
  std::string scope;  // empty: none
};

struct Graph {
  std::vector<GraphLoadPoint> loadpoints;
  std::vector<GraphNode> nodes;
  std::vector<GraphEdge> edges;
};

// What an edge says: "hosted by".
const char* EdgeName(GraphEdge::Kind kind);

Graph DrawGraph(const CheckedProcess& process);

// The nodes that are called so, or have this id, with all that is at most `depth` edges away from
// one of them, in either direction. Empty when there is none.
Graph Surroundings(const Graph& graph, const std::string& focus, std::size_t depth);

std::string DotText(const Graph& graph);

// For json_format::kGraph.
std::string GraphJson(const Graph& graph);

}  // namespace tool

#endif  // TOOLS_TARNMF_GRAPH_H
