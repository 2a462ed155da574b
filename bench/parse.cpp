// SPDX-License-Identifier: Apache-2.0
#include <optional>
#include <stdexcept>

#include "tarnmf/dispose.h"
#include "tarnmf/stream_parser.h"

#include "bench/bare_dom.h"
#include "bench/contest.h"
#include "bench/documents.h"
#include "tests/support/memory_stream.h"

namespace tarnmf::bench {
namespace {

class Parse final : public Contest {
 public:
  explicit Parse(std::int64_t size) : size_(size), document_(ManifestDocument(Mixture(size))) {}

  void Prepare() override { stream_.emplace(document_); }
  void Ours() override {
    MfLdpDataT data;
    if (parser_->Parse(&data, &*stream_) != kBtkOk ||
        data.modules.count + data.classes.count + data.runnables.count != size_) {
      throw std::runtime_error("the document was not read");
    }
  }
  void Other() override { ParseBareDom(*stream_); }

 private:
  const std::int64_t size_;
  const std::string document_;
  const DisposePtr<liMfStmParser> parser_{liMfStmParser::CreateNew(nullptr)};
  std::optional<test::MemoryStream> stream_;
};

}  // namespace

ContestPtr ParseContest(std::int64_t size) {
  return std::make_unique<Parse>(size);
}

}  // namespace tarnmf::bench
