// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/completion.h"

#include <algorithm>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <map>
#include <set>

#include "grammar/manifest.h"
#include "platform/runtime.h"
#include "tests/support/documents.h"
#include "tests/support/random_documents.h"
#include "tools/tarnmf/lsp/cursor.h"
#include "tools/tarnmf/lsp/snippet.h"

namespace tool::lsp {
namespace {

using namespace tarnmf;
using Items = std::vector<CompletionItem>;
using grammar::ElementT;

const std::string kId = "00000000-0000-0000-0000-00000000000a";

// ---- Texts with a "|" at the cursor ------------------------------------------------------------

std::shared_ptr<const check::Manifest> Read(std::string marked) {
  std::erase(marked, '|');
  return check::ReadManifest("test.tmfx", marked);
}

Items ItemsAt(const std::string& marked, bool asSnippets = true,
              const std::vector<Occurrence>& names = {}) {
  return Complete(*Read(marked), marked.find('|'), names, 0, asSnippets);
}

const CompletionItem* Find(const Items& items, const std::string& label) {
  const auto item = std::find_if(items.begin(), items.end(),
                                 [&](const CompletionItem& each) { return each.label == label; });
  return item != items.end() ? &*item : nullptr;
}

std::string Labels(const Items& items) {
  std::string labels;
  for (const CompletionItem& item : items)
    labels += (labels.empty() ? "" : " ") + item.label;
  return labels;
}

std::vector<std::string> ChoicesOf(const std::string& snippet) {
  std::vector<std::string> choices;
  const std::size_t begin = snippet.find('|');
  if (begin == snippet.npos) return {""};
  for (std::size_t at = begin + 1, end = 0; snippet[at - 1] != '}'; at = end + 1) {
    end = snippet.find_first_of(",|", at);
    choices.push_back(snippet.substr(at, end - at));
    if (snippet[end] == '|') break;
  }
  return choices;
}

// A snippet with its places filled in, and a "|" where one goes on.
std::string Filled(const std::string& snippet, const std::string& choice,
                   const std::string& filling) {
  std::string text;
  for (std::size_t at = 0; at < snippet.size(); ++at) {
    if (snippet[at] == '\\') {
      text += snippet[++at];
    } else if (snippet.compare(at, 2, "$0") == 0) {
      text += '|';
      ++at;
    } else if (snippet[at] != '$') {
      text += snippet[at];
    } else if (snippet[at + 1] != '{') {
      text += filling;
      ++at;
    } else {
      const std::size_t end = snippet.find('}', at);
      const bool isChoice = snippet[at + 3] == '|';
      text += isChoice ? choice : snippet.substr(at + 4, end - at - 4);
      at = end;
    }
  }
  return text.find('|') == text.npos ? text + '|' : text;
}

std::string Accept(std::string marked, const CompletionItem& item, const std::string& choice = "",
                   const std::string& filling = kId) {
  std::erase(marked, '|');
  return marked.replace(item.replaced.begin, item.replaced.Size(),
                        Filled(item.newText, choice, filling));
}

std::string Insert(std::string marked, const std::string& text) {
  return marked.replace(marked.find('|'), 1, text);
}

// What is found in the one text and not in the other.
std::string News(const std::string& before, const std::string& after) {
  const auto old = Read(before);
  const auto fresh = Read(after);
  std::map<check::Rule, int> counts;
  for (const check::Finding& finding : old->findings)
    --counts[finding.rule];
  std::string news;
  for (const check::Finding& finding : fresh->findings) {
    if (++counts[finding.rule] > 0) news += std::string(check::Describe(finding.rule).name) + " ";
  }
  return news.empty() ? "" : news + "in " + after;
}

// ---- The grammar, row by row -------------------------------------------------------------------

// Builds documents out of nothing but what is offered. What is still to be filled in is given an id,
// or what is offered for it; a number where one is expected.
class GrammarWalk {
 public:
  void Enter(const std::string& marked, const ElementT& parent) {
    const Items items = ItemsAt(marked);
    for (const ElementT* child : parent.children) {
      const CompletionItem* const item = Find(items, child->name);
      ASSERT_NE(item, nullptr) << child->name << " at " << marked;
      texts_[{&parent, child}] = Filled(item->newText, ChoicesOf(item->newText)[0], kId);
      for (const std::string& choice : ChoicesOf(item->newText)) {
        const std::string text = child->content == grammar::Content::kValue ? "a text" : "";
        const std::string after = Insert(Accept(marked, *item, choice), text + "|");
        // The one word that asks for another attribute.
        const std::string news = choice == "executable" ? "attribute-needs in " + after : "";
        EXPECT_EQ(News(marked, after), news);
        TryAttributes(marked.find('|'), after, *child);
        if (!child->children.empty()) Enter(WithContent(after, *child), *child);
      }
    }
  }

