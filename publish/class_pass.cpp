#include "publish/class_pass.h"

#include "publish/claim_module.h"

namespace tarnmf {
namespace {

// ---- What classes of one affinity must have and what they claim --------------------------------

struct AffinityRule {
  MfSideT requiredSides[2];    // one of these
  const ClaimRule* claims[3];  // in this order, for the sides that are there
};

constexpr AffinityRule kAppRule = {{kMfClientSide, kMfClientSide}, {&kAppClaim}};
constexpr AffinityRule kAgentRule = {{kMfAgentSide, kMfAgentSide}, {&kAgentClaim}};
constexpr AffinityRule kGenericRule = {{kMfClientSide, kMfClientSide},
                                       {&kAgentClaim, &kGenericClaim}};
constexpr AffinityRule kServiceRule = {{kMfClientSide, kMfServiceSide},
                                       {&kAgentClaim, &kServiceClientClaim, &kServiceServerClaim}};

const AffinityRule& RuleOf(MfAffinityT affinity) {
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
  const AffinityRule& rule = RuleOf(record.affinity);
  if (!MfHasSide(record, rule.requiredSides[0]) && !MfHasSide(record, rule.requiredSides[1])) {
    return false;
  }
  for (const ClaimRule* claim : rule.claims) {
    if (claim == nullptr || !MfHasSide(record, claim->side)) continue;
    if (!ClaimModule(record.sides[claim->side].moduleref, *claim, batch, merged)) return false;
  }
  return true;
}

// ---- Records that complete each other ----------------------------------------------------------

// One record brings the client side, the other one the service side; the agent side may come with
// either of them.
bool Completes(const MfIntfClassT& record, const MfIntfClassT& earlier) {
  const bool hasClient = MfHasSide(earlier, kMfClientSide);
  const bool hasService = MfHasSide(earlier, kMfServiceSide);
  return hasClient != hasService && MfHasSide(record, kMfClientSide) == hasService &&
         MfHasSide(record, kMfServiceSide) == hasClient &&
         !(MfHasSide(earlier, kMfAgentSide) && MfHasSide(record, kMfAgentSide));
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

MfIntfClassT* FindEarlier(const UniIdT& id, const BisectResult& inBatch, const PublishIndexT& batch,
                          const PublishIndexT& merged) {
  if (inBatch.found) return batch.classes[inBatch.place];
  const BisectResult at = FindClass(merged.classes, id);
  return at.found ? merged.classes[at.place] : nullptr;
}

bool AcceptClass(MfIntfClassT& record, PublishIndexT& batch, const PublishIndexT& merged) {
  const UniIdT& id = record.ids[kMfClientSide];
  const BisectResult at = FindClass(batch.classes, id);
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
