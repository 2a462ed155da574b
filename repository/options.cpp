#include "tarnmf/options.h"

#include "repository/option_table.h"

namespace {

// Empty from the start, so that switches may be set by whatever runs at load. Its destructor runs
// with the exit handlers and releases the block.
constinit tarnmf::OptionTable g_options;

}  // namespace

void btkConfEnableOption(const UniIdT* id, std::uint32_t value) {
  g_options.Set(*id, value);
}

std::int32_t btkConfIsOptionKnown(const UniIdT* id, std::uint32_t* value) {
  const tarnmf::Option* const option = g_options.Find(*id);
  if (option == nullptr) return 0;
  *value = option->value;
  return 1;
}
