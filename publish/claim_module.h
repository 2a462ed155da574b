// Files the modules of class sides under the roles that these give them, and refuses a module that
// would play two roles that exclude each other.
#ifndef PUBLISH_CLAIM_MODULE_H
#define PUBLISH_CLAIM_MODULE_H

#include "publish/publish_index.h"

namespace tarnmf {

// One kind of class side: what it makes of the module that it names.
struct ClaimRule {
  MfSideT side;
  ModuleListMember excluded[4];  // where the module must not be; null: none further
  ModuleListMember targets[2];   // where it is filed; null: none further
};

inline constexpr ClaimRule kAppClaim = {
    kMfClientSide,
    {&PublishIndexT::agentModules, &PublishIndexT::serviceClientModules,
     &PublishIndexT::serviceServerModules, &PublishIndexT::genericModules},
    {&PublishIndexT::appModules}};
inline constexpr ClaimRule kAgentClaim = {
    kMfAgentSide,
    {&PublishIndexT::appModules, &PublishIndexT::serviceClientModules,
     &PublishIndexT::serviceServerModules, &PublishIndexT::genericModules},
    {&PublishIndexT::agentModules}};
inline constexpr ClaimRule kGenericClaim = {
    kMfClientSide,
    {&PublishIndexT::appModules, &PublishIndexT::agentModules},
    {&PublishIndexT::genericModules}};
inline constexpr ClaimRule kServiceClientClaim = {
    kMfClientSide,
    {&PublishIndexT::appModules, &PublishIndexT::agentModules,
     &PublishIndexT::serviceServerModules},
    {&PublishIndexT::serviceClientModules, &PublishIndexT::genericModules}};
inline constexpr ClaimRule kServiceServerClaim = {
    kMfServiceSide,
    {&PublishIndexT::appModules, &PublishIndexT::agentModules,
     &PublishIndexT::serviceClientModules},
    {&PublishIndexT::serviceServerModules, &PublishIndexT::genericModules}};

// Claims the module with `id`, which a class names on the rule's side. False: an excluded list
// holds it, it is neither of this batch nor filed yet, or memory could not be had.
[[nodiscard]] bool ClaimModule(const char* id, const ClaimRule& rule, PublishIndexT& batch,
                               const PublishIndexT& merged);

}  // namespace tarnmf

#endif  // PUBLISH_CLAIM_MODULE_H
