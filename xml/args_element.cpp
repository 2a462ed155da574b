#include "xml/args_element.h"

#include "records/release.h"
#include "xml/argument_text.h"
#include "xml/attributes.h"

namespace tarnmf {
namespace {

using ArgsReader = liMfReader::ArgsReader;

std::uint32_t& ArgFlags(ArgsReader& reader) {
  return reader.flags;
}

constexpr MfTagEntryT kArgAttributes[] = {
    {"precomposed", Attribute<ArgsReader, Flag<&ArgFlags, ArgsReader::kPrecomposed>,
                              ArgsReader::kSeenPrecomposed>},
};

BtkErrorT ReadArg(ArgsReader& reader, DOMNode& element) {
  reader.flags &= ~(ArgsReader::kPrecomposed | ArgsReader::kSeenPrecomposed);
  DOMNode* const child = element.getFirstChild();
  if (child != nullptr && child->getNextSibling() != nullptr) return kBtkUnexpected;
  if (BtkErrorT e = DispatchOptionalAttributes(element, &reader, kArgAttributes)) return e;
  if (child == nullptr) return kBtkOk;
  if (child->getNodeType() != DOMNode::TEXT_NODE) return kBtkUnexpected;
  WideText text;
  if (BtkErrorT e = ReadWide(child->getNodeValue(), text)) return e;
  const bool precomposed = (reader.flags & ArgsReader::kPrecomposed) != 0;
  return precomposed ? AppendWholeArgument(std::move(text), reader.args)
                     : AppendArguments(std::move(text), reader.args);
}

constexpr MfTagEntryT kArgsChildren[] = {
    {"arg", Element<ArgsReader, ReadArg>},
};

}  // namespace

BtkErrorT ReadArgs(liMfReader::RunnableReader& reader, DOMNode& element) {
  ArgsReader argsReader(reader.role);
  if (BtkErrorT e = DispatchChildren(element, &argsReader, kArgsChildren)) return e;
  // A null pointer ends the list; it is not counted.
  if (!argsReader.args.Append(nullptr)) return kBtkNoMemory;
  ReleaseStrings(reader.role->args);
  argsReader.args.HandOver(reader.role->args);
  --reader.role->args.count;
  return kBtkOk;
}

}  // namespace tarnmf
