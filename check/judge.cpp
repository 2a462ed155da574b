// SPDX-License-Identifier: Apache-2.0
#include "check/judge.h"

#include <algorithm>
#include <climits>
#include <expat.h>
#include <memory>
#include <type_traits>
#include <unordered_map>
#include <utility>

#include "check/expansion.h"

namespace tarnmf::check {
namespace {

// How much work references to entities may make, and how deep expat may go into them: it calls itself
// for each.
constexpr std::uint64_t kMostBytes = 4U << 20U;
constexpr std::uint32_t kMostDepth = 200;
// Attributes by default in all elements together.
constexpr std::size_t kMostDefaults = 100'000;

static_assert(kRefusedCharacter == XML_ERROR_INVALID_TOKEN);

class Judgement {
 public:
  Judgement(std::string_view text, Document& document, bool readsValues)
      : text_(text), document_(document), parser_(XML_ParserCreate("UTF-8")) {
    XML_SetUserData(parser_.get(), this);
    if (document.doctype.Size() == 0) return;
    XML_SetParamEntityParsing(parser_.get(), XML_PARAM_ENTITY_PARSING_ALWAYS);
    XML_SetExternalEntityRefHandler(parser_.get(), LeaveUnread);
    XML_SetDoctypeDeclHandler(parser_.get(), OnDoctype, OnDoctypeEnd);
    XML_SetEntityDeclHandler(parser_.get(), OnEntity);
    XML_SetAttlistDeclHandler(parser_.get(), OnAttribute);
    XML_SetSkippedEntityHandler(parser_.get(), OnSkipped);
    if (readsValues) XML_SetStartElementHandler(parser_.get(), OnElement);
  }

  Verdict Run() {
    std::string_view rest = text_;
    XML_Status status = XML_STATUS_OK;
    do {
      const std::size_t size = std::min<std::size_t>(rest.size(), INT_MAX);
      const bool isLast = size == rest.size();
      status = XML_Parse(parser_.get(), rest.data(), static_cast<int>(size), isLast);
      rest.remove_prefix(size);
    } while (!rest.empty() && status == XML_STATUS_OK);
    if (status != XML_STATUS_OK) Refuse();
    AdoptDefaults();
    return std::move(verdict_);
  }

 private:
  struct Default {
    NodeId node;
    std::size_t number;  // of DocumentType::defaults
    std::string text;
  };

  static Judgement& Of(void* data) { return *static_cast<Judgement*>(data); }
  std::size_t Offset() const {
    return static_cast<std::size_t>(std::max<XML_Index>(XML_GetCurrentByteIndex(parser_.get()), 0));
  }

  void Refuse() {
    const XML_Error error = XML_GetErrorCode(parser_.get());
    if (error == XML_ERROR_ABORTED || error == XML_ERROR_AMPLIFICATION_LIMIT_BREACH) {
      verdict_.isCutShort = true;
    } else {
      verdict_.refusal = Refusal{error, std::min(Offset(), text_.size())};
    }
  }

  void CutShort() { XML_StopParser(parser_.get(), XML_FALSE); }

  // ---- The document type ------------------------------------------------------------------------

  static int LeaveUnread(XML_Parser, const XML_Char*, const XML_Char*, const XML_Char*,
                         const XML_Char*) {
    return XML_STATUS_OK;
  }

  static void OnDoctype(void* data, const XML_Char*, const XML_Char* systemId, const XML_Char*,
                        int) {
    if (systemId == nullptr) return;
    Of(data).verdict_.type.systemId = systemId;
    Of(data).isOpenEnded_ = true;
  }

  static void OnSkipped(void* data, const XML_Char*, int) { Of(data).isOpenEnded_ = true; }

  static void OnDoctypeEnd(void* data) {
    Judgement& self = Of(data);
    const Expansion expansion(self.verdict_.type.entities);
    const std::string_view content = self.text_.substr(self.document_.doctype.end);
    if (expansion.Depth() > kMostDepth || expansion.SizeOfReferences(content) > kMostBytes)
      self.CutShort();
  }

  static void OnEntity(void* data, const XML_Char* name, int isParameter, const XML_Char* value,
                       int valueLength, const XML_Char*, const XML_Char* systemId, const XML_Char*,
                       const XML_Char* notation) {
    Judgement& self = Of(data);
    Entity entity;
    entity.name = name;
    entity.isParameter = isParameter != 0;
    entity.isExternal = value == nullptr;
    self.isOpenEnded_ |= entity.isParameter && entity.isExternal;
    entity.isUnparsed = notation != nullptr;
    if (value != nullptr) entity.value.assign(value, static_cast<std::size_t>(valueLength));
    if (systemId != nullptr) entity.systemId = systemId;
    // They may refer to each other before all of them are known.
    if (entity.isParameter && entity.value.find('%') != std::string::npos &&
        ++self.parameterChain_ > kMostDepth)
      self.CutShort();
    self.verdict_.type.entities.push_back(std::move(entity));
  }

