// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/schema_command.h"

#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>

#include "check/files.h"
#include "platform/host/system_path.h"
#include "tools/tarnmf/grammar_json.h"
#include "tools/tarnmf/other_programs.h"
#include "tools/tarnmf/schema_markdown.h"
#include "tools/tarnmf/schema_rng.h"

namespace tool {
namespace {

// The schema as trang translates it. Where XML Schema knows less than RELAX NG trang warns; that is so
// every time, and nothing to tell the user.
std::string XsdSchema() {
  const ScratchDirectory scratch;
  const std::filesystem::path rng = scratch.Path() / "tarnmf-manifest.rng";
  const std::filesystem::path xsd = scratch.Path() / "tarnmf-manifest.xsd";
  std::ofstream(rng, std::ios::binary) << RngSchema();
  if (!RunQuietly({"trang", NarrowPath(rng), NarrowPath(xsd)})) {
    throw std::runtime_error(
        "the XML Schema is made by the program trang, which is not installed or fails; use --rng");
  }
  return tarnmf::check::DiskFiles().Read(NarrowPath(xsd)).value_or("");
}

struct Form {
  const char* option;
  const char* description;
  std::string (*text)();
};
constexpr Form kForms[] = {
    {"--rng", "as RELAX NG (the default)", RngSchema},
    {"--xsd", "as XML Schema, with the help of trang", XsdSchema},
    {"--json", "as JSON", JsonSchema},
    {"--markdown", "as tables for readers", MarkdownSchema},
};

}  // namespace

void AddSchema(CLI::App& app, Action& action) {
  CLI::App* const schema = app.add_subcommand("schema", "Print the grammar of manifests");
  const auto chosen = std::make_shared<const Form*>(&kForms[0]);
  CLI::Option_group* const group = schema->add_option_group("form");
  group->require_option(0, 1);
  for (const Form& form : kForms)
    group->add_flag_callback(
        form.option, [chosen, &form] { *chosen = &form; }, form.description);
  schema->callback([&action, chosen] {
    action = [chosen] {
      fmt::print("{}", (*chosen)->text());
      return 0;
    };
  });
}

}  // namespace tool
