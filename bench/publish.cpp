#include <algorithm>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "tarnmf/dispose.h"
#include "tarnmf/publisher.h"
#include "tarnmf/stream_parser.h"

#include "bench/contest.h"
#include "bench/documents.h"
#include "bench/quiet_managers.h"
#include "support/owned.h"
#include "tests/support/memory_stream.h"

namespace tarnmf::bench {
namespace {

struct Batch {
  std::vector<MfModuleT*> modules;
  std::vector<MfIntfClassT*> classes;
};

BtkErrorT AddAndPublish(Batch& batch) {
  DisposePtr<liMfPublisher> publisher;
  if (BtkErrorT e = liMfPublisher::CreateNew(Out(publisher), kIntfAgentView)) return e;
  if (BtkErrorT e = publisher->Add(
          batch.classes.data(), static_cast<std::int32_t>(batch.classes.size()),
          batch.modules.data(), static_cast<std::int32_t>(batch.modules.size()), nullptr, 0)) {
    return e;
  }
  return publisher->Publish(true);
}

// As many modules as classes. Publishing changes records, so every run gets new ones.
class Publishing final : public Contest {
 public:
  explicit Publishing(std::int64_t size)
      : document_(ManifestDocument({(size + 1) / 2, size / 2, 0})) {}

  void Prepare() override {
    data_.emplace();
    test::MemoryStream stream(document_);
    if (parser_->Parse(&*data_, &stream) != kBtkOk)
      throw std::runtime_error("the document was not read");
    sorted_ = {{data_->modules.begin(), data_->modules.end()},
               {data_->classes.begin(), data_->classes.end()}};
    shuffled_ = sorted_;
    std::mt19937 random(1);
    std::shuffle(shuffled_.modules.begin(), shuffled_.modules.end(), random);
    std::shuffle(shuffled_.classes.begin(), shuffled_.classes.end(), random);
  }
  void Ours() override { Publish(shuffled_); }
  void Other() override { Publish(sorted_); }

 private:
  static void Publish(Batch& batch) {
    if (AddAndPublish(batch) != kBtkOk) throw std::runtime_error("the records were refused");
  }

  const QuietManagers managers_;
  const std::string document_;
  const DisposePtr<liMfStmParser> parser_{liMfStmParser::CreateNew(nullptr)};
  std::optional<MfLdpDataT> data_;
  Batch sorted_;
  Batch shuffled_;
};

}  // namespace

ContestPtr PublishContest(std::int64_t size) {
  return std::make_unique<Publishing>(size);
}

}  // namespace tarnmf::bench
