#include "tools/tarnmf/schema_command.h"

#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

#include "tools/tarnmf/other_programs.h"
#include "tools/tarnmf/schema_markdown.h"
#include "tools/tarnmf/schema_rng.h"

namespace tool {
namespace {

std::string ReadText(const std::filesystem::path& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

// The schema as trang translates it; what trang has to say goes to standard error.
std::string XsdSchema() {
  const ScratchDirectory scratch;
  const std::filesystem::path rng = scratch.Path() / "tarnmf-manifest.rng";
  const std::filesystem::path xsd = scratch.Path() / "tarnmf-manifest.xsd";
  std::ofstream(rng, std::ios::binary) << RngSchema();
  if (!RunProgram({"trang", rng.string(), xsd.string()})) {
    throw std::runtime_error(
        "the XML Schema is made by the program trang, which is not installed or fails; use --rng");
  }
  return ReadText(xsd);
}

}  // namespace

int RunSchema(SchemaForm form) {
  switch (form) {
    case SchemaForm::kRng:
      fmt::print("{}", RngSchema());
      break;
    case SchemaForm::kXsd:
      fmt::print("{}", XsdSchema());
      break;
    case SchemaForm::kMarkdown:
      fmt::print("{}", MarkdownSchema());
      break;
  }
  return 0;
}

}  // namespace tool
