// SPDX-License-Identifier: Apache-2.0
// What another plug-in loader takes to start with as many manifests of its own.
//   tarnmf_plugin_bench write DIRECTORY FILES
//   tarnmf_plugin_bench start DIRECTORY FILES   seconds
#include <cstdio>
#include <ctime>
#include <exception>
#include <filesystem>
#include <fstream>
#include <pluginlib/class_loader.hpp>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Component {};

double Now() {
  timespec now;
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

std::string Manifest(const std::filesystem::path& directory, int number) {
  return directory / (std::to_string(number) + ".xml");
}

// One library with one class each, all of one package, whose own manifest says no more than it must.
void Write(const std::filesystem::path& directory, int files) {
  std::filesystem::create_directories(directory);
  std::ofstream(directory / "package.xml")
      << "<package format=\"3\">\n  <name>components</name>\n  <version>1.0.0</version>\n"
         "  <description>Components</description>\n"
         "  <maintainer email=\"components@example.com\">Components</maintainer>\n"
         "  <license>Apache-2.0</license>\n</package>\n";
  for (int i = 0; i < files; ++i) {
    const std::string number = std::to_string(i);
    std::ofstream(Manifest(directory, i))
        << "<library path=\"component" << number << "\">\n  <class name=\"components/Component"
        << number << "\" type=\"components::Component" << number
        << "\" base_class_type=\"Component\">\n    <description>Component " << number
        << "</description>\n  </class>\n</library>\n";
  }
}

double Start(const std::filesystem::path& directory, int files) {
  std::vector<std::string> manifests;
  for (int i = 0; i < files; ++i)
    manifests.push_back(Manifest(directory, i));
  const double start = Now();
  pluginlib::ClassLoader<Component> loader("pluginlib", "Component", "plugin", manifests);
  const double seconds = Now() - start;
  if (loader.getDeclaredClasses().size() != static_cast<std::size_t>(files))
    throw std::runtime_error("classes are missing");
  return seconds;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const std::vector<std::string> words(argv + 1, argv + argc);
    if (words.at(0) == "write") {
      Write(words.at(1), std::stoi(words.at(2)));
    } else {
      std::printf("%.9f\n", Start(words.at(1), std::stoi(words.at(2))));
    }
    return 0;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "tarnmf_plugin_bench: %s\n", e.what());
    return 1;
  }
}
