#include "xml/runnable_elements.h"

#include <memory>
#include <new>

#include "xml/attributes.h"
#include "xml/document_rules.h"
#include "xml/role_elements.h"

namespace tarnmf {
namespace {

using RunnableReader = liMfReader::RunnableReader;
using RunnableMfReader = liMfReader::RunnableMfReader;

constexpr MfTagEntryT kRunnableAttributes[] = {
    {"moduleref", Attribute<RunnableReader, Utf8<&MfRunnableT::moduleref, EmptyText::kRefused>,
                            RunnableReader::kSeenModuleRef>},
};

constexpr MfTagEntryT kRunnableChildren[] = {
    {"service", Element<RunnableReader, ReadServiceRole>},
    {"app", Element<RunnableReader, ReadAppRole>},
    {"launcher", Element<RunnableReader, ReadLauncherRole>},
};

BtkErrorT ReadRunnable(RunnableMfReader& reader, DOMNode& element) {
  if (BtkErrorT e = AdmitOneMore(reader)) return e;
  const std::unique_ptr<RunnableReader> runnableReader(
      reader.CreateRunnableReader(reader.runnables, reader.modules));
  if (!runnableReader) return kBtkNoMemory;
  std::unique_ptr<MfRunnableT> runnable(new (std::nothrow) MfRunnableT);
  if (!runnable) return kBtkNoMemory;
  runnableReader->runnable = runnable.get();

  if (BtkErrorT e = DispatchAttributes(element, runnableReader.get(), kRunnableAttributes)) {
    return e;
  }
  // Stands for the load point that the runnable is read for, until the loader lends its own.
  runnable->loadpoint = btk_wcsdup(BTK_W(""));
  if (runnable->loadpoint == nullptr) return kBtkNoMemory;
  runnable->flags |= kMfRunnableOwnsLoadpoint;
  if (BtkErrorT e = DispatchChildren(element, runnableReader.get(), kRunnableChildren)) return e;

  if (!reader.runnables->Append(runnable.get())) return kBtkNoMemory;
  runnable.release();
  reader.flags |= kReadOne;
  return kBtkOk;
}

constexpr MfTagEntryT kRunnablesChildren[] = {
    {"runnable", Element<RunnableMfReader, ReadRunnable>},
};

BtkErrorT ReadRunnables(RunnableMfReader& reader, DOMNode& element) {
  return ReadListElement(reader, element, kRunnablesChildren);
}

constexpr MfTagEntryT kDocumentRunnableRows[] = {
    {"runnable", Element<RunnableMfReader, ReadRunnable>},
    {"runnables", Element<RunnableMfReader, ReadRunnables>},
};

}  // namespace

constinit const MfTagTableT kDocumentRunnables = kDocumentRunnableRows;

}  // namespace tarnmf
