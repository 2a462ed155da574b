#include "tarnmf/ldp_data.h"

#include "records/release.h"

using tarnmf::TakenListT;

MfLdpDataT::MfLdpDataT() = default;
MfLdpDataT& MfLdpDataT::operator=(const MfLdpDataT& other) = default;
MfLdpDataT::~MfLdpDataT() {
  // Ends in the reverse order: the classes first, the runnables last.
  TakenListT<MfRunnableT> takenRunnables(runnables);
  TakenListT<MfModuleT> takenModules(modules);
  TakenListT<MfIntfClassT> takenClasses(classes);
  tarnmf::ReleaseText(loadpoint);
}
