// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/graph_command.h"

#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <memory>
#include <set>

#include "platform/host/system_path.h"
#include "tools/tarnmf/checked_process.h"
#include "tools/tarnmf/graph.h"
#include "tools/tarnmf/name_hint.h"
#include "tools/tarnmf/other_programs.h"
#include "tools/tarnmf/tell.h"
#include "tools/tarnmf/usage_error.h"

namespace tool {
namespace {

// Larger graphs are hard to read.
constexpr std::size_t kManyNodes = 200;

struct GraphOptions {
  ProcessOptions process;
  std::string focus;  // empty: everything
  std::size_t depth = 2;
  bool svg = false;
  bool json = false;
};

// Nothing when nothing has the name; that has been told.
Graph FocusedGraph(const Graph& graph, const GraphOptions& options) {
  Graph part = Surroundings(graph, options.focus, options.depth);
  if (!part.nodes.empty()) return part;
  std::set<std::string> names;
  for (const GraphNode& node : graph.nodes)
    names.insert(node.name);
  Tell("nothing has the name or id \"{}\"{}", options.focus,
       NameHint(options.focus, {names.begin(), names.end()}, "there are"));
  return part;
}

// True when it could be drawn.
bool PrintSvg(const std::string& dot) {
  const ScratchDirectory scratch;
  const std::filesystem::path file = scratch.Path() / "graph.dot";
  std::ofstream(file, std::ios::binary) << dot;
  if (RunProgram({"dot", "-Tsvg", NarrowPath(file)})) return true;
  Tell(
      "the picture is drawn by the program dot of graphviz, which is not installed "
      "or fails; without --svg the graph is printed as its input");
  return false;
}

int RunGraph(const GraphOptions& options) {
  const CheckedProcess process(options.process);
  Graph graph = DrawGraph(process);
  bool isFound = true;
  if (!options.focus.empty()) {
    graph = FocusedGraph(graph, options);
    isFound = !graph.nodes.empty();
  } else if (graph.nodes.size() > kManyNodes) {
    Tell("{} nodes; --focus NAME draws the surroundings of one", graph.nodes.size());
  }
  if (options.json) fmt::print("{}", GraphJson(graph));
  if (options.json || !isFound) return isFound ? 0 : 1;
  const std::string dot = DotText(graph);
  if (options.svg) return PrintSvg(dot) ? 0 : 1;
  fmt::print("{}", dot);
  return 0;
}

}  // namespace

void AddGraph(CLI::App& app, Action& action) {
  const auto options = std::make_shared<GraphOptions>();
  CLI::App* const graph = app.add_subcommand(
      "graph", "Draw modules, classes and services as a graph in the language of graphviz");
  AddProcessOptions(*graph, options->process);
  CLI::Option* const focus =
      graph->add_option("--focus", options->focus, "draw the surroundings of this one only")
          ->type_name("NAME|ID");
  graph->add_option("--depth", options->depth, "how many edges away from the focus")
      ->type_name("N")
      ->check(CountProblem)
      ->capture_default_str()
      ->needs(focus);
  CLI::Option* const svg =
      graph->add_flag("--svg", options->svg, "print a picture, with the help of graphviz");
  graph->add_flag("--json", options->json, "print JSON")->excludes(svg);
  graph->callback([&action, options] { action = [options] { return RunGraph(*options); }; });
}

}  // namespace tool
