// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/graph.h"

#include <fmt/format.h>
#include <map>
#include <optional>
#include <stdexcept>
#include <utility>

#include "check/answers.h"
#include "check/module_files.h"
#include "tools/tarnmf/text.h"

namespace tool {
namespace {

using namespace tarnmf::check;
using NodeKind = GraphNode::Kind;
using EdgeKind = GraphEdge::Kind;

constexpr EdgeKind kSideEdges[] = {EdgeKind::kClient, EdgeKind::kService, EdgeKind::kAgent};

// "FILE:LINE", for what has no id.
std::string LineText(const GraphNode& node) {
  return fmt::format("{}:{}", node.file, node.at.line);
}

class Drawing {
 public:
  explicit Drawing(const CheckedProcess& process) : process_(process) {}

  Graph Draw() {
    for (std::size_t i = 0; i < process_.LoadPoints().size(); ++i) {
      const LoadPoint& loadpoint = *process_.LoadPoints()[i];
      graph_.loadpoints.push_back({loadpoint.directory.Path(),
                                   btkUniIdIsNull(loadpoint.scope) ? "" : IdText(loadpoint.scope)});
      // One whose path another one has is not there for anybody.
      if (!loadpoint.isDuplicate) drawn_.push_back(i);
    }
    for (const std::size_t number : drawn_)
      AddNodes(number);
    for (const std::size_t number : drawn_)
      AddEdges(number);
    AddAnswers();
    return std::move(graph_);
  }

 private:
  // A node of something that is declared; its name and label are still to come.
  static GraphNode NodeAt(NodeKind kind, std::size_t loadpoint, const Manifest& manifest,
                          NodeId node) {
    return {kind,
            loadpoint,
            "",
            "",
            "",
            manifest.source.Path(),
            manifest.source.At(manifest.document[node].name.begin),
            ""};
  }

  // `kind` and the id, or else the place, tell the node from others.
  std::size_t AddNode(GraphNode node, const char* kind, const std::string& more) {
    const std::string key = fmt::format("{} {}", kind, node.id.empty() ? LineText(node) : node.id);
    const int number = numbers_[{node.loadpoint, key}]++;
    node.key = number == 0 ? key : fmt::format("{}#{}", key, number + 1);
    node.label = more.empty() ? node.name : node.name + "\n" + more;
    graph_.nodes.push_back(std::move(node));
    return graph_.nodes.size() - 1;
  }

  void AddEdge(EdgeKind kind, std::size_t from, std::size_t to) {
    graph_.edges.push_back({kind, from, to});
  }

  // ---- Nodes -----------------------------------------------------------------------------------

  void AddNodes(std::size_t number) {
    const LoadPoint& loadpoint = *process_.LoadPoints()[number];
    for (const auto& manifest : loadpoint.manifests) {
      for (const ModuleDeclaration& module : manifest->declarations.modules)
        AddModule(number, *manifest, module);
    }
    for (const ClassRecord& record : process_.Classes()[number]) {
      if (!record.completesFirst) AddClass(number, record);
    }
    for (const auto& manifest : loadpoint.manifests) {
      for (const RunnableDeclaration& runnable : manifest->declarations.runnables) {
        for (const ServiceDeclaration& service : runnable.services)
          AddService(number, *manifest, service);
      }
    }
  }

  void AddModule(std::size_t number, const Manifest& manifest, const ModuleDeclaration& module) {
    const ModuleFile file = FindModuleFile(*process_.LoadPoints()[number], module);
    const bool isMissing = file.search.file.empty();
    GraphNode node =
        NodeAt(isMissing ? NodeKind::kMissing : NodeKind::kModule, number, manifest, module.node);
    if (module.id) node.id = module.id->text;
    const auto& fileName = module.implementations.front().name;
    node.name = module.id ? module.id->text : fileName ? fileName->text + " (nested)" : "(nested)";
    const std::string type = module.type ? module.type->text : "";
    const std::size_t added = AddNode(std::move(node), "module", isMissing ? "no file" : type);
    modules_[&module] = added;
    if (module.id) modulesById_.try_emplace({number, module.id->text}, added);
  }

