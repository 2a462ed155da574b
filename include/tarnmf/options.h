// SPDX-License-Identifier: Apache-2.0
/// @file
/// Option switches: a process-wide table from option ids to 32-bit values. It needs no repository
/// and starts empty.
///
/// A preload condition that names an option holds only when the option is known and its value is
/// not 0, so switches are set before the scan that depends on them. Once set, an option stays
/// known; it is switched off by the value 0.
///
/// Thread rules: no lock is taken. btkConfEnableOption must not overlap with another call of either
/// function, nor with a scan of the repository.
#ifndef TARNMF_OPTIONS_H
#define TARNMF_OPTIONS_H

#include "tarnmf/export.h"

#include "platform/types.h"
#include "platform/unique_id.h"

extern "C" {

/// Records `value` for the option `id` (not null). When out of memory, the option stays as it was;
/// this is not reported.
TARNMF_API void btkConfEnableOption(const UniIdT* id, std::uint32_t value);

/// 1 when the option `id` (not null) is known, after storing its value in `*value` (not null); 0
/// when it is not, `*value` untouched.
TARNMF_API std::int32_t btkConfIsOptionKnown(const UniIdT* id, std::uint32_t* value);
}

#endif  // TARNMF_OPTIONS_H
