// SPDX-License-Identifier: Apache-2.0
/// @file
/// The records: plain structures that hold what the manifests of one load point declare.
///
/// Strings are NUL-terminated, UTF-8 (char) or UTF-16 (btkWChar); a null string means that the
/// value was not given. A record owns its strings, arrays and list elements and releases them in
/// its destructor (strings with btkStrFree, array blocks with btkFree, records with operator
/// delete); where a field may also borrow its string, a bit of `flags` says that it is owned.
///
/// Assignment copies every field as it stands, pointers included: nothing is duplicated, and what
/// the target held is not released. After `a = b` both share every string and list, so exactly one
/// of them may be destroyed, unless the other is first overwritten with a default-constructed
/// record.
///
/// Records have no lock: one thread at a time may change one.
#ifndef TARNMF_RECORDS_H
#define TARNMF_RECORDS_H

#include "tarnmf/intf_class.h"
#include "tarnmf/ldp_data.h"
#include "tarnmf/module.h"
#include "tarnmf/runnable.h"
#include "tarnmf/svc_resolve.h"

#endif  // TARNMF_RECORDS_H
