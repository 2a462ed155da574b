// Batches of records for tests of the publisher, read from manifest text.
#ifndef TESTS_PUBLISH_BATCH_H
#define TESTS_PUBLISH_BATCH_H

#include <gtest/gtest.h>
#include <string>

#include "tarnmf/dispose.h"
#include "tarnmf/stream_parser.h"

#include "publish/publisher_impl.h"
#include "support/owned.h"
#include "tests/support/memory_stream.h"

namespace tarnmf::test {

using PublisherPtr = DisposePtr<liMfPublisherImpl>;

inline PublisherPtr MakePublisher(IntfDispositionT view = kIntfAgentView) {
  liMfPublisher* made = nullptr;
  EXPECT_EQ(liMfPublisher::CreateNew(&made, view), kBtkOk);
  return PublisherPtr(static_cast<liMfPublisherImpl*>(made));
}

// The records of a fragment of a mixed document, in which "$1" to "$9" stand for the ids #1 to #9.
struct Batch {
  explicit Batch(std::string fragment) {
    for (std::size_t at = 0; (at = fragment.find('$', at)) != std::string::npos;)
      fragment.replace(at, 2, "00000000-0000-0000-0000-00000000000" + fragment.substr(at + 1, 1));
    MemoryStream stream("<tarnmanifest version=\"1\">" + fragment + "</tarnmanifest>");
    const DisposePtr<liMfStmParser> parser(liMfStmParser::CreateNew(nullptr));
    EXPECT_EQ(parser->Parse(&data, &stream), kBtkOk) << fragment;
  }

  BtkErrorT AddTo(liMfPublisher& publisher) const {
    return publisher.Add(data.classes.items, data.classes.count, data.modules.items,
                         data.modules.count, data.runnables.items, data.runnables.count);
  }

  MfLdpDataT data;
};

inline std::string Module(const char* id) {
  return std::string("<module id=\"") + id + "\" name=\"" + id + "\"/>";
}

inline int Count(const PublishIndexT& index) {
  int count = index.classes.Count();
  for (ModuleListMember list : kModuleLists)
    count += (index.*list).Count();
  return count;
}

}  // namespace tarnmf::test

#endif  // TESTS_PUBLISH_BATCH_H
