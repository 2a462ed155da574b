// SPDX-License-Identifier: Apache-2.0
// What a role holds: its arguments and the commands for its environment.
#include <new>

#include "grammar/manifest.h"
#include "records/release.h"
#include "xml/argument_text.h"
#include "xml/elements.h"
#include "xml/rows.h"

namespace tarnmf {
namespace {

// ---- Arguments ---------------------------------------------------------------------------------

using ArgsReader = liMfReader::ArgsReader;

constexpr auto kArgAttributes =
    kAttributesOf<ArgsReader, grammar::kArg,
                  FlagRow<"precomposed", &ArgsReader::flags, ArgsReader::kPrecomposed,
                          ArgsReader::kSeenPrecomposed>>;

BtkErrorT ReadArg(ArgsReader& reader, const Element& element) {
  reader.flags &= ~ArgsReader::kOfArgument;
  const Node* const child = element.firstChild;
  if (child != nullptr && child->nextSibling != nullptr) return kBtkUnexpected;
  if (BtkErrorT e = DispatchOptionalAttributes(element, reader, kArgAttributes)) return e;
  if (child == nullptr) return kBtkOk;
  if (child->kind != NodeKind::kText) return kBtkUnexpected;
  WideText text;
  if (BtkErrorT e = ReadText(TextOf(*child), text)) return e;
  return Given(reader, ArgsReader::kPrecomposed) ? AppendWholeArgument(std::move(text), reader.args)
                                                 : AppendArguments(std::move(text), reader.args);
}

constexpr auto kArgsChildren = kChildrenOf<ArgsReader, grammar::kArgs, Child<"arg", &ReadArg>>;

// ---- Environment -------------------------------------------------------------------------------

using EnvReader = liMfReader::EnvReader;

struct RestrictTo {
  static BtkErrorT Read(EnvReader& reader, const btkWChar* text) {
    Utf8Text word;
    if (BtkErrorT e = ReadText(text, word)) return e;
    const std::int32_t* const flag = FindWord(word.get(), grammar::kRestrictToWords);
    if (flag == nullptr) return kBtkMalformed;
    reader.Target(RecordTag<EnvCmdT>()).flags |= static_cast<std::uint32_t>(*flag);
    return kBtkOk;
  }
};

using VariableRow =
    OwnedRow<"name", &EnvCmdT::name, &EnvCmdT::flags, kEnvCmdOwnsText, EnvReader::kSeenName>;

constexpr auto kEnvAttributes =
    kAttributesOf<EnvReader, grammar::kEnv,
                  Row<"initstate", &MfRunRoleBaseT::initstate, EnvReader::kSeenInitState>>;

static_assert(grammar::kAppend.attributes.data() == grammar::kSet.attributes.data() &&
              grammar::kPrepend.attributes.data() == grammar::kSet.attributes.data());
constexpr auto kValueCommandAttributes =
    kAttributesOf<EnvReader, grammar::kSet, VariableRow,
                  SpecialRow<"restrictto", RestrictTo, EnvReader::kSeenRestrictTo>>;

constexpr auto kUnsetAttributes = kAttributesOf<EnvReader, grammar::kUnset, VariableRow>;

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
BtkErrorT ReadValueCommand(EnvReader& reader, const Element& element) {
  const Node* const child = element.firstChild;
  if (child == nullptr) return kBtkUnexpected;
  if (BtkErrorT e = ReserveCommand(reader)) return e;
  NewCommand command(reader, Action);
  if (BtkErrorT e = DispatchAttributes(element, reader, kValueCommandAttributes)) return e;

  if (child->kind != NodeKind::kText) return kBtkUnexpected;
  WideText value(btk_wcsdup(TextOf(*child)));
  if (!value) return kBtkNoMemory;
  if (!Given(reader, EnvReader::kSeenName)) return kBtkMissing;
  command->value = value.release();
  command->flags |= kEnvCmdOwnsText;
  command.Join();
  return kBtkOk;
}

BtkErrorT ReadUnset(EnvReader& reader, const Element& element) {
  if (element.firstChild != nullptr) return kBtkUnexpected;
  if (BtkErrorT e = ReserveCommand(reader)) return e;
  NewCommand command(reader, EnvCmdT::kUnset);
  if (BtkErrorT e = DispatchAttributes(element, reader, kUnsetAttributes)) return e;
  command.Join();
  return kBtkOk;
}

constexpr auto kEnvChildren =
    kChildrenOf<EnvReader, grammar::kEnv,  //
                Child<"set", &ReadValueCommand<EnvCmdT::kSet>>, Child<"unset", &ReadUnset>,
                Child<"append", &ReadValueCommand<EnvCmdT::kAppend>>,
                Child<"prepend", &ReadValueCommand<EnvCmdT::kPrepend>>>;

}  // namespace

BtkErrorT ReadArgs(liMfReader::RunnableReader& reader, const Element& element) {
  ArgsReader argsReader(reader.role);
  if (BtkErrorT e = DispatchChildren(element, argsReader, kArgsChildren)) return e;
  // A null pointer ends the list; it is not counted.
  if (!argsReader.args.Append(nullptr)) return kBtkNoMemory;
  ReleaseStrings(reader.role->args);
  argsReader.args.HandOver(reader.role->args);
  --reader.role->args.count;
  return kBtkOk;
}

BtkErrorT ReadEnv(liMfReader::RunnableReader& reader, const Element& element) {
  EnvReader envReader(reader.role);
  if (BtkErrorT e = DispatchOptionalAttributes(element, envReader, kEnvAttributes)) return e;
  if (BtkErrorT e = DispatchChildren(element, envReader, kEnvChildren)) return e;
  ReleaseCommands(reader.role->env);
  envReader.env.HandOver(reader.role->env);
  return kBtkOk;
}

}  // namespace tarnmf
