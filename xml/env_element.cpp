#include "xml/env_element.h"

#include <new>

#include "platform/runtime.h"
#include "xml/attributes.h"

namespace tarnmf {
namespace {

using EnvReader = liMfReader::EnvReader;

struct RestrictTo {
  static BtkErrorT Read(EnvReader& reader, const XMLCh* text) {
    Utf8Text word;
    if (BtkErrorT e = ReadUtf8(text, word)) return e;
    std::uint32_t& flags = reader.Target(RecordTag<EnvCmdT>()).flags;
    if (btk_strcasecmp(word.get(), "create") == 0) {
      flags |= kEnvCmdCreate;
    } else if (btk_strcasecmp(word.get(), "override") == 0) {
      flags |= kEnvCmdOverride;
    } else {
      return kBtkMalformed;
    }
    return kBtkOk;
  }
};

using CommandName = Owned<Wide<&EnvCmdT::name>, &EnvCmdT::flags, kEnvCmdOwnsText>;

constexpr MfTagEntryT kEnvAttributes[] = {
    {"initstate", Attribute<EnvReader, Keyword<kInitState, &MfRunRoleBaseT::initstate>,
                            EnvReader::kSeenInitState>},
};

constexpr MfTagEntryT kValueCommandAttributes[] = {
    {"name", Attribute<EnvReader, CommandName, EnvReader::kSeenName>},
    {"restrictto", Attribute<EnvReader, RestrictTo, EnvReader::kSeenRestrictTo>},
};

constexpr MfTagEntryT kUnsetAttributes[] = {
    {"name", Attribute<EnvReader, CommandName, EnvReader::kSeenName>},
};

// The command at the end of the reader's list: it is built there and released there, unless it
// joins the list.
class NewCommand {
 public:
  NewCommand(EnvReader& reader, EnvCmdT::ActionT action)
      : reader_(reader), command_(new (reader.env.end()) EnvCmdT(action)) {}
  NewCommand(const NewCommand&) = delete;
  NewCommand& operator=(const NewCommand&) = delete;
  ~NewCommand() {
    if (!joined_) ReleaseCommand(*command_);
  }

  EnvCmdT* operator->() const { return command_; }

  void Join() {
    reader_.env.AppendReserved(*command_);
    joined_ = true;
  }

 private:
  EnvReader& reader_;
  EnvCmdT* command_;
  bool joined_ = false;
};

BtkErrorT ReserveCommand(EnvReader& reader) {
  reader.flags &= ~EnvReader::kSeenOfCommand;
  return reader.env.ReserveMore(1) ? kBtkOk : kBtkNoMemory;
}

template <EnvCmdT::ActionT Action>
BtkErrorT ReadValueCommand(EnvReader& reader, DOMNode& element) {
  DOMNode* const child = element.getFirstChild();
  if (child == nullptr) return kBtkUnexpected;
  if (BtkErrorT e = ReserveCommand(reader)) return e;
  NewCommand command(reader, Action);
  if (BtkErrorT e = DispatchAttributes(element, &reader, kValueCommandAttributes)) return e;

  if (child->getNodeType() != DOMNode::TEXT_NODE) return kBtkUnexpected;
  WideText value(btk_wcsdup(child->getNodeValue()));
  if (!value) return kBtkNoMemory;
  if ((reader.flags & EnvReader::kSeenName) == 0) return kBtkMissing;
  command->value = value.release();
  command->flags |= kEnvCmdOwnsText;
  command.Join();
  return kBtkOk;
}

BtkErrorT ReadUnset(EnvReader& reader, DOMNode& element) {
  if (element.hasChildNodes()) return kBtkUnexpected;
  if (BtkErrorT e = ReserveCommand(reader)) return e;
  NewCommand command(reader, EnvCmdT::kUnset);
  if (BtkErrorT e = DispatchAttributes(element, &reader, kUnsetAttributes)) return e;
  command.Join();
  return kBtkOk;
}

constexpr MfTagEntryT kEnvChildren[] = {
    {"set", Element<EnvReader, ReadValueCommand<EnvCmdT::kSet>>},
    {"unset", Element<EnvReader, ReadUnset>},
    {"append", Element<EnvReader, ReadValueCommand<EnvCmdT::kAppend>>},
    {"prepend", Element<EnvReader, ReadValueCommand<EnvCmdT::kPrepend>>},
};

}  // namespace

BtkErrorT ReadEnv(liMfReader::RunnableReader& reader, DOMNode& element) {
  EnvReader envReader(reader.role);
  if (BtkErrorT e = DispatchOptionalAttributes(element, &envReader, kEnvAttributes)) return e;
  if (BtkErrorT e = DispatchChildren(element, &envReader, kEnvChildren)) return e;
  EnvList replaced;
  replaced.Adopt(reader.role->env);
  envReader.env.HandOver(reader.role->env);
  return kBtkOk;
}

}  // namespace tarnmf
