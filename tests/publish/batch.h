// SPDX-License-Identifier: Apache-2.0
// Batches of records for tests of the publisher, read from manifest text.
#ifndef TESTS_PUBLISH_BATCH_H
#define TESTS_PUBLISH_BATCH_H

#include <gtest/gtest.h>
#include <string>

#include "tarnmf/dispose.h"

#include "publish/batch_checks.h"
#include "publish/publisher_impl.h"
#include "tests/support/documents.h"
#include "tests/support/parse.h"
#include "tests/support/recording_managers.h"

namespace tarnmf::test {

using PublisherPtr = DisposePtr<liMfPublisherImpl>;

inline PublisherPtr MakePublisher(IntfDispositionT view = kIntfAgentView) {
  return PublisherPtr(new liMfPublisherImpl(view));
}

// The records of a fragment of a mixed document.
struct Batch {
  explicit Batch(const std::string& fragment) {
    EXPECT_EQ(Parse(InRoot(WithIds(fragment)), data), kBtkOk) << fragment;
  }

  BtkErrorT AddTo(liMfPublisher& publisher) const {
    return publisher.Add(data.classes.items, data.classes.count, data.modules.items,
                         data.modules.count, data.runnables.items, data.runnables.count);
  }

  MfLdpDataT data;
};

inline std::string Module(const std::string& id) {
  return "<module id=\"" + id + "\" name=\"" + id + "\"/>";
}

// A class with the sides that name a module.
inline std::string Class(const std::string& affinity, const std::string& id,
                         const std::string& client, const std::string& service = "",
                         const std::string& agent = "") {
  const auto side = [](const std::string& start, const std::string& module) {
    return module.empty() ? "" : start + " multiplicity=\"perLdp\" moduleref=\"" + module + "\"/>";
  };
  return "<class id=\"" + id + "\" affinity=\"" + affinity + "\">" + side("<clientside", client) +
         side("<serviceside svcid=\"$9\"", service) + side("<agentside", agent) + "</class>";
}

// A class that uses a module in the role with this number; the even ones are those of client sides.
inline std::string ClassInRole(int role, const std::string& id, const std::string& module) {
  const char* const affinities[] = {"app", "agent", "service", "service", "generic"};
  return Class(affinities[role], id, role % 2 == 0 ? module : "",
               role == kServiceServerRole ? module : "", role == kAgentRole ? module : "");
}

// Two modules, two halves of a class, and roles of a runnable.
inline constexpr char kFirstBatch[] = R"(<module id='a' name='a' loadpoint='/lp'>
<platformmodule machinetype='x' name='b'/><platformmodule machinetype='y' name='c'/></module>
<module id='b' name='b' loadpoint='/lp'/><class id='$1' affinity='service'><clientside moduleref='a'
/></class><class id='$1' affinity='service'><serviceside moduleref='b' svcid='$2'/></class>
<runnable moduleref='a'><service id='$3' commonname='s'/><app nameid='x'/></runnable>)";

inline int Count(const PublishIndexT& index) {
  int count = index.classes.Count();
  for (ModuleListMember list : kModuleLists)
    count += (index.*list).Count();
  return count;
}

}  // namespace tarnmf::test

#endif  // TESTS_PUBLISH_BATCH_H
