// SPDX-License-Identifier: Apache-2.0
// The command line of tarnmf.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <exception>
#include <fmt/format.h>
#include <iterator>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "tools/tarnmf/action.h"
#include "tools/tarnmf/arguments.h"
#include "tools/tarnmf/check_command.h"
#include "tools/tarnmf/complete_command.h"
#include "tools/tarnmf/diff_command.h"
#include "tools/tarnmf/explain_command.h"
#include "tools/tarnmf/find_command.h"
#include "tools/tarnmf/graph_command.h"
#include "tools/tarnmf/json_form.h"
#include "tools/tarnmf/list_command.h"
#include "tools/tarnmf/lsp/lsp_command.h"
#include "tools/tarnmf/no_network.h"
#include "tools/tarnmf/output.h"
#include "tools/tarnmf/read_command.h"
#include "tools/tarnmf/scan_command.h"
#include "tools/tarnmf/schema_command.h"
#include "tools/tarnmf/standard_streams.h"
#include "tools/tarnmf/tell.h"
#include "tools/tarnmf/usage_error.h"
#include "tools/tarnmf/why_command.h"

namespace {

constexpr int kFailure = 1;
constexpr int kWrongUsage = 2;

using tool::Action;

void AddScanOptions(CLI::App& command, tool::ScanOptions& options) {
  command.add_option("--loadpoint", options.loadpoint, "load point of the process")
      ->type_name("DIR");
  command.add_option("--add", options.add, "add the installation in this directory (repeatable)")
      ->type_name("DIR")
      ->allow_extra_args(false);
  command
      .add_option("--option", options.options,
                  "set an option switch before anything is read (repeatable)")
      ->type_name("ID=VALUE")
      ->allow_extra_args(false);
  command.add_option("--service", options.service, "pose as a process inside this service")
      ->type_name("ID");
  command.add_flag("--preload", options.preload,
                   "load the libraries whose preload conditions hold, which runs their code");
  command.add_flag("--json", options.json, "print JSON");
  command.add_option("FILE", options.files,
                     "manifest files of the process; by default all *.tmfx of its load point");
}

void AddRead(CLI::App& app, tool::ReadOptions& options, Action& action) {
  CLI::App* const read =
      app.add_subcommand("read", "Read manifest files as one load point and print them as JSON");
  read->add_option("--loadpoint", options.loadpoint, "load point to lend to the records")
      ->type_name("PATH");
  const std::string json = "print JSON, which is the only form";
  read->add_flag("--json", json);
  read->add_option("FILE", options.files, "manifest files, in the order of reading")->required();
  read->callback([&] { action = [&] { return tool::RunRead(options); }; });
}

void AddScan(CLI::App& app, tool::ScanReportOptions& options, Action& action) {
  CLI::App* const scan = app.add_subcommand(
      "scan", "Scan a process's load points and show what is read, registered and filed");
  AddScanOptions(*scan, options.scan);
  scan->add_flag("--all", options.all, "list everything, not the problems alone");
  scan->callback([&] { action = [&] { return tool::RunScan(options); }; });
}

void AddFind(CLI::App& app, tool::FindClassOptions& classOptions,
             tool::FindServiceOptions& serviceOptions, Action& action) {
  CLI::App* const find = app.add_subcommand("find", "Ask the repository of a scan one question");
  find->require_subcommand(1);

  CLI::App* const byClass = find->add_subcommand("class", "The best implementation of a class");
  byClass->add_option("NAME", classOptions.name, "common name of the class")->required();
  byClass->add_option("--scope", classOptions.scope, "scope of the caller")->type_name("ID");
  byClass->add_option("--version", classOptions.version, "least service version");
  byClass->add_option("--limit", classOptions.limit, "largest admitted oldest supported version");
  AddScanOptions(*byClass, classOptions.scan);
  byClass->callback([&] { action = [&] { return tool::RunFindClass(classOptions); }; });

  CLI::App* const byService = find->add_subcommand("service", "A service role of a load point");
  byService->add_option("ID", serviceOptions.id, "id of the service")->required();
  byService
      ->add_option("--in", serviceOptions.in,
                   "path of the load point to search; by default all, the process's own first")
      ->type_name("PATH");
  AddScanOptions(*byService, serviceOptions.scan);
  byService->callback([&] { action = [&] { return tool::RunFindService(serviceOptions); }; });
}

void AddList(CLI::App& app, tool::ScanOptions& options, Action& action) {
  CLI::App* const list = app.add_subcommand("list", "Show what the repository of a scan holds");
  list->require_subcommand(1);
  const std::pair<const char*, const char*> kinds[] = {
      {"loadpoints", "The load points, by id"},
      {"classes", "All classes that are declared, and which of them are answered with"},
      {"services", "The exposed services, by combined id"}};
  for (const auto& [what, description] : kinds) {
    CLI::App* const kind = list->add_subcommand(what, description);
    AddScanOptions(*kind, options);
    kind->callback([&options, &action, what = what] {
      action = [&options, what] { return tool::RunList(options, what); };
    });
  }
}

void AddCheck(CLI::App& app, tool::CheckOptions& options, Action& action) {
  CLI::App* const check = app.add_subcommand(
      "check", "Find the mistakes in manifests and layout files, all in one run");
  check->add_option("--loadpoint", options.loadpoint, "load point of the process")
      ->type_name("DIR");
  check->add_flag("--strict", options.strict, "fail for warnings, too");
  CLI::Option* const forms[] = {
      check->add_flag("--json", options.json, "print JSON"),
      check->add_flag("--sarif", options.sarif, "print SARIF 2.1.0"),
      check->add_flag("--github", options.github, "print workflow commands for annotations"),
  };
  check->add_option("--rule", options.rules, "how grave the findings of a rule are (repeatable)")
      ->type_name("NAME=off|info|warning|error")
      ->allow_extra_args(false);
  check->add_option("--max", options.most, "findings of one rule to print as text")
      ->type_name("N")
      ->check(tool::CountProblem)
      ->capture_default_str();
  CLI::Option* const fix =
      check->add_flag("--fix", options.fix, "apply the corrections that are certain");
  CLI::Option* const diff =
      check->add_flag("--diff", options.diff, "print what --fix would change");
  diff->excludes(fix);
  for (std::size_t i = 0; i < std::size(forms); ++i) {
    diff->excludes(forms[i]);
    for (std::size_t j = 0; j < i; ++j)
      forms[i]->excludes(forms[j]);
  }
  check->add_option("DIR|FILE", options.paths,
                    "installations, or single manifests or layout files");
  check->callback([&] { action = [&] { return tool::RunCheck(options); }; });
}

void AddExplain(CLI::App& app, tool::ExplainOptions& options, Action& action) {
  CLI::App* const explain = app.add_subcommand(
      "explain", "Explain a rule of check, a code of the library, an element or an attribute");
  explain->add_option("SUBJECT", options.subject, "RULE, CODE, ELEMENT or ELEMENT/ATTRIBUTE");
  // For docs/rules.md. It is hidden, so that --help does not name it as what SUBJECT excludes.
  explain->add_flag("--page", options.page)->group("");
  explain->add_flag("--json", options.json, "print JSON");
  explain->callback([&] {
    if (options.subject.empty() && !options.page) throw CLI::RequiredError("SUBJECT");
    if (!options.subject.empty() && options.page) throw CLI::ExcludesError("--page", "SUBJECT");
    if (options.json && options.page) throw CLI::ExcludesError("--page", "--json");
    action = [&] { return tool::RunExplain(options); };
  });
}

// Without a command, --json is for the version.
void AddVersion(CLI::App& app) {
  CLI::Option* const json = app.add_flag_callback(
      "--json",
      [&app] {
        if (app.get_version_ptr()->count() == 0)
          throw std::invalid_argument("--json stands behind a command, or beside --version");
      },
      "print the version as JSON");
  app.set_version_flag("--version", [json] {
    if (json->count() == 0) return std::string(TARNMF_VERSION);
    std::string text = tool::FormText(tool::json_format::kVersion, {{"version", TARNMF_VERSION}});
    text.pop_back();  // the parser ends the line
    return text;
  });
}

// The status, unless something could not be written.
int Finished(int status) {
  return tool::OutputHasArrived() ? status : kFailure;
}

int Failed(const char* sentence, int status) {
  tool::TellSentence(sentence);
  return Finished(status);
}

// The output is where nothing more can be written to.
int FailedToWrite(const std::system_error& error) {
  const bool isExpected = error.code() == std::errc::broken_pipe || tool::ReaderIsGone();
  return isExpected ? kFailure : Failed(error.what(), kFailure);
}

}  // namespace

