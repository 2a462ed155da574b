// Random batches, compared with a plain model of the rules.
#include <map>
#include <memory>
#include <random>
#include <set>

#include "tests/publish/batch.h"
#include "tests/support/recording_managers.h"

namespace tarnmf::test {
namespace {

using NamesT = std::set<std::string>;

// A class as the model sees it; an empty name stands for a side that is not there.
struct ModelClassT {
  std::uint32_t id;
  std::int32_t affinity;
  std::string client, service, agent;
};

struct ModelIndexT {
  NamesT modules, app, agent, serviceClient, serviceServer, generic;
  std::map<std::uint32_t, ModelClassT*> classes;
};

// The rules in the order in which they apply, one batch at a time.
class Model {
 public:
  bool Add(const std::vector<std::string>& modules, const std::vector<ModelClassT*>& classes) {
    batch_ = {};
    for (const std::string& module : modules) {
      if (accepted_.modules.count(module) > 0 || !batch_.modules.insert(module).second)
        return false;
    }
    for (ModelClassT* record : classes) {
      if (!AddClass(*record)) return false;
    }
    for (const auto list :
         {&ModelIndexT::modules, &ModelIndexT::app, &ModelIndexT::agent,
          &ModelIndexT::serviceClient, &ModelIndexT::serviceServer, &ModelIndexT::generic})
      (accepted_.*list).merge(batch_.*list);
    accepted_.classes.merge(batch_.classes);
    return true;
  }

  const ModelIndexT& Accepted() const { return accepted_; }

 private:
  bool Has(NamesT ModelIndexT::*role, const std::string& module) const {
    return (accepted_.*role).count(module) + (batch_.*role).count(module) > 0;
  }

  bool AddClass(ModelClassT& record) {
    ModelClassT* earlier = nullptr;
    if (accepted_.classes.count(record.id) > 0) earlier = accepted_.classes[record.id];
    if (batch_.classes.count(record.id) > 0) earlier = batch_.classes[record.id];
    if (earlier != nullptr) {
      const bool bringsService = !earlier->client.empty() && earlier->service.empty() &&
                                 !record.service.empty() && record.client.empty();
      const bool bringsClient = !earlier->service.empty() && earlier->client.empty() &&
                                !record.client.empty() && record.service.empty();
      if (!bringsService && !bringsClient) return false;
      if (!earlier->agent.empty() && !record.agent.empty()) return false;
    }
    if (!Claim(record)) return false;
    if (earlier == nullptr) {
      batch_.classes[record.id] = &record;
      return true;
    }
    for (const auto side : {&ModelClassT::client, &ModelClassT::service, &ModelClassT::agent}) {
      if ((earlier->*side).empty()) std::swap(earlier->*side, record.*side);
    }
    return true;
  }

  bool Claim(const ModelClassT& record) {
    switch (record.affinity) {
      case kMfAppClass:
        return ClaimApp(record.client);
      case kMfAgentClass:
        return ClaimAgent(record.agent);
      case kMfGenericClass:
        return !record.client.empty() && (record.agent.empty() || ClaimAgent(record.agent)) &&
               ClaimGeneric(record.client);
      default:
        return !(record.client.empty() && record.service.empty()) &&
               (record.agent.empty() || ClaimAgent(record.agent)) &&
               (record.client.empty() || ClaimService(record.client, &ModelIndexT::serviceClient,
                                                      &ModelIndexT::serviceServer)) &&
               (record.service.empty() || ClaimService(record.service, &ModelIndexT::serviceServer,
                                                       &ModelIndexT::serviceClient));
    }
  }

  bool ClaimApp(const std::string& module) {
    if (Has(&ModelIndexT::agent, module) || Has(&ModelIndexT::serviceClient, module) ||
        Has(&ModelIndexT::serviceServer, module) || Has(&ModelIndexT::generic, module))
      return false;
    return File(&ModelIndexT::app, module);
  }
  bool ClaimAgent(const std::string& module) {
    if (Has(&ModelIndexT::app, module) || Has(&ModelIndexT::serviceClient, module) ||
        Has(&ModelIndexT::serviceServer, module) || Has(&ModelIndexT::generic, module))
      return false;
    return File(&ModelIndexT::agent, module);
  }
  bool ClaimGeneric(const std::string& module) {
    if (Has(&ModelIndexT::app, module) || Has(&ModelIndexT::agent, module)) return false;
    return File(&ModelIndexT::generic, module);
  }
  bool ClaimService(const std::string& module, NamesT ModelIndexT::*role,
                    NamesT ModelIndexT::*other) {
    if (Has(&ModelIndexT::app, module) || Has(&ModelIndexT::agent, module) || Has(other, module))
      return false;
    if (Has(role, module)) return true;
    return File(role, module) && File(&ModelIndexT::generic, module);
  }
  bool File(NamesT ModelIndexT::*role, const std::string& module) {
    if (Has(role, module)) return true;
    if (batch_.modules.count(module) == 0) return false;
    (batch_.*role).insert(module);
    return true;
  }