  // Whether what is offered is exactly what may stand there.
  void Compare(const std::string& marked) const {
    const Items items = ItemsAt(marked);
    const ElementT& parent = *CursorAt(*Read(marked), marked.find('|')).element;
    for (const ElementT* child : parent.children) {
      const bool isFine = News(marked, Insert(marked, texts_.at({&parent, child}))).empty();
      EXPECT_EQ(Find(items, child->name) != nullptr, isFine) << child->name << " at " << marked;
    }
  }

 private:
  // The cursor between the tags, where everything may stand that can.
  static std::string WithContent(std::string marked, const ElementT& element) {
    if (&element == &grammar::kClass) {
      marked.insert(marked.rfind("<class") + 6, " affinity=\"service\"");
    } else if (element.content == grammar::Content::kSide) {
      marked.replace(marked.find("/>|"), 3, fmt::format(">|</{}>", element.name));
      const std::string moduleref = fmt::format("moduleref=\"{}\"", kId);
      marked.replace(marked.find(moduleref), moduleref.size(), "multiplicity=\"perLdp\"");
    }
    return marked;
  }

  static void TryAttributes(std::size_t tag, std::string text, const ElementT& element) {
    std::erase(text, '|');
    const std::size_t end = text.find_first_of("/>", tag);
    const std::string marked = text.insert(end, " |");
    const Items items = ItemsAt(marked);
    for (const grammar::AttributeT& attribute : element.attributes) {
      const CompletionItem* const item = Find(items, attribute.name);
      const Items values = ItemsAt(Insert(marked, fmt::format("{}=\"|\"", attribute.name)));
      const bool isNumber = attribute.kind == grammar::ValueKind::kDecimal ||
                            attribute.kind == grammar::ValueKind::kDecimal16;
      const std::string value = !values.empty() ? values[0].label : isNumber ? "1" : kId;
      if (item == nullptr) {
        const std::string given = Insert(marked, fmt::format("{}=\"{}\"", attribute.name, value));
        EXPECT_NE(News(marked, given), "") << given;
        continue;
      }
      const std::string ready = WithPartner(marked, attribute, element);
      const Items offered = ItemsAt(ready);
      const std::string choices = Labels(values);
      for (const std::string& choice : ChoicesOf(item->newText)) {
        EXPECT_TRUE(choice.empty() || Find(values, choice) != nullptr) << choice << choices;
        const std::string after = Accept(ready, *Find(offered, attribute.name), choice, value);
        EXPECT_EQ(News(ready, after), "");
      }
    }
  }

  // With the attributes that this one needs.
  static std::string WithPartner(std::string marked, const grammar::AttributeT& attribute,
                                 const ElementT& element) {
    for (const grammar::ConditionT& condition : element.conditions) {
      if (condition.kind != grammar::ConditionT::kNeeds ||
          condition.a != std::string_view(attribute.name)) {
        continue;
      }
      const Items items = ItemsAt(marked);
      const CompletionItem* const partner = Find(items, condition.b);
      if (partner == nullptr) continue;
      EXPECT_GT(Find(items, attribute.name), partner) << Labels(items);
      marked = Insert(Accept(marked, *partner), " |");
    }
    return marked;
  }