  void AddClass(std::size_t number, const ClassRecord& record) {
    const ClassDeclaration& declared = *record.declaration;
    GraphNode node = NodeAt(NodeKind::kClass, number, *record.manifest, declared.node);
    if (declared.id) node.id = IdText(declared.id->id);
    node.name = NameOf(node, declared.commonname);
    classes_[&record] = AddNode(std::move(node), "class", "");
  }

  void AddService(std::size_t number, const Manifest& manifest, const ServiceDeclaration& service) {
    GraphNode node = NodeAt(NodeKind::kService, number, manifest, service.node);
    if (service.id) node.id = IdText(service.id->id);
    node.name = NameOf(node, service.commonname);
    const std::string id = node.id;
    const std::size_t added =
        AddNode(std::move(node), "service", fmt::format("version {}", service.version));
    services_[&service] = added;
    if (service.id) servicesById_.try_emplace({number, id}, added);
  }

  template <class Text>
  static std::string NameOf(const GraphNode& node, const std::optional<Text>& commonname) {
    if (commonname) return commonname->text;
    return node.id.empty() ? LineText(node) : node.id;
  }

  // ---- Edges -----------------------------------------------------------------------------------

  // A module that no manifest of the load point declares is drawn as one without a file.
  std::size_t ModuleNamed(std::size_t number, const std::string& id) {
    const auto [known, isNew] = modulesById_.try_emplace({number, id}, graph_.nodes.size());
    if (isNew) {
      AddNode({NodeKind::kMissing, number, "", id, id, "", {}, ""}, "module", "not declared");
    }
    return known->second;
  }

  void AddEdges(std::size_t number) {
    for (const ClassRecord& record : process_.Classes()[number]) {
      if (!record.completesFirst) AddSides(number, record);
    }
    for (const auto& manifest : process_.LoadPoints()[number]->manifests) {
      for (const RunnableDeclaration& runnable : manifest->declarations.runnables) {
        if (!runnable.moduleref) continue;
        for (const ServiceDeclaration& service : runnable.services)
          AddEdge(EdgeKind::kRuns, services_.at(&service),
                  ModuleNamed(number, runnable.moduleref->text));
      }
      for (const ModuleDeclaration& module : manifest->declarations.modules) {
        for (const ImplementationDeclaration& implementation : module.implementations) {
          for (const PreloadDeclaration& preload : implementation.preloads)
            AddPreload(number, module, preload);
        }
      }
    }
  }

  void AddSides(std::size_t number, const ClassRecord& record) {
    for (std::size_t side = 0; side < record.sides.size(); ++side) {
      const SideDeclaration* const declared = record.sides[side];
      if (declared == nullptr) continue;
      const bool isOwn = declared == record.written[side] || record.completedBy == nullptr;
      const Manifest& manifest = *(isOwn ? record : *record.completedBy).manifest;
      const std::size_t module =
          declared->nested >= 0
              ? modules_.at(
                    &manifest.declarations.modules[static_cast<std::size_t>(declared->nested)])
              : ModuleNamed(number, declared->moduleref->text);
      AddEdge(kSideEdges[side], classes_.at(&record), module);
    }
  }

  // The service is of the module's load point, or else of the first one that has it.
  void AddPreload(std::size_t number, const ModuleDeclaration& module,
                  const PreloadDeclaration& preload) {
    if (preload.by != kMfByService || !preload.svcid) return;
    const std::string id = IdText(preload.svcid->id);
    auto service = servicesById_.find({number, id});
    for (std::size_t i = 0; service == servicesById_.end() && i < graph_.loadpoints.size(); ++i)
      service = servicesById_.find({i, id});
    if (service == servicesById_.end()) return;
    AddEdge(EdgeKind::kPreloadedWith, modules_.at(&module), service->second);
  }

  // ---- What queries find -----------------------------------------------------------------------

