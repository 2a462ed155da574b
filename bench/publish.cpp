// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>

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

BtkErrorT AddAndPublish(const MfLdpDataT& data) {
  DisposePtr<liMfPublisher> publisher;
  if (BtkErrorT e = liMfPublisher::CreateNew(Out(publisher), kIntfAgentView)) return e;
  if (BtkErrorT e = publisher->Add(data.classes.items, data.classes.count, data.modules.items,
                                   data.modules.count, nullptr, 0)) {
    return e;
  }
  return publisher->Publish(true);
}

// The records of one document. Publishing changes them, so every run gets new ones.
class Records {
 public:
  explicit Records(std::string document) : document_(std::move(document)) {}

  void Read() {
    data_.emplace();
    test::MemoryStream stream(document_);
    if (parser_->Parse(&*data_, &stream) != kBtkOk)
      throw std::runtime_error("the document was not read");
  }
  // Hands them over in an order that has nothing to do with their places in memory.
  void Scatter() {
    std::mt19937 random(1);
    std::shuffle(data_->modules.begin(), data_->modules.end(), random);
    std::shuffle(data_->classes.begin(), data_->classes.end(), random);
  }
  void Publish() const {
    if (AddAndPublish(*data_) != kBtkOk) throw std::runtime_error("the records were refused");
  }

 private:
  const std::string document_;
  const DisposePtr<liMfStmParser> parser_{liMfStmParser::CreateNew(nullptr)};
  std::optional<MfLdpDataT> data_;
};

// As many modules as classes. From a load point they come to the publisher in the order of its
// documents, in which they lie in memory, too.
class Publishing final : public Contest {
 public:
  Publishing(std::int64_t size, bool scattered)
      : random_(Document(size, Order::kRandom)),
        sorted_(Document(size, Order::kSorted)),
        scattered_(scattered) {}

  void Prepare() override {
    random_.Read();
    if (scattered_) random_.Scatter();
    sorted_.Read();
  }
  void Ours() override { random_.Publish(); }
  void Other() override { sorted_.Publish(); }

 private:
  static std::string Document(std::int64_t size, Order order) {
    return ManifestDocument({(size + 1) / 2, size / 2, 0}, 0, Detail::kFull, order);
  }

  const QuietManagers managers_;
  Records random_;
  Records sorted_;
  const bool scattered_;
};

}  // namespace

ContestPtr PublishContest(std::int64_t size, bool scattered) {
  return std::make_unique<Publishing>(size, scattered);
}

}  // namespace tarnmf::bench