  ModelIndexT accepted_;
  ModelIndexT batch_;
};

// One class for both the publisher and the model.
struct Twin {
  Twin(std::uint32_t id, std::int32_t affinity, const std::string (&sides)[3])
      : model{id, affinity, sides[0], sides[1], sides[2]} {
    record.ids[kMfClientSide] = Id(id);
    record.affinity = static_cast<MfAffinityT>(affinity);
    for (int side = 0; side < 3; ++side) {
      if (!sides[side].empty()) record.sides[side].moduleref = btk_strdup(sides[side].c_str());
    }
  }

  std::string Sides() const {
    std::string sides;
    for (const MfIntfSideT& side : record.sides)
      sides += std::string(side.moduleref != nullptr ? side.moduleref : "") + "/";
    return sides;
  }
  std::string ModelSides() const {
    return model.client + "/" + model.service + "/" + model.agent + "/";
  }

  MfIntfClassT record;
  ModelClassT model;
};

NamesT Names(const SortedModules& modules) {
  NamesT names;
  for (const MfModuleT* module : modules)
    names.insert(module->id);
  EXPECT_EQ(names.size(), static_cast<std::size_t>(modules.Count()));
  return names;
}

class RandomRun {
 public:
  explicit RandomRun(unsigned seed) : random_(seed) {}

  void Run() {
    for (int round = 0; round < 6; ++round)
      AddBatch();
    for (const auto& twin : twins_)
      ASSERT_EQ(twin->Sides(), twin->ModelSides());
    const PublishIndexT& merged = publisher_->merged;
    const ModelIndexT& accepted = model_.Accepted();
    ASSERT_EQ(Names(merged.modules), accepted.modules);
    ASSERT_EQ(Names(merged.appModules), accepted.app);
    ASSERT_EQ(Names(merged.agentModules), accepted.agent);
    ASSERT_EQ(Names(merged.serviceClientModules), accepted.serviceClient);
    ASSERT_EQ(Names(merged.serviceServerModules), accepted.serviceServer);
    ASSERT_EQ(Names(merged.genericModules), accepted.generic);
    ASSERT_EQ(static_cast<std::size_t>(merged.classes.Count()), accepted.classes.size());
    for (const MfIntfClassT* record : merged.classes)
      ASSERT_EQ(accepted.classes.count(record->ids[kMfClientSide].bytes[15]), 1U);
    for (std::int32_t i = 1; i < merged.modules.Count(); ++i)
      ASSERT_LT(CompareKeys(*merged.modules[i - 1], *merged.modules[i]), 0);
  }

  int Accepted() const { return accepted_; }

 private:
  unsigned Below(unsigned limit) { return static_cast<unsigned>(random_() % limit); }
  std::string RandomName() { return "m" + std::to_string(Below(14)); }

  void AddBatch() {
    std::vector<MfModuleT*> modules;
    std::vector<std::string> modelModules;
    for (unsigned i = Below(5); i > 0; --i) {
      modelModules.push_back(RandomName());
      modules_.push_back(std::make_unique<MfModuleT>());
      modules_.back()->id = btk_strdup(modelModules.back().c_str());
      modules_.back()->impls.items =
          static_cast<MfModuleImplT**>(btkReAlloc(nullptr, sizeof(void*)));
      modules_.back()->impls.items[0] = new MfModuleImplT;
      modules_.back()->impls.count = 1;
      modules.push_back(modules_.back().get());
    }
    std::vector<MfIntfClassT*> classes;
    std::vector<ModelClassT*> modelClasses;
    for (unsigned i = Below(4); i > 0; --i) {
      // Mostly modules of the batch, so that many classes are accepted.
      const auto side = [&](unsigned chance) -> std::string {
        if (Below(4) >= chance) return "";
        return modelModules.empty() || Below(6) == 0
                   ? RandomName()
                   : modelModules[Below(static_cast<unsigned>(modelModules.size()))];
      };
      const std::string sides[3] = {side(3), side(2), side(1)};
      twins_.push_back(
          std::make_unique<Twin>(Below(10), static_cast<std::int32_t>(Below(5)), sides));
      classes.push_back(&twins_.back()->record);
      modelClasses.push_back(&twins_.back()->model);
    }
    const bool expected = model_.Add(modelModules, modelClasses);
    const BtkErrorT code =
        publisher_->Add(classes.data(), static_cast<std::int32_t>(classes.size()), modules.data(),
                        static_cast<std::int32_t>(modules.size()), nullptr, 0);
    ASSERT_EQ(code, expected ? kBtkOk : kBtkUnexpected);
    ASSERT_EQ(Count(publisher_->batch), 0);
    if (expected && !classes.empty()) ++accepted_;
  }

  std::mt19937 random_;
  // In this order, since the publisher points to the records.
  std::vector<std::unique_ptr<MfModuleT>> modules_;
  std::vector<std::unique_ptr<Twin>> twins_;
  PublisherPtr publisher_ = MakePublisher();
  Model model_;
  int accepted_ = 0;
};

TEST(RandomBatches, AreJudgedAsTheModelJudgesThem) {
  int accepted = 0;
  for (unsigned seed = 0; seed < 3000; ++seed) {
    SCOPED_TRACE(seed);
    RandomRun run(seed);
    ASSERT_NO_FATAL_FAILURE(run.Run());
    accepted += run.Accepted();
  }
  // Both answers are common.
  EXPECT_GT(accepted, 1000);
  EXPECT_LT(accepted, 12000);
}

}  // namespace
}  // namespace tarnmf::test
