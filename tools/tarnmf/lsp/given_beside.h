// SPDX-License-Identifier: Apache-2.0
// What a start tag says beside the attribute at hand, and what that leaves open.
#ifndef TOOLS_TARNMF_LSP_GIVEN_BESIDE_H
#define TOOLS_TARNMF_LSP_GIVEN_BESIDE_H

#include <string>
#include <string_view>
#include <vector>

#include "check/given.h"
#include "tools/tarnmf/lsp/cursor.h"

namespace tool::lsp {

class GivenBeside {
 public:
  // REQUIRES: the cursor is in a start tag of an element that the grammar knows.
  GivenBeside(const tarnmf::check::Document& document, const Cursor& cursor);

  // Of a term of a condition.
  bool Has(std::string_view term) const;
  // By a condition on attributes.
  bool Excludes(const tarnmf::grammar::AttributeT& attribute) const;
  // Whether the attribute needs another one that is not there.
  bool LacksPartnerOf(const tarnmf::grammar::AttributeT& attribute) const;

  // The fixed values of an attribute without those that a condition excludes.
  std::vector<std::string> FixedValuesOf(const tarnmf::grammar::AttributeT& attribute) const;

 private:
  const tarnmf::grammar::ElementT& element_;
  const tarnmf::check::Attribute* const atHand_;
  const tarnmf::check::GivenAttributes given_;
};

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_GIVEN_BESIDE_H
