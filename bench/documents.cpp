// SPDX-License-Identifier: Apache-2.0
#include "bench/documents.h"

#include <algorithm>
#include <cstdio>
#include <numeric>
#include <random>
#include <vector>

namespace tarnmf::bench {
namespace {

// Every "#" of an item becomes its number, in 8 digits.
struct Items {
  const char* module;
  const char* cls;
  const char* runnable;
};

constexpr Items kShortItems = {
    R"(
    <module id="component#" name="component#"/>)",
    R"(
    <class id="#-0000-4000-8000-000000000001" commonname="component.#" displayname="Component #">
      <clientside moduleref="component#"/>
    </class>)",
    R"(
    <runnable moduleref="component#"><app nameid="app#"/></runnable>)"};

constexpr Items kFullItems = {R"(
    <module id="component#" name="component#" path="lib" apilevel="2" abits="64">
      <preload by="executable" name="viewer"/>
      <preload svcid="#-0000-4000-8000-00000000000a" optionid="#-0000-4000-8000-00000000000b"/>
      <platformmodule machinetype="linux-x86" name="component#_32" path="lib32">
        <preload by="client" name="viewer"/>
      </platformmodule>
      <platformmodule machinetype="linux-arm64" path="libarm"/>
    </module>)",
                              R"(
    <class id="#-0000-4000-8000-000000000001" affinity="service" commonname="component.#"
           displayname="Component #" version="3" managedtype="generic">
      <serviceside moduleref="component#" svcid="#-0000-4000-8000-000000000002" exposed="yes"
                   xsid="#-0000-4000-8000-000000000003" multiplicity="perProcess"/>
    </class>)",
                              R"(
    <runnable moduleref="component#">
      <service id="#-0000-4000-8000-000000000003" commonname="host.#" version="4" model="managed"
               multiplicity="perProcess" exposed="yes" port="80" launcher="std">
        <args><arg>--index # "two words"</arg><arg precomposed="yes">as it stands</arg></args>
        <env initstate="clean"><set name="INDEX">#</set><append name="PATH">/opt/#</append></env>
      </service>
      <app nameid="app#" launcher="std"><args><arg>--verbose</arg></args></app>
    </runnable>)"};

// The numbers of `count` records from `first` on.
std::vector<std::int64_t> Numbers(std::int64_t count, std::int64_t first, Order order) {
  std::vector<std::int64_t> numbers(static_cast<std::size_t>(count));
  std::iota(numbers.begin(), numbers.end(), first);
  std::mt19937 random(static_cast<unsigned>(count));
  if (order == Order::kRandom) std::shuffle(numbers.begin(), numbers.end(), random);
  return numbers;
}

void AppendList(std::string& text, const std::string& list, const char* item,
                const std::vector<std::int64_t>& numbers) {
  if (numbers.empty()) return;
  text += "\n  <" + list + ">";
  for (std::int64_t number : numbers) {
    char digits[9];
    std::snprintf(digits, sizeof digits, "%08u", static_cast<unsigned>(number));
    for (const char* unit = item; *unit != '\0'; ++unit) {
      if (*unit == '#') {
        text += digits;
      } else {
        text += *unit;
      }
    }
  }
  text += "\n  </" + list + ">";
}

}  // namespace

RecordCounts Mixture(std::int64_t records) {
  return {(records + 2) / 3, (records + 1) / 3, records / 3};
}

std::string ManifestDocument(const RecordCounts& counts, std::int64_t first, Detail detail,
                             Order order) {
  const auto numbers = [&](std::int64_t count) { return Numbers(count, first, order); };
  const Items& items = detail == Detail::kFull ? kFullItems : kShortItems;
  std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<tarnmanifest version=\"1\">";
  AppendList(text, "modules", items.module, numbers(counts.modules));
  AppendList(text, "classes", items.cls, numbers(counts.classes));
  AppendList(text, "runnables", items.runnable, numbers(counts.runnables));
  return text + "\n</tarnmanifest>\n";
}

}  // namespace tarnmf::bench
