// SPDX-License-Identifier: Apache-2.0
#include "publish/publisher_impl.h"

#include <algorithm>
#include <new>

#include "publish/batch_checks.h"
#include "publish/index_merge.h"
#include "publish/register_interfaces.h"
#include "publish/register_runnables.h"
#include "publish/resolve_modules.h"

namespace tarnmf {
namespace {

bool IsMissing(const void* array, std::int32_t count) {
  return array == nullptr && count > 0;
}

template <class List, class Record>
void AppendReserved(List& list, const MfListT<Record>& records) {
  for (Record* record : records)
    list.AppendReserved(record);
}

}  // namespace

BtkErrorT liMfPublisherImpl::Add(MfIntfClassT** classes, std::int32_t classCount,
                                 MfModuleT** modules, std::int32_t moduleCount,
                                 MfRunnableT** runnables, std::int32_t runnableCount) {
  if (IsMissing(classes, classCount) || IsMissing(modules, moduleCount) ||
      IsMissing(runnables, runnableCount)) {
    return kBtkNullArgument;
  }
  try {
    const BtkErrorT result =
        AddBatch({classes, std::max(classCount, 0)}, {modules, std::max(moduleCount, 0)},
                 {runnables, std::max(runnableCount, 0)});
    if (result != kBtkOk) batch.Forget();
    return result;
  } catch (...) {
    batch.Forget();
    throw;
  }
}

BtkErrorT liMfPublisherImpl::AddBatch(const MfListT<MfIntfClassT>& classes,
                                      const MfListT<MfModuleT>& modules,
                                      const MfListT<MfRunnableT>& runnables) {
  if (CheckBatch(modules, classes, batch, merged)) return kBtkUnexpected;
  IndexMerge merge(merged, batch);
  if (!merge.Prepare() || !newModules.ReserveMore(modules.count) ||
      !newClasses.ReserveMore(classes.count) || !newRunnables.ReserveMore(runnables.count)) {
    return kBtkNoMemory;
  }
  merge.Move();
  AppendReserved(newModules, modules);
  AppendReserved(newClasses, classes);
  AppendReserved(newRunnables, runnables);
  return kBtkOk;
}

BtkErrorT liMfPublisherImpl::Publish(bool registerInterfaces) {
  if (BtkErrorT e = ResolveModules(newModules)) return e;
  newModules.Forget();
  if (registerInterfaces) {
    if (BtkErrorT e = RegisterInterfaces(newClasses, merged.modules, disposition)) return e;
  }
  newClasses.Forget();
  if (BtkErrorT e = RegisterRunnables(newRunnables)) return e;
  newRunnables.Forget();
  return kBtkOk;
}

}  // namespace tarnmf

BtkErrorT liMfPublisher::CreateNew(liMfPublisher** out, IntfDispositionT disposition) {
  auto* const publisher = new (std::nothrow) tarnmf::liMfPublisherImpl(disposition);
  if (publisher == nullptr) return kBtkNoMemory;
  *out = publisher;
  return kBtkOk;
}

void liMfPublisher::Dispose() {
  delete this;
}

liMfPublisher::~liMfPublisher() = default;
