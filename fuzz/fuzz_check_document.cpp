// SPDX-License-Identifier: Apache-2.0
// Reads one input as a manifest of the linter. Whatever it is, everything found lies within the text
// and within what it is part of; and what is well-formed has the parts that expat finds in it.
#include <expat.h>
#include <string>

#include "check/manifest.h"
#include "fuzz/harness.h"

namespace tarnmf::fuzz {
namespace {

using namespace check;

void RequireOrder(const Manifest& manifest) {
  const std::vector<Node>& nodes = manifest.document.nodes;
  for (NodeId id = 1; id < nodes.size(); ++id) {
    const Node& node = nodes[id];
    const Node& parent = nodes[node.parent];
    Require(node.parent < id && node.span.begin >= nodes[id - 1].span.begin);
    Require(node.span.begin < node.span.end && node.span.begin <= node.content.begin &&
            node.content.begin <= node.content.end && node.content.end <= node.span.end);
    Require(parent.content.begin <= node.span.begin && node.span.end <= parent.content.end);
    Require(node.next == kNoNode || nodes[node.next].span.begin >= node.span.end);
    for (const Attribute& each : manifest.document.AttributesOf(id)) {
      Require(each.isDefault ||
              (node.startTag.begin < each.name.begin && each.name.end <= each.value.begin &&
               each.value.end <= node.startTag.end));
    }
  }
}

void RequireFindings(const Manifest& manifest) {
  int faults = 0;
  for (const Finding& finding : manifest.findings) {
    Require(finding.place.span.begin <= finding.place.span.end &&
            finding.place.span.end <= manifest.source.Text().size());
    Require(manifest.source.At(finding.place.span.end).line <= manifest.source.LineCount());
    faults += finding.rule == Rule::kNotWellFormed ? 1 : 0;
  }
  if (manifest.source.IsDecoded()) Require(faults == (manifest.isWellFormed ? 0 : 1));
}

// The parts of a document in their order, each with its depth; texts with what they read as.
class Outline {
 public:
  void Add(char kind, int depth, std::string_view what) {
    text_ += "\n" + std::to_string(depth) + kind;
    text_ += what;
    last_ = kind;
  }
  void AddTo(char kind, int depth, std::string_view what) {
    if (last_ != kind) Add(kind, depth, {});
    text_ += what;
  }
  void End() { last_ = '\0'; }
  const std::string& Text() const { return text_; }

 private:
  std::string text_;
  char last_ = '\0';
};

std::string OutlineOf(const Document& document) {
  Outline outline;
  std::vector<int> depths(document.nodes.size(), 0);
  for (NodeId id = 1; id < document.nodes.size(); ++id) {
    const Node& node = document[id];
    const int depth = depths[node.parent];
    depths[id] = depth + 1;
    if (node.kind == NodeKind::kElement) {
      outline.Add('<', depth, std::to_string(node.span.begin) + std::string(document.Name(id)));
      for (const Attribute& each : document.AttributesOf(id))
        outline.Add('=', depth, std::string(document.Name(each)) + "=" + each.text);
    } else if (node.kind == NodeKind::kCData) {
      outline.Add('[', depth, document.TextOf(id));
    } else if (node.kind == NodeKind::kText && node.parent != kDocumentNode) {
      outline.Add('\'', depth, document.TextOf(id));
    } else if (node.kind == NodeKind::kComment) {
      outline.Add('!', depth, {});
    } else if (node.kind == NodeKind::kInstruction) {
      outline.Add('?', depth, document.Name(id));
    }
  }
  return outline.Text();
}

class ExpatOutline {
 public:
  ExpatOutline() : parser_(XML_ParserCreate("UTF-8")) {
    XML_SetUserData(parser_, this);
    XML_SetElementHandler(parser_, OnElement, OnEnd);
    XML_SetCharacterDataHandler(parser_, OnText);
    XML_SetCdataSectionHandler(parser_, OnCData, OnCDataEnd);
    XML_SetCommentHandler(parser_, OnComment);
    XML_SetProcessingInstructionHandler(parser_, OnInstruction);
  }
  ~ExpatOutline() { XML_ParserFree(parser_); }
  ExpatOutline(const ExpatOutline&) = delete;
  ExpatOutline& operator=(const ExpatOutline&) = delete;

  // Empty where expat refuses the text.
  std::string Of(std::string_view text) {
    const auto size = static_cast<int>(text.size());
    return XML_Parse(parser_, text.data(), size, XML_TRUE) == XML_STATUS_OK ? outline_.Text() : "";
  }

 private:
  static ExpatOutline& Self(void* data) { return *static_cast<ExpatOutline*>(data); }

  static void OnElement(void* data, const XML_Char* name, const XML_Char** attributes) {
    ExpatOutline& self = Self(data);
    self.outline_.Add('<', self.depth_,
                      std::to_string(XML_GetCurrentByteIndex(self.parser_)) + name);
    for (; *attributes != nullptr; attributes += 2)
      self.outline_.Add('=', self.depth_, std::string(attributes[0]) + "=" + attributes[1]);
    ++self.depth_;
  }
  static void OnEnd(void* data, const XML_Char*) {
    --Self(data).depth_;
    Self(data).outline_.End();
  }
  static void OnText(void* data, const XML_Char* text, int size) {
    ExpatOutline& self = Self(data);
    self.outline_.AddTo(self.isInCData_ ? '[' : '\'', self.depth_,
                        {text, static_cast<std::size_t>(size)});
  }
  static void OnCData(void* data) {
    Self(data).isInCData_ = true;
    Self(data).outline_.Add('[', Self(data).depth_, {});
  }
  static void OnCDataEnd(void* data) {
    Self(data).isInCData_ = false;
    Self(data).outline_.End();
  }
  static void OnComment(void* data, const XML_Char*) {
    Self(data).outline_.Add('!', Self(data).depth_, {});
  }
  static void OnInstruction(void* data, const XML_Char* target, const XML_Char*) {
    Self(data).outline_.Add('?', Self(data).depth_, target);
  }

  XML_Parser parser_;
  Outline outline_;
  int depth_ = 0;
  bool isInCData_ = false;
};

}  // namespace
}  // namespace tarnmf::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  using namespace tarnmf::fuzz;
  const auto manifest = tarnmf::check::ReadManifest("fuzz.tmfx", TextOf(bytes, size));
  RequireOrder(*manifest);
  RequireFindings(*manifest);
  const tarnmf::check::Document& document = manifest->document;
  const bool isPlain =
      document.doctype.Size() == 0 && document.version == tarnmf::check::XmlVersion::k10;
  if (!manifest->isWellFormed || !isPlain) return 0;
  const std::string& text = manifest->source.Text();
  const std::string expected = ExpatOutline().Of(text.substr(0, text.find('\0')));
  Require(expected.empty() || expected == OutlineOf(document));
  return 0;
}
