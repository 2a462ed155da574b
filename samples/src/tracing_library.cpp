// SPDX-License-Identifier: Apache-2.0
// A library of the sample installations that says so when it is loaded.
#include <cstdio>

namespace {

struct Trace {
  Trace() { std::fputs("sample: " SAMPLE_MODULE_ID " is loaded\n", stderr); }
};

const Trace trace;

}  // namespace
