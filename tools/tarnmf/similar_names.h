// Suggestions for a name that nothing was declared under.
#ifndef TOOLS_TARNMF_SIMILAR_NAMES_H
#define TOOLS_TARNMF_SIMILAR_NAMES_H

#include <map>
#include <string>

namespace tool {

// The shown texts of the few names that are most like `wanted`, the best first, and how many there
// are besides; "none" without any. `names` maps the text shown to the name it stands for.
std::string ClosestNames(const std::string& wanted,
                         const std::map<std::string, std::string>& names);

}  // namespace tool

#endif  // TOOLS_TARNMF_SIMILAR_NAMES_H
