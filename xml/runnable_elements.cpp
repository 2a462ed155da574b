// SPDX-License-Identifier: Apache-2.0
// "runnable" and "runnables".
#include <memory>
#include <new>

#include "grammar/manifest.h"
#include "xml/elements.h"
#include "xml/rows.h"

namespace tarnmf {
namespace {

using RunnableReader = liMfReader::RunnableReader;
using RunnableMfReader = liMfReader::RunnableMfReader;

constexpr auto kRunnableAttributes =
    kAttributesOf<RunnableReader, grammar::kRunnable,
                  Row<"moduleref", &MfRunnableT::moduleref, RunnableReader::kSeenModuleRef>>;

constexpr auto kRunnableChildren =
    kChildrenOf<RunnableReader, grammar::kRunnable, Child<"service", &ReadServiceRole>,
                Child<"app", &ReadAppRole>, Child<"launcher", &ReadLauncherRole>>;

BtkErrorT ReadRunnable(RunnableMfReader& reader, const Element& element) {
  if (BtkErrorT e = AdmitOneMore(reader)) return e;
  const std::unique_ptr<RunnableReader> runnableReader(
      reader.CreateRunnableReader(reader.runnables, reader.modules));
  if (!runnableReader) return kBtkNoMemory;
  std::unique_ptr<MfRunnableT> runnable(new (std::nothrow) MfRunnableT);
  if (!runnable) return kBtkNoMemory;
  runnableReader->runnable = runnable.get();

  if (BtkErrorT e = DispatchAttributes(element, *runnableReader, kRunnableAttributes)) {
    return e;
  }
  // Stands for the load point that the runnable is read for, until the loader lends its own.
  runnable->loadpoint = btk_wcsdup(BTK_W(""));
  if (runnable->loadpoint == nullptr) return kBtkNoMemory;
  runnable->flags |= kMfRunnableOwnsLoadpoint;
  if (BtkErrorT e = DispatchChildren(element, *runnableReader, kRunnableChildren)) return e;

  if (!reader.runnables->Append(runnable.get())) return kBtkNoMemory;
  runnable.release();
  reader.flags |= kReadOne;
  return kBtkOk;
}

constexpr auto kRunnablesChildren =
    kChildrenOf<RunnableMfReader, grammar::kRunnables, Child<"runnable", &ReadRunnable>>;

BtkErrorT ReadRunnables(RunnableMfReader& reader, const Element& element) {
  return ReadListElement(reader, element, kRunnablesChildren);
}

}  // namespace

constinit const ElementTable<RunnableMfReader> kDocumentRunnables =
    kChildrenOf<RunnableMfReader, grammar::kRunnableManifest, Child<"runnable", &ReadRunnable>,
                Child<"runnables", &ReadRunnables>>;

}  // namespace tarnmf
