#include "publish/class_pass.h"

#include "publish/claim_module.h"
#include "publish/class_sides.h"

namespace tarnmf {
namespace {

// ---- What classes of one affinity must have and what they claim --------------------------------

struct AffinityRuleT {
  MfSideT requiredSides[2];     // one of these
  const ClaimRuleT* claims[3];  // in this order, for the sides that are there
};

constexpr AffinityRuleT kAppRule = {{kMfClientSide, kMfClientSide}, {&kAppClaim}};
constexpr AffinityRuleT kAgentRule = {{kMfAgentSide, kMfAgentSide}, {&kAgentClaim}};
constexpr AffinityRuleT kGenericRule = {{kMfClientSide, kMfClientSide},
                                        {&kAgentClaim, &kGenericClaim}};
constexpr AffinityRuleT kServiceRule = {{kMfClientSide, kMfServiceSide},
                                        {&kAgentClaim, &kServiceClientClaim, &kServiceServerClaim}};

const AffinityRuleT& RuleOf(MfAffinityT affinity) {
  switch (affinity) {
    case kMfAppClass:
      return kAppRule;
    case kMfAgentClass:
      return kAgentRule;
    case kMfGenericClass:
      return kGenericRule;
    default:
      return kServiceRule;
  }
}

bool ClaimSides(const MfIntfClassT& record, PublishIndexT& batch, const PublishIndexT& merged) {
  const AffinityRuleT& rule = RuleOf(record.affinity);
  if (!HasSide(record, rule.requiredSides[0]) && !HasSide(record, rule.requiredSides[1])) {
    return false;
  }
  for (const ClaimRuleT* claim : rule.claims) {
    if (claim == nullptr || !HasSide(record, claim->side)) continue;
    if (!ClaimModule(record.sides[claim->side].moduleref, *claim, batch, merged)) return false;
  }
  return true;
}

// ---- Records that complete each other ----------------------------------------------------------

// One record brings the client side, the other one the service side; the agent side may come with
// either of them.
bool Completes(const MfIntfClassT& record, const MfIntfClassT& earlier) {
  const bool hasClient = HasSide(earlier, kMfClientSide);
  const bool hasService = HasSide(earlier, kMfServiceSide);
  return hasClient != hasService && HasSide(record, kMfClientSide) == hasService &&
         HasSide(record, kMfServiceSide) == hasClient &&
         !(HasSide(earlier, kMfAgentSide) && HasSide(record, kMfAgentSide));
}

// The record has no side that `earlier` has.
void MoveSides(MfIntfClassT& record, MfIntfClassT& earlier) {
  for (std::int32_t side = 0; side < kMfSideCount; ++side) {
    if (record.sides[side].moduleref == nullptr) continue;
    earlier.ids[side] = record.ids[side];
    earlier.sides[side] = record.sides[side];
    record.sides[side].moduleref = nullptr;
  }
}

MfIntfClassT* FindEarlier(const UniIdT& id, const BisectResultT& inBatch,
                          const PublishIndexT& batch, const PublishIndexT& merged) {
  if (inBatch.found) return batch.classes[inBatch.place];
  const BisectResultT at = FindClass(merged.classes, id);
  return at.found ? merged.classes[at.place] : nullptr;
}

bool AcceptClass(MfIntfClassT& record, PublishIndexT& batch, const PublishIndexT& merged) {
  const UniIdT& id = record.ids[kMfClientSide];
  const BisectResultT at = FindClass(batch.classes, id);
  MfIntfClassT* const earlier = FindEarlier(id, at, batch, merged);
  if (earlier != nullptr && !Completes(record, *earlier)) return false;
  if (!ClaimSides(record, batch, merged)) return false;
  if (earlier == nullptr) return batch.classes.Insert(at.place, &record);
  MoveSides(record, *earlier);
  return true;
}

}  // namespace

bool RunClassPass(const MfListT<MfIntfClassT>& classes, PublishIndexT& batch,
                  const PublishIndexT& merged) {
  for (MfIntfClassT* record : classes) {
    if (!AcceptClass(*record, batch, merged)) return false;
  }
  return true;
}

}  // namespace tarnmf
