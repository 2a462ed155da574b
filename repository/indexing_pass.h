// Files the classes and exposed services of one load point.
#ifndef REPOSITORY_INDEXING_PASS_H
#define REPOSITORY_INDEXING_PASS_H

#include "platform/unique_id.h"
#include "repository/repo_base_impl.h"

namespace tarnmf {

// Files one entry for each class that is hosted by a service of the load point itself, and one for
// each exposed service. Writes what the service manager answers into the classes: the hosting
// service and the versions. A class or service that the manager does not know is left out; without
// a manager that is every one that it would have to be asked about. False when memory could not be
// had; what was filed before stays.
bool IndexLoadpoint(liMfRepoBaseImpl& repo, MfLdpEntryT& ldp, const UniIdT& scope);

}  // namespace tarnmf

#endif  // REPOSITORY_INDEXING_PASS_H