  std::map<std::pair<const ElementT*, const ElementT*>, std::string> texts_;
};

TEST(Completion, OffersWhatMayStandThere) {
  GrammarWalk walk;
  walk.Enter("|", grammar::kDocument);

  const std::string side = "<clientside moduleref=\"m\"/>";
  for (const char* affinity : {"generic", "App", "agent", "service"}) {
    for (const std::string& sides : {"|" + std::string(), side + "|", "|" + side})
      walk.Compare(test::DocumentOf(
          fmt::format("<class id=\"$1\" affinity=\"{}\">{}</class>", affinity, sides)));
  }
  const std::string module = "<Module id=\"m\" name=\"m\"/>";
  const std::string holder = "<clientside multiplicity=\"perLdp\">";
  for (const std::string& content : {std::string("<clientside moduleref=\"m\">|</clientside>"),
                                     holder + module + "|</clientside>"})
    walk.Compare(test::DocumentOf(fmt::format("<class id=\"$1\">{}</class>", content)));
  const std::string other = "<module id=\"o\" name=\"m\"/>";
  for (const std::string& content :
       {module + "|", "|" + module, "<modules/>|" + module, module + "<modules/>|",
        "|<modules/>" + module, module + "|<modules/>" + other}) {
    walk.Compare("<tarnmodulemanifest version=\"1\">" + content + "</tarnmodulemanifest>");
    walk.Compare(test::DocumentOf(content));
  }
  for (const char* parts : {"|<args/>", "<ENV/>|", "<args/>|<env/>"})
    walk.Compare(test::DocumentOf(
        fmt::format("<runnable moduleref=\"m\"><app nameid=\"a\">{}</app></runnable>", parts)));
  walk.Compare("<tarnmanifest version=\"1\"/>|");
}

// ---- Texts that are half typed -----------------------------------------------------------------

// In the notation of the case file, with the same label accepted as in the expected result.
std::string Offered(const std::string& marked, const std::string& expected) {
  const Items items = ItemsAt(marked, false);
  std::string labels;
  std::string after;
  for (const CompletionItem& item : items) {
    const bool isAccepted = (" " + expected).find(" *" + item.label + " ") != expected.npos;
    labels += (labels.empty() ? "" : " ") + (isAccepted ? "*" + item.label : item.label);
    if (isAccepted) after = " => " + Accept(marked, item);
  }
  std::erase(after, '|');
  for (std::size_t at = 0; (at = after.find('\n')) != after.npos;)
    after.replace(at, 1, "\\n");
  return (labels.empty() ? "nothing" : labels) + after;
}

TEST(Completion, OffersWhatTheCasesSay) {
  for (const test::FileCase& one : test::ReadCaseFile(TARNMF_CASES "/completion.cases")) {
    const std::string result = test::WithIds(one.result);
    EXPECT_EQ(Offered(test::WithIds(one.input), result), result) << one.name;
  }
}

// ---- Names of other manifests ------------------------------------------------------------------

TEST(Completion, OffersNamesOfOtherManifests) {
  const std::shared_ptr<const check::Manifest> declaring = check::ReadManifest(
      "other.tmfx",
      test::DocumentOf("<module id=\"m\" name=\"m\"><platformmodule machinetype=\"q9\" "
                       "path=\"p\"/></module>"));
  std::vector<Occurrence> names;
  const auto add = [&](NameKind kind, const char* name, std::size_t loadpoint, check::NodeId node) {
    names.push_back({kind, name, true, loadpoint, declaring, {}, node});
  };
  add(NameKind::kModule, "far", 1, 1);
  add(NameKind::kModule, "a&\"$}", 0, 1);
  add(NameKind::kModule, "far", 1, 2);
  add(NameKind::kService, kId.c_str(), 1, 7);
  add(NameKind::kServiceName, "Spooler", 1, 7);
  add(NameKind::kClass, "no", 0, 3);
  names.push_back({NameKind::kModule, "only-used", false, 0, declaring, {}, 1});

  const std::string side = "<tarnmanifest version=\"1\"><class><serviceside ";
  const std::string runnable = "<tarnmanifest version=\"1\"><runnable moduleref=\"|";
  EXPECT_EQ(Labels(ItemsAt(side + "moduleref=\"|", true, names)), "a&\"$}");
  EXPECT_EQ(Labels(ItemsAt(runnable, true, names)), "a&\"$} far");
  EXPECT_EQ(ItemsAt(runnable, true, names)[0].newText, "a&amp;&#34;\\$\\}\"");
  EXPECT_EQ(ItemsAt(runnable, false, names)[0].newText, "a&amp;&#34;$}\"");
  const std::string choices[] = {"a,b|$", "c"};
  EXPECT_EQ(Snippet(true).Place().Choice(choices).Text(), "$1${2|a\\,b\\|\\$,c|}");
  const Items services = ItemsAt(side + "xsid=\"|\"/>", true, names);
  ASSERT_EQ(Labels(services), kId);
  EXPECT_EQ(services[0].detail, "Spooler");
  EXPECT_EQ(Labels(ItemsAt(side + "xsname=\"|\"/>", true, names)), "Spooler");
  const Items own = ItemsAt(side + "svcid=\"|\"/>", true, names);
  ASSERT_EQ(own.size(), 2U);
  EXPECT_NE(own[0].label, ItemsAt(side + "svcid=\"|\"/>", true, names)[0].label);
  EXPECT_EQ(own[1].label, kId);
  EXPECT_EQ(Labels(ItemsAt("<tarnmanifest version=\"1\"><module id=\"m\" name=\"m\">"
                           "<platformmodule machinetype=\"lin|\" path=\"p\"/></module>",
                           true, names)),
            fmt::format("{} {} q9", btkGetVexMachine(), btkGetVexMachine3264("")));
}

// ---- Whatever the text -------------------------------------------------------------------------

// Everywhere in the text, what is replaced is a part of it around the place.
void CompleteEverywhere(const std::string& text) {
  const auto manifest = check::ReadManifest("test.tmfx", text);
  const std::size_t size = manifest->source.Text().size();
  for (std::size_t offset = 0; offset <= size; ++offset) {
    std::set<std::string> labels;
    for (const CompletionItem& item : Complete(*manifest, offset, {}, 0, offset % 2 == 0)) {
      ASSERT_TRUE(item.replaced.begin <= offset && offset <= item.replaced.end &&
                  item.replaced.end <= size)
          << item.label << " at " << offset << " of " << text;
      ASSERT_TRUE(labels.insert(item.label).second && !item.newText.empty()) << item.label;
    }
  }
}

TEST(Completion, EndsWellInEveryText) {
  const std::string documents[] = {
      test::DocumentOf(
          "<class id='$1' affinity = \"service\"><serviceside svcid=\"$2\">\n<!-- é -->"
          "<module name=\"<\"/></serviceside></class>"),
      "<?xml version=\"1.1\"?><!DOCTYPE t [<!ATTLIST module id CDATA \"x\"><!ENTITY e \"v\">]>"
      "<tarnmodulemanifest version=\"1\"><module name=\"&e;\" &e;/><?pi x?><![CDATA[<]]>&e;</x>",
      std::string("<tarnmanifest version=\"1\">\0<modules/>", 37),
      "<?xml version=\"1.0\" encoding=\"nobody-knows\"?><tarnmanifest version=\"1\"/>",
  };
  for (const std::string& document : documents) {
    for (std::size_t length = 0; length <= document.size(); ++length)
      CompleteEverywhere(document.substr(0, length));
  }
  test::RandomDocuments random(5);
  for (int i = 0; i < 600; ++i)
    CompleteEverywhere(random.NextDamaged());
}

}  // namespace
}  // namespace tool::lsp
