// Why a step of a scan failed, in words. The library answers with a code only, so the files are read
// and checked once more.
#ifndef TOOLS_TARNMF_DIAGNOSIS_H
#define TOOLS_TARNMF_DIAGNOSIS_H

#include <string>

namespace tool {

struct ScanStep;

std::string ExplainFailure(const ScanStep& step);

}  // namespace tool

#endif  // TOOLS_TARNMF_DIAGNOSIS_H
