// Why the records of a load point are refused.
#ifndef TOOLS_TARNMF_BATCH_DIAGNOSIS_H
#define TOOLS_TARNMF_BATCH_DIAGNOSIS_H

#include <optional>
#include <string>
#include <vector>

namespace tool {

// The first record that the publisher refuses, with its file and the reason; nothing when the
// records of the files are accepted together.
std::optional<std::string> ExplainBatch(const std::vector<std::string>& files);

}  // namespace tool

#endif  // TOOLS_TARNMF_BATCH_DIAGNOSIS_H