// Out of memory while the options are declared, or no way to print a message: nothing is left to do.
// NOLINTNEXTLINE(bugprone-exception-escape)
int main(int argc, char** argv) {
  tool::PrepareStreams();
  tool::ForbidConnections();
  CLI::App app("Reads, checks and scans the manifests of a platform installation", "tarnmf");
  app.allow_windows_style_options(false);  // "/a" is a path everywhere
  AddVersion(app);
  app.require_subcommand(1);
  tool::CheckOptions check;
  tool::ExplainOptions explain;
  tool::ReadOptions read;
  tool::ScanReportOptions scan;
  tool::ScanOptions list;
  tool::FindClassOptions findClass;
  tool::FindServiceOptions findService;
  Action action;
  AddCheck(app, check, action);
  AddExplain(app, explain, action);
  AddRead(app, read, action);
  AddScan(app, scan, action);
  AddFind(app, findClass, findService, action);
  AddList(app, list, action);
  tool::AddDiff(app, action);
  tool::AddSchema(app, action);
  tool::AddWhy(app, action);
  tool::AddGraph(app, action);
  tool::AddLsp(app, action);
  try {
    std::vector<std::string> arguments = tool::Arguments(argc, argv);
    if (tool::IsCompletion(arguments)) {
      tool::RunComplete(app, arguments);
      return Finished(0);
    }
    // The parser takes them from the end, without the program's name.
    std::reverse(arguments.begin(), arguments.end());
    if (!arguments.empty()) arguments.pop_back();
    app.parse(std::move(arguments));
    return Finished(action());
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) return Finished(app.exit(error));  // help, or the version
    return Failed(tool::UsageSentence(app, error).c_str(), kWrongUsage);
  } catch (const std::invalid_argument& error) {
    return Failed(error.what(), kWrongUsage);
  } catch (const std::system_error& error) {
    return FailedToWrite(error);
  } catch (const std::exception& error) {
    return Failed(error.what(), kFailure);
  }
}
