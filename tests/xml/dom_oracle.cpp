// SPDX-License-Identifier: Apache-2.0
#include "tests/xml/dom_oracle.h"

#include <xercesc/dom/DOM.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include "platform/filesystem.h"
#include "tests/support/memory_stream.h"
#include "tests/support/record_dump.h"
#include "xml/elements.h"
#include "xml/name_cache.h"
#include "xml/xml_input_source.h"
#include "xml/xml_parser.h"

namespace tarnmf::test {
namespace {

using xercesc::DOMNode;

// Copies a DOM element with everything below it.
class TreeOfDom {
 public:
  Element* Copy(const DOMNode& element) {
    auto* const copy = Make<Element>(NodeKind::kElement);
    copy->name = names_.Get(element.getNodeName());
    const xercesc::DOMNamedNodeMap& map = *element.getAttributes();
    auto* const attributes = arena_.AllocateArray<Attribute>(map.getLength());
    for (XMLSize_t i = 0; i < map.getLength(); ++i)
      attributes[i] = {names_.Get(map.item(i)->getNodeName()), map.item(i)->getNodeValue()};
    copy->attributes = {attributes, map.getLength()};
    Node** place = &copy->firstChild;
    for (DOMNode* child = element.getFirstChild(); child; child = child->getNextSibling()) {
      *place = CopyNode(*child);
      place = &(*place)->nextSibling;
    }
    return copy;
  }

 private:
  template <class NodeType>
  NodeType* Make(NodeKind kind) {
    auto* const node = new (arena_.Allocate(sizeof(NodeType))) NodeType{};
    node->kind = kind;
    return node;
  }

  Node* CopyNode(const DOMNode& node) {
    switch (node.getNodeType()) {
      case DOMNode::ELEMENT_NODE:
        return Copy(node);
      case DOMNode::TEXT_NODE: {
        auto* const text = Make<TextNode>(NodeKind::kText);
        text->text = const_cast<btkWChar*>(node.getNodeValue());
        return text;
      }
      case DOMNode::COMMENT_NODE:
        return Make<Node>(NodeKind::kComment);
      default:
        return Make<Node>(NodeKind::kInstruction);  // a reader tells none of the others apart
    }
  }

  Arena arena_;
  NameCache names_{arena_};
};

BtkErrorT ReadDom(const xercesc::DOMDocument* document, liMfReader& reader) {
  if (document == nullptr) return kBtkMalformed;
  const DOMNode* const root = document->getDocumentElement();
  if (root == nullptr) return kBtkUnexpected;
  TreeOfDom tree;
  return DispatchElement(*tree.Copy(*root), reader, kRoots);
}

// `parse` reads the stream into the container.
template <class Parse>
std::string OutcomeOf(const std::string& document, std::size_t readLimit, Parse parse) {
  MemoryStream stream(document);
  stream.LimitReads(readLimit);
  MfLdpDataT data;
  try {
    const BtkErrorT code = parse(data, stream);
    if (code != kBtkOk) return "code " + std::to_string(code);
  } catch (const xercesc::XMLException& e) {
    return "XMLException " + std::to_string(e.getCode()) + " " +
           btkFSPath(e.getMessage()).NarrowText();
  } catch (const xercesc::DOMException& e) {
    return "DOMException " + std::to_string(e.code);
  }
  return DumpWithoutFreshIds(data);
}

}  // namespace

std::string Outcome(const std::string& document, std::size_t readLimit) {
  return OutcomeOf(document, readLimit, [](MfLdpDataT& data, btkIStream& stream) {
    return liMfXMLParser().Parse(&data, &stream);
  });
}

std::string OutcomeByDom(const std::string& document, std::size_t readLimit) {
  return OutcomeOf(document, readLimit, [](MfLdpDataT& data, btkIStream& stream) {
    ClassList classes;
    ModuleList modules;
    RunnableList runnables;
    btkXMLInputSource source(&stream);
    xercesc::XercesDOMParser parser(nullptr, xercesc::XMLPlatformUtils::fgMemoryManager, nullptr);
    parser.parse(source);
    liMfReader reader(classes, modules, runnables);
    const BtkErrorT code = ReadDom(parser.getDocument(), reader);
    if (code != kBtkOk) return code;
    classes.HandOver(data.classes);
    modules.HandOver(data.modules);
    runnables.HandOver(data.runnables);
    return kBtkOk;
  });
}

}  // namespace tarnmf::test
