// Manifest documents of any size, for tests and benchmarks that need many of them.
#ifndef TESTS_SUPPORT_GENERATED_MANIFEST_H
#define TESTS_SUPPORT_GENERATED_MANIFEST_H

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>

#include "platform/unique_id.h"

namespace tarnmf::test {

enum GeneratedKind : unsigned { kGeneratedClass = 1, kGeneratedOffer = 2, kGeneratedService = 3 };

// The id of the item with this index in the manifest with this number.
inline std::string GeneratedIdText(GeneratedKind kind, int number, int item) {
  char text[37];
  std::snprintf(text, sizeof text, "%08x-%04x-4000-8000-%08x%04x", kind,
                static_cast<unsigned>(item) >> 16 & 0xFFFFU, static_cast<unsigned>(number),
                static_cast<unsigned>(item) & 0xFFFFU);
  return text;
}
inline UniIdT GeneratedId(GeneratedKind kind, int number, int item) {
  UniIdT id{};
  const std::string text = GeneratedIdText(kind, number, item);
  if (btkUniIdParse(&id, text.c_str(), text.size(), nullptr, kBtkUniIdDashed) != kBtkOk)
    std::abort();
  return id;
}

// A manifest with modules "M<number>.<item>" and one runnable with services; its classes are called
// "Class<item>" in every manifest. Class c is implemented by module c and hosted by service c (both
// counted around); its service side is exposed when c is even. Service s is exposed when s is even.
inline std::string GeneratedManifest(int number, int modules, int classes, int services) {
  std::ostringstream out;
  out << "<tarnmanifest version='1'><modules>\n";
  for (int i = 0; i < modules; ++i) {
    out << "<module id='M" << number << '.' << i << "' name='library" << i << "' apilevel='2'>"
        << "<platformmodule machinetype='other-x64' path='other'/>"
        << "<preload by='executable' name='viewer'/></module>\n";
  }
  out << "</modules><classes>\n";
  for (int i = 0; i < classes; ++i) {
    out << "<class id='" << GeneratedIdText(kGeneratedClass, number, i)
        << "' affinity='service' commonname='Class" << i << "' version='1'>"
        << "<serviceside moduleref='M" << number << '.' << i % modules << "' svcid='"
        << GeneratedIdText(kGeneratedOffer, number, i) << "' xsid='"
        << GeneratedIdText(kGeneratedService, number, i % services) << "' exposed='"
        << (i % 2 == 0 ? "true" : "false") << "'/></class>\n";
  }
  out << "</classes><runnables><runnable moduleref='M" << number << ".0'>\n";
  for (int i = 0; i < services; ++i) {
    out << "<service id='" << GeneratedIdText(kGeneratedService, number, i)
        << "' commonname='Service" << i << "' version='3' multiplicity='perProcess' exposed='"
        << (i % 2 == 0 ? "true" : "false") << "'><args><arg>--index " << i
        << "</arg></args></service>\n";
  }
  out << "</runnable></runnables></tarnmanifest>\n";
  return out.str();
}

}  // namespace tarnmf::test

#endif  // TESTS_SUPPORT_GENERATED_MANIFEST_H
