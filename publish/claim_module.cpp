#include "publish/claim_module.h"

namespace tarnmf {
namespace {

bool IsFiled(const char* id, ModuleListMemberT list, const PublishIndexT& batch,
             const PublishIndexT& merged) {
  return FindModule(batch.*list, id).found || FindModule(merged.*list, id).found;
}

// Only modules of the batch at hand are filed: one of an earlier batch serves further classes in
// the roles that it has and gets no new ones.
bool FileModule(const char* id, SortedModulesT& list, const SortedModulesT& batchModules) {
  const BisectResultT module = FindModule(batchModules, id);
  return module.found && list.Insert(FindModule(list, id).place, batchModules[module.place]);
}

}  // namespace

bool ClaimModule(const char* id, const ClaimRuleT& rule, PublishIndexT& batch,
                 const PublishIndexT& merged) {
  for (ModuleListMemberT list : rule.excluded) {
    if (list != nullptr && IsFiled(id, list, batch, merged)) return false;
  }
  for (ModuleListMemberT list : rule.targets) {
    // A module in the first target is a claimed one: the second is then not asked.
    if (list == nullptr || IsFiled(id, list, batch, merged)) return true;
    if (!FileModule(id, batch.*list, batch.modules)) return false;
  }
  return true;
}

}  // namespace tarnmf
