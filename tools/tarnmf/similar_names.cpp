#include "tools/tarnmf/similar_names.h"

#include <algorithm>
#include <cctype>
#include <fmt/format.h>
#include <numeric>
#include <utility>
#include <vector>

namespace tool {
namespace {

constexpr std::size_t kShown = 8;
// Names that differ only after this many bytes are similar enough; it bounds the work per name.
constexpr std::size_t kCompared = 64;

std::string Folded(const std::string& name) {
  std::string folded = name.substr(0, kCompared);
  for (char& c : folded)
    c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return folded;
}

// How many bytes must be put in, taken out or exchanged to make one text the other.
std::size_t EditDistance(const std::string& one, const std::string& other) {
  std::vector<std::size_t> row(other.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < one.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i + 1);
    for (std::size_t j = 0; j < other.size(); ++j) {
      const std::size_t exchanged = diagonal + (one[i] != other[j] ? 1 : 0);
      diagonal = row[j + 1];
      row[j + 1] = std::min({exchanged, row[j] + 1, row[j + 1] + 1});
    }
  }
  return row.back();
}

}  // namespace

std::string ClosestNames(const std::string& wanted,
                         const std::map<std::string, std::string>& names) {
  if (names.empty()) return "none";
  const std::string folded = Folded(wanted);
  std::vector<std::pair<std::size_t, const std::string*>> ranked;
  ranked.reserve(names.size());
  for (const auto& [shown, name] : names)
    ranked.emplace_back(EditDistance(folded, Folded(name)), &shown);
  std::stable_sort(ranked.begin(), ranked.end(),
                   [](const auto& left, const auto& right) { return left.first < right.first; });
  std::string text;
  for (std::size_t i = 0; i < std::min(kShown, ranked.size()); ++i)
    text += (text.empty() ? "" : ", ") + *ranked[i].second;
  if (ranked.size() > kShown) text += fmt::format(" and {} more", ranked.size() - kShown);
  return text;
}

}  // namespace tool