  // As if the library refused nothing, so that broken load points are drawn, too.
  void AddAnswers() {
    std::vector<IndexedLoadPoint> indexed;
    for (const std::size_t number : drawn_)
      indexed.push_back({process_.LoadPoints()[number].get(), &process_.Classes()[number]});
    const Answers answers(indexed);
    for (const NamedClass& named : answers.Classes()) {
      const std::optional<std::size_t> node = NodeOf(named);
      if (!node || named.state != NamedClass::State::kFiled) continue;
      graph_.nodes[*node].label += fmt::format("\nversion {}", named.version);
      AddEdge(EdgeKind::kHostedBy, *node, services_.at(named.host.service));
      const std::optional<std::size_t> first =
          named.found != nullptr && !named.Answers() ? NodeOf(*named.found) : std::nullopt;
      if (first) AddEdge(EdgeKind::kHiddenBy, *node, *first);
    }
  }

  // One record of a class may complete another, which stands for both.
  std::optional<std::size_t> NodeOf(const NamedClass& named) const {
    const ClassRecord* const record =
        named.record->completesFirst ? named.record->first : named.record;
    const auto node = classes_.find(record);
    return node != classes_.end() ? std::optional(node->second) : std::nullopt;
  }

  using InLoadPoint = std::pair<std::size_t, std::string>;

  const CheckedProcess& process_;
  Graph graph_;
  std::vector<std::size_t> drawn_;      // numbers of load points
  std::map<InLoadPoint, int> numbers_;  // of nodes with one key
  std::map<const ModuleDeclaration*, std::size_t> modules_;
  std::map<InLoadPoint, std::size_t> modulesById_;
  std::map<const ClassRecord*, std::size_t> classes_;
  std::map<const ServiceDeclaration*, std::size_t> services_;
  std::map<InLoadPoint, std::size_t> servicesById_;
};

// The text of an id as ids are shown, or the text itself.
std::string AsIdText(const std::string& text) {
  try {
    return IdText(ParseId(text));
  } catch (const std::invalid_argument&) {
    return text;
  }
}

bool IsNamed(const GraphNode& node, const std::string& focus, const std::string& id) {
  return node.name == focus || node.id == id;
}

}  // namespace

const char* EdgeName(EdgeKind kind) {
  switch (kind) {
    case EdgeKind::kClient:
      return "client";
    case EdgeKind::kService:
      return "service";
    case EdgeKind::kAgent:
      return "agent";
    case EdgeKind::kHostedBy:
      return "hosted by";
    case EdgeKind::kRuns:
      return "runs";
    case EdgeKind::kPreloadedWith:
      return "preloaded with";
    case EdgeKind::kHiddenBy:
      return "hidden by";
  }
  return "";
}

Graph DrawGraph(const CheckedProcess& process) {
  return Drawing(process).Draw();
}

Graph Surroundings(const Graph& graph, const std::string& focus, std::size_t depth) {
  constexpr std::size_t kFar = SIZE_MAX;
  std::vector<std::vector<std::size_t>> neighbours(graph.nodes.size());
  for (const GraphEdge& edge : graph.edges) {
    neighbours[edge.from].push_back(edge.to);
    neighbours[edge.to].push_back(edge.from);
  }
  std::vector<std::size_t> distances(graph.nodes.size(), kFar);
  std::vector<std::size_t> queue;
  const std::string id = AsIdText(focus);
  for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
    if (!IsNamed(graph.nodes[i], focus, id)) continue;
    distances[i] = 0;
    queue.push_back(i);
  }
  for (std::size_t next = 0; next < queue.size(); ++next) {
    if (distances[queue[next]] == depth) break;
    for (const std::size_t neighbour : neighbours[queue[next]]) {
      if (distances[neighbour] != kFar) continue;
      distances[neighbour] = distances[queue[next]] + 1;
      queue.push_back(neighbour);
    }
  }

  Graph part{graph.loadpoints, {}, {}};
  std::vector<std::size_t> numbers(graph.nodes.size());
  for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
    if (distances[i] == kFar) continue;
    numbers[i] = part.nodes.size();
    part.nodes.push_back(graph.nodes[i]);
  }
  for (const GraphEdge& edge : graph.edges) {
    if (distances[edge.from] != kFar && distances[edge.to] != kFar)
      part.edges.push_back({edge.kind, numbers[edge.from], numbers[edge.to]});
  }
  return part;
}

}  // namespace tool
