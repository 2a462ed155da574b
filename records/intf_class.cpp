// SPDX-License-Identifier: Apache-2.0
#include "tarnmf/intf_class.h"

#include "records/release.h"

using tarnmf::ReleaseText;

MfIntfClassT::MfIntfClassT() = default;
MfIntfClassT& MfIntfClassT::operator=(const MfIntfClassT& other) = default;
MfIntfClassT::~MfIntfClassT() {
  ReleaseText(commonname);
  ReleaseText(xsname);
  for (MfIntfSideT& side : sides)
    ReleaseText(side.moduleref);
  ReleaseText(displayname);
}
