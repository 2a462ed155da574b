// SPDX-License-Identifier: Apache-2.0
#include "publish/publish_index.h"

namespace tarnmf {

void PublishIndexT::Forget() {
  for (ModuleListMember list : kModuleLists)
    (this->*list).Forget();
  classes.Forget();
}

}  // namespace tarnmf
