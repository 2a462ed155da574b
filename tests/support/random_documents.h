// SPDX-License-Identifier: Apache-2.0
// Documents made from the grammar at random, right and wrong ones.
#ifndef TESTS_SUPPORT_RANDOM_DOCUMENTS_H
#define TESTS_SUPPORT_RANDOM_DOCUMENTS_H

#include <cstdint>
#include <random>
#include <string>

#include "grammar/grammar.h"

namespace tarnmf::test {

// The same documents in the same order for the same seed. Each has its own rate of mistakes: some
// have none that an element makes by itself, in some there are many.
class RandomDocuments {
 public:
  explicit RandomDocuments(std::uint64_t seed) : random_(seed) {}

  // A well-formed one.
  std::string Next();
  // One that breaks off, or in which a few characters were exchanged, put in or taken out.
  std::string NextDamaged();

 private:
  std::size_t Below(std::size_t count) { return random_() % count; }
  bool OneIn(std::size_t count) { return Below(count) == 0; }
  bool Err() { return mistakes_ > 0 && OneIn(mistakes_); }
  const char* OneOf(std::initializer_list<const char*> texts) {
    return texts.begin()[Below(texts.size())];
  }

  std::string Name(std::string name);
  std::string Value(const grammar::AttributeT& attribute);
  std::string Id();
  void WriteAttributes(const grammar::ElementT& element);
  void WriteAttribute(const std::string& name, const std::string& value);
  void WriteNoise();
  void WriteText();
  void WriteChildren(const grammar::ElementT& element, int depth);
  void WriteContent(const grammar::ElementT& element, int depth);
  void WriteElement(const grammar::ElementT& element, int depth);

  std::mt19937_64 random_;
  std::size_t mistakes_ = 0;  // one in so many; 0: none
  bool hasEntity_ = false;
  std::string text_;
};

}  // namespace tarnmf::test

#endif  // TESTS_SUPPORT_RANDOM_DOCUMENTS_H
