// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/symbols.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "check/class_records.h"
#include "check/declared.h"
#include "check/names.h"

namespace tool::lsp {
namespace {

using namespace tarnmf::check;
using Kind = Symbol::Kind;

class Outline {
 public:
  explicit Outline(const Manifest& manifest)
      : document_(manifest.document), declarations_(manifest.declarations) {}

  std::vector<Symbol> All() const {
    std::vector<Symbol> symbols;
    for (const ModuleDeclaration& module : declarations_.modules) {
      if (!module.isNested) symbols.push_back(ModuleSymbol(module));
    }
    for (const ClassDeclaration& declaration : declarations_.classes)
      symbols.push_back(ClassSymbol(declaration));
    for (const RunnableDeclaration& runnable : declarations_.runnables)
      symbols.push_back(RunnableSymbol(runnable));
    std::sort(symbols.begin(), symbols.end(), IsBefore);
    return symbols;
  }

 private:
  static bool IsBefore(const Symbol& one, const Symbol& other) {
    return one.span.begin < other.span.begin;
  }

  // Named by the value, or else by the element.
  Symbol Make(Kind kind, NodeId node, const std::optional<TextValue>& name) const {
    Symbol symbol;
    symbol.kind = kind;
    symbol.span = document_[node].span;
    symbol.nameSpan = document_[node].name;
    symbol.name = document_.Name(node);
    if (name && !name->text.empty()) {
      symbol.detail = std::exchange(symbol.name, name->text);
      symbol.nameSpan = name->span;
    }
    return symbol;
  }

  Symbol ModuleSymbol(const ModuleDeclaration& module) const {
    Symbol symbol = Make(Kind::kModule, module.node, module.id);
    for (std::size_t i = 1; i < module.implementations.size(); ++i) {
      const ImplementationDeclaration& other = module.implementations[i];
      symbol.children.push_back(Make(Kind::kProperty, other.node, other.machinetype));
    }
    return symbol;
  }

  Symbol ClassSymbol(const ClassDeclaration& declaration) const {
    std::optional<TextValue> name = declaration.commonname;
    if (!name && declaration.id) name = TextValue{IdText(declaration.id->id), declaration.id->span};
    Symbol symbol = Make(Kind::kClass, declaration.node, name);
    for (const SideDeclaration& side : declaration.sides) {
      if (!side.IsThere()) continue;
      Symbol& child = symbol.children.emplace_back(Make(Kind::kInterface, side.node, std::nullopt));
      if (side.moduleref) child.detail = side.moduleref->text;
      if (side.nested >= 0)
        child.children.push_back(
            ModuleSymbol(declarations_.modules[static_cast<std::size_t>(side.nested)]));
    }
    std::sort(symbol.children.begin(), symbol.children.end(), IsBefore);
    return symbol;
  }

  Symbol RunnableSymbol(const RunnableDeclaration& runnable) const {
    Symbol symbol = Make(Kind::kFunction, runnable.node, runnable.moduleref);
    for (const ServiceDeclaration& service : runnable.services) {
      std::optional<TextValue> name = service.commonname;
      if (!name && service.id) name = TextValue{IdText(service.id->id), service.id->span};
      symbol.children.push_back(Make(Kind::kObject, service.node, name));
    }
    for (const auto* programs : {&runnable.apps, &runnable.launchers}) {
      for (const ProgramDeclaration& program : *programs)
        symbol.children.push_back(Make(Kind::kObject, program.node, program.nameid));
    }
    std::sort(symbol.children.begin(), symbol.children.end(), IsBefore);
    return symbol;
  }

  const Document& document_;
  const Declarations& declarations_;
};

}  // namespace

std::vector<Symbol> SymbolsOf(const Manifest& manifest) {
  return Outline(manifest).All();
}

bool IsFoundBy(std::string_view query, std::string_view name) {
  const std::string sought = Folded(query);
  const std::string folded = Folded(name);
  std::size_t at = 0;
  return std::all_of(sought.begin(), sought.end(), [&](char c) {
    at = folded.find(c, at);
    return at != folded.npos && ++at > 0;
  });
}

}  // namespace tool::lsp
