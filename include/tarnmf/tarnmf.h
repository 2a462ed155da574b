// SPDX-License-Identifier: Apache-2.0
/// @file
/// Everything that the library offers.
#ifndef TARNMF_TARNMF_H
#define TARNMF_TARNMF_H

#include "tarnmf/dispose.h"
#include "tarnmf/error_text.h"
#include "tarnmf/ldp_loader.h"
#include "tarnmf/ldp_writer.h"
#include "tarnmf/options.h"
#include "tarnmf/publisher.h"
#include "tarnmf/records.h"
#include "tarnmf/repository.h"
#include "tarnmf/stream_parser.h"

#endif  // TARNMF_TARNMF_H
