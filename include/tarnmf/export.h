// SPDX-License-Identifier: Apache-2.0
/// @file
/// Marks what the tarnmf library exports.
#ifndef TARNMF_EXPORT_H
#define TARNMF_EXPORT_H

#include "platform/types.h"

/// @def TARNMF_API
/// Stands in front of what the library exports. TARNMF_STATIC is defined where it is part of the same
/// file.
#if defined(TARNMF_BUILDING)
#define TARNMF_API BTK_EXPORTED
#elif defined(TARNMF_STATIC)
#define TARNMF_API
#else
#define TARNMF_API BTK_IMPORTED
#endif

#endif  // TARNMF_EXPORT_H