  static void OnAttribute(void* data, const XML_Char* element, const XML_Char* attribute,
                          const XML_Char*, const XML_Char* value, int) {
    if (value == nullptr) return;
    Judgement& self = Of(data);
    std::vector<DefaultValue>& defaults = self.verdict_.type.defaults;
    self.defaultNumbers_.emplace(KeyOf(element, attribute), defaults.size());
    defaults.push_back(self.DefaultAt(self.Offset(), element, attribute));
  }

  static std::string KeyOf(const XML_Char* element, const XML_Char* attribute) {
    return std::string(element) + ' ' + attribute;
  }

  // The place is that of the value, or of a reference to an entity in which all of it stands.
  DefaultValue DefaultAt(std::size_t offset, const XML_Char* element, const XML_Char* attribute) {
    DefaultValue value{element, attribute, {offset, offset}, {offset, offset}};
    const std::size_t name = text_.rfind(value.attribute, offset);
    if (name != std::string_view::npos && name > document_.doctype.begin)
      value.name = {name, name + value.attribute.size()};
    if (offset < text_.size() && (text_[offset] == '"' || text_[offset] == '\'')) {
      const std::size_t end = text_.find(text_[offset], offset + 1);
      if (end != std::string_view::npos) value.value = {offset + 1, end};
    }
    return value;
  }

  // ---- Values -----------------------------------------------------------------------------------

  // Elements that come out of entities stand where the reference is, and the document has none there.
  static void OnElement(void* data, const XML_Char*, const XML_Char** attributes) {
    Judgement& self = Of(data);
    const std::size_t offset = self.Offset();
    std::vector<Node>& nodes = self.document_.nodes;
    while (self.node_ < nodes.size() && nodes[self.node_].span.begin < offset)
      ++self.node_;
    if (self.node_ == nodes.size()) return;
    const Node& node = nodes[self.node_];
    if (node.span.begin != offset || node.kind != NodeKind::kElement) return;
    self.TakeValues(node, attributes);
  }

  void TakeValues(const Node& node, const XML_Char** attributes) {
    const int specified = XML_GetSpecifiedAttributeCount(parser_.get()) / 2;
    if (static_cast<std::uint32_t>(specified) != node.attributeCount) return;
    for (std::uint32_t i = 0; i < node.attributeCount; ++i, attributes += 2) {
      Attribute& attribute = document_.attributes[node.firstAttribute + i];
      attribute.text = attributes[1];
      attribute.isKnown = attribute.isKnown || !isOpenEnded_;
    }
    const std::string element(text_.substr(node.name.begin, node.name.Size()));
    for (; *attributes != nullptr; attributes += 2) {
      const auto number = defaultNumbers_.find(KeyOf(element.c_str(), attributes[0]));
      if (number == defaultNumbers_.end()) continue;
      defaults_.push_back({static_cast<NodeId>(node_), number->second, attributes[1]});
    }
    if (defaults_.size() > kMostDefaults) CutShort();
  }

  // The attributes of an element stand together, so that defaults move those of all later ones.
  void AdoptDefaults() {
    if (defaults_.empty()) return;
    std::vector<Attribute> all;
    auto next = defaults_.begin();
    for (NodeId id = 0; id < document_.nodes.size(); ++id) {
      Node& node = document_.nodes[id];
      const auto first = document_.attributes.begin() + node.firstAttribute;
      const auto begin = static_cast<std::uint32_t>(all.size());
      std::move(first, first + node.attributeCount, std::back_inserter(all));
      for (; next != defaults_.end() && next->node == id; ++next) {
        const DefaultValue& value = verdict_.type.defaults[next->number];
        all.push_back({value.name, value.value, std::move(next->text), true, true});
      }
      node.firstAttribute = begin;
      node.attributeCount = static_cast<std::uint32_t>(all.size()) - begin;
    }
    document_.attributes = std::move(all);
  }

  struct FreeParser {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
  };

  std::string_view text_;
  Document& document_;
  std::unique_ptr<std::remove_pointer_t<XML_Parser>, FreeParser> parser_;
  Verdict verdict_;
  std::unordered_map<std::string, std::size_t> defaultNumbers_;  // by element and attribute
  std::vector<Default> defaults_;
  std::size_t node_ = 0;  // the first one that has not been met
  std::uint32_t parameterChain_ = 0;
  bool isOpenEnded_ = false;  // what is not read may declare more
};

}  // namespace

bool IsBreakingOff(const Refusal& refusal) {
  constexpr int kErrors[] = {XML_ERROR_NO_ELEMENTS, XML_ERROR_UNCLOSED_TOKEN,
                             XML_ERROR_PARTIAL_CHAR, XML_ERROR_UNCLOSED_CDATA_SECTION};
  return std::find(std::begin(kErrors), std::end(kErrors), refusal.error) != std::end(kErrors);
}

Verdict Judge(std::string_view text, Document& document, bool readsValues) {
  return Judgement(text, document, readsValues).Run();
}

}  // namespace tarnmf::check
