#include "publish/claim_module.h"

namespace tarnmf {
namespace {

bool IsFiled(const char* id, ModuleListMember list, const PublishIndexT& batch,
             const PublishIndexT& merged) {
  return FindModule(batch.*list, id).found || FindModule(merged.*list, id).found;
}

// Only modules of the batch at hand are filed: one of an earlier batch serves further classes in
// the roles that it has and gets no new ones.
bool FileModule(const char* id, SortedModules& list, const SortedModules& batchModules) {
  const BisectResult module = FindModule(batchModules, id);
  return module.found && list.Insert(FindModule(list, id).place, batchModules[module.place]);
}

}  // namespace

bool ClaimModule(const char* id, const ClaimRule& rule, PublishIndexT& batch,
                 const PublishIndexT& merged) {
  for (ModuleListMember list : rule.excluded) {
    if (list != nullptr && IsFiled(id, list, batch, merged)) return false;
  }
  for (ModuleListMember list : rule.targets) {
    // A module in the first target is a claimed one: the second is then not asked.
    if (list == nullptr || IsFiled(id, list, batch, merged)) return true;
    if (!FileModule(id, batch.*list, batch.modules)) return false;
  }
  return true;
}

}  // namespace tarnmf
