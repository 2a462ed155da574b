// SPDX-License-Identifier: Apache-2.0
// How destructors release what a record owns.
#ifndef RECORDS_RELEASE_H
#define RECORDS_RELEASE_H

#include <cstdint>
#include <utility>

#include "tarnmf/list.h"

#include "platform/env_command.h"
#include "platform/memory.h"

namespace tarnmf {

template <class Char>
void ReleaseText(Char*& text) {
  btkStrFree(std::exchange(text, nullptr));
}

// A text that is the record's only when `flags` has `ownedBit`.
template <class Char>
void ReleaseText(Char*& text, std::uint32_t flags, std::uint32_t ownedBit) {
  Char* const taken = std::exchange(text, nullptr);
  if ((flags & ownedBit) != 0) btkStrFree(taken);
}

// The texts of a command that owns them.
inline void ReleaseCommand(EnvCmdT& command) {
  ReleaseText(command.name, command.flags, kEnvCmdOwnsText);
  ReleaseText(command.value, command.flags, kEnvCmdOwnsText);
  command.flags &= ~static_cast<std::uint32_t>(kEnvCmdOwnsText);
}

// Destroys the records of a list, the last one first, and frees the array.
// REQUIRES: the list has been taken out of its record, which no longer shows it.
template <class Record>
void ReleaseRecords(MfListT<Record> list) {
  while (list.count > 0)
    delete list.items[--list.count];
  btkFree(list.items);
}
template <class Record>
MfListT<Record> Take(MfListT<Record>& list) {
  return std::exchange(list, {});
}

// The same for an array of commands, which are no blocks of their own.
inline void ReleaseCommands(MfArrayT<EnvCmdT>& list) {
  const MfArrayT<EnvCmdT> taken = std::exchange(list, {});
  for (EnvCmdT& command : taken)
    ReleaseCommand(command);
  btkFree(taken.items);
}

// The same for an array of strings.
template <class Char>
void ReleaseStrings(MfListT<Char>& list) {
  MfListT<Char> taken = Take(list);
  while (taken.count > 0)
    btkStrFree(taken.items[--taken.count]);
  btkFree(taken.items);
}

}  // namespace tarnmf

#endif  // RECORDS_RELEASE_H
