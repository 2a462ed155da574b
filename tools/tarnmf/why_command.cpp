// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/why_command.h"

#include <memory>

#include "tools/tarnmf/why_class.h"
#include "tools/tarnmf/why_preload.h"

namespace tool {
namespace {

void AddWhyClass(CLI::App& why, Action& action) {
  const auto options = std::make_shared<WhyClassOptions>();
  CLI::App* const command =
      why.add_subcommand("class", "Which class a query finds, and why no other one");
  command->add_option("NAME", options->name, "common name of the class")->required();
  command->add_option("--scope", options->scope, "scope of the caller")->type_name("ID");
  command->add_option("--version", options->version, "least service version");
  command->add_option("--limit", options->limit, "largest admitted oldest supported version");
  command->add_flag("--json", options->json, "print JSON");
  AddProcessOptions(*command, options->process);
  command->callback([&action, options] { action = [options] { return RunWhyClass(*options); }; });
}

void AddWhyPreload(CLI::App& why, Action& action) {
  const auto options = std::make_shared<WhyPreloadOptions>();
  CLI::App* const command =
      why.add_subcommand("preload", "Whether a process loads a library ahead of use, and why");
  command->add_option("MODULE", options->module, "id of the module")->required();
  command->add_option("--service", options->service, "the service that the process is in")
      ->type_name("ID");
  command->add_option("--program", options->program, "file name of the process's program")
      ->type_name("NAME");
  command->add_option("--option", options->options, "an option switch that is set (repeatable)")
      ->type_name("ID=VALUE")
      ->allow_extra_args(false);
  command->add_flag("--json", options->json, "print JSON");
  AddProcessOptions(*command, options->process);
  command->callback([&action, options] { action = [options] { return RunWhyPreload(*options); }; });
}

}  // namespace

void AddWhy(CLI::App& app, Action& action) {
  CLI::App* const why =
      app.add_subcommand("why", "Explain what a query or a preload condition comes to");
  why->require_subcommand(1);
  AddWhyClass(*why, action);
  AddWhyPreload(*why, action);
}

}  // namespace tool
